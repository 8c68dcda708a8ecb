// SPDX-License-Identifier: Apache-2.0
#include <limits>

#include "platform/QorGuard.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/CalendarPlan.h"
#include "simcal/QorCalendar.h"

using Code = QorCalendarErrorCode;
using qor::simcal::CalendarPlan;
using qor::simcal::DayBounds;
using qor::simcal::Place;

namespace {

constexpr std::int64_t kDay = QorCalendar::kSecondsPerDay;
constexpr std::int32_t kEndOfDay = QorCalendar::kSecondsPerDay;

constexpr std::int64_t wrappingSum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

constexpr std::int32_t wrappingProduct(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

constexpr std::int32_t wrapped(std::int64_t value) { return static_cast<std::int32_t>(value); }

// Where an instant lies. Two products are taken in 32 bits, as the simulation's clock does: a period of 24,856 days
// or more that does not repeat counts as over from its start.
Code placeOf(std::int64_t instant, std::int64_t offset, bool cyclic, std::int32_t periodLength, Place& place) {
    const std::int64_t seconds = wrappingSum(instant, offset);
    if (!cyclic && seconds > wrappingProduct(periodLength, kEndOfDay)) return Code::BeyondPeriod;
    if (periodLength < 1) return Code::CalendarInconsistent;

    std::int64_t day = seconds / kDay;
    std::int32_t cycle = 0;
    if (day >= periodLength) {
        cycle = wrapped(day / periodLength);
        day %= periodLength;
    }
    place.cycle = cycle;
    // Days long before the period stay below 1 instead of wrapping to some day of it.
    place.day = static_cast<std::int32_t>(std::max<std::int64_t>(day + 1, std::numeric_limits<std::int32_t>::min()));
    // Negative within the last day before the period. Where the product has wrapped, what is missing is a multiple of
    // 2^32 days, which vanishes in the 32 bits of a time.
    place.time = wrapped(seconds - (wrappingProduct(cycle, periodLength) + day) * kDay);
    return Code::Ok;
}

}  // namespace

const CalendarPlan& QorCalendar::plan() const {
    if (!_plan || _plan->revision() != _revision) [[unlikely]]
        _plan = std::make_unique<CalendarPlan>(*this, DayBounds::AsTheyAre);
    return *_plan;
}

Code QorCalendar::currentTimeAsDayAndTime(const std::int64_t& instant, int& cycle, int& day,
                                          SV::Time& timeOfDay) const noexcept {
    Place place;
    if (const Code code = placeOf(instant, _offset, _cyclic != 0, _periodLength, place); code != Code::Ok) return code;
    cycle = place.cycle;
    day = place.day;
    timeOfDay = SV::Time(0, 0, place.time);
    return Code::Ok;
}

Code QorCalendar::placesOf(const std::int64_t& from, const std::int64_t& to, Place& first,
                           Place& second) const noexcept {
    if (from > to) return Code::FirstAfterSecond;
    if (const Code code = placeOf(from, _offset, _cyclic != 0, _periodLength, first); code != Code::Ok) return code;
    if (const Code code = placeOf(to, _offset, _cyclic != 0, _periodLength, second); code != Code::Ok) return code;
    const auto dayCount = static_cast<std::int64_t>(_days.size());
    if (first.day < 1 || first.day > dayCount || second.day < 1 || second.day > dayCount)
        return Code::CalendarInconsistent;
    // Instants so large that the offset makes them wrap can change their order.
    const bool sameDay = first.cycle == second.cycle && first.day == second.day;
    return second.time < (sameDay ? first.time : 0) ? Code::FirstAfterSecond : Code::Ok;
}

Code QorCalendar::getCurrentInterval(const std::int64_t& instant,
                                     QorDayIntervalWithProperty*& interval) const noexcept {
    interval = nullptr;
    int cycle = 0;
    int day = 0;
    SV::Time time;
    if (const Code code = currentTimeAsDayAndTime(instant, cycle, day, time); code != Code::Ok) return code;
    const QorDayProfile* profile = getProfileOfDay(day);
    return profile == nullptr ? Code::CalendarInconsistent : profile->getCurrentInterval(time, interval);
}

Code QorCalendar::howLongUntilStartOfNextInterval(const std::int64_t& instant, std::int64_t& seconds) const noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] {
        Place place;
        const Code code = placeOf(instant, _offset, _cyclic != 0, _periodLength, place);
        if (code != Code::Ok) return code == Code::BeyondPeriod ? Code::NoNextInterval : code;
        const CalendarPlan& plan = this->plan();
        if (!plan.hasDay(place.day)) return Code::CalendarInconsistent;

        std::int32_t days = 0;
        const auto* span = plan.firstStartingFrom(place.day, place.time);
        if (CalendarPlan::isEndMark(*span)) {
            days = plan.day(place.day).toNextStart;
            if (days == 0) return Code::NoNextInterval;
            std::int64_t target = std::int64_t{place.day} + days;
            if (target > _periodLength) {
                if (_cyclic == 0) return Code::NoNextInterval;
                target -= _periodLength;
            }
            span = plan.spansBegin(static_cast<std::int32_t>(target));
        }
        seconds = wrapped(std::int64_t{wrappingProduct(days, kEndOfDay)} - place.time + span->start);
        return Code::Ok;
    });
}

