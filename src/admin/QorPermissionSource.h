// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorUserGroupID.h"

/// Why somebody has a right: a user group and what it may do with the model group.
struct QorPermissionSource {
    QorUserGroupID userGroup;
    std::int32_t permission = 0;  ///< QorModelGroupPermission::Read or Write
};
