// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::modeltools::message {

inline constexpr std::uint16_t defaultHierarchyAttribute = 15801;  ///< the attribute's name itself
inline constexpr std::uint16_t unknownSourceAttribute = 15802;     ///< %classname %attrname

}  // namespace qor::modeltools::message
