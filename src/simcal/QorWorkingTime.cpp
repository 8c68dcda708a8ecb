// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorWorkingTime.h"

#include <limits>
#include <optional>

#include "platform/QorGuard.h"
#include "simcal/QorCalendar.h"
#include "simcal/WorkingTimePlan.h"
#include "simcal/WorkingTimeReasons.h"

using Code = QorCalendarErrorCode;
using qor::simcal::Stretch;
using qor::simcal::WorkingTimePlan;
using qor::simcal::WorkingTimeReasons;

namespace {

// Moments count from the period's start, instants on the simulation's clock. Both are cut off at the ends of 64 bits:
// working time so far away has no consequence but its size.
std::int64_t momentOf(std::int64_t instant, std::int64_t offset) {
    std::int64_t moment = 0;
    if (!__builtin_add_overflow(instant, offset, &moment)) return moment;
    return offset > 0 ? std::numeric_limits<std::int64_t>::max() : std::numeric_limits<std::int64_t>::min();
}

// Nothing beyond 64 bits.
std::optional<std::int64_t> instantOf(std::int64_t moment, std::int64_t offset) {
    std::int64_t instant = 0;
    if (__builtin_sub_overflow(moment, offset, &instant)) return std::nullopt;
    return instant;
}

Code store(const std::optional<Stretch>& found, std::int64_t offset, Code none, std::int64_t& start,
           std::int64_t& end) {
    if (!found) return none;
    const auto foundStart = instantOf(found->start, offset);
    const auto foundEnd = instantOf(found->end, offset);
    if (!foundStart || !foundEnd) return Code::DoesNotFit;
    start = *foundStart;
    end = *foundEnd;
    return Code::Ok;
}

}  // namespace

QorWorkingTime::QorWorkingTime(const QorCalendar& calendar) noexcept : _calendar(calendar) {}

QorWorkingTime::~QorWorkingTime() = default;

// Runs `call(plan, reasons)` on an up-to-date plan of a complete calendar.
template <class Call>
Code QorWorkingTime::ask(SV::String* why, Call&& call) const noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&]() -> Code {
        if (!_plan || _plan->revision() != _calendar.getRevision())
            _plan = std::make_unique<WorkingTimePlan>(_calendar);
        if (!_plan->isComplete()) return Code::CalendarInconsistent;
        return call(*_plan, WorkingTimeReasons(_calendar, *_plan, why));
    });
}

Code QorWorkingTime::sumBetween(std::int64_t from, std::int64_t to, std::int64_t& seconds) const noexcept {
    if (from > to) return Code::FirstAfterSecond;
    const std::int64_t offset = _calendar.getOffsetInSeconds();
    return ask(nullptr, [&](const WorkingTimePlan& plan, const WorkingTimeReasons&) {
        seconds = plan.workedBefore(momentOf(to, offset)) - plan.workedBefore(momentOf(from, offset));
        return Code::Ok;
    });
}

Code QorWorkingTime::finishOf(std::int64_t start, std::int64_t seconds, std::int64_t& finish,
                              SV::String* why) const noexcept {
    if (seconds < 0) return Code::FirstAfterSecond;
    const std::int64_t offset = _calendar.getOffsetInSeconds();
    return ask(why, [&](const WorkingTimePlan& plan, const WorkingTimeReasons& reasons) {
        if (seconds == 0) {
            reasons.explain(momentOf(start, offset));
            finish = start;
            return Code::Ok;
        }
        if (plan.isNeverOpen()) return reasons.neverOpen();
        const std::int64_t worked = plan.workedBefore(momentOf(start, offset));
        if (!plan.isCyclic() && seconds > plan.secondsOfPeriod() - worked)
            return reasons.periodEndsTooEarly(seconds - (plan.secondsOfPeriod() - worked));
        std::int64_t count = 0;
        if (__builtin_add_overflow(worked, seconds - 1, &count)) return Code::DoesNotFit;
        const auto lastSecond = plan.beginOfSecond(count);
        if (!lastSecond || *lastSecond == std::numeric_limits<std::int64_t>::max()) return Code::DoesNotFit;
        // The task is done when its last second is over.
        const auto instant = instantOf(*lastSecond + 1, offset);
        if (!instant) return Code::DoesNotFit;
        reasons.explain(*lastSecond + 1);
        finish = *instant;
        return Code::Ok;
    });
}

