// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::simmap::message {

// Simulation mapping
inline constexpr std::uint16_t defaultHelpText = 1811;
inline constexpr std::uint16_t defaultOptionName = 1812;
inline constexpr std::uint16_t defaultWaitingTimeName = 1814;
inline constexpr std::uint16_t repositoryFailed = 1815;
inline constexpr std::uint16_t actionWithoutOption = 1816;
inline constexpr std::uint16_t unknownName = 1817;  ///< %s the name
inline constexpr std::uint16_t keyMissing = 1818;   ///< %s the key, or the usage of several
inline constexpr std::uint16_t noOptionDefined = 1819;

// Simulation texts
inline constexpr std::uint16_t noTextsDefined = 1841;
inline constexpr std::uint16_t textRecordIncomplete = 1842;  ///< %s the element or the missing key

// Simulation results
inline constexpr std::uint16_t resultTextLabel = 2727;
inline constexpr std::uint16_t resultNameUnknown = 3301;

}  // namespace qor::simmap::message
