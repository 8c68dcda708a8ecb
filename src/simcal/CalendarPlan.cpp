// SPDX-License-Identifier: Apache-2.0
#include "simcal/CalendarPlan.h"

#include <unordered_map>

#include "platform/QorTimeFunctions.h"
#include "simcal/QorCalendar.h"

namespace qor::simcal {
namespace {

constexpr std::int32_t kDay = QorCalendar::kSecondsPerDay;

// Appends the profile's spans; returns the seconds of all of them.
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
        _days.reserve(static_cast<std::size_t>(calendar.getPeriodLengthInDays()) + 1);
    }
    for (int day = 1; const QorDayProfile* profile = calendar.getProfileOfDay(day); ++day) {
        const auto [entry, isNew] = numbers.try_emplace(profile, static_cast<std::int32_t>(_profiles.size()));
        if (isNew) {
            const std::size_t first = _spans.size();
            seconds.push_back(appendSpans(*profile, bounds, _spans));
            const std::size_t count = _spans.size() - first;
            _spans.resize(first + std::max(count + 1, kFewSpans), {kEndMark, kEndMark, seconds.back()});
            _profiles.push_back({first, count});
        }
        const std::int64_t ofDay = seconds[static_cast<std::size_t>(entry->second)];
        _days.push_back({_total, entry->second, shortDays});
        if (isNew) {
            _profiles.back().beforeMidnight = before(day, 0);
            _profiles.back().beforeEndOfDay = before(day, kDay);
        }
        _total += ofDay;
        shortDays += ofDay == kDay ? 0 : 1;
        if (day == calendar.getPeriodLengthInDays()) break;
    }
    _dayCount = static_cast<std::int32_t>(_days.size());
    _days.push_back({_total, 0, shortDays});
    findNextStarts(calendar.isCyclic() != 0);
}

// From behind; in a period that repeats a second time, starting from what the first round has found.
void CalendarPlan::findNextStarts(bool cyclic) {
    _nextStart.assign(static_cast<std::size_t>(_dayCount), kNever);
    std::int64_t next = kNever;
    for (int round = 0; round < (cyclic ? 2 : 1); ++round) {
        for (std::int32_t day = _dayCount; day >= 1; --day) {
            const std::int64_t later = next == kNever ? kNever : next + kDay;
            _nextStart[index(day)] = later;
            next = spanCount(day) > 0 ? spansBegin(day)->start : later;
        }
    }
}

}  // namespace qor::simcal
