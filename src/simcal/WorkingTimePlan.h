// SPDX-License-Identifier: Apache-2.0
// The timeline of a calendar's working time, in both directions: seconds worked before a moment, and the moment at
// which the n-th second is worked. Moments count seconds from the start of the first period.
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "simcal/CalendarPlan.h"

namespace qor::simcal {

struct Stretch {
    std::int64_t start;
    std::int64_t end;
};

struct DayAndTime {
    std::int64_t cycle;
    std::int32_t day;  // from 1
    std::int32_t time;
};

class WorkingTimePlan {
public:
    explicit WorkingTimePlan(const QorCalendar& calendar);

    [[nodiscard]] std::uint64_t revision() const noexcept { return _days.revision(); }
    // Without a complete day list nothing else may be asked.
    [[nodiscard]] bool isComplete() const noexcept { return _days.dayCount() > 0; }
    [[nodiscard]] bool isCyclic() const noexcept { return _cyclic; }
    [[nodiscard]] bool isNeverOpen() const noexcept { return _days.total() == 0; }
    [[nodiscard]] std::int64_t secondsOfPeriod() const noexcept { return _days.total(); }
    [[nodiscard]] std::int64_t periodLength() const noexcept { return _periodLength; }
    [[nodiscard]] bool isInside(std::int64_t moment) const noexcept {
        return moment >= 0 && (_cyclic || moment < _periodLength);
    }

    // The moment must be inside.
    [[nodiscard]] DayAndTime dayAndTime(std::int64_t moment) const noexcept;
    [[nodiscard]] std::int64_t workedBefore(std::int64_t moment) const noexcept;
    // When the second with this number, from 0, is begun; nothing beyond 64 bits. Not to be asked of a calendar that
    // is never open or of a second that the period does not have.
    [[nodiscard]] std::optional<std::int64_t> beginOfSecond(std::int64_t number) const noexcept;

    [[nodiscard]] std::optional<Stretch> current(std::int64_t moment) const noexcept;
    [[nodiscard]] std::optional<Stretch> next(std::int64_t moment) const noexcept;
    [[nodiscard]] std::optional<Stretch> previous(std::int64_t moment) const noexcept;

private:
    [[nodiscard]] std::int64_t startOf(const DayAndTime& place) const noexcept;
    [[nodiscard]] std::optional<Stretch> stretch(std::int64_t dayStart, const CalendarPlan::Span& span) const noexcept;
    [[nodiscard]] std::int32_t dayOfSecond(std::int64_t number) const noexcept;
    void indexDaysBySecond();
    void linkDaysToPreviousEnd();

    CalendarPlan _days;
    bool _cyclic;
    std::int64_t _periodLength;                // in seconds
    std::vector<std::int32_t> _toPreviousEnd;  // days back to one with an interval, as a ring; 0 when there is none
    // Entry b is the day that holds second b << _shift of the period, so the day of any second lies between two
    // neighbouring entries.
    int _shift = 0;
    std::vector<std::int32_t> _dayOfBucket;
};

}  // namespace qor::simcal
