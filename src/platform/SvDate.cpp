// SPDX-License-Identifier: Apache-2.0
#include "platform/SvDate.h"

#include <array>

namespace {

constexpr int kFirstYear = 1;
constexpr int kLastYear = 9999;

constexpr bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

constexpr int daysInMonth(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

constexpr int daysBeforeYear(int year) {
    const int past = year - 1;
    return past * 365 + past / 4 - past / 100 + past / 400;
}

}  // namespace

namespace SV {

bool Date::IsValid() const {
    const int year = GetYear();
    const int month = GetMonth();
    return _number > 0 && year >= kFirstYear && year <= kLastYear && month >= 1 && month <= 12 && GetDay() >= 1 &&
           GetDay() <= daysInMonth(year, month);
}

int Date::GetDayOfYear() const {
    if (!IsValid()) return 0;
    int days = GetDay();
    for (int month = 1; month < GetMonth(); ++month) days += daysInMonth(GetYear(), month);
    return days;
}

DayOfWeek Date::GetDayOfWeek() const {
    if (!IsValid()) return DayOfWeek::Monday;
    // 1 January of the year 1 is a Monday.
    return static_cast<DayOfWeek>((daysBeforeYear(GetYear()) + GetDayOfYear() - 1) % 7);
}

Date Date::AddDays(int days) const {
    if (!IsValid()) return Date();
    const long ordinal = static_cast<long>(daysBeforeYear(GetYear())) + GetDayOfYear() + days;
    if (ordinal < 1 || ordinal > daysBeforeYear(kLastYear + 1)) return Date();

    int year = static_cast<int>((ordinal - 1) * 400 / 146097) + 1;
    while (daysBeforeYear(year + 1) < ordinal) ++year;
    while (daysBeforeYear(year) >= ordinal) --year;
    int day = static_cast<int>(ordinal) - daysBeforeYear(year);
    int month = 1;
    while (day > daysInMonth(year, month)) day -= daysInMonth(year, month++);
    return Date(year, month, day);
}

}  // namespace SV
