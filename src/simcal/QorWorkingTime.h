// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "simcal/QorCalendarErrorCode.h"

class QorCalendar;

namespace qor::simcal {
class WorkingTimePlan;
}

/// Working time of a calendar in both directions, in 64 bits and with reasons: what is left of an instant to plan with.
///
/// Working time is the time inside the intervals of the days, from 00:00:00 to 24:00:00, whatever their flags or
/// distributions. Nothing is worked before the period starts or, unless the calendar is cyclic, after it ends; a period
/// of any length counts in full. Where QorCalendar answers the same question within its 32 bits, both answers agree.
///
/// Answers take the same time for any distance and, but for the intervals of one day, any period. They are
/// prepared when first asked for and follow changes of the calendar. The calendar must live as long as this object.
///
/// Every operation gives CalendarInconsistent when the calendar has no complete day list. On a failure the numbers stay
/// as they were. `why`, where it is handed in, gets one sentence of the current language about the instant found ("open
/// at 09:30, day 2, profile Workday; interval ends 12:00") or about the failure.
class QOR_API QorWorkingTime {
public:
    explicit QorWorkingTime(const QorCalendar& calendar) noexcept;
    QorWorkingTime(const QorWorkingTime&) = delete;
    QorWorkingTime& operator=(const QorWorkingTime&) = delete;
    ~QorWorkingTime();

    /// Seconds of working time between two instants. FirstAfterSecond.
    QorCalendarErrorCode sumBetween(std::int64_t from, std::int64_t to, std::int64_t& seconds) const noexcept;
    /// The earliest instant at which `seconds` of working time have passed since `start`; for 0 seconds `start` itself.
    /// NoNextInterval when the calendar is never open or its period ends before; FirstAfterSecond for less than 0
    /// seconds; DoesNotFit when the instant exceeds 64 bits.
    QorCalendarErrorCode finishOf(std::int64_t start, std::int64_t seconds, std::int64_t& finish,
                                  SV::String* why = nullptr) const noexcept;
    /// The latest instant from which `seconds` of working time pass until `finish`; for 0 seconds `finish` itself.
    /// NoNextInterval when the calendar is never open or its period begins after it; FirstAfterSecond.
    QorCalendarErrorCode latestStartFor(std::int64_t finish, std::int64_t seconds, std::int64_t& start,
                                        SV::String* why = nullptr) const noexcept;

    /// The interval that holds the instant. NoInterval.
    QorCalendarErrorCode currentInterval(std::int64_t instant, std::int64_t& start, std::int64_t& end,
                                         SV::String* why = nullptr) const noexcept;
    /// The first interval that does not start before the instant. NoNextInterval.
    QorCalendarErrorCode nextInterval(std::int64_t instant, std::int64_t& start, std::int64_t& end,
                                      SV::String* why = nullptr) const noexcept;
    /// The last interval that does not end after the instant. NoNextInterval.
    QorCalendarErrorCode previousInterval(std::int64_t instant, std::int64_t& start, std::int64_t& end,
                                          SV::String* why = nullptr) const noexcept;

    /// `never` becomes 1 when no day has any working time, else 0.
    QorCalendarErrorCode isNeverOpen(int& never) const noexcept;
    /// `can` becomes 1 when the calendar has working time enough for a task, wherever it is started; else 0.
    QorCalendarErrorCode canEverFinish(std::int64_t seconds, int& can) const noexcept;
    /// Says what holds at an instant, and until when.
    QorCalendarErrorCode explain(std::int64_t instant, SV::String& why) const noexcept;

private:
    template <class Call>
    QorCalendarErrorCode ask(SV::String* why, Call&& call) const noexcept;

    const QorCalendar& _calendar;
    mutable std::unique_ptr<qor::simcal::WorkingTimePlan> _plan;
};
