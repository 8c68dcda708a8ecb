// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "platform/SvTime.h"
#include "simcal/QorCalendarErrorCode.h"
#include "simcal/QorCalendarPropertyType.h"
#include "simcal/QorDayIntervalWithProperty.h"

namespace qor::simcal {
class CalendarReader;
struct IntervalParts;
struct WeightedMean;

/// Frees an interval, or clears away what it holds when it stands in a block.
struct ReleaseInterval {
    void operator()(QorDayIntervalWithProperty* interval) const noexcept;
};
}  // namespace qor::simcal

/// The intervals of one kind of day: ordered by start, never overlapping, all of the profile's type. A profile owns its
/// intervals; each keeps its address while others come and go.
class QOR_API QorDayProfile {
public:
    /// A profile without intervals. Name and identifier are checked when it is added to a calendar. What is made while
    /// memory runs out lacks its name or its intervals, and no calendar takes it (Broken).
    QorDayProfile(QorCalendarPropertyType type, char identifier, const SV::String& name) noexcept;
    QorDayProfile(const QorDayProfile& other) noexcept;
    QorDayProfile& operator=(const QorDayProfile&) = delete;
    ~QorDayProfile();

    /// Puts a copy in its place; intervals may touch. WrongPropertyType, IntervalInconsistent, or IntervalOverlaps.
    /// Cheapest at the end; else it moves the intervals behind by one place.
    QorCalendarErrorCode insertDayIntervalWithProperty(const QorDayIntervalWithProperty& interval) noexcept;
    /// Positions count from 1; PositionOutOfRange.
    QorCalendarErrorCode deleteIntervalAtPosition(int position) noexcept;
    QorCalendarErrorCode getIntervalAtPosition(int position, QorDayIntervalWithProperty*& interval) const noexcept;
    [[nodiscard]] int getNumberOfIntervals() const noexcept { return static_cast<int>(_intervals.size()); }

    /// The interval that holds the time, its start inside and its end outside; NoInterval.
    QorCalendarErrorCode getCurrentInterval(SV::Time time, QorDayIntervalWithProperty*& interval) const noexcept;
    /// The first interval that does not start before the time: one that starts just then counts. NoNextInterval.
    QorCalendarErrorCode getNextInterval(SV::Time time, QorDayIntervalWithProperty*& interval) const noexcept;

    /// Seconds of all intervals.
    QorCalendarErrorCode getIntervalLengthSum(std::int64_t& seconds) const noexcept;
    /// Seconds of the intervals between two times; FirstAfterSecond.
    QorCalendarErrorCode getIntervalLengthSumInBetween(const SV::Time& from, const SV::Time& to,
                                                       std::int64_t& seconds) const noexcept;
    /// The mean of the intervals' expectations, weighted by their seconds. WrongPropertyType for a flag profile,
    /// NoInterval for one without intervals, NoDistributionText.
    QorCalendarErrorCode getExpectation(double& expectation) const noexcept;

    [[nodiscard]] const SV::String& getName() const noexcept { return _name; }
    [[nodiscard]] char getIdentifier() const noexcept { return _identifier; }
    /// Checks nothing: that identifiers stay unique within a calendar is the caller's care.
    void setIdentifier(char identifier) noexcept { _identifier = identifier; }
    [[nodiscard]] QorCalendarPropertyType getPropertyType() const noexcept { return _type; }

    /// Puts the time that both flag profiles share into `result`, as intervals with flag 1 whatever the flags here.
    /// `result` should be empty: of more than one interval in it every second one stays, and where the intersection
    /// meets these the operation ends with IntervalOverlaps. WrongPropertyType unless all three are flag profiles.
    QorCalendarErrorCode intersection(const QorDayProfile& other, QorDayProfile& result) const noexcept;

private:
    friend class QorCalendar;
    friend class qor::simcal::CalendarReader;

    /// Throws when memory runs out, where the copy constructor would lose intervals, or has run out when the original
    /// was made.
    static std::unique_ptr<QorDayProfile> exactCopy(const QorDayProfile& other);
    using Interval = std::unique_ptr<QorDayIntervalWithProperty, qor::simcal::ReleaseInterval>;

    /// Gives a profile without intervals so many new ones, which stand side by side in one block.
    void makeIntervals(std::size_t count);
    /// Gives a profile without intervals these, which are in order.
    void takeOver(std::vector<qor::simcal::IntervalParts>& intervals);
    QorCalendarErrorCode insert(Interval interval);
    /// Adds the expectations of the intervals between two times. NoDistributionText.
    QorCalendarErrorCode weigh(SV::Time from, SV::Time to, qor::simcal::WeightedMean& mean) const noexcept;
    void changed() noexcept;

    // The intervals that were there from the start, and their distributions where that is the type.
    std::unique_ptr<QorDistribution[]> _distributions;
    std::unique_ptr<QorDayIntervalWithProperty[]> _block;
    std::vector<Interval> _intervals;  // in order, in the block or by themselves
    QorCalendarPropertyType _type;
    char _identifier;
    SV::String _name;
    bool _isWhole = true;  // false when memory ran out while it was made
    /// Counts the changes of the calendar that owns this profile; null while none does.
    std::uint64_t* _ownerRevision = nullptr;
};
