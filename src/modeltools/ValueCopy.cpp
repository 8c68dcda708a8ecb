// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ValueCopy.h"

#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorEditingHelpers.h"

namespace qor::modeltools {

QorErrorCode readValue(long owner, long attribute, QorOwnedText& text) {
    return QorCoreModelingManager::GetGlobal()->getAttributeValueAsNewChar(owner, attribute, text.out());
}

QorErrorCode readValueOrEmpty(long owner, long attribute, QorOwnedText& text) {
    const QorErrorCode code = readValue(owner, attribute, text);
    return code == QorErrorCode::NoValue ? QorErrorCode::Ok : code;
}

QorErrorCode writeReferences(const ValuePlace& to, const char* text, UnreadableReferences unreadable) {
    QorCoreInterReferenceHandler references(to.model, to.owner, to.attribute);
    QorErrorCode code = QorErrorCode::Ok;
    if (!references.initHandler(SV::String(text), code))
        return unreadable == UnreadableReferences::LeftOut ? QorErrorCode::Ok : code;
    references.MarkAllAdded();
    return references._Save(to.model, to.owner, false);
}

QorErrorCode readColumns(long table, std::vector<frame::ShownAttribute>& columns) {
    long recordClass = -1;
    const auto code = QorCoreModelingManager::GetGlobal()->getRecordClassIDFromAttributeID(table, recordClass);
    return code == QorErrorCode::Ok ? frame::readNotebook(recordClass, columns) : code;
}

QorErrorCode deleteRows(const ValuePlace& table) {
    auto& repository = *QorCoreModelingManager::GetGlobal();
    const QorCoreAutoExManStopStart held;
    ISequence<long> rows;
    if (const QorErrorCode code = repository.getRecordInstances(table.owner, table.attribute, rows);
        code != QorErrorCode::Ok)
        return code;
    for (unsigned long at = rows.numberOfElements(); at-- > 0;) {
        const QorErrorCode code =
            repository.deleteRecordInstance(table.model, table.owner, table.attribute, rows.elementAtIndex(at));
        if (code != QorErrorCode::Ok) return code;
    }
    return QorErrorCode::Ok;
}

}  // namespace qor::modeltools
