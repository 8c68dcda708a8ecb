// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/ISortedSet.h"
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/QorUserGroupID.h"
#include "platform/SvString.h"

/// What a host offers behind QorCoreModelGroupManager. Outputs are emptied first and stay so after a failure; an
/// identifier that is no model group, or lies beyond 32 bits, is NotFound. Every default refuses.
class QOR_API QorModelGroupService {
public:
    virtual ~QorModelGroupService();
    /// The groups directly below a group, with `recursive` at any depth; never the group itself. O(result).
    virtual QorErrorCode subGroups(long modelGroup, ISortedSet<long>& groups, bool recursive);
    /// The group's name and the application library that it belongs to (-1 after a failure).
    virtual QorErrorCode modelGroupInfo(long modelGroup, SV::String& name, long& library);
    /// `permission`: a value of QorModelGroupPermission; OutOfRange, and no change, for any other.
    virtual QorErrorCode setUserGroupPermission(long modelGroup, const QorUserGroupID& userGroup,
                                                std::int32_t permission);
};

/// Model groups: a tree of groups that hold models. Each operation hands on to the service's operation of that meaning,
/// with its outputs and codes.
class QOR_API QorCoreModelGroupManager {
public:
    static QorErrorCode GetAllSubGroupsOfModelGroup(long modelGroup, ISortedSet<long>& groups, bool recursive) noexcept;
    static QorErrorCode GetModelGroupInfo(long modelGroup, SV::String& name, long& library) noexcept;
    /// QorModelGroupPermission::None removes the assignment.
    static QorErrorCode SetUserGroupPermission(long modelGroup, const QorUserGroupID& userGroup,
                                               std::int32_t permission) noexcept;
};
