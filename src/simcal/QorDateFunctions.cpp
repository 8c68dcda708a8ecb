// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorDateFunctions.h"

#include "platform/QorGuard.h"

namespace {

constexpr unsigned long kFirstYear = 1800;
constexpr unsigned long kLastYear = 9999;
constexpr int kDaysPerWeek = 7;

}  // namespace

int QorDateFunctions::getAllDaysInYear(SV::DayOfWeek weekday, unsigned long year, ISortedSet<int>& days) noexcept {
    if (year < kFirstYear || year > kLastYear) return 0;
    if (weekday < SV::DayOfWeek::Monday || weekday > SV::DayOfWeek::Sunday) return 0;
    return Qor_Guarded("calendar", 0, [&] {
        SV::Date date(static_cast<int>(year), 1, 1);
        while (date.GetDayOfWeek() != weekday) date = date.AddDays(1);
        ISortedSet<int> found;
        for (; date.GetYear() == static_cast<int>(year); date = date.AddDays(kDaysPerWeek))
            found.add(date.GetDayOfYear());
        days.addAllFrom(found);
        return 1;
    });
}

int QorDateFunctions::getAllDaysInBetween(const SV::Date& from, const SV::Date& to, ISortedSet<int>& days) noexcept {
    if (!from.IsValid() || !to.IsValid() || from.GetYear() != to.GetYear() || from > to) return 0;
    return Qor_Guarded("calendar", 0, [&] {
        ISortedSet<int> found;
        for (int day = from.GetDayOfYear(); day <= to.GetDayOfYear(); ++day) found.add(day);
        days.addAllFrom(found);
        return 1;
    });
}
