// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreModelingManager.h"

#include "platform/InstalledService.h"

QorCoreMM_LoadSave::~QorCoreMM_LoadSave() = default;
bool QorCoreMM_LoadSave::IsLibraryLoaded(long) { return false; }

QorCoreModelingManager::~QorCoreModelingManager() = default;
QorCoreBulkView* QorCoreModelingManager::bulkView() { return nullptr; }
QorCoreUnitsOfWork* QorCoreModelingManager::unitsOfWork() { return nullptr; }
QorModelTypeAttrHandler* QorCoreModelingManager::modelTypeHandler() { return nullptr; }

QorCoreModelingManager* QorCoreModelingManager::GetGlobal() noexcept {
    return &qor::platform::installed(&QorHost::repository);
}
