// SPDX-License-Identifier: Apache-2.0
#include "simcal/IntervalCollector.h"

#include <iterator>
#include <utility>

namespace qor::simcal {

using Code = QorCalendarErrorCode;

Code IntervalCollector::add(std::unique_ptr<QorDayIntervalWithProperty> interval) {
    SV::Time start;
    SV::Time end;
    if (const Code code = interval->getStartTime(start); code != Code::Ok) return code;
    if (const Code code = interval->getEndTime(end); code != Code::Ok) return code;
    if (!_anyOrder.empty() || start < _lastEnd) return addAnywhere(std::move(interval), start, end);
    _inOrder.push_back(std::move(interval));
    _lastEnd = end;
    return Code::Ok;
}

Code IntervalCollector::addAnywhere(std::unique_ptr<QorDayIntervalWithProperty> interval, SV::Time start,
                                    SV::Time end) {
    for (auto& earlier : std::exchange(_inOrder, {})) {
        SV::Time earlierStart;
        (void)earlier->getStartTime(earlierStart);  // it was added, so it is consistent
        _anyOrder.emplace_hint(_anyOrder.end(), earlierStart, std::move(earlier));
    }
    const auto place = _anyOrder.lower_bound(end);
    if (place != _anyOrder.begin()) {
        SV::Time previousEnd;
        (void)std::prev(place)->second->getEndTime(previousEnd);
        if (start < previousEnd) return Code::IntervalOverlaps;
    }
    _anyOrder.emplace_hint(place, start, std::move(interval));
    return Code::Ok;
}

IntervalCollector::Intervals IntervalCollector::take() {
    for (auto& [start, interval] : _anyOrder) _inOrder.push_back(std::move(interval));
    _anyOrder.clear();
    _lastEnd = SV::Time();
    return std::exchange(_inOrder, {});
}

}  // namespace qor::simcal
