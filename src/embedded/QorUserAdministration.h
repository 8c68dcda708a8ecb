// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "embedded/QorRepositoryBuilder.h"
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"
#include "platform/QorUserManager.h"

/// A user of the repository. Texts hold until the repository next changes.
struct QorUserInfo {
    QorIdentifier id = QorNoIdentifier;
    std::string_view logonName;
    std::string_view displayName;  ///< the logon name unless another one was given
    std::string_view secondName;   ///< of a two-part name: the organisation, the domain ...; else empty
    QorUserLogonNameType nameKind = QorUserLogonNameType::Plain;
    std::vector<long> managers;  ///< QorUserManagerNumber, ascending
    bool isAdministrator = false;
    bool isSubAdministrator = false;
    QorIdentifier allowedLibrary = QorNoIdentifier;
};

struct QorUserGroupInfo {
    QorIdentifier id = QorNoIdentifier;
    std::string_view name;
    bool isSystem = false;  ///< its users are those of single sign-on
};

struct QorProfileEntryInfo {
    long number = 0;
    std::string_view text;
};

struct QorGroupPermissionInfo {
    QorIdentifier modelGroup = QorNoIdentifier;
    std::int32_t permission = 0;  ///< QorModelGroupPermission::Read or Write
};

/// Administers the users of a repository: who there is, in which groups, with which permissions on model groups. The
/// contracts (QorUserManager) answer from what stands here.
///
/// Everything is done by the platform's current user and refused (NotAllowed) to whoever may not do it:
/// - While the repository has no users, everybody may do everything. The first user who is added is an administrator.
/// - An administrator may do everything. One is always left while there are users (LastAdministrator).
/// - A sub-administrator may do everything but change or remove administrators and sub-administrators and what these
///   belong to, grant and withdraw rights, and set the sign-on mode.
///
/// This keeps order among people who work together; it is no protection from somebody who can write to the file.
/// Every change raises events (docs/events.md). Nothing is changed when an operation fails.
class QOR_API QorUserAdministration {
public:
    virtual ~QorUserAdministration();

    // ---- Users ----

    /// Names are unique among users. `userManager`: a QorUserManagerNumber, else ValueRefused.
    virtual QorBuildResult addUser(std::string_view logonName, long userManager = QorUserManagerNumber::Ordinary) = 0;
    virtual QorBuildResult renameUser(QorIdentifier user, std::string_view logonName) = 0;
    /// The empty display name stands for the logon name. With a second name the user has a two-part name.
    virtual QorBuildResult setDisplayName(QorIdentifier user, std::string_view displayName,
                                          std::string_view secondName = {}) = 0;
    /// With memberships and profile. O(users).
    virtual QorBuildResult removeUser(QorIdentifier user) = 0;
    /// `right`: a QorUserRight, else ValueRefused. O(users) for the withdrawal of an administrator's.
    virtual QorBuildResult setRight(QorIdentifier user, long right, bool granted) = 0;
    /// Puts the user into a user manager or takes them out; they may be in several, or in none.
    virtual QorBuildResult setManager(QorIdentifier user, long userManager, bool isMember) = 0;
    /// The application library whose model groups the user may reach; none takes it away.
    virtual QorBuildResult setAllowedLibrary(QorIdentifier user, QorIdentifier applicationLibrary) = 0;
    /// An entry from 1 upwards (QorUserProfileEntry); any text without a zero byte, the empty one takes it away.
    virtual QorBuildResult setProfileEntry(QorIdentifier user, long entry, std::string_view text) = 0;
    /// Of the data source: a QorSingleSignOnMode, or 0 for none.
    virtual QorBuildResult setSingleSignOnMode(long mode) = 0;

    // ---- User groups ----

    /// Names are unique among all groups, system user groups included.
    virtual QorBuildResult addUserGroup(std::string_view name, bool isSystem = false) = 0;
    virtual QorBuildResult renameUserGroup(QorIdentifier group, std::string_view name) = 0;
    /// With memberships and permissions. Refused to who may not change one of its own members. O(users).
    virtual QorBuildResult removeUserGroup(QorIdentifier group) = 0;
    /// `member` is a user, or a group whose members then count as members, too. GroupInItself for a circle. Joining
    /// twice, or leaving what one is not in, is no failure and no change.
    virtual QorBuildResult join(QorIdentifier member, QorIdentifier group) = 0;
    virtual QorBuildResult leave(QorIdentifier member, QorIdentifier group) = 0;
    /// A QorModelGroupPermission, else ValueRefused; None takes the permission away.
    virtual QorBuildResult setPermission(QorIdentifier group, QorIdentifier modelGroup, std::int32_t permission) = 0;

    // ---- Questions; unknown identifiers give empty results ----

    [[nodiscard]] virtual bool hasUsers() const = 0;
    /// Whether the current user may change ordinary users, groups and permissions; all of it when `everything`.
    [[nodiscard]] virtual bool mayAdminister(bool everything) const = 0;
    [[nodiscard]] virtual QorIdentifier findUser(std::string_view logonName) const = 0;
    [[nodiscard]] virtual QorIdentifier findUserGroup(std::string_view name) const = 0;
    [[nodiscard]] virtual std::vector<QorIdentifier> users() const = 0;
    [[nodiscard]] virtual std::vector<QorIdentifier> userGroups() const = 0;
    [[nodiscard]] virtual QorUserInfo userInfo(QorIdentifier user) const = 0;
    [[nodiscard]] virtual QorUserGroupInfo userGroupInfo(QorIdentifier group) const = 0;
    [[nodiscard]] virtual std::vector<QorProfileEntryInfo> profileOf(QorIdentifier user) const = 0;
    /// The groups that a user or group is a member of itself.
    [[nodiscard]] virtual std::vector<QorIdentifier> groupsOf(QorIdentifier member) const = 0;
    /// Users and groups that are members themselves. O(users + groups).
    [[nodiscard]] virtual std::vector<QorIdentifier> membersOf(QorIdentifier group) const = 0;
    [[nodiscard]] virtual std::vector<QorGroupPermissionInfo> permissionsOf(QorIdentifier group) const = 0;
    [[nodiscard]] virtual long singleSignOnMode() const = 0;
};
