// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <string_view>

#include "cardinality/QorCardinalityHandler.h"
#include "frame/HandlerInitialisation.h"
#include "frame/messages.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorMessage.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "platform/QorOwnedText.h"
#include "simmap/QorSimMappingHandler.h"

namespace qor::frame {

namespace {

// The model-type and the mapping handler need only exist: their errors were told when they were made.
bool handlersAreCurrent() {
    return QorModelTypeAttrHandler::ExistsGlobal() && !QorCardinalityHandler::Instance().isError() &&
           QorSimMappingHandler::ExistsGlobal();
}

SV::String mappingErrorText() {
    auto* const mapping = QorSimMappingHandler::GetGlobal();
    return mapping != nullptr ? mapping->GetErrorText() : SV::String();
}

QorErrorCode setUpHandlers(const LoadContext& context) {
    const auto progress = context.showProgress(Qor_Message(message::initialisingHandlers));
    const auto result = QorCoreModelingManager::GetGlobal()->initLibraryHandlers(true);
    return result == QorErrorCode::NotAllHandlersSetUp ? QorErrorCode::Ok : result;
}

SV::String errorText(QorErrorCode code) {
    switch (code) {
        case QorErrorCode::ModelTypeHandlerError:
            return QorModelTypeAttrHandler::GetGlobal()->getErrorText();
        case QorErrorCode::SimMappingError:
            return mappingErrorText();
        case QorErrorCode::HandlerInitialisationFailed:
            return Qor_Message(message::furtherFailure);
        default:
            return Qor_Message(message::otherFailure, {{"%c", std::to_string(static_cast<int>(code))}});
    }
}

/// Each error of a text opens with a bracketed source.
bool holdsSeveralErrors(std::string_view text) { return text.find('[') != text.rfind('['); }

void showFailure(const LoadContext& context, QorErrorCode code) {
    QorOwnedText library;
    (void)QorCoreModelingManager::GetGlobal()->getAppLibraryName(library.out());  // shown without a name when it fails
    const auto text = errorText(code);
    const auto frame =
        holdsSeveralErrors(text.view()) ? message::severalInitialisationErrors : message::oneInitialisationError;
    context.showError(Qor_Message(frame, {{"%s1", library.view()}, {"%s2", text.view()}}));
}

}  // namespace

QorErrorCode initialiseHandlers(const LoadContext& context) {
    if (handlersAreCurrent()) return QorErrorCode::Ok;

    const auto result = setUpHandlers(context);

    auto toReport = result;
    if (result == QorErrorCode::Ok && QorModelTypeAttrHandler::GetGlobal()->isError())
        toReport = QorErrorCode::ModelTypeHandlerError;
    if (!context.isSilent() && toReport != QorErrorCode::Ok) showFailure(context, toReport);
    return result;
}

}  // namespace qor::frame
