// SPDX-License-Identifier: Apache-2.0
#include "platform/QorEditingHelpers.h"

#include "platform/InstalledService.h"
#include "platform/QorEditing.h"
#include "platform/QorGuard.h"

using qor::platform::installed;

QorCoreCopyManager& QorCoreCopyManager::Instance() noexcept {
    static QorCoreCopyManager instance;
    return instance;
}

QorErrorCode QorCoreCopyManager::getSourceInstNameOfPastedInst(long model, long object,
                                                               SV::String& name) const noexcept {
    return Qor_Guarded("copy", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::editing).sourceNameOfPastedObject(model, object, name); });
}

QorCoreExpressionManager::ExprHandler::ExprHandler(long model, long object, long attribute)
    : _model(model), _object(object), _attribute(attribute) {}

QorErrorCode QorCoreExpressionManager::ExprHandler::GetResultText(SV::String& result) const noexcept {
    return Qor_Guarded("expression", QorErrorCode::Broken, [&] {
        return installed(&QorHost::editing).expressionResult(_model, _object, _attribute, result);
    });
}

QorCoreExpressionManager::ExprHandler QorCoreExpressionManager::GetExprHandler(long model, long object,
                                                                               long attribute) {
    return {model, object, attribute};
}

QorCoreAutoExManStopStart::QorCoreAutoExManStopStart() noexcept {
    Qor_Guarded("autoexec", [] { installed(&QorHost::editing).stopAutomaticExecutions(); });
}

QorCoreAutoExManStopStart::~QorCoreAutoExManStopStart() {
    Qor_Guarded("autoexec", [] { installed(&QorHost::editing).startAutomaticExecutions(); });
}

QorBasicNotebookAttrHandler::QorBasicNotebookAttrHandler(long cls) : _cls(cls) {}

bool QorBasicNotebookAttrHandler::GetAttr(unsigned long index, SV::String& name) const noexcept {
    return Qor_Guarded("notebook", false,
                       [&] { return installed(&QorHost::editing).notebookAttribute(_cls, index, name); });
}
