// SPDX-License-Identifier: Apache-2.0
// The pairs of profiles that meet when two calendars are laid over each other.
#pragma once
#include <vector>

#include "platform/ISortedSet.h"
#include "simcal/QorDayProfile.h"

class QorCalendar;

namespace qor::simcal {

struct ProfilePair {
    const QorDayProfile* first;
    const QorDayProfile* second;
    ISortedSet<int> days;  // on which both hold
};

// In the order of the first day on which each pair meets; days beyond either day list are left out. One pass over the
// days.
std::vector<ProfilePair> pairsByDay(const QorCalendar& first, const QorCalendar& second);

}  // namespace qor::simcal
