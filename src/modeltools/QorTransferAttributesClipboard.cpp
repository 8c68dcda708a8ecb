// SPDX-License-Identifier: Apache-2.0
#include "modeltools/QorTransferAttributesClipboard.h"

#include "modeltools/AttributeTransfer.h"
#include "modeltools/internalErrors.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorGuard.h"

using namespace qor::modeltools;

QorTransferAttributesClipboard::QorTransferAttributesClipboard() noexcept = default;
QorTransferAttributesClipboard::~QorTransferAttributesClipboard() = default;

QorTransferAttributesClipboard& QorTransferAttributesClipboard::Instance() noexcept {
    static QorTransferAttributesClipboard instance;
    return instance;
}

void QorTransferAttributesClipboard::setAttributes(long, long object, const ISortedSet<long>& attributes) noexcept {
    clear();
    Qor_Guarded(kTransferSource, [&] {
        _attributes = attributes;
        _object = Qor_NarrowIdentifier(object).value_or(QorNoIdentifier);
    });
}

void QorTransferAttributesClipboard::getAttributes(ISortedSet<long>& attributes) const noexcept {
    attributes.removeAll();
    Qor_Guarded(kTransferSource, [&] { attributes = _attributes; });
}

void QorTransferAttributesClipboard::clear() noexcept {
    _object = QorNoIdentifier;
    _attributes.removeAll();
}

bool QorTransferAttributesClipboard::isProperTarget(long object) const noexcept {
    return Qor_Guarded(kTransferSource, false, [&] {
        if (object == _object) return false;
        long cls = QorNoIdentifier;
        long sourceClass = QorNoIdentifier;
        auto& repository = *QorCoreModelingManager::GetGlobal();
        return repository.classOf(object, cls) == QorErrorCode::Ok &&
               repository.classOf(_object, sourceClass) == QorErrorCode::Ok && cls == sourceClass && cls > 0;
    });
}

bool QorTransferAttributesClipboard::isSizeTransferred() const noexcept {
    return Qor_Guarded(kTransferSource, false, [&] { return !empty() && _attributes.elementAtIndex(0) < 0; });
}

bool QorTransferAttributesClipboard::copyAttributes(long model, long target, bool skipSize, bool refuseInterReferences,
                                                    bool& changed) const noexcept {
    changed = false;
    if (target == _object) return false;
    bool written = false;
    const bool copied = Qor_Guarded(kTransferSource, false, [&] {
        const AttributeTransfer transfer(_object, refuseInterReferences);
        const ISortedSet<long> attributes = _attributes;  // whoever hears of a changed value may change the clipboard
        for (const long attribute : attributes) {
            if (attribute < 0) {
                if (skipSize) continue;
                if (!transfer.copySize(model, target)) return false;
                written = true;
                continue;
            }
            const auto result = transfer.copy(model, target, attribute);
            if (result == AttributeTransfer::Result::Failed) return false;
            if (result == AttributeTransfer::Result::Written) written = true;
        }
        return true;
    });
    changed = copied && written;
    return copied;
}

bool QorTransferAttributesClipboard::copyRecordAttributes(long model, long target, long recordAttribute,
                                                          bool refuseInterReferences) const noexcept {
    return Qor_Guarded(kTransferSource, false, [&] {
        return AttributeTransfer(_object, refuseInterReferences).copyRows(model, target, recordAttribute);
    });
}
