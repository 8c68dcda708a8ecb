// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreModelGroupManager.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"

QorModelGroupService::~QorModelGroupService() = default;

QorErrorCode QorModelGroupService::subGroups(long, ISortedSet<long>& groups, bool) {
    groups.removeAll();
    return Qor_NotInstalled("QorModelGroupService::subGroups");
}

QorErrorCode QorModelGroupService::modelGroupInfo(long, SV::String& name, long& library) {
    name.Clear();
    library = -1;
    return Qor_NotInstalled("QorModelGroupService::modelGroupInfo");
}

QorErrorCode QorModelGroupService::setUserGroupPermission(long, const QorUserGroupID&, std::int32_t) {
    return Qor_NotInstalled("QorModelGroupService::setUserGroupPermission");
}

using qor::platform::installed;

QorErrorCode QorCoreModelGroupManager::GetAllSubGroupsOfModelGroup(long modelGroup, ISortedSet<long>& groups,
                                                                   bool recursive) noexcept {
    return Qor_Guarded("modelgroup", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::modelGroups).subGroups(modelGroup, groups, recursive); });
}

QorErrorCode QorCoreModelGroupManager::GetModelGroupInfo(long modelGroup, SV::String& name, long& library) noexcept {
    return Qor_Guarded("modelgroup", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::modelGroups).modelGroupInfo(modelGroup, name, library); });
}

QorErrorCode QorCoreModelGroupManager::SetUserGroupPermission(long modelGroup, const QorUserGroupID& userGroup,
                                                              std::int32_t permission) noexcept {
    return Qor_Guarded("modelgroup", QorErrorCode::Broken, [&] {
        return installed(&QorHost::modelGroups).setUserGroupPermission(modelGroup, userGroup, permission);
    });
}
