// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::admin::message {

inline constexpr std::uint16_t lowerSubGroup = 29100;  ///< question; %g model group, %u user group

}  // namespace qor::admin::message
