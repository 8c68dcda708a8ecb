// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Kinds of QorUserEvent. The administrator log writes them down; a host may raise others, which it leaves out. "Value"
/// is the event's value.
namespace QorUserEventKind {
inline constexpr long Created = 2;
inline constexpr long Deleted = 4;             ///< the user's name is still answered while this is raised
inline constexpr long PasswordSet = 5;         ///< value: not 0 when it must be changed at the next logon
inline constexpr long Locked = 6;              ///< value: 0 when the user was unlocked
inline constexpr long RightChanged = 8;        ///< value: QorUserRight; further value: QorUserRight::Withdrawn or other
inline constexpr long LibraryAssigned = 10;    ///< value: the application library
inline constexpr long ProfileChanging = 11;    ///< before a change of the profile's remark
inline constexpr long ProfileChanged = 12;     ///< and after it
inline constexpr long Renaming = 13;           ///< before a change of the display name
inline constexpr long Renamed = 14;            ///< and after it
inline constexpr long ValiditySet = 15;        ///< value: last day as year * 10000 + month * 100 + day; else no limit
inline constexpr long SystemGroupJoined = 16;  ///< value: the system user group
inline constexpr long SystemGroupLeft = 17;    ///< value: the system user group
inline constexpr long SignOnSet = 18;          ///< value: 0 when the user no longer takes part in single sign-on
inline constexpr long ManagerJoined = 21;      ///< value: number of the user manager
inline constexpr long ManagerLeft = 22;        ///< value: number of the user manager
}  // namespace QorUserEventKind

/// Rights of QorUserEventKind::RightChanged.
namespace QorUserRight {
inline constexpr long Administrator = 5010;
inline constexpr long SubAdministrator = 5011;
inline constexpr long Granted = 1;  ///< as further value
inline constexpr long Withdrawn = 3;
}  // namespace QorUserRight

/// Kinds of QorUserGroupEvent. The administrator log writes down who joined and left, and leaves out the others.
namespace QorUserGroupEventKind {
inline constexpr long Created = 1;
inline constexpr long Deleted = 2;
inline constexpr long Renamed = 3;
inline constexpr long Joined = 4;
inline constexpr long Left = 6;
inline constexpr long Nested = 7;             ///< the group came into or out of another one
inline constexpr long PermissionChanged = 8;  ///< on a model group
}  // namespace QorUserGroupEventKind

/// Entries of a user's profile.
namespace QorUserProfileEntry {
inline constexpr long Remark = 6;  ///< may have several lines
}  // namespace QorUserProfileEntry
