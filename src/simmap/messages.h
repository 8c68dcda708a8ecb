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

// Checks of definitions and readiness. %p option, %u use, %c class, %a attribute, %o object, %n number, %m model
inline constexpr std::uint16_t recordIgnored = 1850;         ///< %s the element
inline constexpr std::uint16_t noExecutionTimeNamed = 1851;  ///< %p
inline constexpr std::uint16_t noExecutionTime = 1852;       ///< %o %c %a
inline constexpr std::uint16_t cannotCallModel = 1853;       ///< %c
inline constexpr std::uint16_t callsNoModel = 1854;          ///< %o %c
inline constexpr std::uint16_t cannotHaveCalendar = 1855;    ///< %c
inline constexpr std::uint16_t hasNoCalendar = 1856;         ///< %o %c
inline constexpr std::uint16_t isNotAssigned = 1857;         ///< %o %c
inline constexpr std::uint16_t typeDoesNotFit = 1858;        ///< %a %c %u
inline constexpr std::uint16_t classTakesNoPart = 1859;      ///< %c %n
inline constexpr std::uint16_t calledModelMissing = 1860;    ///< %o %c %m
inline constexpr std::uint16_t performersNotLookedAt = 1861;

}  // namespace qor::simmap::message
