// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreInterReferenceHandler.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"

using qor::platform::installed;

QorCoreInterReferenceHandler::QorCoreInterReferenceHandler(long model, long object, long attribute)
    : _model(model), _object(object), _attribute(attribute) {}

QorCoreInterReferenceHandler::~QorCoreInterReferenceHandler() = default;

QorErrorCode QorCoreInterReferenceHandler::initHandler() noexcept {
    _changed = false;
    return Qor_Guarded("interref", QorErrorCode::Broken, [this] {
        return installed(&QorHost::editing).interReferences(_model, _object, _attribute, _references);
    });
}

bool QorCoreInterReferenceHandler::initHandler(const SV::String& text, QorErrorCode& code) noexcept {
    _changed = false;
    code = Qor_Guarded("interref", QorErrorCode::Broken, [&] {
        return installed(&QorHost::editing).parseInterReferences(_attribute, text, _references);
    });
    return code == QorErrorCode::Ok;
}

QorErrorCode QorCoreInterReferenceHandler::_Save(long model, long object, bool raiseEvent) noexcept {
    if (!_changed) return QorErrorCode::Ok;
    return Qor_Guarded("interref", QorErrorCode::Broken, [&] {
        return installed(&QorHost::editing).saveInterReferences(model, object, _attribute, _references, raiseEvent);
    });
}
