// SPDX-License-Identifier: Apache-2.0
#include "admin/QorModelGroupReach.h"

#include <algorithm>

#include "admin/GroupNumbers.h"
#include "admin/UserLookup.h"
#include "admin/grants.h"
#include "admin/internalErrors.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorGuard.h"
#include "platform/QorUserManager.h"

using namespace qor::admin;

namespace {

/// What user groups may do with one model group, read once for each.
class Grants {
public:
    struct Grant {
        long library;
        std::int32_t permission;
    };
    using List = std::vector<Grant>;  // empty for nearly all groups, one entry for the others

    explicit Grants(long modelGroup) : _modelGroup(modelGroup) {}

    /// Null after a failure, and then `code` says which.
    const List* of(const QorUserGroupID& userGroup, QorErrorCode& code) {
        const std::size_t number = _numbers.of(userGroup);
        if (number == _lists.size()) code = read(userGroup, _lists.emplace_back());
        return code == QorErrorCode::Ok ? &_lists[number] : nullptr;
    }

private:
    QorErrorCode read(const QorUserGroupID& userGroup, List& list) {
        QorAccModelgroupContainer accessible;
        const auto code = QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(userGroup, accessible);
        if (code != QorErrorCode::Ok) return code;
        for (const auto& entry : accessible) {
            if (entry->getModelGroupID() != _modelGroup || !givesAccess(*entry)) continue;
            merge(list, {entry->getApplicationLibraryID(), permissionOf(*entry)});
        }
        return code;
    }

    static void merge(List& list, const Grant& grant) {
        const auto place =
            std::find_if(list.begin(), list.end(), [&](const Grant& known) { return known.library == grant.library; });
        if (place == list.end())
            list.push_back(grant);
        else
            place->permission = std::max(place->permission, grant.permission);
    }

    long _modelGroup;
    GroupNumbers _numbers;
    std::vector<List> _lists;  // by the group's number
};

/// One look at all users: a model group goes in, who can reach it comes out.
class Search {
public:
    Search(long modelGroup, std::vector<QorReachingUser>& users, std::vector<QorPermissionSource>& sources)
        : _grants(modelGroup), _users(users), _sources(sources) {}

    QorErrorCode run() {
        const auto code = eachUser([this](const QorUserID& user, UserHome home) { return lookAt(user, home); });
        std::sort(_users.begin(), _users.end(), [](const auto& a, const auto& b) { return a.user < b.user; });
        return code;
    }

private:
    QorErrorCode lookAt(const QorUserID& user, UserHome home) {
        auto code = userGroupsOf(user, home, _groups);
        if (code != QorErrorCode::Ok) return code;
        QorReachingUser reaching{user, QorModelGroupPermission::None, _sources.size(), 0};
        long allowed = -1;
        bool isAllowedKnown = false;
        for (const auto& group : _groups) {
            const auto* grants = _grants.of(group, code);
            if (grants == nullptr) return code;
            if (grants->empty()) continue;
            if (!isAllowedKnown) {
                code = QorUserManager::allUmansGetAllowedApplicationLibrary(user, allowed);
                if (code != QorErrorCode::Ok) return code;
                isAllowedKnown = true;
            }
            for (const auto& grant : *grants) {
                if (grant.library != allowed) continue;
                _sources.push_back({group, grant.permission});
                reaching.permission = std::max(reaching.permission, grant.permission);
            }
        }
        reaching.sourceCount = _sources.size() - reaching.firstSource;
        if (reaching.sourceCount != 0) _users.push_back(reaching);
        return QorErrorCode::Ok;
    }

    Grants _grants;
    std::vector<QorReachingUser>& _users;
    std::vector<QorPermissionSource>& _sources;
    ISortedSet<QorUserGroupID> _groups;  // of the user looked at; here so that its room is used again
};

}  // namespace

QorModelGroupReach::QorModelGroupReach() noexcept = default;
QorModelGroupReach::~QorModelGroupReach() = default;

QorErrorCode QorModelGroupReach::read(long modelGroup) noexcept {
    _users.clear();
    _sources.clear();
    _name.Clear();
    const auto code = Qor_Guarded(kAccessSource, QorErrorCode::Broken, [&] {
        long library = -1;
        const auto known = QorCoreModelGroupManager::GetModelGroupInfo(modelGroup, _name, library);
        if (known != QorErrorCode::Ok) return known;
        return Search(modelGroup, _users, _sources).run();
    });
    if (code != QorErrorCode::Ok) {
        _users.clear();
        _sources.clear();
        _name.Clear();
    }
    return code;
}

std::span<const QorPermissionSource> QorModelGroupReach::sources(const QorReachingUser& user) const noexcept {
    return std::span(_sources).subspan(user.firstSource, user.sourceCount);
}
