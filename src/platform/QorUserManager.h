// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/ISortedSet.h"
#include "platform/QorAccess.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorUserGroupID.h"
#include "platform/QorUserID.h"
#include "platform/SvString.h"

/// How a user logs on. For a TwoPart name the full display name comes in two parts, to be joined by ";".
enum class QorUserLogonNameType : std::int32_t { Plain = 0, TwoPart = 445 };

/// Numbers of the user managers.
namespace QorUserManagerNumber {
inline constexpr long Ordinary = 1000;
inline constexpr long FirstSingleSignOn = 1001;
inline constexpr long SecondSingleSignOn = 1002;
}  // namespace QorUserManagerNumber

/// Single sign-on modes that bring a second user manager into play; any other value brings none.
namespace QorSingleSignOnMode {
inline constexpr long First = 667;
inline constexpr long Second = 668;
}  // namespace QorSingleSignOnMode

/// What a host offers behind QorUserManager, QorDBAdministration and QorDataSourceDB. Outputs are set to their "none"
/// value first and stay so after a failure. Every default refuses, a question with false.
class QOR_API QorUserService {
public:
    virtual ~QorUserService();
    virtual QorErrorCode currentUser(QorUserID& user);
    /// Both parts empty after a failure. `shortForm`: without additions such as the organisation.
    virtual QorErrorCode fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                         QorUserLogonNameType& kind, bool shortForm);
    virtual QorErrorCode userGroupName(const QorUserGroupID& group, SV::String& name);
    virtual bool isAdministrator(const QorUserID& user);
    virtual bool isSubAdministrator(const QorUserID& user);
    /// The text of one entry of the user's profile. The host numbers the entries; NotFound for a user or an entry that
    /// it does not have.
    virtual QorErrorCode userProfile(const QorUserID& user, long entry, SV::String& value);

    /// Selects a user manager until `pop`; selections nest.
    virtual QorErrorCode push(long userManager);
    virtual QorErrorCode pop();
    /// Users of the selected manager.
    virtual QorErrorCode allUserIDs(ISortedSet<QorUserID>& users);
    /// All user groups there are, system user groups included.
    virtual QorErrorCode allUserGroups(ISortedSet<QorUserGroupID>& groups);

    /// Ok with -1 for a user who is allowed none.
    virtual QorErrorCode allowedApplicationLibrary(const QorUserID& user, long& library);
    /// The model groups that the user group may reach, each with its permission.
    virtual QorErrorCode modelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                          QorAccModelgroupContainer& entries);
    virtual QorErrorCode userGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups);
    virtual QorErrorCode systemUserGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups);
    virtual QorErrorCode singleSignOnMode(long& mode);
};

/// The platform's user management, across all its user managers ("allUmans") or in the selected one. Each operation
/// hands on to the service's operation of that meaning, with its outputs and codes.
class QOR_API QorUserManager {
public:
    static QorErrorCode allUmansGetCurrentUserID(QorUserID& user) noexcept;
    static QorErrorCode allUmansGetUserFullDisplayNameOfUserID(const QorUserID& user, SV::String& first,
                                                               SV::String& second, QorUserLogonNameType& kind,
                                                               bool shortForm) noexcept;
    static QorErrorCode allUmansGetUserGroupName(const QorUserGroupID& group, SV::String& name) noexcept;
    static QorErrorCode allUmansGetAllowedApplicationLibrary(const QorUserID& user, long& library) noexcept;
    static QorErrorCode allUmansGetModelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                                    QorAccModelgroupContainer& entries) noexcept;
    static QorErrorCode allUmansGetAllUserGroups(ISortedSet<QorUserGroupID>& groups) noexcept;
    static bool isUserAdmin(const QorUserID& user) noexcept;
    static bool isUserSubAdmin(const QorUserID& user) noexcept;
    static QorErrorCode getUserProfile(const QorUserID& user, long entry, SV::String& value) noexcept;
    static QorErrorCode push(long userManager) noexcept;
    static QorErrorCode pop() noexcept;
    static QorErrorCode getAllUserIDs(ISortedSet<QorUserID>& users) noexcept;
};

/// The user administration that is found for a user.
class QOR_API QorDBAdministration {
public:
    static QorErrorCode getUsergroups(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) noexcept;
    static QorErrorCode getSysUsergroups(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) noexcept;
};

/// The data source behind the repository.
class QOR_API QorDataSourceDB {
public:
    static QorDataSourceDB& Instance() noexcept;
    QorErrorCode getSingleSignOnMode(long& mode) const noexcept;
};

/// The display name as the system shows it: both parts joined by ";" for a two-part logon name, else the first part.
QOR_API SV::String Qor_JoinDisplayName(const SV::String& first, const SV::String& second, QorUserLogonNameType kind);
