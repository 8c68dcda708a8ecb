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

/// What a user may do with one model group.
struct QorModelGroupRight {
    long modelGroup = 0;
    SV::String name;
    std::int32_t permission = 0;  ///< the highest of all the user's groups
    std::size_t firstSource = 0;  ///< see QorModelGroupRights::sources
    std::size_t sourceCount = 0;
};

/// What a user may do with which model groups, merged over all of the user's groups, and why. As in
/// QorAllModelStructure only the application library allowed for the user counts.
class QOR_API QorModelGroupRights {
public:
    QorModelGroupRights() noexcept;
    QorModelGroupRights(const QorModelGroupRights&) = delete;
    QorModelGroupRights& operator=(const QorModelGroupRights&) = delete;
    ~QorModelGroupRights();

    /// NotFound for an unknown user; UserManagerNotSelected when a user manager cannot be selected; else the code of
    /// the first call that fails. There are no rights after a failure, since a part of them would read like all.
    /// O(users + entries of the user's groups).
    QorErrorCode read(const QorUserID& user) noexcept;

    /// In ascending order of the model groups' identifiers.
    [[nodiscard]] const std::vector<QorModelGroupRight>& rights() const { return _rights; }
    /// Null for a model group that the user cannot reach. O(log rights).
    [[nodiscard]] const QorModelGroupRight* find(long modelGroup) const noexcept;
    /// The user groups that a right comes through, in ascending order, each once with its highest permission. Valid
    /// until the next `read`.
    [[nodiscard]] std::span<const QorPermissionSource> sources(const QorModelGroupRight& right) const noexcept;

private:
    std::vector<QorModelGroupRight> _rights;
    std::vector<QorPermissionSource> _sources;
};
