// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorDayIntervalWithProperty.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "platform/QorGuard.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/DistributionText.h"
#include "simcal/IntervalParts.h"
#include "simcal/QorDistribution.h"

using Code = QorCalendarErrorCode;

QorDayIntervalWithProperty::QorDayIntervalWithProperty(SV::Time start, SV::Time end, int flag) noexcept
    : _start(start), _end(end), _type(QorCalendarPropertyType::Flag), _flag(flag) {}

QorDayIntervalWithProperty::QorDayIntervalWithProperty(SV::Time start, SV::Time end,
                                                       const QorDistribution* distribution) noexcept
    : _start(start), _end(end), _type(QorCalendarPropertyType::Distribution) {
    Qor_Guarded("calendar", [&] {
        auto copy = std::make_unique<QorDistribution>();
        if (distribution != nullptr) copy->copyFrom(*distribution);
        _distribution = copy.release();
    });
}

QorDayIntervalWithProperty::QorDayIntervalWithProperty(const QorDayIntervalWithProperty& other) noexcept {
    const bool copied = Qor_Guarded("calendar", false, [&] {
        copyFrom(other);
        return true;
    });
    if (!copied) delete std::exchange(_distribution, nullptr);
}

QorDayIntervalWithProperty::QorDayIntervalWithProperty() noexcept : _isInBlock(true) {}

QorDayIntervalWithProperty::~QorDayIntervalWithProperty() {
    if (!_isInBlock) delete _distribution;
}

void QorDayIntervalWithProperty::copyFrom(const QorDayIntervalWithProperty& other) {
    _start = other._start;
    _end = other._end;
    _type = other._type;
    _flag = other._flag;
    if (_type == QorCalendarPropertyType::Flag) return;
    // What could not be copied before for lack of memory must not pass for the whole.
    if (other._distribution == nullptr) throw std::bad_alloc();
    if (_distribution == nullptr) _distribution = new QorDistribution;
    _distribution->copyFrom(*other._distribution);
}

void QorDayIntervalWithProperty::takeOver(qor::simcal::IntervalParts&& parts) noexcept {
    _start = parts.start;
    _end = parts.end;
    if (_distribution == nullptr) {
        _flag = 1;
    } else {
        _type = QorCalendarPropertyType::Distribution;
        _distribution->_text = SV::String(std::move(parts.distribution));
    }
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
    distribution = nullptr;
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    distribution = _distribution;
    return distribution != nullptr ? Code::Ok : Code::Broken;
}

Code QorDayIntervalWithProperty::getExpectation(double& expectation) const noexcept {
    if (_type != QorCalendarPropertyType::Distribution) return Code::WrongPropertyType;
    if (_distribution == nullptr) return Code::Broken;
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
