// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorDayProfile.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/QorGuard.h"
#include "simcal/IntervalParts.h"
#include "simcal/QorDistribution.h"
#include "simcal/WeightedMean.h"

using Code = QorCalendarErrorCode;

void qor::simcal::ReleaseInterval::operator()(QorDayIntervalWithProperty* interval) const noexcept {
    if (!interval->_isInBlock)
        delete interval;
    else if (interval->_distribution != nullptr)
        interval->_distribution->clear();
}

QorDayProfile::QorDayProfile(QorCalendarPropertyType type, char identifier, const SV::String& name) noexcept
    : _type(type), _identifier(identifier) {
    _isWhole = Qor_Guarded("calendar", false, [&] {
        _name = name;
        return true;
    });
}

QorDayProfile::QorDayProfile(const QorDayProfile& other) noexcept
    : QorDayProfile(other._type, other._identifier, other._name) {
    _isWhole = _isWhole && Qor_Guarded("calendar", false, [&] {
                   const auto copy = exactCopy(other);
                   _distributions = std::move(copy->_distributions);
                   _block = std::move(copy->_block);
                   _intervals = std::move(copy->_intervals);
                   return true;
               });
}

QorDayProfile::~QorDayProfile() = default;

std::unique_ptr<QorDayProfile> QorDayProfile::exactCopy(const QorDayProfile& other) {
    // What could not be copied before for lack of memory must not pass for the whole.
    if (!other._isWhole) throw std::bad_alloc();
    auto copy = std::make_unique<QorDayProfile>(other._type, other._identifier, SV::String());
    copy->_name = other._name;
    copy->makeIntervals(other._intervals.size());
    for (std::size_t i = 0; i < other._intervals.size(); ++i) copy->_intervals[i]->copyFrom(*other._intervals[i]);
    return copy;
}

void QorDayProfile::makeIntervals(std::size_t count) {
    _intervals.reserve(count);
    if (count == 0) return;
    _block.reset(new QorDayIntervalWithProperty[count]);
    for (std::size_t i = 0; i < count; ++i) _intervals.emplace_back(&_block[i]);
    if (_type != QorCalendarPropertyType::Distribution) return;
    _distributions.reset(new QorDistribution[count]);
    for (std::size_t i = 0; i < count; ++i) _block[i]._distribution = &_distributions[i];
}

void QorDayProfile::takeOver(std::vector<qor::simcal::IntervalParts>& intervals) {
    makeIntervals(intervals.size());
    for (std::size_t i = 0; i < intervals.size(); ++i) _intervals[i]->takeOver(std::move(intervals[i]));
}

void QorDayProfile::changed() noexcept {
    if (_ownerRevision != nullptr) ++*_ownerRevision;
}

Code QorDayProfile::insertDayIntervalWithProperty(const QorDayIntervalWithProperty& interval) noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] {
        Interval copy(new QorDayIntervalWithProperty(interval._start, interval._end, 0));
        copy->copyFrom(interval);
        return insert(std::move(copy));
    });
}

Code QorDayProfile::insert(Interval interval) {
    if (interval->getPropertyType() != _type) return Code::WrongPropertyType;
    SV::Time start;
    SV::Time end;
    if (const Code code = interval->getStartTime(start); code != Code::Ok) return code;
    if (const Code code = interval->getEndTime(end); code != Code::Ok) return code;

    // In front of the first interval that does not start before the new one ends.
    const auto startsBeforeEnd = [end](const auto& other) { return other->_start < end; };
    const auto place = _intervals.empty() || startsBeforeEnd(_intervals.back())
                           ? _intervals.end()
                           : std::partition_point(_intervals.begin(), _intervals.end(), startsBeforeEnd);
    if (place != _intervals.begin() && start < (*std::prev(place))->_end) return Code::IntervalOverlaps;
    _intervals.insert(place, std::move(interval));
    changed();
    return Code::Ok;
}

Code QorDayProfile::deleteIntervalAtPosition(int position) noexcept {
    if (position < 1 || position > getNumberOfIntervals()) return Code::PositionOutOfRange;
    _intervals.erase(_intervals.begin() + (position - 1));
    changed();
    return Code::Ok;
}

