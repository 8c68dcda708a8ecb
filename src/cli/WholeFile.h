// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

namespace qor::cli {

/// Writes a file that comes into being whole or not at all: an earlier one stays until the new one is complete. Empty,
/// or why that failed.
[[nodiscard]] std::string writeWholeFile(const std::string& path, std::string_view content);

}  // namespace qor::cli
