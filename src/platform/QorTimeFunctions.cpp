// SPDX-License-Identifier: Apache-2.0
#include "platform/QorTimeFunctions.h"

#include <algorithm>
#include <ctime>

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"
#include "platform/QorTimeUnits.h"

std::int32_t QorTimeFunctions::getTimeInSeconds(const SV::Time& time) {
    return time.GetHours() * QorSecondsPerHour + time.GetMinutes() * QorSecondsPerMinute + time.GetSeconds();
}

void QorTimeFunctions::setTimeInSeconds(SV::Time& time, std::int32_t seconds) {
    time = SV::Time(0, 0, std::clamp(seconds, 0, QorSecondsPerDay));
}

std::int32_t QorTimeFunctions::getDiffTimeInSeconds(const SV::Time& from, const SV::Time& to) {
    const std::int64_t difference = std::int64_t{getTimeInSeconds(to)} - getTimeInSeconds(from);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(difference, 0, INT32_MAX));
}

void QorTimeFunctions::getLocalDateAndTime(SV::Date& date, SV::Time& time) {
    Qor_Guarded("time", [&] { qor::platform::installed(&QorHost::clock).localDateAndTime(date, time); });
}

QorClockService::~QorClockService() = default;

void QorClockService::localDateAndTime(SV::Date& date, SV::Time& time) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    date = SV::Date(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
    time = SV::Time(local.tm_hour, local.tm_min, std::min(local.tm_sec, 59));
}
