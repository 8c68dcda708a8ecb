// SPDX-License-Identifier: Apache-2.0
// Takes the intervals of one profile in any order, as QorDayProfile does one by one, but without moving those behind:
// a text may hold a day's 86,400 seconds backwards.
#pragma once
#include <map>
#include <memory>
#include <vector>

#include "simcal/QorDayIntervalWithProperty.h"

namespace qor::simcal {

class IntervalCollector {
public:
    using Intervals = std::vector<std::unique_ptr<QorDayIntervalWithProperty>>;

    // IntervalInconsistent, IntervalOverlaps.
    QorCalendarErrorCode add(std::unique_ptr<QorDayIntervalWithProperty> interval);
    // All intervals by their start; the collector is empty afterwards.
    [[nodiscard]] Intervals take();

private:
    QorCalendarErrorCode addAnywhere(std::unique_ptr<QorDayIntervalWithProperty> interval, SV::Time start,
                                     SV::Time end);

    Intervals _inOrder;
    SV::Time _lastEnd;
    // By start; holds all intervals from the first one on that came out of order.
    std::map<SV::Time, std::unique_ptr<QorDayIntervalWithProperty>> _anyOrder;
};

}  // namespace qor::simcal
