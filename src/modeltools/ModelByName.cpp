// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ModelByName.h"

#include "platform/QorCoreModelingManager.h"
#include "platform/QorModelTypeAttrHandler.h"

namespace qor::modeltools {

ModelSearch findModel(const SV::String& typeName, const SV::String& modelName, long& model) {
    auto& repository = *QorCoreModelingManager::GetGlobal();
    model = QorNoIdentifier;
    unsigned long type = 0;
    if (QorModelTypeAttrHandler::GetGlobal()->GetModelTypeIndex(typeName, type) != QorErrorCode::Ok)
        return ModelSearch::UnknownType;
    long thread = QorNoIdentifier;
    if (repository.getModelThreadIDFromModelName(modelName.c_str(), type, thread) != QorErrorCode::Ok)
        return ModelSearch::UnknownModel;
    return repository.getLastModelVersionOfModelThread(thread, model) == QorErrorCode::Ok ? ModelSearch::Found
                                                                                          : ModelSearch::NoVersion;
}

}  // namespace qor::modeltools
