// SPDX-License-Identifier: Apache-2.0
// Sentences about why an answer of the working time is as it is. Nothing is written where nobody asked.
#pragma once
#include <cstdint>

#include "platform/SvString.h"
#include "simcal/QorCalendar.h"
#include "simcal/WorkingTimePlan.h"

namespace qor::simcal {

// "08:00", or "08:00:05" where the seconds are not 0.
std::string clockTime(std::int64_t secondOfDay);

class WorkingTimeReasons {
public:
    WorkingTimeReasons(const QorCalendar& calendar, const WorkingTimePlan& plan, SV::String* why)
        : _calendar(calendar), _plan(plan), _why(why) {}

    void explain(std::int64_t moment) const {
        if (_why != nullptr) *_why = sentence(moment);
    }
    // These say why the work cannot be placed, and return the code for it.
    QorCalendarErrorCode neverOpen() const;
    QorCalendarErrorCode periodEndsTooEarly(std::int64_t missing) const;
    QorCalendarErrorCode periodStartsTooLate(std::int64_t missing) const;

private:
    [[nodiscard]] SV::String sentence(std::int64_t moment) const;

    const QorCalendar& _calendar;
    const WorkingTimePlan& _plan;
    SV::String* _why;
};

}  // namespace qor::simcal
