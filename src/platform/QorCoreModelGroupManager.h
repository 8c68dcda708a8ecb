// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorUserGroupID.h"

/// What a host offers behind QorCoreModelGroupManager. Every default refuses, with empty outputs.
class QOR_API QorModelGroupService {
public:
    virtual ~QorModelGroupService();
    virtual QorErrorCode subGroups(long modelGroup, ISortedSet<long>& groups, bool recursive);
    virtual QorErrorCode setUserGroupPermission(long modelGroup, const QorUserGroupID& userGroup,
                                                std::int32_t permission);
};

/// Model groups: a tree of groups that hold models.
class QOR_API QorCoreModelGroupManager {
public:
    static QorErrorCode GetAllSubGroupsOfModelGroup(long modelGroup, ISortedSet<long>& groups, bool recursive) noexcept;
    /// A value of QorModelGroupPermission; None removes the assignment.
    static QorErrorCode SetUserGroupPermission(long modelGroup, const QorUserGroupID& userGroup,
                                               std::int32_t permission) noexcept;
};
