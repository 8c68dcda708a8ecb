// SPDX-License-Identifier: Apache-2.0
#include "simcal/WorkingTimePlan.h"

#include <limits>

#include "simcal/QorCalendar.h"

namespace qor::simcal {
namespace {

constexpr std::int64_t kDay = QorCalendar::kSecondsPerDay;
constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max();

}  // namespace

WorkingTimePlan::WorkingTimePlan(const QorCalendar& calendar)
    : _days(calendar, DayBounds::Clipped),
      _cyclic(calendar.isCyclic() != 0),
      _periodLength(std::int64_t{calendar.getPeriodLengthInDays()} * kDay) {
    if (!isComplete()) return;
    indexDaysBySecond();
    linkDaysToPreviousEnd();
}

// As many buckets as days, or up to twice as many: looking up a second then meets about one day.
void WorkingTimePlan::indexDaysBySecond() {
    while ((_days.total() >> _shift) > 2 * std::int64_t{_days.dayCount()}) ++_shift;
    std::int32_t day = 1;
    for (std::int64_t second = 0; second < _days.total(); second += std::int64_t{1} << _shift) {
        while (day < _days.dayCount() && _days.before(day + 1) <= second) ++day;
        _dayOfBucket.push_back(day);
    }
    _dayOfBucket.push_back(_days.dayCount());
}

void WorkingTimePlan::linkDaysToPreviousEnd() {
    _toPreviousEnd.assign(static_cast<std::size_t>(_days.dayCount()), 0);
    std::int32_t distance = 0;
    for (int round = 0; round < 2; ++round) {
        for (std::int32_t day = 1; day <= _days.dayCount(); ++day) {
            _toPreviousEnd[static_cast<std::size_t>(day - 1)] = distance;
            if (_days.spanCount(day) > 0)
                distance = 1;
            else if (distance > 0)
                ++distance;
        }
    }
}

DayAndTime WorkingTimePlan::dayAndTime(std::int64_t moment) const noexcept {
    const std::int64_t days = moment / kDay;
    const auto time = static_cast<std::int32_t>(moment % kDay);
    if (days < _days.dayCount()) return {0, static_cast<std::int32_t>(days) + 1, time};
    return {days / _days.dayCount(), static_cast<std::int32_t>(days % _days.dayCount()) + 1, time};
}

std::int64_t WorkingTimePlan::startOf(const DayAndTime& place) const noexcept {
    return place.cycle * _periodLength + (place.day - 1) * kDay;
}

std::int64_t WorkingTimePlan::workedBefore(std::int64_t moment) const noexcept {
    if (moment <= 0) return 0;
    if (!isInside(moment)) return _days.total();
    const DayAndTime place = dayAndTime(moment);
    return place.cycle * _days.total() + _days.before(place.day) + _days.before(place.day, place.time);
}

std::int32_t WorkingTimePlan::dayOfSecond(std::int64_t number) const noexcept {
    const auto bucket = static_cast<std::size_t>(number >> _shift);
    std::int32_t first = _dayOfBucket[bucket];
    std::int32_t last = _dayOfBucket[bucket + 1];
    while (first < last) {
        const std::int32_t middle = first + (last - first + 1) / 2;
        if (_days.before(middle) <= number)
            first = middle;
        else
            last = middle - 1;
    }
    return first;
}

std::optional<std::int64_t> WorkingTimePlan::beginOfSecond(std::int64_t number) const noexcept {
    const std::int64_t cycle = number < _days.total() ? 0 : number / _days.total();
    const std::int64_t ofPeriod = number - cycle * _days.total();
    const std::int32_t day = dayOfSecond(ofPeriod);
    const std::int64_t ofDay = ofPeriod - _days.before(day);

    // The last interval with no more seconds before it.
    const CalendarPlan::Span* span = _days.spansBegin(day);
    for (std::size_t left = _days.spanCount(day); left > 1;) {
        const std::size_t half = left / 2;
        span = span[half].before <= ofDay ? span + half : span;
        left -= half;
    }
    const std::int64_t inPeriod = (day - 1) * kDay + span->start + (ofDay - span->before);
    if (cycle > (kLast - inPeriod) / _periodLength) return std::nullopt;
    return cycle * _periodLength + inPeriod;
}

std::optional<Stretch> WorkingTimePlan::stretch(std::int64_t dayStart, const CalendarPlan::Span& span) const noexcept {
    if (dayStart > kLast - span.end) return std::nullopt;
    return Stretch{dayStart + span.start, dayStart + span.end};
}

std::optional<Stretch> WorkingTimePlan::current(std::int64_t moment) const noexcept {
    if (!isInside(moment)) return std::nullopt;
    const DayAndTime place = dayAndTime(moment);
    const auto* span = _days.firstEndingAfter(place.day, place.time);
    if (span->start > place.time) return std::nullopt;
    return stretch(startOf(place), *span);
}

std::optional<Stretch> WorkingTimePlan::next(std::int64_t moment) const noexcept {
    moment = std::max<std::int64_t>(moment, 0);
    if (!isInside(moment)) return std::nullopt;
    const DayAndTime place = dayAndTime(moment);
    const std::int64_t today = startOf(place);
    const std::int64_t start = _days.nextStart(place.day, place.time);
    if (start == CalendarPlan::kNever || today > kLast - start) return std::nullopt;
    return current(today + start);
}

std::optional<Stretch> WorkingTimePlan::previous(std::int64_t moment) const noexcept {
    if (moment <= 0) return std::nullopt;
    if (!_cyclic) moment = std::min(moment, _periodLength);
    // The second before belongs to the day on which an interval that ends just now lies.
    DayAndTime place = dayAndTime(moment - 1);
    ++place.time;
    const std::int64_t today = startOf(place);
    const auto* begin = _days.spansBegin(place.day);
    const auto* after = _days.firstEndingAfter(place.day, place.time);
    if (after != begin) return stretch(today, *(after - 1));

    const std::int64_t days = _toPreviousEnd[static_cast<std::size_t>(place.day - 1)];
    if (days == 0 || today < days * kDay) return std::nullopt;
    const DayAndTime then = dayAndTime(today - days * kDay);
    return stretch(startOf(then), _days.spansBegin(then.day)[_days.spanCount(then.day) - 1]);
}

}  // namespace qor::simcal
