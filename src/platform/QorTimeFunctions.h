// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorExport.h"
#include "platform/SvDate.h"
#include "platform/SvTime.h"

/// Times of day as seconds, and the host's clock.
class QOR_API QorTimeFunctions {
public:
    /// Seconds after midnight: 0 to QorSecondsPerDay for a time within the day, for any other what it holds.
    [[nodiscard]] static std::int32_t getTimeInSeconds(const SV::Time& time);
    /// The time `seconds` after midnight; below 0 counts as 0, above QorSecondsPerDay as that.
    static void setTimeInSeconds(SV::Time& time, std::int32_t seconds);
    /// Seconds from `from` to `to`; 0 when `to` lies before `from`, so that an interval clipped to a range that it
    /// does not touch has no length.
    [[nodiscard]] static std::int32_t getDiffTimeInSeconds(const SV::Time& from, const SV::Time& to);
    /// Local date and time of the host's clock (of this computer when no host offers one).
    static void getLocalDateAndTime(SV::Date& date, SV::Time& time);
};

/// The clock behind QorTimeFunctions::getLocalDateAndTime.
class QOR_API QorClockService {
public:
    virtual ~QorClockService();
    /// The default reads this computer's local clock.
    virtual void localDateAndTime(SV::Date& date, SV::Time& time);
};
