// SPDX-License-Identifier: Apache-2.0
#include "modeltools/AttributeConversion.h"

#include <vector>

#include "modeltools/ValueCopy.h"
#include "modeltools/messages.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorEditingHelpers.h"

namespace qor::modeltools {

namespace {

QorCoreModelingManager& repository() { return *QorCoreModelingManager::GetGlobal(); }

ConversionOutcome outcomeOf(QorErrorCode code, std::uint16_t message = message::valueNotConverted) {
    if (code == QorErrorCode::Ok || code == QorErrorCode::NoValue) return {};
    return {code, message};
}

ConversionOutcome convertResult(long model, const ConversionEnd& from, const ConversionEnd& to) {
    SV::String result;
    QorErrorCode code =
        QorCoreExpressionManager::GetExprHandler(model, from.owner, from.attribute).GetResultText(result);
    if (code == QorErrorCode::Ok)
        code = repository().setAttributeValueAsString(model, to.owner, to.attribute, result.c_str(), false);
    return outcomeOf(code, message::resultNotConverted);
}

template <class Number>
QorErrorCode convertNumber(long model, const ConversionEnd& from, const ConversionEnd& to) {
    Number number{};
    const QorErrorCode code = repository().getAttributeValue(from.owner, from.attribute, number, true);
    return code == QorErrorCode::Ok ? repository().setAttributeValue(model, to.owner, to.attribute, number, false)
                                    : code;
}

QorErrorCode convertReferences(long model, const ConversionEnd& from, const ConversionEnd& to) {
    QorOwnedText text;
    const QorErrorCode code = readValue(from.owner, from.attribute, text);
    if (code != QorErrorCode::Ok || text.isEmpty()) return code;
    return writeReferences({model, to.owner, to.attribute}, text.c_str(), UnreadableReferences::Refused);
}

QorErrorCode convertText(long model, const ConversionEnd& from, const ConversionEnd& to) {
    QorOwnedText text;
    const QorErrorCode code = readValue(from.owner, from.attribute, text);
    return code == QorErrorCode::Ok
               ? repository().setAttributeValueAsString(model, to.owner, to.attribute, text.c_str(), false)
               : code;
}

/// A column of the source's record class and the target's column of that name.
struct ColumnPair {
    ConversionEnd from;
    ConversionEnd to;
};

QorErrorCode pairColumns(long source, long target, std::vector<ColumnPair>& columns) {
    std::vector<frame::ShownAttribute> shown;
    long targetClass = -1;
    QorErrorCode code = readColumns(source, shown);
    if (code == QorErrorCode::Ok) code = repository().getRecordClassIDFromAttributeID(target, targetClass);
    if (code != QorErrorCode::Ok) return code;
    for (const auto& column : shown) {
        ColumnPair pair;
        pair.from.attribute = column.id;
        code = repository().getAttributeIDFromAttributeName(targetClass, column.name.c_str(), pair.to.attribute);
        if (code == QorErrorCode::NotFound) continue;
        if (code == QorErrorCode::Ok) code = repository().getAttributeType(pair.from.attribute, pair.from.type);
        if (code == QorErrorCode::Ok) code = repository().getAttributeType(pair.to.attribute, pair.to.type);
        if (code != QorErrorCode::Ok) return code;
        columns.push_back(pair);
    }
    return QorErrorCode::Ok;
}

ConversionOutcome convertRows(long model, const ConversionEnd& from, const ConversionEnd& to) {
    ISequence<long> rows;
    std::vector<ColumnPair> columns;
    QorErrorCode code = repository().getRecordInstances(from.owner, from.attribute, rows);
    if (code == QorErrorCode::Ok) code = pairColumns(from.attribute, to.attribute, columns);
    if (code != QorErrorCode::Ok) return outcomeOf(code);
    for (const long row : rows) {
        long newRow = -1;
        code = repository().createRecordInstance(model, to.owner, to.attribute, newRow, -1);
        if (code != QorErrorCode::Ok) return outcomeOf(code);
        for (ColumnPair pair : columns) {
            pair.from.owner = row;
            pair.to.owner = newRow;
            const ConversionOutcome cell = convertAttribute(model, pair.from, pair.to);
            if (cell.message != 0) return cell;
        }
    }
    return {};
}

}  // namespace

ConversionOutcome convertAttribute(long model, const ConversionEnd& from, const ConversionEnd& to) {
    using enum QorCoreAttributeType;
    if (!isConvertible(from.type, to.type)) return {QorErrorCode::ValueRefused, message::typesDiffer};
    if (from.type == Expression && to.type != Expression) return convertResult(model, from, to);
    switch (from.type) {
        case Integer:
            return outcomeOf(convertNumber<long>(model, from, to));
        case Floating:
            return outcomeOf(convertNumber<double>(model, from, to));
        case InterReference:
            return outcomeOf(convertReferences(model, from, to));
        case Record:
            return convertRows(model, from, to);
        default:
            return outcomeOf(convertText(model, from, to));
    }
}

}  // namespace qor::modeltools