Code QorWorkingTime::latestStartFor(std::int64_t finish, std::int64_t seconds, std::int64_t& start,
                                    SV::String* why) const noexcept {
    if (seconds < 0) return Code::FirstAfterSecond;
    const std::int64_t offset = _calendar.getOffsetInSeconds();
    return ask(why, [&](const WorkingTimePlan& plan, const WorkingTimeReasons& reasons) {
        if (seconds == 0) {
            reasons.explain(momentOf(finish, offset));
            start = finish;
            return Code::Ok;
        }
        if (plan.isNeverOpen()) return reasons.neverOpen();
        const std::int64_t worked = plan.workedBefore(momentOf(finish, offset));
        if (seconds > worked) return reasons.periodStartsTooLate(seconds - worked);
        const auto firstSecond = plan.beginOfSecond(worked - seconds);
        const auto instant = firstSecond ? instantOf(*firstSecond, offset) : std::nullopt;
        if (!instant) return Code::DoesNotFit;
        reasons.explain(*firstSecond);
        start = *instant;
        return Code::Ok;
    });
}

Code QorWorkingTime::currentInterval(std::int64_t instant, std::int64_t& start, std::int64_t& end,
                                     SV::String* why) const noexcept {
    const std::int64_t offset = _calendar.getOffsetInSeconds();
    return ask(why, [&](const WorkingTimePlan& plan, const WorkingTimeReasons& reasons) {
        const std::int64_t moment = momentOf(instant, offset);
        reasons.explain(moment);
        return store(plan.current(moment), offset, Code::NoInterval, start, end);
    });
}

Code QorWorkingTime::nextInterval(std::int64_t instant, std::int64_t& start, std::int64_t& end,
                                  SV::String* why) const noexcept {
    const std::int64_t offset = _calendar.getOffsetInSeconds();
    return ask(why, [&](const WorkingTimePlan& plan, const WorkingTimeReasons& reasons) {
        const std::int64_t moment = momentOf(instant, offset);
        reasons.explain(moment);
        return store(plan.next(moment), offset, Code::NoNextInterval, start, end);
    });
}

Code QorWorkingTime::previousInterval(std::int64_t instant, std::int64_t& start, std::int64_t& end,
                                      SV::String* why) const noexcept {
    const std::int64_t offset = _calendar.getOffsetInSeconds();
    return ask(why, [&](const WorkingTimePlan& plan, const WorkingTimeReasons& reasons) {
        const std::int64_t moment = momentOf(instant, offset);
        reasons.explain(moment);
        return store(plan.previous(moment), offset, Code::NoNextInterval, start, end);
    });
}

Code QorWorkingTime::isNeverOpen(int& never) const noexcept {
    return ask(nullptr, [&](const WorkingTimePlan& plan, const WorkingTimeReasons&) {
        never = plan.isNeverOpen() ? 1 : 0;
        return Code::Ok;
    });
}

Code QorWorkingTime::canEverFinish(std::int64_t seconds, int& can) const noexcept {
    return ask(nullptr, [&](const WorkingTimePlan& plan, const WorkingTimeReasons&) {
        const bool enough = seconds <= plan.secondsOfPeriod() || (plan.isCyclic() && !plan.isNeverOpen());
        can = enough ? 1 : 0;
        return Code::Ok;
    });
}

Code QorWorkingTime::explain(std::int64_t instant, SV::String& why) const noexcept {
    return ask(&why, [&](const WorkingTimePlan&, const WorkingTimeReasons& reasons) {
        reasons.explain(momentOf(instant, _calendar.getOffsetInSeconds()));
        return Code::Ok;
    });
}
