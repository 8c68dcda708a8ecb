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

// What of a calendar decides where an instant lies.
struct Clock {
    std::int64_t offset;
    bool cyclic;
    std::int32_t periodLength;
};

// Two products are taken in 32 bits, as the simulation's clock does: a period of 24,856 days or more that does not
// repeat counts as over from its start.
[[gnu::always_inline]] inline Code locate(const Clock& clock, std::int64_t instant, Place& place) {
    const std::int64_t seconds = wrappingSum(instant, clock.offset);
    if (!clock.cyclic && seconds > wrappingProduct(clock.periodLength, kEndOfDay)) return Code::BeyondPeriod;
    if (clock.periodLength < 1) return Code::CalendarInconsistent;

    std::int64_t day = seconds / kDay;
    std::int32_t cycle = 0;
    if (day >= clock.periodLength) {
        const std::int64_t wholeCycles = day / clock.periodLength;
        day -= wholeCycles * clock.periodLength;
        cycle = wrapped(wholeCycles);
    }
    place.cycle = cycle;
    // Days long before the period stay below 1 instead of wrapping to some day of it.
    place.day = static_cast<std::int32_t>(std::max<std::int64_t>(day + 1, std::numeric_limits<std::int32_t>::min()));
    // Negative within the last day before the period. Where the product has wrapped, what is missing is a multiple of
    // 2^32 days, which vanishes in the 32 bits of a time.
    place.time = wrapped(seconds - (wrappingProduct(cycle, clock.periodLength) + day) * kDay);
    return Code::Ok;
}

// Both ends of a span, on days of the plan.
[[gnu::always_inline]] inline Code locateSpan(const Clock& clock, const CalendarPlan& plan, std::int64_t from,
                                              std::int64_t to, Place& first, Place& second) {
    if (const Code code = locate(clock, from, first); code != Code::Ok) return code;
    if (const Code code = locate(clock, to, second); code != Code::Ok) return code;
    if (!plan.hasDay(first.day) || !plan.hasDay(second.day)) return Code::CalendarInconsistent;
    // Instants so large that the offset makes them wrap can change their order.
    const bool sameDay = first.cycle == second.cycle && first.day == second.day;
    return second.time < (sameDay ? first.time : 0) ? Code::FirstAfterSecond : Code::Ok;
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
    if (const Code code = locate({_offset, _cyclic != 0, _periodLength}, instant, place); code != Code::Ok) return code;
    cycle = place.cycle;
    day = place.day;
    timeOfDay = SV::Time(0, 0, place.time);
    return Code::Ok;
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
        const Code code = locate({_offset, _cyclic != 0, _periodLength}, instant, place);
        if (code != Code::Ok) return code == Code::BeyondPeriod ? Code::NoNextInterval : code;
        const CalendarPlan& plan = this->plan();
        if (!plan.hasDay(place.day)) return Code::CalendarInconsistent;

        const std::int64_t start = plan.nextStart(place.day, place.time);
        if (start == CalendarPlan::kNever) return Code::NoNextInterval;
        seconds = wrapped(start - place.time);
        return Code::Ok;
    });
}

Code QorCalendar::howLongUntilEndOfInterval(const std::int64_t& instant, std::int64_t& seconds) const noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] {
        Place place;
        if (const Code code = locate({_offset, _cyclic != 0, _periodLength}, instant, place); code != Code::Ok)
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
    const Clock clock{_offset, _cyclic != 0, _periodLength};
    if (const Code code = locate(clock, instant, first); code != Code::Ok) return code;
    if (const Code code = locate(clock, end, second); code != Code::Ok) return code;
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
    if (from > to) return Code::FirstAfterSecond;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        const CalendarPlan& plan = this->plan();
        const Clock clock{_offset, _cyclic != 0, _periodLength};
        Place first;
        Place second;
        if (const Code code = locateSpan(clock, plan, from, to, first, second); code != Code::Ok) return code;
        if (first.cycle == second.cycle && first.day == second.day) {
            seconds = plan.between(first.day, first.time, second.time);
            return Code::Ok;
        }

        std::int64_t cycles = std::int64_t{second.cycle} - first.cycle;
        std::int64_t ofDays = plan.before(second.day) - plan.before(first.day + 1);
        if (cycles < 0 || (cycles == 0 && second.day < first.day)) [[unlikely]] {
            // Only instants so large that they wrap come here: no whole cycle and no day lies between them.
            cycles = cycles < 0 ? 1 : 0;
            ofDays = cycles != 0 ? ofDays : 0;
        }
        std::int64_t sum = 0;
        const bool fits =
            !__builtin_mul_overflow(cycles, plan.total(), &sum) &&
            !__builtin_add_overflow(
                sum, ofDays + plan.fromTime(first.day, first.time) + plan.toTime(second.day, second.time), &sum) &&
            sum <= std::numeric_limits<std::int32_t>::max();
        seconds = fits ? sum : std::numeric_limits<std::int32_t>::min();
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
    if (from > to) return Code::FirstAfterSecond;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        const CalendarPlan& plan = this->plan();
        const Clock clock{_offset, _cyclic != 0, _periodLength};
        Place first;
        Place second;
        if (const Code code = locateSpan(clock, plan, from, to, first, second); code != Code::Ok) return code;
        if (first.cycle == second.cycle && first.day == second.day) {
            const std::int64_t open = plan.between(first.day, first.time, second.time);
            result = open == std::int64_t{second.time} - first.time ? 1 : 0;
            return Code::Ok;
        }

        if (plan.fromTime(first.day, first.time) != kDay - first.time ||
            plan.toTime(second.day, second.time) != second.time)
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
