// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "admin/QorPermissionSource.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorUserID.h"
#include "platform/SvString.h"

/// Somebody who can reach a model group.
struct QorReachingUser {
    QorUserID user;
    std::int32_t permission = 0;  ///< the highest of all the user's groups
    std::size_t firstSource = 0;  ///< see QorModelGroupReach::sources
    std::size_t sourceCount = 0;
};

/// Who can reach a model group, and through which user groups: the reverse of QorModelGroupRights.
class QOR_API QorModelGroupReach {
public:
    QorModelGroupReach() noexcept;
    QorModelGroupReach(const QorModelGroupReach&) = delete;
    QorModelGroupReach& operator=(const QorModelGroupReach&) = delete;
    ~QorModelGroupReach();

    /// Looks at the users of the ordinary user manager and of the one that single sign-on brings in. NotFound for an
    /// unknown model group; UserManagerNotSelected when a user manager cannot be selected; else the code of the first
    /// call that fails. There are no users after a failure, since a part of them would read like all. O(users,
    /// memberships, entries of each user group once).
    QorErrorCode read(long modelGroup) noexcept;

    /// In ascending order of the users.
    [[nodiscard]] const std::vector<QorReachingUser>& users() const { return _users; }
    /// The user groups that a user reaches the model group through, in ascending order. Valid until the next `read`.
    [[nodiscard]] std::span<const QorPermissionSource> sources(const QorReachingUser& user) const noexcept;
    /// Of the model group.
    [[nodiscard]] const SV::String& name() const { return _name; }

private:
    std::vector<QorReachingUser> _users;
    std::vector<QorPermissionSource> _sources;
    SV::String _name;
};
