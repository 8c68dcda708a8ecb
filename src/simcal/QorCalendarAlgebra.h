// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "simcal/QorCalendarErrorCode.h"

class QorCalendar;

/// What two calendars make together, beside QorCalendar::intersection. Both must have complete day lists and agree in
/// cyclic flag, offset and period length (CalendarInconsistent, CalendarsDiffer).
///
/// Union and difference take flag calendars (WrongPropertyType) and build their result, which must be new and agree
/// with them too (AlreadyInitialized), with one profile for each pair of profiles that meet on a day, named after both
/// ("Early + Late", "Early - Late"), its intervals with flag 1 whatever the flags of the operands. On a failure nothing
/// is left in the result: NameNotUnique too, when two pairs get the same name ("A + B" and "C", "A" and "B + C").
/// At most 222 different pairs have identifiers (NoFreeIdentifier): those that QorCalendar::getUniqueId knows, then
/// those from 128 on.
///
/// Cost: proportional to the days, and to the intervals of the pairs that meet.
class QOR_API QorCalendarAlgebra {
public:
    /// The time in intervals of either calendar; intervals that touch or overlap become one.
    static QorCalendarErrorCode unite(const QorCalendar& first, const QorCalendar& second,
                                      QorCalendar& result) noexcept;
    /// The time in intervals of the first calendar and not of the second.
    static QorCalendarErrorCode subtract(const QorCalendar& first, const QorCalendar& second,
                                         QorCalendar& result) noexcept;
    /// `equal` becomes 1 when both calendars, of either type, say the same about every second of the period: names,
    /// identifiers and how a span is cut into touching intervals do not matter; distributions are compared by their
    /// texts. Calendars that differ in type, cyclic flag, offset or period length are not equal. CalendarInconsistent.
    static QorCalendarErrorCode areEqual(const QorCalendar& first, const QorCalendar& second, int& equal) noexcept;

private:
    template <class Operation>
    static QorCalendarErrorCode combine(const QorCalendar& first, const QorCalendar& second, const Operation& operation,
                                        QorCalendar& result) noexcept;
};
