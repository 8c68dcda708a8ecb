// SPDX-License-Identifier: Apache-2.0
#include "embedded/UserAdministration.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "embedded/Answers.h"
#include "embedded/Built.h"
#include "platform/QorGuard.h"
#include "platform/QorUserEventKind.h"

QorUserAdministration::~QorUserAdministration() = default;

namespace qor::embedded {

namespace {

constexpr std::uint8_t kSignOnBits = kAllManagerBits & static_cast<std::uint8_t>(~kOrdinaryBit);

}  // namespace

UserAdministration::~UserAdministration() = default;

// ---- Who may do what ----

bool UserAdministration::mayAdminister(bool everything) const {
    const QorUserID current = _users.current();
    return _users.isAdministrator(current) || (!everything && _users.isSubAdministrator(current));
}

QorBuildError UserAdministration::refusal(bool everything) const {
    return mayAdminister(everything) ? QorBuildError::None : QorBuildError::NotAllowed;
}

QorBuildError UserAdministration::refusal(QorIdentifier user) const {
    const UserRow* const row = directory().user(user);
    if (row == nullptr) return QorBuildError::UnknownIdentifier;
    return refusal(row->fields.isAdministrator || row->fields.isSubAdministrator);
}

// Who may not change a user may not change what that user belongs to either.
QorBuildError UserAdministration::refusalOfMember(QorIdentifier member) const {
    return directory().user(member) != nullptr ? refusal(member) : refusal(false);
}

// Makes a change, and announces it when it is kept. `leaving` is a user or group that goes with it.
template <class Operation, class Announce>
QorBuildResult UserAdministration::changed(Operation operation, Announce announce, QorIdentifier leaving) {
    return built([&] {
        const Users::Announcing announcing(_users, leaving);
        const QorBuildResult result = _repository.change(operation, kOfManySteps);
        if (result.ok()) announce(result.id);
        return result;
    });
}

// ---- Users ----

QorBuildResult UserAdministration::addUser(std::string_view logonName, long userManager) {
    if (const QorBuildError error = refusal(false); error != QorBuildError::None) return refused(error);
    const std::uint8_t manager = managerBit(userManager);
    if (manager == 0) return refused(QorBuildError::ValueRefused);
    return built([&] {
        UserFields fields;
        fields.logonName = logonName;
        fields.managers = manager;
        const bool isFirst = fields.isAdministrator = !hasUsers();
        return changed([&] { return directory().addUser(std::move(fields)); },
                       [&](QorIdentifier user) {
                           _announcements.userChanged(QorUserEventKind::Created, user);
                           if (manager != kOrdinaryBit) {
                               _announcements.userChanged(QorUserEventKind::ManagerJoined, user, userManager);
                               _announcements.userChanged(QorUserEventKind::SignOnSet, user, 1);
                           }
                           if (isFirst)
                               _announcements.userChanged(QorUserEventKind::RightChanged, user,
                                                          QorUserRight::Administrator, QorUserRight::Granted);
                       });
    });
}

// Of the logon or display name. What would be refused is not announced as coming either; only that the file does not
// take it, or was changed by another process, shows afterwards.
QorBuildResult UserAdministration::changeName(QorIdentifier user, UserFields fields) {
    if (const QorBuildResult result = directory().checkChange(user, fields); !result.ok()) return result;
    const UserFields& now = directory().user(user)->fields;
    if (now.logonName == fields.logonName && now.displayName == fields.displayName &&
        now.secondName == fields.secondName)
        return {user};
    if (!_repository.mayChange()) return refused(QorBuildError::NotStored);
    _announcements.userChanged(QorUserEventKind::Renaming, user);
    return changed([&] { return directory().changeUser(user, std::move(fields)); },
                   [&](QorIdentifier) { _announcements.userChanged(QorUserEventKind::Renamed, user); });
}

QorBuildResult UserAdministration::renameUser(QorIdentifier user, std::string_view logonName) {
    if (const QorBuildError error = refusal(user); error != QorBuildError::None) return refused(error);
    return built([&] {
        UserFields fields = directory().user(user)->fields;
        fields.logonName = logonName;
        return changeName(user, std::move(fields));
    });
}

QorBuildResult UserAdministration::setDisplayName(QorIdentifier user, std::string_view displayName,
                                                  std::string_view secondName) {
    if (const QorBuildError error = refusal(user); error != QorBuildError::None) return refused(error);
    return built([&] {
        UserFields fields = directory().user(user)->fields;
        fields.displayName = displayName;
        fields.secondName = secondName;
        fields.kind = secondName.empty() ? QorUserLogonNameType::Plain : QorUserLogonNameType::TwoPart;
        return changeName(user, std::move(fields));
    });
}

QorBuildResult UserAdministration::removeUser(QorIdentifier user) {
    if (const QorBuildError error = refusal(user); error != QorBuildError::None) return refused(error);
    if (directory().user(user)->fields.isAdministrator && directory().hasOtherUser(user, false) &&
        !directory().hasOtherUser(user, true))
        return refused(QorBuildError::LastAdministrator);
    return changed([&] { return directory().removeUser(user); },
                   [&](QorIdentifier) { _announcements.userChanged(QorUserEventKind::Deleted, user); }, user);
}

template <class Edit>
QorBuildResult UserAdministration::changeFields(QorIdentifier user, Edit edit) {
    UserFields fields = directory().user(user)->fields;
    edit(fields);
    return directory().changeUser(user, std::move(fields));
}

QorBuildResult UserAdministration::setRight(QorIdentifier user, long right, bool granted) {
    const UserRow* const row = directory().user(user);
    if (row == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = refusal(true); error != QorBuildError::None) return refused(error);
    const bool isAdministrators = right == QorUserRight::Administrator;
    if (!isAdministrators && right != QorUserRight::SubAdministrator) return refused(QorBuildError::ValueRefused);
    if ((isAdministrators ? row->fields.isAdministrator : row->fields.isSubAdministrator) == granted) return {user};
    if (isAdministrators && !granted && !directory().hasOtherUser(user, true))
        return refused(QorBuildError::LastAdministrator);
    return changed(
        [&] {
            return changeFields(user, [&](UserFields& fields) {
                (isAdministrators ? fields.isAdministrator : fields.isSubAdministrator) = granted;
            });
        },
        [&](QorIdentifier) {
            _announcements.userChanged(QorUserEventKind::RightChanged, user, right,
                                       granted ? QorUserRight::Granted : QorUserRight::Withdrawn);
        });
}

QorBuildResult UserAdministration::setManager(QorIdentifier user, long userManager, bool isMember) {
    if (const QorBuildError error = refusal(user); error != QorBuildError::None) return refused(error);
    const std::uint8_t bit = managerBit(userManager);
    if (bit == 0) return refused(QorBuildError::ValueRefused);
    const std::uint8_t before = directory().user(user)->fields.managers;
    const auto after = static_cast<std::uint8_t>(isMember ? before | bit : before & ~bit);
    if (after == before) return {user};
    return changed([&] { return changeFields(user, [&](UserFields& fields) { fields.managers = after; }); },
                   [&](QorIdentifier) {
                       _announcements.userChanged(
                           isMember ? QorUserEventKind::ManagerJoined : QorUserEventKind::ManagerLeft, user,
                           userManager);
                       const bool signsOn = (after & kSignOnBits) != 0;
                       if (signsOn != ((before & kSignOnBits) != 0))
                           _announcements.userChanged(QorUserEventKind::SignOnSet, user, signsOn ? 1 : 0);
                   });
}

QorBuildResult UserAdministration::setAllowedLibrary(QorIdentifier user, QorIdentifier applicationLibrary) {
    if (const QorBuildError error = refusal(user); error != QorBuildError::None) return refused(error);
    if (directory().user(user)->fields.library == applicationLibrary) return {user};
    return changed([&] { return changeFields(user, [&](UserFields& fields) { fields.library = applicationLibrary; }); },
                   [&](QorIdentifier) {
                       _announcements.userChanged(QorUserEventKind::LibraryAssigned, user, applicationLibrary);
                   });
}

QorBuildResult UserAdministration::setProfileEntry(QorIdentifier user, long entry, std::string_view text) {
    if (const QorBuildError error = refusal(user); error != QorBuildError::None) return refused(error);
    const QorIdentifier number = narrow(entry);
    if (!UserDirectory::isProfileEntry(number, text)) return refused(QorBuildError::ValueRefused);
    const std::string* const now = directory().profileEntry(*directory().user(user), number);
    if (now != nullptr ? *now == text : text.empty()) return {user};
    return built([&] {
        if (!_repository.mayChange()) return refused(QorBuildError::NotStored);
        _announcements.userChanged(QorUserEventKind::ProfileChanging, user, entry);
        return changed(
            [&] { return directory().setProfileEntry(user, number, text); },
            [&](QorIdentifier) { _announcements.userChanged(QorUserEventKind::ProfileChanged, user, entry); });
    });
}

QorBuildResult UserAdministration::setSingleSignOnMode(long mode) {
    if (const QorBuildError error = refusal(true); error != QorBuildError::None) return refused(error);
    return changed([&] { return directory().setSignOnMode(narrow(mode)); }, [](QorIdentifier) {});
}

// ---- User groups ----

QorBuildResult UserAdministration::addUserGroup(std::string_view name, bool isSystem) {
    if (const QorBuildError error = refusal(false); error != QorBuildError::None) return refused(error);
    return changed(
        [&] { return directory().addGroup(name, isSystem); },
        [&](QorIdentifier group) { _announcements.userGroupChanged(QorUserGroupEventKind::Created, group); });
}

QorBuildResult UserAdministration::renameUserGroup(QorIdentifier group, std::string_view name) {
    if (const QorBuildError error = refusal(false); error != QorBuildError::None) return refused(error);
    if (const UserGroupRow* const row = directory().group(group); row != nullptr && row->name == name) return {group};
    return changed([&] { return directory().renameGroup(group, name); },
                   [&](QorIdentifier) { _announcements.userGroupChanged(QorUserGroupEventKind::Renamed, group); });
}

QorBuildResult UserAdministration::removeUserGroup(QorIdentifier group) {
    if (const QorBuildError error = refusal(false); error != QorBuildError::None) return refused(error);
    return built([&] {
        const UserGroupRow* const row = directory().group(group);
        const bool isSystem = row != nullptr && row->isSystem;
        const std::vector<QorIdentifier> members = directory().membersOf(group);
        for (const QorIdentifier member : members)
            if (const QorBuildError error = refusalOfMember(member); error != QorBuildError::None)
                return refused(error);
        return changed([&] { return directory().removeGroup(group); },
                       [&](QorIdentifier) {
                           for (const QorIdentifier member : members)
                               announceMembership(member, group, isSystem, false);
                           _announcements.userGroupChanged(QorUserGroupEventKind::Deleted, group);
                       },
                       group);
    });
}

void UserAdministration::announceMembership(QorIdentifier member, QorIdentifier group, bool isSystem,
                                            bool joins) const {
    if (directory().user(member) == nullptr)
        _announcements.userGroupChanged(QorUserGroupEventKind::Nested, member);
    else if (isSystem)
        _announcements.userChanged(joins ? QorUserEventKind::SystemGroupJoined : QorUserEventKind::SystemGroupLeft,
                                   member, group);
    else
        _announcements.userGroupChanged(joins ? QorUserGroupEventKind::Joined : QorUserGroupEventKind::Left, group,
                                        member);
}

QorBuildResult UserAdministration::changeMembership(QorIdentifier member, QorIdentifier group, bool joins) {
    const UserGroupRow* const row = directory().group(group);
    if (row == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = refusalOfMember(member); error != QorBuildError::None) return refused(error);
    const bool isSystem = row->isSystem;
    if (directory().isMember(member, group) == joins) return {group};
    return changed([&] { return joins ? directory().join(member, group) : directory().leave(member, group); },
                   [&](QorIdentifier) { announceMembership(member, group, isSystem, joins); });
}

QorBuildResult UserAdministration::join(QorIdentifier member, QorIdentifier group) {
    return changeMembership(member, group, true);
}

QorBuildResult UserAdministration::leave(QorIdentifier member, QorIdentifier group) {
    return changeMembership(member, group, false);
}

QorBuildResult UserAdministration::setPermission(QorIdentifier group, QorIdentifier modelGroup,
                                                 std::int32_t permission) {
    if (const QorBuildError error = refusal(false); error != QorBuildError::None) return refused(error);
    const std::int32_t before = directory().permission(group, modelGroup);
    return changed([&] { return directory().setPermission(group, modelGroup, permission); },
                   [&](QorIdentifier) {
                       if (permission != before)
                           _announcements.userGroupChanged(QorUserGroupEventKind::PermissionChanged, group);
                   });
}

// ---- Questions ----

namespace {

template <class Answer, class Operation>
Answer asked(Operation operation) {
    return Qor_Guarded("embedded", Answer{}, operation);
}

}  // namespace

QorIdentifier UserAdministration::findUser(std::string_view logonName) const { return directory().findUser(logonName); }

QorIdentifier UserAdministration::findUserGroup(std::string_view name) const { return directory().findGroup(name); }

std::vector<QorIdentifier> UserAdministration::users() const {
    return asked<std::vector<QorIdentifier>>([&] {
        std::vector<QorIdentifier> found;
        directory().forEachUser([&](const UserRow& row) { found.push_back(row.id); });
        return found;
    });
}

std::vector<QorIdentifier> UserAdministration::userGroups() const {
    return asked<std::vector<QorIdentifier>>([&] {
        std::vector<QorIdentifier> found;
        directory().forEachGroup([&](const UserGroupRow& row) { found.push_back(row.id); });
        return found;
    });
}

QorUserInfo UserAdministration::userInfo(QorIdentifier user) const {
    return asked<QorUserInfo>([&] {
        const UserRow* const row = directory().user(user);
        if (row == nullptr) return QorUserInfo{};
        const UserFields& fields = row->fields;
        QorUserInfo info{row->id, fields.logonName,       fields.shownName(),        fields.secondName, fields.kind,
                         {},      fields.isAdministrator, fields.isSubAdministrator, fields.library};
        for (const long manager : kUserManagers)
            if ((fields.managers & managerBit(manager)) != 0) info.managers.push_back(manager);
        return info;
    });
}

QorUserGroupInfo UserAdministration::userGroupInfo(QorIdentifier group) const {
    const UserGroupRow* const row = directory().group(group);
    return row != nullptr ? QorUserGroupInfo{row->id, row->name, row->isSystem} : QorUserGroupInfo{};
}

std::vector<QorProfileEntryInfo> UserAdministration::profileOf(QorIdentifier user) const {
    return asked<std::vector<QorProfileEntryInfo>>([&] {
        std::vector<QorProfileEntryInfo> found;
        if (const UserRow* const row = directory().user(user))
            for (const ProfileEntry& entry : row->profile) found.push_back({entry.number, entry.text});
        return found;
    });
}

std::vector<QorIdentifier> UserAdministration::groupsOf(QorIdentifier member) const {
    return asked<std::vector<QorIdentifier>>([&] {
        if (const UserRow* const row = directory().user(member)) return row->groups;
        const UserGroupRow* const row = directory().group(member);
        return row != nullptr ? row->groups : std::vector<QorIdentifier>();
    });
}

std::vector<QorIdentifier> UserAdministration::membersOf(QorIdentifier group) const {
    return asked<std::vector<QorIdentifier>>([&] { return directory().membersOf(group); });
}

std::vector<QorGroupPermissionInfo> UserAdministration::permissionsOf(QorIdentifier group) const {
    return asked<std::vector<QorGroupPermissionInfo>>([&] {
        std::vector<QorGroupPermissionInfo> found;
        if (const UserGroupRow* const row = directory().group(group))
            for (const PermissionEntry& entry : row->permissions) found.push_back({entry.modelGroup, entry.permission});
        return found;
    });
}

}  // namespace qor::embedded
