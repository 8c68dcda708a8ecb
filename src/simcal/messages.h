// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// Message resources of calendars and distributions.
enum class QorSimCalMessage : std::uint16_t {
    ExponentialKeyword = 14000,
    UniformKeyword = 14001,
    OpenUntil = 14002,           ///< %time %day %profile %end
    ClosedUntil = 14003,         ///< %time %day %profile %nextday %nexttime
    ClosedForGood = 14004,       ///< %time %day %profile
    NeverOpen = 14005,           ///< no placeholders
    BeforePeriod = 14006,        ///< no placeholders
    AfterPeriod = 14007,         ///< no placeholders
    PeriodEndsTooEarly = 14008,  ///< %seconds
    PeriodStartsTooLate = 14009  ///< %seconds
};
