// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>
#include <optional>

#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorUserGroupID.h"
#include "platform/QorUserID.h"

namespace qor::admin {

/// The users of one user manager, which is selected only while they are listed.
struct UserListing {
    bool isSelected = false;
    QorErrorCode code = QorErrorCode::UserManagerNotSelected;  ///< that of the listing, once the manager was selected
    ISortedSet<QorUserID> users;
};
[[nodiscard]] UserListing usersOfManager(long userManager);

/// The user manager that a single sign-on mode brings in beside the ordinary one.
[[nodiscard]] std::optional<long> managerOfSignOnMode(long mode);

/// Whose users a user is one of, which says where the user's groups are asked for.
enum class UserHome { Unknown, Ordinary, SingleSignOn };

struct FoundUser {
    UserHome home = UserHome::Unknown;
    QorErrorCode code = QorErrorCode::Ok;  ///< for an unknown user that of the last call made
};
[[nodiscard]] FoundUser findUser(const QorUserID& user);

/// Calls `visit` for each user of the ordinary user manager, then for each one that only the further manager of the
/// sign-on mode has, both in ascending order. Ends with the first failure, also of a visit.
QorErrorCode eachUser(const std::function<QorErrorCode(const QorUserID&, UserHome)>& visit);

/// UserManagerNotSelected when no user administration is found for the user.
QorErrorCode userGroupsOf(const QorUserID& user, UserHome home, ISortedSet<QorUserGroupID>& groups);

}  // namespace qor::admin
