// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <string_view>

namespace qor::simmap {

/// The keys of an option's standard attributes, in the order of QorSimulationOption::standardAttributes.
inline constexpr std::array<std::string_view, 4> kStandardAttributeKeys = {"executiontime", "waitingtime",
                                                                           "restingtime", "transporttime"};
inline constexpr std::string_view kWaitingTimeKey = kStandardAttributeKeys[1];
inline constexpr std::string_view kUserAttributeKey = "userattribute-";

}  // namespace qor::simmap
