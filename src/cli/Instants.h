// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "simcal/QorCalendar.h"

namespace qor::cli {

/// An instant on the simulation's clock: a number of seconds, or "DAY/HH:MM" or "DAY/HH:MM:SS" with the days counted
/// from the start of the calendar's first period ("8/09:30" is day 1 of the second week).
[[nodiscard]] std::optional<std::int64_t> parseInstant(std::string_view text, const QorCalendar& calendar);
/// A number of seconds, or numbers with the units d (24 hours), h, m, s: "1d12h", "90m". A minus sign goes before all.
[[nodiscard]] std::optional<std::int64_t> parseDuration(std::string_view text);

/// "day 3 09:30", with its cycle unless that is the first: "cycle 2 day 3 09:30".
[[nodiscard]] std::string instantText(std::int64_t instant, const QorCalendar& calendar);
/// "38:30:00 h"
[[nodiscard]] std::string durationText(std::int64_t seconds);
/// "08:00", or "08:00:05" where the seconds are not 0.
[[nodiscard]] std::string clockText(std::int64_t secondOfDay);

}  // namespace qor::cli
