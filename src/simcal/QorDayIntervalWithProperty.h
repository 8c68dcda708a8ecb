// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string>

#include "platform/QorExport.h"
#include "platform/SvTime.h"
#include "simcal/QorCalendarErrorCode.h"
#include "simcal/QorCalendarPropertyType.h"

class QorDistribution;

namespace qor::simcal {
struct DistributionKeywords;
struct IntervalParts;
struct ReleaseInterval;
}  // namespace qor::simcal

/// A span of time within a day, its start inside and its end outside, with a flag or a distribution as its property.
/// Any two times are taken; the span is consistent when it starts before it ends. It does not change once it is made.
class QOR_API QorDayIntervalWithProperty {
public:
    /// A flag interval; 1 means set (working, open).
    QorDayIntervalWithProperty(SV::Time start, SV::Time end, int flag) noexcept;
    /// A distribution interval with a copy of its own; null counts as an empty distribution. When memory runs out it
    /// has none, and no profile takes it (Broken).
    QorDayIntervalWithProperty(SV::Time start, SV::Time end, const QorDistribution* distribution) noexcept;
    QorDayIntervalWithProperty(const QorDayIntervalWithProperty& other) noexcept;
    QorDayIntervalWithProperty& operator=(const QorDayIntervalWithProperty&) = delete;
    ~QorDayIntervalWithProperty();

    /// IntervalInconsistent when the span is not consistent.
    QorCalendarErrorCode getStartTime(SV::Time& start) const noexcept;
    QorCalendarErrorCode getEndTime(SV::Time& end) const noexcept;
    QorCalendarErrorCode getIntervalLengthInSeconds(std::int64_t& seconds) const noexcept;
    QorCalendarErrorCode checkIntervalConsistency() const noexcept;

    [[nodiscard]] QorCalendarPropertyType getPropertyType() const noexcept { return _type; }
    /// WrongPropertyType unless this is a flag interval.
    QorCalendarErrorCode getFlag(int& flag) const noexcept;
    /// The interval's own distribution, living as long as it; WrongPropertyType unless this is a distribution interval,
    /// Broken when memory ran out while it was made.
    QorCalendarErrorCode getDistribution(QorDistribution*& distribution) const noexcept;
    /// The expected value of the distribution. WrongPropertyType for a flag interval, NoDistributionText when the
    /// distribution is empty or its text has no expectation, Broken when memory runs out.
    QorCalendarErrorCode getExpectation(double& expectation) const noexcept;

    /// The time that two consistent intervals share; NoIntersection when there is none, also when they only touch.
    static QorCalendarErrorCode intersectionInterval(const QorDayIntervalWithProperty& first,
                                                     const QorDayIntervalWithProperty& second, SV::Time& start,
                                                     SV::Time& end) noexcept;

private:
    friend class QorDayProfile;
    friend class QorCalendar;
    friend struct qor::simcal::ReleaseInterval;

    /// One of a block, without distribution: that is given to it, and what holds the block owns both.
    QorDayIntervalWithProperty() noexcept;
    /// Takes everything over but where it stands. Throws when memory runs out, where the public constructors would lose
    /// the distribution, or has run out when the original was made.
    void copyFrom(const QorDayIntervalWithProperty& other);
    void takeOver(qor::simcal::IntervalParts&& parts) noexcept;

    /// Seconds of the span between two times, in 64 bits: intervals made by hand can be as long as their numbers.
    [[nodiscard]] std::int64_t secondsBetween(SV::Time from, SV::Time to) const noexcept;
    /// Appends the property as it stands in a calendar's text. NoDistributionText, NoShortDistribution.
    QorCalendarErrorCode appendProperty(std::string& text, const qor::simcal::DistributionKeywords& keywords) const;

    SV::Time _start;
    SV::Time _end;
    QorCalendarPropertyType _type = QorCalendarPropertyType::Flag;
    int _flag = 0;
    QorDistribution* _distribution = nullptr;  // owned, unless this stands in a block; null in flag intervals
    bool _isInBlock = false;
};
