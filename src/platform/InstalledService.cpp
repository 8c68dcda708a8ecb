// SPDX-License-Identifier: Apache-2.0
#include "platform/InstalledService.h"

#include "platform/QorCoreMM_AttributeProfiles.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorEditing.h"
#include "platform/QorEncryption.h"
#include "platform/QorFileManager.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/QorInternational.h"
#include "platform/QorTimeFunctions.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"

namespace qor::platform {

template <class Service>
Service& refusing() {
    static Service* const service = new Service;
    return *service;
}

template QorAttributeProfileService& refusing();
template QorClockService& refusing();
template QorCoreModelingManager& refusing();
template QorCoreVarService& refusing();
template QorEditingService& refusing();
template QorEncryption& refusing();
template QorFileService& refusing();
template QorGrObjService& refusing();
template QorMessageTexts& refusing();
template QorModelGroupService& refusing();
template QorUserService& refusing();
template QorWindows& refusing();

}  // namespace qor::platform
