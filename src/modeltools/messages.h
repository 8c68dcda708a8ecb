// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::modeltools::message {

inline constexpr std::uint16_t defaultHierarchyAttribute = 15801;  ///< the attribute's name itself
inline constexpr std::uint16_t unknownSourceAttribute = 15802;     ///< %classname %attrname

// Conversion. %attr1 of %class1 is the source, %attr2 of %class2 the target.
inline constexpr std::uint16_t unexpectedElement = 15701;          ///< %token
inline constexpr std::uint16_t noUsablePattern = 15702;            ///< %name
inline constexpr std::uint16_t unknownConvertedAttribute = 15703;  ///< %attr %class
inline constexpr std::uint16_t typesDiffer = 15704;
inline constexpr std::uint16_t recordClassesDiffer = 15705;   ///< also %recclass1 %recclass2
inline constexpr std::uint16_t profileClassesDiffer = 15706;  ///< also %apclass1 %apclass2
inline constexpr std::uint16_t valueNotConverted = 15707;
inline constexpr std::uint16_t resultNotConverted = 15708;

// Transfer of attributes.
inline constexpr std::uint16_t positionAttribute = 2600;  ///< the attribute's name itself

}  // namespace qor::modeltools::message
