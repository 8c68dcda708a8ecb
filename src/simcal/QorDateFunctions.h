// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/SvDate.h"

/// Sets of days of a year (1 January is 1), of the kind that QorCalendar::assignProfileToDays takes. Results are 1 on
/// success, and 0 when the call is refused and the set left alone; days are added to what the set holds.
class QOR_API QorDateFunctions {
public:
    /// Every such weekday of a year from 1800 to 9999.
    static int getAllDaysInYear(SV::DayOfWeek weekday, unsigned long year, ISortedSet<int>& days) noexcept;
    /// Every day from one date to another of the same year, both included. Refused when they are out of order or no
    /// dates.
    static int getAllDaysInBetween(const SV::Date& from, const SV::Date& to, ISortedSet<int>& days) noexcept;
};
