// SPDX-License-Identifier: Apache-2.0
#include "platform/QorUserManager.h"

QorUserService::~QorUserService() = default;

QorErrorCode QorUserService::currentUser(QorUserID& user) {
    user = QorUserID();
    return Qor_NotInstalled("QorUserService::currentUser");
}

QorErrorCode QorUserService::fullDisplayName(const QorUserID&, SV::String& first, SV::String& second,
                                             QorUserLogonNameType& kind, bool) {
    first.Clear();
    second.Clear();
    kind = QorUserLogonNameType::Plain;
    return Qor_NotInstalled("QorUserService::fullDisplayName");
}

QorErrorCode QorUserService::userGroupName(const QorUserGroupID&, SV::String& name) {
    name.Clear();
    return Qor_NotInstalled("QorUserService::userGroupName");
}

bool QorUserService::isAdministrator(const QorUserID&) {
    (void)Qor_NotInstalled("QorUserService::isAdministrator");
    return false;
}

bool QorUserService::isSubAdministrator(const QorUserID&) {
    (void)Qor_NotInstalled("QorUserService::isSubAdministrator");
    return false;
}

QorErrorCode QorUserService::userProfile(const QorUserID&, long, SV::String& value) {
    value.Clear();
    return Qor_NotInstalled("QorUserService::userProfile");
}

QorErrorCode QorUserService::push(long) { return Qor_NotInstalled("QorUserService::push"); }

QorErrorCode QorUserService::pop() { return Qor_NotInstalled("QorUserService::pop"); }

QorErrorCode QorUserService::allUserIDs(ISortedSet<QorUserID>& users) {
    users.removeAll();
    return Qor_NotInstalled("QorUserService::allUserIDs");
}

QorErrorCode QorUserService::allUserGroups(ISortedSet<QorUserGroupID>& groups) {
    groups.removeAll();
    return Qor_NotInstalled("QorUserService::allUserGroups");
}

QorErrorCode QorUserService::allowedApplicationLibrary(const QorUserID&, long& library) {
    library = -1;
    return Qor_NotInstalled("QorUserService::allowedApplicationLibrary");
}

QorErrorCode QorUserService::modelGroupsAccessibleByUserGroup(const QorUserGroupID&,
                                                              QorAccModelgroupContainer& entries) {
    entries.removeAll();
    return Qor_NotInstalled("QorUserService::modelGroupsAccessibleByUserGroup");
}

QorErrorCode QorUserService::userGroupsOfUser(const QorUserID&, ISortedSet<QorUserGroupID>& groups) {
    groups.removeAll();
    return Qor_NotInstalled("QorUserService::userGroupsOfUser");
}

QorErrorCode QorUserService::systemUserGroupsOfUser(const QorUserID&, ISortedSet<QorUserGroupID>& groups) {
    groups.removeAll();
    return Qor_NotInstalled("QorUserService::systemUserGroupsOfUser");
}

QorErrorCode QorUserService::singleSignOnMode(long& mode) {
    mode = -1;
    return Qor_NotInstalled("QorUserService::singleSignOnMode");
}
