// SPDX-License-Identifier: Apache-2.0
// What a distribution calendar says about its distributions: expectations over ranges, text and generator at an
// instant.
#include <limits>
#include <unordered_map>
#include <utility>

#include "platform/QorGuard.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/CalendarPlan.h"
#include "simcal/QorCalendar.h"
#include "simcal/QorDistribution.h"

using Code = QorCalendarErrorCode;

namespace {

struct Weighted {
    double sum = 0;
    double seconds = 0;

    void add(const Weighted& more) {
        sum += more.sum;
        seconds += more.seconds;
    }
};

Code weigh(const QorDayProfile& profile, SV::Time from, SV::Time to, Weighted& weighted) {
    for (int position = 1; position <= profile.getNumberOfIntervals(); ++position) {
        QorDayIntervalWithProperty* interval = nullptr;
        SV::Time start;
        SV::Time end;
        if (const Code code = profile.getIntervalAtPosition(position, interval); code != Code::Ok) return code;
        if (const Code code = interval->getStartTime(start); code != Code::Ok) return code;
        if (const Code code = interval->getEndTime(end); code != Code::Ok) return code;
        const auto seconds = QorTimeFunctions::getDiffTimeInSeconds(std::max(start, from), std::min(end, to));
        if (seconds == 0) continue;
        double value = 0;
        if (const Code code = interval->getExpectation(value); code != Code::Ok) return code;
        weighted.add({value * seconds, static_cast<double>(seconds)});
    }
    return Code::Ok;
}

}  // namespace

Code QorCalendar::getExpectationForInterval(int firstDay, int firstSecond, int lastDay, int lastSecond,
                                            double& expectation) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    if (std::pair(firstDay, firstSecond) > std::pair(lastDay, lastSecond)) return Code::FirstAfterSecond;
    if (firstDay < 1 || lastDay > _periodLength) return Code::DayOutOfRange;
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        // Days are summed one after the other, each as the sum of its own intervals, so that a range has one result
        // to the bit, however it was asked for.
        std::unordered_map<const QorDayProfile*, Weighted> wholeDays;
        Weighted total;
        for (int day = firstDay;; ++day) {
            const QorDayProfile* profile = getProfileOfDay(day);
            const SV::Time from = day == firstDay ? SV::Time(0, 0, firstSecond) : SV::Time();
            const SV::Time to = SV::Time(0, 0, day == lastDay ? lastSecond : kSecondsPerDay);
            const bool whole = from == SV::Time() && to == SV::Time(24, 0, 0);
            const auto known = whole ? wholeDays.find(profile) : wholeDays.end();
            Weighted ofDay;
            if (known != wholeDays.end())
                ofDay = known->second;
            else if (const Code code = weigh(*profile, from, to, ofDay); code != Code::Ok)
                return code;
            else if (whole)
                wholeDays.emplace(profile, ofDay);
            total.add(ofDay);
            if (day == lastDay) break;
        }
        if (total.seconds == 0) return Code::NoInterval;
        expectation = total.sum / total.seconds;
        return Code::Ok;
    });
}

Code QorCalendar::getExpectationForPeriod(double& expectation) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    if (_periodLength == 0) return Code::NoInterval;
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    return getExpectationForInterval(1, 0, _periodLength, kSecondsPerDay, expectation);
}

Code QorCalendar::getDistributionString(const std::int64_t& instant, SV::String& text) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    QorDayIntervalWithProperty* interval = nullptr;
    QorDistribution* distribution = nullptr;
    if (const Code code = getCurrentInterval(instant, interval); code != Code::Ok) return code;
    if (const Code code = interval->getDistribution(distribution); code != Code::Ok) return code;
    if (distribution == nullptr || distribution->getDistributionString(text) == 0) return Code::NoDistributionText;
    return Code::Ok;
}

Code QorCalendar::getRandomGenerator(const std::int64_t& instant, QorRandomGenerator*& generator) const noexcept {
    generator = nullptr;
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    QorDayIntervalWithProperty* interval = nullptr;
    QorDistribution* distribution = nullptr;
    if (const Code code = getCurrentInterval(instant, interval); code != Code::Ok) return code;
    if (const Code code = interval->getDistribution(distribution); code != Code::Ok) return code;
    if (distribution == nullptr || distribution->getRandomGenerator(generator) == 0) return Code::NoRandomGenerator;
    return Code::Ok;
}

Code QorCalendar::getDistributions(ISequence<QorDistribution*>& distributions) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        for (const QorDayProfile* profile : _profiles) {
            for (const auto& interval : profile->_intervals) {
                QorDistribution* distribution = nullptr;
                if (const Code code = interval->getDistribution(distribution); code != Code::Ok) return code;
                distributions.addAsLast(distribution);
            }
        }
        return Code::Ok;
    });
}
