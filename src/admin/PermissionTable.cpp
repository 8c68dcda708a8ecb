// SPDX-License-Identifier: Apache-2.0
#include "admin/PermissionTable.h"

#include <algorithm>
#include <string>

#include "admin/grants.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorUserManager.h"

namespace qor::admin {

namespace {

template <class Element>
std::optional<std::size_t> indexIn(const std::vector<Element>& sorted, const Element& wanted) {
    const auto place = std::lower_bound(sorted.begin(), sorted.end(), wanted);
    if (place == sorted.end() || !(*place == wanted)) return std::nullopt;
    return static_cast<std::size_t>(place - sorted.begin());
}

SV::String nameOrNumber(const SV::String& name, long identifier) {
    return name.IsEmpty() ? SV::String("#" + std::to_string(identifier)) : name;
}

}  // namespace

QorErrorCode PermissionTable::read(const ISortedSet<long>& chosen, const ISortedSet<QorUserGroupID>& userGroups) {
    clear();
    _userGroups.assign(userGroups.begin(), userGroups.end());
    auto code = readTree(chosen);
    if (code == QorErrorCode::Ok) code = readPermissions();
    if (code != QorErrorCode::Ok) clear();
    return code;
}

void PermissionTable::clear() { *this = PermissionTable(); }

QorErrorCode PermissionTable::readTree(const ISortedSet<long>& chosen) {
    std::vector<std::pair<long, ISortedSet<long>>> trees;
    for (const long modelGroup : chosen) {
        auto& [root, below] = trees.emplace_back(modelGroup, ISortedSet<long>());
        const auto code = QorCoreModelGroupManager::GetAllSubGroupsOfModelGroup(root, below, true);
        if (code != QorErrorCode::Ok) return code;
        below.remove(root);  // in a circle of model groups each lies below itself
        _modelGroups.push_back(root);
        _modelGroups.insert(_modelGroups.end(), below.begin(), below.end());
    }
    std::sort(_modelGroups.begin(), _modelGroups.end());
    _modelGroups.erase(std::unique(_modelGroups.begin(), _modelGroups.end()), _modelGroups.end());

    _isChosen.resize(_modelGroups.size());
    for (const auto& [root, below] : trees) {
        Chosen its{*indexOf(root), {}};
        its.subGroups.reserve(below.numberOfElements());
        for (const long group : below) its.subGroups.push_back(*indexOf(group));
        _isChosen[its.modelGroup] = true;
        _chosen.push_back(std::move(its));
    }
    // What lies below another has less below it.
    std::stable_sort(_chosen.begin(), _chosen.end(),
                     [](const Chosen& a, const Chosen& b) { return a.subGroups.size() > b.subGroups.size(); });
    return QorErrorCode::Ok;
}

QorErrorCode PermissionTable::readPermissions() {
    _permissions.resize(_modelGroups.size() * _userGroups.size(), QorModelGroupPermission::None);
    for (std::size_t index = 0; index < _userGroups.size(); ++index) {
        SV::String& name = _userGroupNames.emplace_back();
        // A group without a name can be given permissions like any other; the next call tells whether there is one.
        (void)QorUserManager::allUmansGetUserGroupName(_userGroups[index], name);
        QorAccModelgroupContainer accessible;
        const auto code = QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(_userGroups[index], accessible);
        if (code != QorErrorCode::Ok) return code;
        for (const auto& entry : accessible) take(*entry, index);
    }
    return QorErrorCode::Ok;
}

void PermissionTable::take(const QorAccModelgroup& entry, std::size_t userGroup) {
    const auto modelGroup = indexOf(entry.getModelGroupID());
    if (!modelGroup) return;
    std::int32_t& permission = _permissions[slot({*modelGroup, userGroup})];
    permission = std::max(permission, permissionOf(entry));
}

std::optional<std::size_t> PermissionTable::indexOf(long modelGroup) const { return indexIn(_modelGroups, modelGroup); }

std::optional<std::size_t> PermissionTable::indexOf(const QorUserGroupID& userGroup) const {
    return indexIn(_userGroups, userGroup);
}

SV::String PermissionTable::nameOfModelGroup(std::size_t index) const {
    SV::String name;
    long library = -1;
    // Without a name it has its identifier.
    (void)QorCoreModelGroupManager::GetModelGroupInfo(_modelGroups[index], name, library);
    return nameOrNumber(name, _modelGroups[index]);
}

SV::String PermissionTable::nameOfUserGroup(std::size_t index) const {
    return nameOrNumber(_userGroupNames[index], _userGroups[index].value());
}

}  // namespace qor::admin
