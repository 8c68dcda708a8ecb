// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorDayIntervalWithProperty.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/QorGuard.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/DistributionText.h"
#include "simcal/QorDistribution.h"

using Code = QorCalendarErrorCode;

QorDayIntervalWithProperty::QorDayIntervalWithProperty(SV::Time start, SV::Time end, int flag) noexcept
    : _start(start), _end(end), _type(QorCalendarPropertyType::Flag), _flag(flag) {}

QorDayIntervalWithProperty::QorDayIntervalWithProperty(SV::Time start, SV::Time end,
                                                       const QorDistribution* distribution) noexcept
    : _start(start), _end(end), _type(QorCalendarPropertyType::Distribution) {
    Qor_Guarded("calendar", [&] {
        _distribution =
            distribution != nullptr ? QorDistribution::exactCopy(*distribution) : std::make_unique<QorDistribution>();
    });
}

QorDayIntervalWithProperty::QorDayIntervalWithProperty(const QorDayIntervalWithProperty& other) noexcept
    : _start(other._start), _end(other._end), _type(other._type), _flag(other._flag) {
    Qor_Guarded("calendar", [&] {
        if (other._distribution) _distribution = QorDistribution::exactCopy(*other._distribution);
    });
}

QorDayIntervalWithProperty::~QorDayIntervalWithProperty() = default;

std::unique_ptr<QorDayIntervalWithProperty> QorDayIntervalWithProperty::exactCopy(
    const QorDayIntervalWithProperty& other) {
    // What could not be copied before for lack of memory must not pass for the whole.
    if (other._type == QorCalendarPropertyType::Distribution && !other._distribution) throw std::bad_alloc();
    auto copy = std::make_unique<QorDayIntervalWithProperty>(other._start, other._end, other._flag);
    copy->_type = other._type;
    if (other._distribution) copy->_distribution = QorDistribution::exactCopy(*other._distribution);
    return copy;
}

std::unique_ptr<QorDayIntervalWithProperty> QorDayIntervalWithProperty::fromShortText(
    SV::Time start, SV::Time end, std::string_view shortText, const qor::simcal::DistributionKeywords& keywords) {
    auto longText = qor::simcal::validLongOfShort(shortText, keywords);
    if (!longText) return nullptr;
    auto interval = std::make_unique<QorDayIntervalWithProperty>(start, end, 0);
    interval->_type = QorCalendarPropertyType::Distribution;
    interval->_distribution.reset(new QorDistribution(std::move(*longText)));
    return interval;
}

Code QorDayIntervalWithProperty::appendProperty(std::string& text,
                                                const qor::simcal::DistributionKeywords& keywords) const {
    if (_type == QorCalendarPropertyType::Flag) {
        text += _flag == 1 ? "T" : "F";
        return Code::Ok;
    }
    if (_distribution->_text.IsEmpty()) return Code::NoDistributionText;
    const auto shortText = qor::simcal::shortOfLong(_distribution->_text, keywords);
    if (!shortText) return Code::NoShortDistribution;
    text += *shortText;
    return Code::Ok;
}

Code QorDayIntervalWithProperty::checkIntervalConsistency() const noexcept {
    return _start < _end ? Code::Ok : Code::IntervalInconsistent;
}

Code QorDayIntervalWithProperty::getStartTime(SV::Time& start) const noexcept {
    const Code code = checkIntervalConsistency();
    if (code == Code::Ok) start = _start;
    return code;
}

Code QorDayIntervalWithProperty::getEndTime(SV::Time& end) const noexcept {
    const Code code = checkIntervalConsistency();
    if (code == Code::Ok) end = _end;
    return code;
}

Code QorDayIntervalWithProperty::getIntervalLengthInSeconds(std::int64_t& seconds) const noexcept {
    const Code code = checkIntervalConsistency();
    if (code == Code::Ok)
        seconds = std::int64_t{QorTimeFunctions::getTimeInSeconds(_end)} - QorTimeFunctions::getTimeInSeconds(_start);
    return code;
}

std::int64_t QorDayIntervalWithProperty::secondsBetween(SV::Time from, SV::Time to) const noexcept {
    const std::int64_t start = QorTimeFunctions::getTimeInSeconds(std::max(_start, from));
    const std::int64_t end = QorTimeFunctions::getTimeInSeconds(std::min(_end, to));
    return std::max<std::int64_t>(0, end - start);
}

Code QorDayIntervalWithProperty::getFlag(int& flag) const noexcept {
    if (_type != QorCalendarPropertyType::Flag) return Code::WrongPropertyType;
    flag = _flag;
    return Code::Ok;
}

Code QorDayIntervalWithProperty::getDistribution(QorDistribution*& distribution) const noexcept {
    distribution = _distribution.get();
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    return distribution != nullptr ? Code::Ok : Code::Broken;
}

Code QorDayIntervalWithProperty::getExpectation(double& expectation) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    if (!_distribution) return Code::Broken;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        const auto found = qor::simcal::expectationOfLong(_distribution->_text, qor::simcal::DistributionKeywords());
        if (!found) return Code::NoDistributionText;
        expectation = *found;
        return Code::Ok;
    });
}

Code QorDayIntervalWithProperty::intersectionInterval(const QorDayIntervalWithProperty& first,
                                                      const QorDayIntervalWithProperty& second, SV::Time& start,
                                                      SV::Time& end) noexcept {
    if (first.checkIntervalConsistency() != Code::Ok || second.checkIntervalConsistency() != Code::Ok)
        return Code::IntervalInconsistent;
    const SV::Time later = std::max(first._start, second._start);
    const SV::Time earlier = std::min(first._end, second._end);
    if (!(later < earlier)) return Code::NoIntersection;
    start = later;
    end = earlier;
    return Code::Ok;
}
