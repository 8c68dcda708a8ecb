// SPDX-License-Identifier: Apache-2.0
#include "admin/QorAllModelStructure.h"

#include <memory>

#include "admin/UserLookup.h"
#include "admin/grants.h"
#include "admin/internalErrors.h"
#include "platform/QorGuard.h"
#include "platform/QorUserManager.h"

using namespace qor::admin;

QorAllModelStructure& QorAllModelStructure::Instance() noexcept {
    static QorAllModelStructure instance;
    return instance;
}

QorAllModelStructure::QorAllModelStructure() noexcept = default;
QorAllModelStructure::QorAllModelStructure(const QorAllModelStructure&) noexcept = default;
QorAllModelStructure& QorAllModelStructure::operator=(const QorAllModelStructure&) noexcept = default;
QorAllModelStructure::~QorAllModelStructure() = default;

QorErrorCode QorAllModelStructure::_GetAllUserGroupsOfUser(const QorUserID& user,
                                                           ISortedSet<QorUserGroupID>& groups) noexcept {
    return Qor_Guarded(kAccessSource, QorErrorCode::Broken, [&] {
        groups.removeAll();
        const auto found = findUser(user);
        return found.home == UserHome::Unknown ? found.code : userGroupsOf(user, found.home, groups);
    });
}

QorErrorCode QorAllModelStructure::GetModelGroupsOfUser(const QorUserID& user,
                                                        QorAccModelgroupContainer& container) noexcept {
    return Qor_Guarded(kAccessSource, QorErrorCode::Broken, [&] {
        ISortedSet<QorUserGroupID> groups;
        if (const auto code = _GetAllUserGroupsOfUser(user, groups); code != QorErrorCode::Ok) return code;

        // The run goes on when this fails: entries without a library count as those of a user without one.
        long allowed = -1;
        auto code = QorUserManager::allUmansGetAllowedApplicationLibrary(user, allowed);

        for (const auto& group : groups) {
            QorAccModelgroupContainer accessible;
            code = QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(group, accessible);
            if (code != QorErrorCode::Ok) return code;
            for (const auto& entry : accessible)
                if (entry->getApplicationLibraryID() == allowed && givesAccess(*entry))
                    container.add(std::make_unique<QorAccModelgroup>(*entry));
        }
        return code;
    });
}
