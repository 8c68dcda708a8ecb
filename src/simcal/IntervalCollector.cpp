// SPDX-License-Identifier: Apache-2.0
#include "simcal/IntervalCollector.h"

#include <iterator>
#include <utility>

namespace qor::simcal {

using Code = QorCalendarErrorCode;

Code IntervalCollector::add(IntervalParts interval) {
    if (!(interval.start < interval.end)) return Code::IntervalInconsistent;
    if (!_anyOrder.empty() || interval.start < _lastEnd) return addAnywhere(std::move(interval));
    _lastEnd = interval.end;
    _inOrder.push_back(std::move(interval));
    return Code::Ok;
}

Code IntervalCollector::addAnywhere(IntervalParts interval) {
    for (IntervalParts& earlier : _inOrder) _anyOrder.emplace_hint(_anyOrder.end(), earlier.start, std::move(earlier));
    _inOrder.clear();
    const auto place = _anyOrder.lower_bound(interval.end);
    if (place != _anyOrder.begin() && interval.start < std::prev(place)->second.end) return Code::IntervalOverlaps;
    _anyOrder.emplace_hint(place, interval.start, std::move(interval));
    return Code::Ok;
}

std::vector<IntervalParts>& IntervalCollector::sorted() {
    for (auto& [start, interval] : _anyOrder) _inOrder.push_back(std::move(interval));
    _anyOrder.clear();
    return _inOrder;
}

void IntervalCollector::clear() {
    _inOrder.clear();
    _anyOrder.clear();
    _lastEnd = SV::Time();
}

}  // namespace qor::simcal