Code QorDayProfile::getIntervalAtPosition(int position, QorDayIntervalWithProperty*& interval) const noexcept {
    interval = nullptr;
    if (position < 1 || position > getNumberOfIntervals()) return Code::PositionOutOfRange;
    interval = _intervals[static_cast<std::size_t>(position - 1)].get();
    return Code::Ok;
}

Code QorDayProfile::getCurrentInterval(SV::Time time, QorDayIntervalWithProperty*& interval) const noexcept {
    interval = nullptr;
    const auto found = std::partition_point(_intervals.begin(), _intervals.end(),
                                            [time](const auto& other) { return other->_end <= time; });
    if (found == _intervals.end() || time < (*found)->_start) return Code::NoInterval;
    interval = found->get();
    return Code::Ok;
}

Code QorDayProfile::getNextInterval(SV::Time time, QorDayIntervalWithProperty*& interval) const noexcept {
    interval = nullptr;
    const auto found = std::partition_point(_intervals.begin(), _intervals.end(),
                                            [time](const auto& other) { return other->_start < time; });
    if (found == _intervals.end()) return Code::NoNextInterval;
    interval = found->get();
    return Code::Ok;
}

Code QorDayProfile::getIntervalLengthSum(std::int64_t& seconds) const noexcept {
    std::int64_t sum = 0;
    for (const auto& interval : _intervals) {
        std::int64_t length = 0;
        if (const Code code = interval->getIntervalLengthInSeconds(length); code != Code::Ok) return code;
        sum += length;
    }
    seconds = sum;
    return Code::Ok;
}

Code QorDayProfile::getIntervalLengthSumInBetween(const SV::Time& from, const SV::Time& to,
                                                  std::int64_t& seconds) const noexcept {
    if (from > to) return Code::FirstAfterSecond;
    std::int64_t sum = 0;
    for (const auto& interval : _intervals) sum += interval->secondsBetween(from, to);
    seconds = sum;
    return Code::Ok;
}

Code QorDayProfile::weigh(SV::Time from, SV::Time to, qor::simcal::WeightedMean& mean) const noexcept {
    for (const auto& interval : _intervals) {
        const auto seconds = static_cast<double>(interval->secondsBetween(from, to));
        if (seconds == 0) continue;
        double value = 0;
        if (const Code code = interval->getExpectation(value); code != Code::Ok) return code;
        mean.add({value * seconds, seconds});
    }
    return Code::Ok;
}

Code QorDayProfile::getExpectation(double& expectation) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    if (_intervals.empty()) return Code::NoInterval;
    qor::simcal::WeightedMean mean;
    if (const Code code = weigh(_intervals.front()->_start, _intervals.back()->_end, mean); code != Code::Ok)
        return code;
    expectation = mean.sum / mean.seconds;
    return Code::Ok;
}

Code QorDayProfile::intersection(const QorDayProfile& other, QorDayProfile& result) const noexcept {
    for (const auto* profile : {this, &other, static_cast<const QorDayProfile*>(&result)}) {
        if (profile->_type != QorCalendarPropertyType::Flag) return Code::WrongPropertyType;
    }
    if (!_isWhole || !other._isWhole) return Code::Broken;
    // Each deletion moves the later intervals down, so every second one stays. Callers rely on the result being
    // emptied only as far as that, and hand in empty ones.
    for (int position = 1; position <= result.getNumberOfIntervals(); ++position)
        (void)result.deleteIntervalAtPosition(position);

    // Both lists are ordered, so the pairs that meet are found by walking them side by side. Positions are looked at
    // anew in each step: the result may be one of the two.
    return Qor_Guarded("calendar", Code::Broken, [&] {
        std::size_t here = 0;
        std::size_t there = 0;
        while (here < _intervals.size() && there < other._intervals.size()) {
            const auto& mine = *_intervals[here];
            const auto& theirs = *other._intervals[there];
            const bool mineEndsFirst = mine._end < theirs._end;
            SV::Time start;
            SV::Time end;
            const Code shared = QorDayIntervalWithProperty::intersectionInterval(mine, theirs, start, end);
            if (shared == Code::Ok) {
                if (const Code code = result.insert(Interval(new QorDayIntervalWithProperty(start, end, 1)));
                    code != Code::Ok)
                    return code;
            } else if (shared != Code::NoIntersection) {
                return shared;
            }
            ++(mineEndsFirst ? here : there);
        }
        return Code::Ok;
    });
}
