// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

#include "simcal/QorCalendar.h"

namespace qor::cli {

class JsonWriter;

/// "7 days, repeats, offset 0 s, 2 profiles"
[[nodiscard]] std::string calendarSummary(const QorCalendar& calendar);

/// Profiles with their intervals and days, and the weeks as rows by hours as columns.
[[nodiscard]] std::string calendarReport(const QorCalendar& calendar);

/// Fields of the object that is open: kind, profiles, days.
void writeCalendar(JsonWriter& json, const QorCalendar& calendar);

/// The text form as the field "calendar" or, where its identifiers make it no UTF-8, "calendar_base64"; the other one
/// is null.
void writeCalendarText(JsonWriter& json, std::string_view text);

}  // namespace qor::cli
