// SPDX-License-Identifier: Apache-2.0
#include "platform/QorUserManager.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"

using qor::platform::installed;

QorDataSourceDB& QorDataSourceDB::Instance() noexcept {
    static QorDataSourceDB instance;
    return instance;
}

SV::String Qor_JoinDisplayName(const SV::String& first, const SV::String& second, QorUserLogonNameType kind) {
    return kind == QorUserLogonNameType::TwoPart ? first + ";" + second : first;
}

QorErrorCode QorUserManager::allUmansGetCurrentUserID(QorUserID& user) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).currentUser(user); });
}

QorErrorCode QorUserManager::allUmansGetUserFullDisplayNameOfUserID(const QorUserID& user, SV::String& first,
                                                                    SV::String& second, QorUserLogonNameType& kind,
                                                                    bool shortForm) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken, [&] {
        return installed(&QorHost::users).fullDisplayName(user, first, second, kind, shortForm);
    });
}

QorErrorCode QorUserManager::allUmansGetUserGroupName(const QorUserGroupID& group, SV::String& name) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).userGroupName(group, name); });
}

QorErrorCode QorUserManager::allUmansGetAllowedApplicationLibrary(const QorUserID& user, long& library) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).allowedApplicationLibrary(user, library); });
}

QorErrorCode QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                                         QorAccModelgroupContainer& entries) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).modelGroupsAccessibleByUserGroup(group, entries); });
}

QorErrorCode QorUserManager::allUmansGetAllUserGroups(ISortedSet<QorUserGroupID>& groups) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).allUserGroups(groups); });
}

bool QorUserManager::isUserAdmin(const QorUserID& user) noexcept {
    return Qor_Guarded("qorusermanager", false, [&] { return installed(&QorHost::users).isAdministrator(user); });
}

bool QorUserManager::isUserSubAdmin(const QorUserID& user) noexcept {
    return Qor_Guarded("qorusermanager", false, [&] { return installed(&QorHost::users).isSubAdministrator(user); });
}

QorErrorCode QorUserManager::getUserProfile(const QorUserID& user, long entry, SV::String& value) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).userProfile(user, entry, value); });
}

QorErrorCode QorUserManager::push(long userManager) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).push(userManager); });
}

QorErrorCode QorUserManager::pop() noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken, [&] { return installed(&QorHost::users).pop(); });
}

QorErrorCode QorUserManager::getAllUserIDs(ISortedSet<QorUserID>& users) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).allUserIDs(users); });
}

QorErrorCode QorDBAdministration::getUsergroups(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).userGroupsOfUser(user, groups); });
}

QorErrorCode QorDBAdministration::getSysUsergroups(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).systemUserGroupsOfUser(user, groups); });
}

QorErrorCode QorDataSourceDB::getSingleSignOnMode(long& mode) const noexcept {
    return Qor_Guarded("qorusermanager", QorErrorCode::Broken,
                       [&] { return installed(&QorHost::users).singleSignOnMode(mode); });
}
