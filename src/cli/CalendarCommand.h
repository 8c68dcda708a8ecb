// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>

#include "cli/Exit.h"
#include "interchange/QorCalendarFile.h"

namespace qor::cli {

class Console;

/// What `qor calendar VERB` was given; each verb looks at its own part.
struct CalendarOptions {
    std::string verb;
    std::string file;              ///< empty for `days`
    std::string other;             ///< the second file of those that combine two
    QorCalendarSettings settings;  ///< go before what the files say
    std::string from;              ///< instants, as text
    std::string to;
    std::string duration;
    std::string weekday;
    unsigned long year = 0;
    bool json = false;
    std::string language = "en";
};

[[nodiscard]] Exit runCalendar(const CalendarOptions& options, Console& console);

}  // namespace qor::cli
