// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "simcal/QorCalendarErrorCode.h"
#include "simcal/QorCalendarPropertyType.h"

class QorCalendar;

/// What an editor or a command needs beyond QorCalendar::initializeCalendar: where a text is wrong, and what it tells
/// about the calendar that it was written from.
class QOR_API QorCalendarText {
public:
    /// Reads as QorCalendar::initializeCalendar does, and on a failure (other than AlreadyInitialized) tells the place
    /// in the text, in bytes from 0, at which the token begins that it is about.
    static QorCalendarErrorCode read(QorCalendar& calendar, const SV::String& text, unsigned long& failedAt) noexcept;

    /// The type that the first letter stands for; 0 when it is none, else 1.
    static int typeOf(const SV::String& text, QorCalendarPropertyType& type) noexcept;
    /// The number of days in the text's last day list: the period length that it can be read with. 0 when there is no
    /// day list, else 1.
    static int periodLengthOf(const SV::String& text, int& days) noexcept;
};
