// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ModelNames.h"

#include "frame/RepositoryLookup.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorCoreModelingManager.h"

namespace qor::modeltools {

const ModelNames::Names& ModelNames::of(long model) {
    const auto [known, isNew] = _known.try_emplace(model);
    if (!isNew) return known->second;
    known->second.name = frame::readText(model, QorAttributeId::Name).value_or(SV::String()).str();
    long type = -1;
    if (QorCoreModelingManager::GetGlobal()->getModelClass(model, type) == QorErrorCode::Ok)
        known->second.type = frame::readText(type, QorAttributeId::ClassName).value_or(SV::String()).str();
    return known->second;
}

}  // namespace qor::modeltools
