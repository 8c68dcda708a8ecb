// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorAccess.h"

namespace qor::admin {

/// The permission that an entry gives; no access for any value that is none of QorModelGroupPermission.
[[nodiscard]] inline std::int32_t permissionOf(const QorAccModelgroup& entry) {
    const std::int32_t permission = entry.getPermission();
    return permission == QorModelGroupPermission::Read || permission == QorModelGroupPermission::Write
               ? permission
               : QorModelGroupPermission::None;
}

[[nodiscard]] inline bool givesAccess(const QorAccModelgroup& entry) {
    return permissionOf(entry) != QorModelGroupPermission::None;
}

}  // namespace qor::admin
