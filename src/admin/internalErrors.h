// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace qor::admin {

/// The names under which internal errors are reported.
inline constexpr const char* kAccessSource = "aaccess";
inline constexpr const char* kLogSource = "aadmlog";

}  // namespace qor::admin
