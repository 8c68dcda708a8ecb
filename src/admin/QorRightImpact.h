// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <vector>

#include "admin/QorPermissionAssignment.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorUserID.h"

/// A user whose right on a model group a change of permissions raises or lowers.
struct QorUserRightChange {
    QorUserID user;
    long modelGroup = 0;
    std::int32_t before = 0;  ///< the highest of all the user's groups; values of QorModelGroupPermission
    std::int32_t after = 0;

    [[nodiscard]] bool isRise() const { return after > before; }
};

/// What planned changes of permissions come to for users. A permission that rises or falls need not change anybody's
/// right: another user group may give as much.
class QOR_API QorRightImpact {
public:
    QorRightImpact() noexcept;
    QorRightImpact(const QorRightImpact&) = delete;
    QorRightImpact& operator=(const QorRightImpact&) = delete;
    ~QorRightImpact();

    /// For changes that are not carried out yet (QorPermissionAssignment::changes). Codes as those of
    /// QorModelGroupReach::read; nothing is listed after a failure. O(users, memberships, entries of each user group
    /// once).
    QorErrorCode read(const std::vector<QorPermissionChange>& changes) noexcept;

    /// In ascending order of users, then model groups.
    [[nodiscard]] const std::vector<QorUserRightChange>& changes() const { return _changes; }

private:
    std::vector<QorUserRightChange> _changes;
};
