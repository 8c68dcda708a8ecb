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
    struct Day {
        std::int64_t before;       // seconds of the days before
        std::int32_t profile;      // number of the profile in the order of first use
        std::int32_t toNextStart;  // days until one with an interval, the list counting as a ring; 0 when there is none
    };

    CalendarPlan(const QorCalendar& calendar, DayBounds bounds);

    [[nodiscard]] std::uint64_t revision() const noexcept { return _revision; }
    [[nodiscard]] std::int32_t dayCount() const noexcept { return _dayCount; }
    [[nodiscard]] bool hasDay(std::int32_t day) const noexcept { return day >= 1 && day <= _dayCount; }
    [[nodiscard]] const Day& day(std::int32_t day) const noexcept { return _days[static_cast<std::size_t>(day - 1)]; }
    [[nodiscard]] std::int64_t total() const noexcept { return _total; }
    [[nodiscard]] bool allProfilesAreWholeDays() const noexcept { return _allProfilesAreWholeDays; }

    // Seconds of all intervals of the days from `first` to `last`; 0 when there are none.
    [[nodiscard]] std::int64_t sumOfDays(std::int32_t first, std::int32_t last) const noexcept {
        return first > last ? 0 : before(last + 1) - before(first);
    }
    // Whether each of these days has intervals of 86400 seconds.
    [[nodiscard]] bool areWholeDays(std::int32_t first, std::int32_t last) const noexcept {
        return first > last || shortDaysBefore(last + 1) == shortDaysBefore(first);
    }

    // Seconds of the day's intervals before a time, from the earliest start on.
    [[nodiscard]] std::int64_t before(std::int32_t day, std::int32_t time) const noexcept {
        const Span* span = firstEndingAfter(day, time);
        return span->before + std::max<std::int64_t>(0, std::int64_t{time} - span->start);
    }
    [[nodiscard]] std::int64_t between(std::int32_t day, std::int32_t from, std::int32_t to) const noexcept {
        return before(day, to) - before(day, from);
    }

    // The first interval of the day that ends after the time; the end mark when none does.
    [[nodiscard]] const Span* firstEndingAfter(std::int32_t day, std::int32_t time) const noexcept {
        const Profile& profile = profileOf(day);
        const Span* span = _spans.data() + profile.first;
        // Halving without a branch on the outcome: the end mark ends after every time.
        for (std::size_t left = profile.count + 1; left > 1;) {
            const std::size_t half = left / 2;
            span = span[half - 1].end <= time ? span + half : span;
            left -= half;
        }
        return span;
    }
    [[nodiscard]] const Span* firstStartingFrom(std::int32_t day, std::int32_t time) const noexcept {
        const Span* span = firstEndingAfter(day, time);
        return span->start < time && !isEndMark(*span) ? span + 1 : span;
    }
    [[nodiscard]] const Span* spansBegin(std::int32_t day) const noexcept {
        return _spans.data() + profileOf(day).first;
    }
    [[nodiscard]] std::size_t spanCount(std::int32_t day) const noexcept { return profileOf(day).count; }
    [[nodiscard]] static bool isEndMark(const Span& span) noexcept { return span.start == kNever; }

private:
    struct Profile {
        std::size_t first;  // in _spans
        std::size_t count;  // without the end mark
    };

    static constexpr std::int32_t kNever = std::numeric_limits<std::int32_t>::max();

    [[nodiscard]] const Profile& profileOf(std::int32_t day) const noexcept {
        return _profiles[static_cast<std::size_t>(this->day(day).profile)];
    }
    [[nodiscard]] std::int64_t before(std::int32_t day) const noexcept {
        return day > _dayCount ? _total : this->day(day).before;
    }
    [[nodiscard]] std::int32_t shortDaysBefore(std::int32_t day) const noexcept {
        return _shortDaysBefore[static_cast<std::size_t>(day - 1)];
    }
    void linkDaysToNextStart();

    std::uint64_t _revision;
    std::int32_t _dayCount = 0;
    std::int64_t _total = 0;
    bool _allProfilesAreWholeDays = true;
    std::vector<Day> _days;
    std::vector<Profile> _profiles;
    std::vector<Span> _spans;
    std::vector<std::int32_t> _shortDaysBefore;  // one entry more than days
};

}  // namespace qor::simcal
