// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <cstdint>

#include "platform/QorExport.h"
#include "platform/QorTimeUnits.h"

namespace SV {

/// A time of day in whole seconds after midnight; 24:00:00 (86400) is the end of the day. Ordered within the day.
///
/// Hours, minutes and seconds are added up as they are: Time(0, 90, 0) is half past one. Nothing checks that the sum
/// lies within the day; one that takes more than 32 bits counts as the nearest that does not.
class QOR_API Time {
public:
    constexpr Time() = default;
    constexpr Time(int hours, int minutes, int seconds)
        : _seconds(static_cast<std::int32_t>(std::clamp<std::int64_t>(
              std::int64_t{hours} * QorSecondsPerHour + std::int64_t{minutes} * QorSecondsPerMinute + seconds,
              INT32_MIN, INT32_MAX))) {}

    [[nodiscard]] constexpr int GetHours() const { return _seconds / QorSecondsPerHour; }
    [[nodiscard]] constexpr int GetMinutes() const { return _seconds / QorSecondsPerMinute % QorMinutesPerHour; }
    [[nodiscard]] constexpr int GetSeconds() const { return _seconds % QorSecondsPerMinute; }

    friend constexpr bool operator==(Time a, Time b) { return a._seconds == b._seconds; }
    friend constexpr bool operator<(Time a, Time b) { return a._seconds < b._seconds; }
    friend constexpr bool operator>(Time a, Time b) { return b < a; }
    friend constexpr bool operator<=(Time a, Time b) { return !(b < a); }
    friend constexpr bool operator>=(Time a, Time b) { return !(a < b); }

private:
    std::int32_t _seconds = 0;
};

}  // namespace SV
