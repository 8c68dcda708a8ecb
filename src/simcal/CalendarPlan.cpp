// SPDX-License-Identifier: Apache-2.0
#include "simcal/CalendarPlan.h"

#include <unordered_map>

#include "platform/QorTimeFunctions.h"
#include "simcal/QorCalendar.h"

namespace qor::simcal {
namespace {

constexpr std::int32_t kDay = QorCalendar::kSecondsPerDay;

// Appends the profile's spans and the end mark; returns the seconds of all of them.
std::int64_t appendSpans(const QorDayProfile& profile, DayBounds bounds, std::vector<CalendarPlan::Span>& spans) {
    std::int64_t before = 0;
    for (int position = 1; position <= profile.getNumberOfIntervals(); ++position) {
        QorDayIntervalWithProperty* interval = nullptr;
        SV::Time start;
        SV::Time end;
        // Intervals in a profile are consistent, for inserting checks that and they never change.
        (void)profile.getIntervalAtPosition(position, interval);
        (void)interval->getStartTime(start);
        (void)interval->getEndTime(end);
        CalendarPlan::Span span{QorTimeFunctions::getTimeInSeconds(start), QorTimeFunctions::getTimeInSeconds(end),
                                before};
        if (bounds == DayBounds::Clipped) {
            span.start = std::max(span.start, 0);
            span.end = std::min(span.end, kDay);
            if (span.start >= span.end) continue;
        }
        before += std::int64_t{span.end} - span.start;
        spans.push_back(span);
    }
    spans.push_back({std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::max(), before});
    return before;
}

}  // namespace

CalendarPlan::CalendarPlan(const QorCalendar& calendar, DayBounds bounds) : _revision(calendar.getRevision()) {
    for (const QorDayProfile* profile : calendar.getProfiles()) {
        std::int64_t seconds = 0;
        (void)profile->getIntervalLengthSum(seconds);
        _allProfilesAreWholeDays = _allProfilesAreWholeDays && seconds == kDay;
    }

    std::unordered_map<const QorDayProfile*, std::int32_t> numbers;
    std::vector<std::int64_t> seconds;
    std::int32_t shortDays = 0;
    if (calendar.getProfileOfDay(1) != nullptr) {
        const auto days = static_cast<std::size_t>(calendar.getPeriodLengthInDays());
        _days.reserve(days);
        _shortDaysBefore.reserve(days + 1);
    }
    for (int day = 1; const QorDayProfile* profile = calendar.getProfileOfDay(day); ++day) {
        const auto [entry, isNew] = numbers.try_emplace(profile, static_cast<std::int32_t>(_profiles.size()));
        if (isNew) {
            const std::size_t first = _spans.size();
            seconds.push_back(appendSpans(*profile, bounds, _spans));
            _profiles.push_back({first, _spans.size() - first - 1});
        }
        const std::int64_t ofDay = seconds[static_cast<std::size_t>(entry->second)];
        _days.push_back({_total, entry->second, 0});
        _shortDaysBefore.push_back(shortDays);
        _total += ofDay;
        shortDays += ofDay == kDay ? 0 : 1;
        if (day == calendar.getPeriodLengthInDays()) break;
    }
    _shortDaysBefore.push_back(shortDays);
    _dayCount = static_cast<std::int32_t>(_days.size());
    linkDaysToNextStart();
}

// Twice around the ring from behind: the first round finds the day that the second one starts from.
void CalendarPlan::linkDaysToNextStart() {
    std::int32_t distance = 0;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = _days.size(); i-- > 0;) {
            Day& day = _days[i];
            day.toNextStart = distance;
            if (_profiles[static_cast<std::size_t>(day.profile)].count > 0)
                distance = 1;
            else if (distance > 0)
                ++distance;
        }
    }
}

}  // namespace qor::simcal
