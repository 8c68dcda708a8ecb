// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorExport.h"

namespace SV {

/// A time of day in whole seconds after midnight; 24:00:00 (86400) is the end of the day. Ordered within the day.
class QOR_API Time {
public:
    constexpr Time() = default;
    constexpr Time(int hours, int minutes, int seconds) : _seconds(hours * 3600 + minutes * 60 + seconds) {}

    [[nodiscard]] constexpr int GetHours() const { return _seconds / 3600; }
    [[nodiscard]] constexpr int GetMinutes() const { return _seconds / 60 % 60; }
    [[nodiscard]] constexpr int GetSeconds() const { return _seconds % 60; }

    friend constexpr bool operator==(Time a, Time b) { return a._seconds == b._seconds; }
    friend constexpr bool operator<(Time a, Time b) { return a._seconds < b._seconds; }
    friend constexpr bool operator>(Time a, Time b) { return b < a; }
    friend constexpr bool operator<=(Time a, Time b) { return !(b < a); }
    friend constexpr bool operator>=(Time a, Time b) { return !(a < b); }

private:
    std::int32_t _seconds = 0;
};

}  // namespace SV
