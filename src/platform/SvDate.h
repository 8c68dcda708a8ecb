// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <cstdint>

#include "platform/QorExport.h"

namespace SV {

enum class DayOfWeek : std::int32_t { Monday = 0, Tuesday, Wednesday, Thursday, Friday, Saturday, Sunday };

/// A date of the Gregorian calendar (also before its introduction), held as the number
/// year * 10000 + month * 100 + day. Any number can be held; `IsValid` tells whether it names a day. Dates compare by
/// their numbers, so those that are not valid too.
class QOR_API Date {
public:
    constexpr Date() = default;
    constexpr explicit Date(std::int32_t number) : _number(number) {}
    /// Adds the parts up as they are; a number beyond 32 bits counts as the nearest within, which is no valid date.
    constexpr Date(int year, int month, int day)
        : _number(static_cast<std::int32_t>(std::clamp<std::int64_t>(
              std::int64_t{year} * kPerYear + std::int64_t{month} * kPerMonth + day, INT32_MIN, INT32_MAX))) {}

    [[nodiscard]] constexpr std::int32_t GetNumber() const { return _number; }
    [[nodiscard]] constexpr int GetYear() const { return _number / kPerYear; }
    [[nodiscard]] constexpr int GetMonth() const { return _number / kPerMonth % kPerMonth; }
    [[nodiscard]] constexpr int GetDay() const { return _number % kPerMonth; }

    /// A day of the years 1 to 9999.
    [[nodiscard]] bool IsValid() const;
    /// 1 for 1 January, up to 366; 0 when the date is not valid.
    [[nodiscard]] int GetDayOfYear() const;
    /// Monday when the date is not valid.
    [[nodiscard]] DayOfWeek GetDayOfWeek() const;
    /// The date `days` later (earlier when negative). A date that is not valid, or a result outside the years 1 to
    /// 9999, gives Date().
    [[nodiscard]] Date AddDays(int days) const;

    friend constexpr bool operator==(Date a, Date b) { return a._number == b._number; }
    friend constexpr bool operator<(Date a, Date b) { return a._number < b._number; }
    friend constexpr bool operator>(Date a, Date b) { return b < a; }
    friend constexpr bool operator<=(Date a, Date b) { return !(b < a); }
    friend constexpr bool operator>=(Date a, Date b) { return !(a < b); }

private:
    static constexpr std::int32_t kPerYear = 10000;
    static constexpr std::int32_t kPerMonth = 100;

    std::int32_t _number = 0;
};

}  // namespace SV
