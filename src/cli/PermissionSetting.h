// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace qor::cli {

class AdminSession;

/// "read", "write", "none".
[[nodiscard]] std::optional<std::int32_t> permissionNamed(std::string_view word);

/// `qor permission set`: plans with sub-groups, shows whose rights rise and fall, asks, and carries it out as one.
void setPermissions(AdminSession& session);

}  // namespace qor::cli
