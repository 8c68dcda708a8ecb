// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "platform/ISortedSet.h"
#include "platform/QorAccess.h"
#include "platform/QorErrorCode.h"
#include "platform/QorUserGroupID.h"
#include "platform/SvString.h"

namespace qor::admin {

/// A place in the table: a model group and a user group, by their indices.
struct PermissionPlace {
    std::size_t modelGroup = 0;
    std::size_t userGroup = 0;
};

/// The permissions that user groups have on chosen model groups and on everything below these, as the platform has
/// them. Model groups and user groups have indices in ascending order of their identifiers.
class PermissionTable {
public:
    /// Empty after a failure.
    QorErrorCode read(const ISortedSet<long>& chosen, const ISortedSet<QorUserGroupID>& userGroups);
    void clear();

    [[nodiscard]] const std::vector<long>& modelGroups() const { return _modelGroups; }
    [[nodiscard]] const std::vector<QorUserGroupID>& userGroups() const { return _userGroups; }
    [[nodiscard]] std::optional<std::size_t> indexOf(long modelGroup) const;
    [[nodiscard]] std::optional<std::size_t> indexOf(const QorUserGroupID& userGroup) const;

    [[nodiscard]] std::int32_t permission(const PermissionPlace& place) const { return _permissions[slot(place)]; }
    [[nodiscard]] std::size_t slot(const PermissionPlace& place) const {
        return place.modelGroup * _userGroups.size() + place.userGroup;
    }
    [[nodiscard]] std::size_t slots() const { return _permissions.size(); }
    [[nodiscard]] PermissionPlace placeOf(std::size_t slot) const {
        return {slot / _userGroups.size(), slot % _userGroups.size()};
    }
    /// Takes the place of what the platform had, once the platform has this.
    void store(std::size_t slot, std::int32_t permission) { _permissions[slot] = permission; }

    /// A chosen model group and all below it at any depth, without itself, by their indices.
    struct Chosen {
        std::size_t modelGroup = 0;
        std::vector<std::size_t> subGroups;
    };
    /// A model group stands before all chosen ones below it.
    [[nodiscard]] const std::vector<Chosen>& chosen() const { return _chosen; }
    [[nodiscard]] bool isChosen(std::size_t modelGroup) const { return _isChosen[modelGroup]; }

    /// The name, or the identifier as "#n" when the host has none.
    [[nodiscard]] SV::String nameOfModelGroup(std::size_t index) const;
    [[nodiscard]] SV::String nameOfUserGroup(std::size_t index) const;

private:
    QorErrorCode readTree(const ISortedSet<long>& chosen);
    QorErrorCode readPermissions();
    void take(const QorAccModelgroup& entry, std::size_t userGroup);

    std::vector<long> _modelGroups;
    std::vector<QorUserGroupID> _userGroups;
    std::vector<SV::String> _userGroupNames;
    std::vector<Chosen> _chosen;
    std::vector<bool> _isChosen;  // of each model group
    std::vector<std::int32_t> _permissions;
};

}  // namespace qor::admin
