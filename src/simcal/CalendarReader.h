// SPDX-License-Identifier: Apache-2.0
// Reads the text form of calendars:
//
//   text      = letter { "@" ( days | profile ) }
//   letter    = "B" | "D"
//   days      = "$" { identifier character }
//   profile   = name "@" identifier { "@" interval } [ "@" "@" skipped ]
//   interval  = digits "-" digits "@" property
//
// A token that is no interval ends the profile; an empty one takes the token behind it along, whatever that holds.
#pragma once
#include <cstddef>
#include <optional>
#include <string_view>

#include "simcal/DistributionText.h"
#include "simcal/IntervalCollector.h"
#include "simcal/QorCalendar.h"

namespace qor::simcal {

class CalendarReader {
public:
    CalendarReader(QorCalendar& calendar, std::string_view text) : _calendar(calendar), _text(text) {}

    // Fills the calendar; leaves what was read when it fails.
    QorCalendarErrorCode read();
    // Where in the text the token begins that the failure is about.
    [[nodiscard]] std::size_t failedAt() const noexcept { return _tokenAt; }

private:
    QorCalendarErrorCode readProfile(std::string_view name);
    QorCalendarErrorCode readIntervals();
    std::optional<std::string_view> nextToken();
    bool nextIsEmpty() const;
    bool takeInterval(SV::Time& start, SV::Time& end);

    QorCalendar& _calendar;
    std::string_view _text;
    std::size_t _at = 0;
    bool _atEnd = false;  // the last token was taken: an empty text still holds one
    std::size_t _tokenAt = 0;
    std::optional<DistributionKeywords> _keywords;
    IntervalCollector _intervals;  // of the profile being read
};

}  // namespace qor::simcal
