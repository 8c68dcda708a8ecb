// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "admin/PermissionTable.h"
#include "admin/QorPermissionAssignment.h"

namespace qor::admin {

/// What was set on the places of a table; Undetermined where nothing was.
using PermissionWishes = std::vector<QorPermissionState>;

/// Works out what wishes come to, sub-groups included.
class PermissionPlan {
public:
    PermissionPlan(const PermissionTable& table, const PermissionWishes& wishes,
                   const QorPermissionAssignment::Ask& ask, std::vector<QorPermissionQuestion>& questions);

    void work(QorSubGroupMode mode);
    [[nodiscard]] std::vector<QorPermissionChange> changes() const;

private:
    void applyToSubGroups(const PermissionTable::Chosen& chosen, std::size_t userGroup);
    [[nodiscard]] bool mayLower(const PermissionPlace& place, std::int32_t after);
    [[nodiscard]] QorPermissionChange change(const PermissionPlace& place, std::int32_t after) const;
    [[nodiscard]] bool isWished(const PermissionPlace& place) const {
        return _wishes[_table.slot(place)] != QorPermissionState::Undetermined;
    }

    const PermissionTable& _table;
    const PermissionWishes& _wishes;
    const QorPermissionAssignment::Ask& _ask;
    std::vector<QorPermissionQuestion>& _questions;
    std::vector<std::int32_t> _planned;
};

}  // namespace qor::admin
