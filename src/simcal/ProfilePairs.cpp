// SPDX-License-Identifier: Apache-2.0
#include "simcal/ProfilePairs.h"

#include <map>
#include <utility>

#include "simcal/QorCalendar.h"

namespace qor::simcal {

std::vector<ProfilePair> pairsByDay(const QorCalendar& first, const QorCalendar& second) {
    std::vector<ProfilePair> pairs;
    std::map<std::pair<const QorDayProfile*, const QorDayProfile*>, std::size_t> places;
    for (int day = 1; day <= first.getPeriodLengthInDays(); ++day) {
        const QorDayProfile* mine = first.getProfileOfDay(day);
        const QorDayProfile* theirs = second.getProfileOfDay(day);
        if (mine == nullptr || theirs == nullptr) break;
        const auto [place, isNew] = places.try_emplace({mine, theirs}, pairs.size());
        if (isNew) pairs.push_back({mine, theirs, {}});
        pairs[place->second].days.add(day);
        if (day == first.getPeriodLengthInDays()) break;
    }
    return pairs;
}

}  // namespace qor::simcal
