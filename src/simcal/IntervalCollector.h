// SPDX-License-Identifier: Apache-2.0
// Takes the intervals of one profile in any order, as QorDayProfile does one by one, but without moving those behind:
// a text may hold a day's 86,400 seconds backwards.
#pragma once
#include <map>
#include <string>
#include <vector>

#include "simcal/IntervalParts.h"
#include "simcal/QorCalendarErrorCode.h"

namespace qor::simcal {

class IntervalCollector {
public:
    // IntervalInconsistent, IntervalOverlaps.
    QorCalendarErrorCode add(IntervalParts interval);
    // All intervals by their start, until the next one is added or they are cleared away.
    [[nodiscard]] std::vector<IntervalParts>& sorted();
    void clear();

private:
    QorCalendarErrorCode addAnywhere(IntervalParts interval);

    std::vector<IntervalParts> _inOrder;
    SV::Time _lastEnd;
    // By start; holds all intervals from the first one on that came out of order.
    std::map<SV::Time, IntervalParts> _anyOrder;
};

}  // namespace qor::simcal
