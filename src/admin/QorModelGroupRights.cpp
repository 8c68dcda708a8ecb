// SPDX-License-Identifier: Apache-2.0
#include "admin/QorModelGroupRights.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "admin/UserLookup.h"
#include "admin/grants.h"
#include "admin/internalErrors.h"
#include "platform/QorGuard.h"
#include "platform/QorUserManager.h"

using namespace qor::admin;

namespace {

/// Collects the entries of one user group after the other, in ascending order of the user groups.
class Merger {
public:
    void add(const QorAccModelgroup& entry, const QorUserGroupID& userGroup) {
        const auto [place, isNew] = _places.try_emplace(entry.getModelGroupID(), _rights.size());
        if (isNew) {
            _rights.push_back({entry.getModelGroupID(), entry.getName(), QorModelGroupPermission::None, 0, 0});
            _lastRows.push_back(kNoRow);
        }
        QorModelGroupRight& right = _rights[place->second];
        right.permission = std::max(right.permission, permissionOf(entry));

        std::size_t& last = _lastRows[place->second];
        if (last != kNoRow && _rows[last].source.userGroup == userGroup) {
            _rows[last].source.permission = std::max(_rows[last].source.permission, permissionOf(entry));
            return;
        }
        last = _rows.size();
        _rows.push_back({place->second, {userGroup, permissionOf(entry)}});
        ++right.sourceCount;
    }

    void handOver(std::vector<QorModelGroupRight>& rights, std::vector<QorPermissionSource>& sources) {
        std::size_t first = 0;
        std::vector<std::size_t> next;
        next.reserve(_rights.size());
        for (auto& right : _rights) {
            right.firstSource = first;
            next.push_back(first);
            first += right.sourceCount;
        }
        sources.resize(_rows.size());
        for (const auto& row : _rows) sources[next[row.right]++] = row.source;
        rights = std::move(_rights);
        std::sort(rights.begin(), rights.end(),
                  [](const auto& a, const auto& b) { return a.modelGroup < b.modelGroup; });
    }

private:
    static constexpr std::size_t kNoRow = ~std::size_t{0};
    struct Row {
        std::size_t right;
        QorPermissionSource source;
    };

    std::unordered_map<long, std::size_t> _places;  // of a model group in _rights
    std::vector<QorModelGroupRight> _rights;
    std::vector<std::size_t> _lastRows;  // of each right
    std::vector<Row> _rows;
};

QorErrorCode collect(const QorUserID& user, Merger& merger) {
    const auto found = findUser(user);
    if (found.code != QorErrorCode::Ok) return found.code;
    if (found.home == UserHome::Unknown) return QorErrorCode::NotFound;
    ISortedSet<QorUserGroupID> groups;
    if (const auto code = userGroupsOf(user, found.home, groups); code != QorErrorCode::Ok) return code;
    long allowed = -1;
    const auto code = QorUserManager::allUmansGetAllowedApplicationLibrary(user, allowed);
    if (code != QorErrorCode::Ok) return code;

    for (const auto& group : groups) {
        QorAccModelgroupContainer accessible;
        const auto listed = QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(group, accessible);
        if (listed != QorErrorCode::Ok) return listed;
        for (const auto& entry : accessible)
            if (entry->getApplicationLibraryID() == allowed && givesAccess(*entry)) merger.add(*entry, group);
    }
    return QorErrorCode::Ok;
}

}  // namespace

QorModelGroupRights::QorModelGroupRights() noexcept = default;
QorModelGroupRights::~QorModelGroupRights() = default;

QorErrorCode QorModelGroupRights::read(const QorUserID& user) noexcept {
    _rights.clear();
    _sources.clear();
    return Qor_Guarded(kAccessSource, QorErrorCode::Broken, [&] {
        Merger merger;
        const auto code = collect(user, merger);
        if (code == QorErrorCode::Ok) merger.handOver(_rights, _sources);
        return code;
    });
}

const QorModelGroupRight* QorModelGroupRights::find(long modelGroup) const noexcept {
    const auto place = std::lower_bound(_rights.begin(), _rights.end(), modelGroup,
                                        [](const auto& right, long wanted) { return right.modelGroup < wanted; });
    return place != _rights.end() && place->modelGroup == modelGroup ? &*place : nullptr;
}

std::span<const QorPermissionSource> QorModelGroupRights::sources(const QorModelGroupRight& right) const noexcept {
    return std::span(_sources).subspan(right.firstSource, right.sourceCount);
}
