// SPDX-License-Identifier: Apache-2.0
#include "modeltools/AttributeTransfer.h"

#include <utility>
#include <vector>

#include "frame/RepositoryLookup.h"
#include "modeltools/PositionText.h"
#include "modeltools/ValueCopy.h"
#include "modeltools/messages.h"
#include "platform/QorCoreAttributeType.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorMessage.h"

namespace qor::modeltools {

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

/// The object's position text and the attribute of its class that holds it.
bool readPosition(long object, long& attribute, QorOwnedText& text) {
    long cls = -1;
    if (repository().classOf(object, cls) != QorErrorCode::Ok) return false;
    const auto found = frame::findAttribute(cls, Qor_Message(message::positionAttribute));
    if (!found) return false;
    attribute = *found;
    return readValueOrEmpty(object, attribute, text) == QorErrorCode::Ok;
}

bool copyText(long model, long from, long to, long attribute) {
    QorOwnedText text;
    return readValueOrEmpty(from, attribute, text) == QorErrorCode::Ok &&
           repository().setAttributeValueAsString(model, to, attribute, text.c_str(), true) == QorErrorCode::Ok;
}

bool copyReferences(long model, long from, long to, long attribute) {
    QorOwnedText text;
    return readValueOrEmpty(from, attribute, text) == QorErrorCode::Ok &&
           writeReferences({model, to, attribute}, text.c_str(), UnreadableReferences::LeftOut) == QorErrorCode::Ok;
}

using Comparison = AttributeTransfer::Comparison;

Comparison comparisonAfter(QorErrorCode code) {
    return code == QorErrorCode::NotFound ? Comparison::Absent : Comparison::Failed;
}

Comparison compareValues(long left, long right, long attribute);

Comparison compareTables(long left, long right, long attribute) {
    ISequence<long> leftRows;
    ISequence<long> rightRows;
    std::vector<frame::ShownAttribute> columns;
    QorErrorCode code = repository().getRecordInstances(left, attribute, leftRows);
    if (code == QorErrorCode::Ok) code = repository().getRecordInstances(right, attribute, rightRows);
    if (code != QorErrorCode::Ok) return comparisonAfter(code);
    if (readColumns(attribute, columns) != QorErrorCode::Ok) return Comparison::Failed;
    if (leftRows.numberOfElements() != rightRows.numberOfElements()) return Comparison::Different;
    for (unsigned long at = 0; at < leftRows.numberOfElements(); ++at)
        for (const auto& column : columns) {
            const auto cell = compareValues(leftRows.elementAtIndex(at), rightRows.elementAtIndex(at), column.id);
            if (cell != Comparison::Same) return cell;
        }
    return Comparison::Same;
}

Comparison compareValues(long left, long right, long attribute) {
    auto type = QorCoreAttributeType::None;
    QorErrorCode code = repository().getAttributeType(attribute, type);
    if (code != QorErrorCode::Ok) return comparisonAfter(code);
    if (type == QorCoreAttributeType::Record) return compareTables(left, right, attribute);
    QorOwnedText leftText;
    QorOwnedText rightText;
    code = readValueOrEmpty(left, attribute, leftText);
    if (code == QorErrorCode::Ok) code = readValueOrEmpty(right, attribute, rightText);
    if (code != QorErrorCode::Ok) return comparisonAfter(code);
    return leftText.view() == rightText.view() ? Comparison::Same : Comparison::Different;
}

}  // namespace

AttributeTransfer::Comparison AttributeTransfer::compare(long target, long attribute) const {
    return compareValues(_source, target, attribute);
}

AttributeTransfer::Result AttributeTransfer::copy(long model, long target, long attribute) const {
    auto type = QorCoreAttributeType::None;
    if (repository().getAttributeType(attribute, type) != QorErrorCode::Ok) return Result::Failed;
    if (type == QorCoreAttributeType::Record)
        return copyRows(model, target, attribute) ? Result::Written : Result::Failed;
    if (type == QorCoreAttributeType::InterReference)
        return !_refuseReferences && copyReferences(model, _source, target, attribute) ? Result::WrittenQuietly
                                                                                       : Result::Failed;
    return copyText(model, _source, target, attribute) ? Result::Written : Result::Failed;
}

bool AttributeTransfer::copyRows(long model, long target, long attribute) const {
    return target != _source && copyTable(model, _source, target, attribute);
}

bool AttributeTransfer::copyTable(long model, long from, long to, long attribute) const {
    ISequence<long> rows;
    std::vector<frame::ShownAttribute> columns;
    if (repository().getRecordInstances(from, attribute, rows) != QorErrorCode::Ok ||
        readColumns(attribute, columns) != QorErrorCode::Ok || deleteRows({model, to, attribute}) != QorErrorCode::Ok)
        return false;
    for (const long row : rows) {
        long newRow = -1;
        if (repository().createRecordInstance(model, to, attribute, newRow, -1) != QorErrorCode::Ok) return false;
        for (const auto& column : columns)
            if (!copyCell(model, row, newRow, column.id)) return false;
    }
    return true;
}

bool AttributeTransfer::copyCell(long model, long from, long to, long column) const {
    auto type = QorCoreAttributeType::None;
    if (repository().getAttributeType(column, type) != QorErrorCode::Ok) return false;
    if (type == QorCoreAttributeType::InterReference)
        return !_refuseReferences && copyReferences(model, from, to, column);
    if (type == QorCoreAttributeType::Record) return copyTable(model, from, to, column);
    return copyText(model, from, to, column);
}

std::optional<AttributeTransfer::NewPosition> AttributeTransfer::positionFor(long target) const {
    long attribute = -1;
    QorOwnedText source;
    if (!readPosition(_source, attribute, source)) return std::nullopt;
    const auto size = sizeIn(source.view());
    QorOwnedText old;
    if (!size || !readPosition(target, attribute, old)) return std::nullopt;
    auto changed = withSize(std::string(old.view()), *size);
    if (!changed) return std::nullopt;
    return NewPosition{attribute, std::string(old.view()), std::move(*changed)};
}

bool AttributeTransfer::copySize(long model, long target) const {
    const auto position = positionFor(target);
    return position && repository().setAttributeValueAsString(model, target, position->attribute,
                                                              position->after.c_str(), true) == QorErrorCode::Ok;
}

}  // namespace qor::modeltools
