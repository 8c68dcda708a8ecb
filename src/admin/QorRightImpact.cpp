// SPDX-License-Identifier: Apache-2.0
#include "admin/QorRightImpact.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_map>
#include <utility>

#include "admin/GroupNumbers.h"
#include "admin/UserLookup.h"
#include "admin/grants.h"
#include "admin/internalErrors.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorGuard.h"
#include "platform/QorUserManager.h"

using namespace qor::admin;

namespace {

/// One run over all users: changes of permissions go in, changes of rights come out.
class Impact {
public:
    explicit Impact(const std::vector<QorPermissionChange>& changes) {
        for (const auto& change : changes) {
            const auto [place, isNew] = _places.try_emplace(change.modelGroup, _modelGroups.size());
            if (isNew) _modelGroups.push_back({change.modelGroup, -1, 0, 0});
            _changesOfGroup[change.userGroup.value()].push_back({place->second, std::nullopt, 0, change.after});
        }
    }

    QorErrorCode run(std::vector<QorUserRightChange>& found) {
        for (ModelGroup& it : _modelGroups) {
            SV::String name;
            const auto known = QorCoreModelGroupManager::GetModelGroupInfo(it.identifier, name, it.library);
            if (known != QorErrorCode::Ok) return known;
        }
        const auto code = eachUser([this](const QorUserID& user, UserHome home) { return lookAt(user, home); });
        if (code != QorErrorCode::Ok) return code;
        for (const auto& member : _members)
            if (const auto judged = judge(member, found); judged != QorErrorCode::Ok) return judged;
        std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
            return a.user < b.user || (a.user == b.user && a.modelGroup < b.modelGroup);
        });
        return code;
    }

private:
    struct ModelGroup {
        long identifier;
        long library;
        // Of the user who is judged.
        std::int32_t before;
        std::int32_t after;
    };
    /// What a user group may do with one of the model groups.
    struct Cell {
        std::size_t modelGroup;
        std::optional<long> library;  // as an entry tells it; else that of the model group
        std::int32_t before;
        std::int32_t after;
    };
    struct UserGroup {
        std::vector<Cell> cells;
        bool isChanged = false;
    };
    /// A user of at least one changed user group.
    struct Member {
        QorUserID user;
        std::vector<std::size_t> groups;
    };

    QorErrorCode lookAt(const QorUserID& user, UserHome home) {
        if (const auto code = userGroupsOf(user, home, _groupsOfUser); code != QorErrorCode::Ok) return code;
        _numbersOfUser.clear();
        bool isMember = false;
        for (const auto& group : _groupsOfUser) {
            const std::size_t number = _numbers.of(group);
            if (number == _groups.size())
                if (const auto code = readGroup(group); code != QorErrorCode::Ok) return code;
            _numbersOfUser.push_back(number);
            isMember = isMember || _groups[number].isChanged;
        }
        if (isMember) _members.push_back({user, _numbersOfUser});
        return QorErrorCode::Ok;
    }

    QorErrorCode readGroup(const QorUserGroupID& userGroup) {
        QorAccModelgroupContainer accessible;
        const auto code = QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(userGroup, accessible);
        if (code != QorErrorCode::Ok) return code;
        UserGroup& group = _groups.emplace_back();
        for (const auto& entry : accessible) {
            const auto place = _places.find(entry->getModelGroupID());
            if (place == _places.end()) continue;
            const std::int32_t permission = permissionOf(*entry);
            group.cells.push_back({place->second, entry->getApplicationLibraryID(), permission, permission});
        }
        mergeEqual(group.cells);
        if (const auto changes = _changesOfGroup.find(userGroup.value()); changes != _changesOfGroup.end())
            change(group, changes->second);
        return code;
    }

    /// Equal entries may come by the thousand, and each would be looked at for each member of the group.
    static void mergeEqual(std::vector<Cell>& cells) {
        const auto key = [](const Cell& cell) { return std::pair(cell.modelGroup, cell.library); };
        std::sort(cells.begin(), cells.end(), [&](const Cell& a, const Cell& b) {
            return key(a) < key(b) || (key(a) == key(b) && a.before > b.before);
        });
        const auto end =
            std::unique(cells.begin(), cells.end(), [&](const Cell& a, const Cell& b) { return key(a) == key(b); });
        cells.erase(end, cells.end());
    }

    /// A change takes the place of all entries for its model group.
    void change(UserGroup& group, const std::vector<Cell>& changes) {
        group.isChanged = true;
        std::vector<bool> isReplaced(_modelGroups.size());
        for (const auto& change : changes) isReplaced[change.modelGroup] = true;
        for (auto& cell : group.cells)
            if (isReplaced[cell.modelGroup]) cell.after = QorModelGroupPermission::None;
        group.cells.insert(group.cells.end(), changes.begin(), changes.end());
    }

    QorErrorCode judge(const Member& member, std::vector<QorUserRightChange>& found) {
        long allowed = -1;
        const auto code = QorUserManager::allUmansGetAllowedApplicationLibrary(member.user, allowed);
        if (code != QorErrorCode::Ok) return code;
        _touched.clear();
        for (const std::size_t number : member.groups)
            for (const auto& cell : _groups[number].cells) {
                ModelGroup& modelGroup = _modelGroups[cell.modelGroup];
                if (cell.library.value_or(modelGroup.library) != allowed) continue;
                modelGroup.before = std::max(modelGroup.before, cell.before);
                modelGroup.after = std::max(modelGroup.after, cell.after);
                _touched.push_back(cell.modelGroup);
            }
        for (const std::size_t place : _touched) {
            ModelGroup& it = _modelGroups[place];
            if (it.before != it.after) found.push_back({member.user, it.identifier, it.before, it.after});
            it.before = it.after = QorModelGroupPermission::None;  // so that a second touch tells nothing
        }
        return code;
    }

    std::unordered_map<long, std::size_t> _places;  // of a model group in _modelGroups
    std::vector<ModelGroup> _modelGroups;
    std::unordered_map<long, std::vector<Cell>> _changesOfGroup;
    GroupNumbers _numbers;
    std::vector<UserGroup> _groups;  // by their numbers
    std::vector<Member> _members;
    // Room that is used again and again.
    ISortedSet<QorUserGroupID> _groupsOfUser;
    std::vector<std::size_t> _numbersOfUser;
    std::vector<std::size_t> _touched;
};

}  // namespace

QorRightImpact::QorRightImpact() noexcept = default;
QorRightImpact::~QorRightImpact() = default;

QorErrorCode QorRightImpact::read(const std::vector<QorPermissionChange>& changes) noexcept {
    _changes.clear();
    const auto code = Qor_Guarded(kAccessSource, QorErrorCode::Broken,
                                  [&] { return changes.empty() ? QorErrorCode::Ok : Impact(changes).run(_changes); });
    if (code != QorErrorCode::Ok) _changes.clear();
    return code;
}
