// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/ISortedSet.h"
#include "platform/QorAccess.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorObject.h"
#include "platform/QorUserGroupID.h"
#include "platform/QorUserID.h"

/// Which model groups a user may reach, and with which permission. QorModelGroupRights has the same merged, with the
/// reasons.
class QOR_API QorAllModelStructure : public QorObject {
public:
    static QorAllModelStructure& Instance() noexcept;

    /// There is nothing to copy.
    QorAllModelStructure(const QorAllModelStructure& other) noexcept;
    QorAllModelStructure& operator=(const QorAllModelStructure& other) noexcept;
    ~QorAllModelStructure() override;

    /// Adds to `container` a copy of every entry that gives a group of the user read or write permission on a model
    /// group of the application library allowed for the user. The container is not cleared, and a model group that is
    /// reached through several user groups is in it once for each. O(users + entries of the user's groups).
    ///
    /// UserManagerNotSelected when a user manager cannot be selected; else the code of the first user group that fails,
    /// with the entries added so far, or that of the last call made. An unknown user has no groups and is no failure.
    QorErrorCode GetModelGroupsOfUser(const QorUserID& user, QorAccModelgroupContainer& container) noexcept;

protected:
    QorAllModelStructure() noexcept;

    /// The user's groups: for a user of the ordinary user manager the user groups, for one of the user manager that
    /// single sign-on brings in the system user groups. For a user of neither no groups, with the code of the last
    /// listing of users, or of the question for the sign-on mode when that fails.
    QorErrorCode _GetAllUserGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) noexcept;
};