Code QorCalendar::howLongUntilEndOfInterval(const std::int64_t& instant, std::int64_t& seconds) const noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] {
        Place place;
        if (const Code code = placeOf(instant, _offset, _cyclic != 0, _periodLength, place); code != Code::Ok)
            return code;
        const CalendarPlan& plan = this->plan();
        if (!plan.hasDay(place.day)) return Code::CalendarInconsistent;
        const auto* span = plan.firstEndingAfter(place.day, place.time);
        if (span->start > place.time) return Code::NoInterval;
        seconds = std::int64_t{span->end} - place.time;
        return Code::Ok;
    });
}

Code QorCalendar::isInCurrentInterval(const std::int64_t& instant, const std::int64_t& duration,
                                      int& result) const noexcept {
    if (duration > kDay) {
        result = 0;
        return Code::Ok;
    }
    Place first;
    Place second;
    const std::int64_t end = wrappingSum(instant, duration);
    if (const Code code = placeOf(instant, _offset, _cyclic != 0, _periodLength, first); code != Code::Ok) return code;
    if (const Code code = placeOf(end, _offset, _cyclic != 0, _periodLength, second); code != Code::Ok) return code;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        const CalendarPlan& plan = this->plan();
        result = 0;
        if (first.day != second.day || !plan.hasDay(first.day)) return Code::Ok;
        const auto* span = plan.firstEndingAfter(first.day, first.time);
        const bool bothInside = span->start <= first.time && span->start <= second.time && second.time < span->end;
        result = bothInside ? 1 : 0;
        return Code::Ok;
    });
}

Code QorCalendar::getTimeIntervalsSumInBetween(const std::int64_t& from, const std::int64_t& to,
                                               std::int64_t& seconds) const noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] {
        Place first;
        Place second;
        if (const Code code = placesOf(from, to, first, second); code != Code::Ok) return code;
        const CalendarPlan& plan = this->plan();
        if (first.cycle == second.cycle && first.day == second.day) {
            seconds = plan.between(first.day, first.time, second.time);
            return Code::Ok;
        }

        // Every part is a whole number, so the sum of doubles is exact wherever it fits 32 bits in the end.
        double sum = static_cast<double>(plan.between(first.day, first.time, kEndOfDay)) +
                     static_cast<double>(plan.between(second.day, 0, second.time));
        if (first.cycle == second.cycle) {
            sum += static_cast<double>(plan.sumOfDays(first.day + 1, second.day - 1));
        } else {
            sum += static_cast<double>(plan.sumOfDays(first.day + 1, _periodLength));
            sum += static_cast<double>(plan.sumOfDays(1, second.day - 1));
            const std::int64_t wholeCycles = std::int64_t{second.cycle} - first.cycle - 1;
            if (wholeCycles > 0) sum += static_cast<double>(wholeCycles) * static_cast<double>(plan.total());
        }
        const bool fits = sum <= static_cast<double>(std::numeric_limits<std::int32_t>::max());
        seconds = fits ? static_cast<std::int32_t>(sum) : std::numeric_limits<std::int32_t>::min();
        return fits ? Code::Ok : Code::DoesNotFit;
    });
}

Code QorCalendar::getTimeIntervalsSumOfPeriod(std::int64_t& seconds) const noexcept {
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        seconds = plan().total();
        return Code::Ok;
    });
}

Code QorCalendar::isCoveredWholly(const std::int64_t& from, const std::int64_t& to, int& result) const noexcept {
    result = 0;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        Place first;
        Place second;
        if (const Code code = placesOf(from, to, first, second); code != Code::Ok) return code;
        const CalendarPlan& plan = this->plan();
        if (first.cycle == second.cycle && first.day == second.day) {
            const std::int64_t open = plan.between(first.day, first.time, second.time);
            result = open == std::int64_t{second.time} - first.time ? 1 : 0;
            return Code::Ok;
        }

        if (plan.between(first.day, first.time, kEndOfDay) != kDay - first.time ||
            plan.between(second.day, 0, second.time) != std::max(second.time, 0))
            return Code::Ok;
        const std::int64_t cycles = std::int64_t{second.cycle} - first.cycle;
        bool covered = false;
        if (cycles == 0)
            covered = plan.areWholeDays(first.day + 1, second.day - 1);
        else if (cycles == 1)
            covered = plan.areWholeDays(first.day + 1, _periodLength) && plan.areWholeDays(1, second.day - 1);
        else
            covered = plan.allProfilesAreWholeDays();
        result = covered ? 1 : 0;
        return Code::Ok;
    });
}
