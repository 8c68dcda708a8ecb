// SPDX-License-Identifier: Apache-2.0
// What a distribution calendar says about its distributions: expectations over ranges, text and generator at an
// instant.
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/QorGuard.h"
#include "simcal/QorCalendar.h"
#include "simcal/QorDistribution.h"
#include "simcal/WeightedMean.h"

using Code = QorCalendarErrorCode;
using qor::simcal::WeightedMean;

Code QorCalendar::getExpectationForInterval(int firstDay, int firstSecond, int lastDay, int lastSecond,
                                            double& expectation) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    if (std::pair(firstDay, firstSecond) > std::pair(lastDay, lastSecond)) return Code::FirstAfterSecond;
    if (firstDay < 1 || lastDay > _periodLength) return Code::DayOutOfRange;
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        // Days are summed one after the other, each as the sum of its own intervals, so that a range has one result
        // to the bit, however it was asked for.
        std::unordered_map<const QorDayProfile*, WeightedMean> wholeDays;
        WeightedMean total;
        for (int day = firstDay;; ++day) {
            const QorDayProfile* profile = getProfileOfDay(day);
            const SV::Time from = day == firstDay ? SV::Time(0, 0, firstSecond) : SV::Time();
            const SV::Time to = SV::Time(0, 0, day == lastDay ? lastSecond : kSecondsPerDay);
            const bool whole = from == SV::Time() && to == SV::Time(24, 0, 0);
            const auto known = whole ? wholeDays.find(profile) : wholeDays.end();
            WeightedMean ofDay;
            if (known != wholeDays.end())
                ofDay = known->second;
            else if (const Code code = profile->weigh(from, to, ofDay); code != Code::Ok)
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
    if (distribution->getText().IsEmpty()) return Code::NoDistributionText;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        text = SV::String(distribution->getText());
        return Code::Ok;
    });
}

Code QorCalendar::getRandomGenerator(const std::int64_t& instant, QorRandomGenerator*& generator) const noexcept {
    generator = nullptr;
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    QorDayIntervalWithProperty* interval = nullptr;
    QorDistribution* distribution = nullptr;
    if (const Code code = getCurrentInterval(instant, interval); code != Code::Ok) return code;
    if (const Code code = interval->getDistribution(distribution); code != Code::Ok) return code;
    return distribution->getRandomGenerator(generator) != 0 ? Code::Ok : Code::NoRandomGenerator;
}

Code QorCalendar::getDistributions(ISequence<QorDistribution*>& distributions) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        std::vector<QorDistribution*> found;
        for (const QorDayProfile* profile : _profiles) {
            for (const auto& interval : profile->_intervals) {
                QorDistribution* distribution = nullptr;
                if (const Code code = interval->getDistribution(distribution); code != Code::Ok) return code;
                found.push_back(distribution);
            }
        }
        distributions.reserve(distributions.numberOfElements() + found.size());
        for (QorDistribution* distribution : found) distributions.addAsLast(distribution);
        return Code::Ok;
    });
}
