// SPDX-License-Identifier: Apache-2.0
// Sums over a calendar's days and intervals, laid out so that a question touches a few cache lines whatever the
// period's length. Made from a calendar at one revision and never changed.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

class QorCalendar;

namespace qor::simcal {

// A day and a second of it: the calendar's answer to where an instant lies.
struct Place {
    std::int32_t cycle = 0;
    std::int32_t day = 0;  // from 1
    std::int32_t time = 0;
};

// Whether interval time outside 00:00:00 to 24:00:00, which intervals made by hand can have, counts.
enum class DayBounds { AsTheyAre, Clipped };

class CalendarPlan {
public:
    struct Span {
        std::int32_t start;
        std::int32_t end;
        std::int64_t before;  // seconds of the profile's earlier intervals
    };

    CalendarPlan(const QorCalendar& calendar, DayBounds bounds);

    [[nodiscard]] std::uint64_t revision() const noexcept { return _revision; }
    [[nodiscard]] std::int32_t dayCount() const noexcept { return _dayCount; }
    [[nodiscard]] bool hasDay(std::int32_t day) const noexcept { return day >= 1 && day <= _dayCount; }
    [[nodiscard]] std::int64_t total() const noexcept { return _total; }
    [[nodiscard]] bool allProfilesAreWholeDays() const noexcept { return _allProfilesAreWholeDays; }

    // Seconds of all intervals of the days before this one, which may be the one after the last.
    [[nodiscard]] std::int64_t before(std::int32_t day) const noexcept { return _days[index(day)].before; }
    // Whether each of these days has intervals of 86400 seconds.
    [[nodiscard]] bool areWholeDays(std::int32_t first, std::int32_t last) const noexcept {
        return first > last || _days[index(last + 1)].shortDaysBefore == _days[index(first)].shortDaysBefore;
    }

    // Seconds of the day's intervals before a time, from the earliest start on.
    [[nodiscard]] std::int64_t before(std::int32_t day, std::int32_t time) const noexcept {
        const Span* span = firstEndingAfter(day, time);
        return span->before + std::max<std::int64_t>(0, std::int64_t{time} - span->start);
    }
    [[nodiscard]] std::int64_t between(std::int32_t day, std::int32_t from, std::int32_t to) const noexcept {
        return before(day, to) - before(day, from);
    }
    // The same from a time to 24:00:00, and from 00:00:00 to a time.
    [[nodiscard]] std::int64_t fromTime(std::int32_t day, std::int32_t time) const noexcept {
        return profileOf(day).beforeEndOfDay - before(day, time);
    }
    [[nodiscard]] std::int64_t toTime(std::int32_t day, std::int32_t time) const noexcept {
        return before(day, time) - profileOf(day).beforeMidnight;
    }

    // The first interval of the day that ends after the time; the end mark when none does.
    [[nodiscard]] const Span* firstEndingAfter(std::int32_t day, std::int32_t time) const noexcept {
        const Profile& profile = profileOf(day);
        const Span* span = _spans.data() + profile.first;
        if (profile.count < kFewSpans)
            return span + (span[0].end <= time ? 1 : 0) + (span[1].end <= time ? 1 : 0) + (span[2].end <= time ? 1 : 0);
        // Halving without a branch on the outcome: the end mark ends after every time.
        for (std::size_t left = profile.count + 1; left > 1;) {
            const std::size_t half = left / 2;
            span = span[half - 1].end <= time ? span + half : span;
            left -= half;
        }
        return span;
    }
    // Seconds from the day's 00:00:00 to the first start of an interval that does not lie before the time, on this day
    // or a later one; kNever when none follows.
    [[nodiscard]] std::int64_t nextStart(std::int32_t day, std::int32_t time) const noexcept {
        const Span* span = firstEndingAfter(day, time);
        const std::int32_t today = (span->start < time ? span + 1 : span)->start;
        const std::int64_t later = _nextStart[index(day)];
        return today == kEndMark ? later : today;
    }
    [[nodiscard]] const Span* spansBegin(std::int32_t day) const noexcept {
        return _spans.data() + profileOf(day).first;
    }
    [[nodiscard]] std::size_t spanCount(std::int32_t day) const noexcept { return profileOf(day).count; }

    static constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();

private:
    struct Profile {
        std::size_t first;                // in _spans
        std::size_t count;                // without the end marks, of which there are enough to make up kFewSpans
        std::int64_t beforeMidnight = 0;  // seconds before 00:00:00 and
        std::int64_t beforeEndOfDay = 0;  // before 24:00:00
    };

    struct Day {
        std::int64_t before;           // seconds of the days before
        std::int32_t profile;          // in _profiles
        std::int32_t shortDaysBefore;  // days before with other than 86400 seconds
    };

    static constexpr std::size_t kFewSpans = 4;
    static constexpr std::int32_t kEndMark = std::numeric_limits<std::int32_t>::max();

    static std::size_t index(std::int32_t day) noexcept { return static_cast<std::size_t>(day - 1); }

    [[nodiscard]] const Profile& profileOf(std::int32_t day) const noexcept {
        return _profiles[static_cast<std::size_t>(_days[index(day)].profile)];
    }
    void findNextStarts(bool cyclic);

    std::uint64_t _revision;
    std::int32_t _dayCount = 0;
    std::int64_t _total = 0;
    bool _allProfilesAreWholeDays = true;
    std::vector<Profile> _profiles;
    std::vector<Span> _spans;
    std::vector<Day> _days;                // one entry more than days
    std::vector<std::int64_t> _nextStart;  // by day: seconds from its 00:00:00 to the first start after it, or kNever
};

}  // namespace qor::simcal
