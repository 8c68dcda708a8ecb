// SPDX-License-Identifier: Apache-2.0
#include "cli/CalendarReport.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include "cli/Instants.h"
#include "cli/JsonWriter.h"
#include "cli/Text.h"
#include "cli/Utf8.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/QorDistribution.h"

namespace qor::cli {

namespace {

using Code = QorCalendarErrorCode;

constexpr int kDaysPerWeek = 7;
constexpr int kHoursPerCell = 2;
constexpr std::int32_t kCell = kHoursPerCell * 3600;
constexpr std::int32_t kDay = QorCalendar::kSecondsPerDay;

struct Interval {
    std::int32_t start = 0;
    std::int32_t end = 0;
    std::string property;  ///< text of the distribution; empty for flags
};

std::vector<Interval> intervalsOf(const QorDayProfile& profile) {
    std::vector<Interval> intervals;
    for (int position = 1; position <= profile.getNumberOfIntervals(); ++position) {
        QorDayIntervalWithProperty* found = nullptr;
        SV::Time start;
        SV::Time end;
        QorDistribution* distribution = nullptr;
        SV::String text;
        if (profile.getIntervalAtPosition(position, found) != Code::Ok || found->getStartTime(start) != Code::Ok ||
            found->getEndTime(end) != Code::Ok)
            continue;
        if (found->getDistribution(distribution) == Code::Ok && distribution != nullptr)
            (void)distribution->getDistributionStringInUIRep(text);
        intervals.push_back(
            {QorTimeFunctions::getTimeInSeconds(start), QorTimeFunctions::getTimeInSeconds(end), text.str()});
    }
    return intervals;
}

std::int64_t secondsOf(const QorDayProfile& profile) {
    std::int64_t seconds = 0;
    (void)profile.getIntervalLengthSum(seconds);
    return seconds;
}

std::string intervalList(const QorDayProfile& profile) {
    std::string text;
    for (const Interval& interval : intervalsOf(profile)) {
        if (!text.empty()) text += ' ';
        text += clockText(interval.start) + '-' + clockText(interval.end);
        if (!interval.property.empty()) text += ' ' + printable(interval.property);
    }
    return text.empty() ? "closed" : text;
}

/// "1-5 8-12", at most a line of them.
std::string dayRanges(const std::vector<int>& days) {
    constexpr std::size_t kLongest = 60;
    std::string text;
    for (std::size_t first = 0; first < days.size();) {
        std::size_t last = first;
        while (last + 1 < days.size() && days[last + 1] == days[last] + 1) ++last;
        if (text.size() > kLongest) return text + " ...";
        if (!text.empty()) text += ' ';
        text += first == last ? fmt::format("{}", days[first]) : fmt::format("{}-{}", days[first], days[last]);
        first = last + 1;
    }
    return text.empty() ? "none" : text;
}

std::map<const QorDayProfile*, std::vector<int>> daysByProfile(const QorCalendar& calendar) {
    std::map<const QorDayProfile*, std::vector<int>> days;
    for (int day = 1; const QorDayProfile* profile = calendar.getProfileOfDay(day); ++day) days[profile].push_back(day);
    return days;
}

/// A day by hours: "#" all of it, "+" part of it, "." none of it.
std::string hoursOf(const QorDayProfile& profile) {
    std::string cells;
    for (std::int32_t start = 0; start < kDay; start += kCell) {
        std::int64_t open = 0;
        (void)profile.getIntervalLengthSumInBetween(SV::Time(0, 0, start), SV::Time(0, 0, start + kCell), open);
        cells += open == 0 ? '.' : open == kCell ? '#' : '+';
    }
    return cells;
}

std::string weekRow(const QorCalendar& calendar, int firstDay,
                    const std::map<const QorDayProfile*, std::string>& hours) {
    std::string row;
    for (int day = firstDay; day < firstDay + kDaysPerWeek; ++day) {
        const QorDayProfile* profile = calendar.getProfileOfDay(day);
        if (profile != nullptr) row += (row.empty() ? "" : " ") + hours.at(profile);
    }
    return row;
}

std::string weeks(const QorCalendar& calendar) {
    std::map<const QorDayProfile*, std::string> hours;
    for (const QorDayProfile* profile : calendar.getProfiles()) hours[profile] = hoursOf(*profile);
    const std::string dayHead = fmt::format("{:<{}}", "0  6  12 18", kDay / kCell);
    std::string head;
    for (int day = 1; day <= std::min(kDaysPerWeek, calendar.getPeriodLengthInDays()); ++day)
        head += (head.empty() ? "" : " ") + dayHead;
    head.erase(head.find_last_not_of(' ') + 1);

    std::string text = fmt::format("\n{:<11}{}\n", "week", head);
    const int count = (calendar.getPeriodLengthInDays() + kDaysPerWeek - 1) / kDaysPerWeek;
    const auto row = [&](int week) { return weekRow(calendar, (week - 1) * kDaysPerWeek + 1, hours); };
    for (int first = 1; first <= count;) {
        const std::string cells = row(first);
        int last = first;
        while (last < count && row(last + 1) == cells) ++last;
        const std::string label = first == last ? fmt::format("{}", first) : fmt::format("{}-{}", first, last);
        text += fmt::format("{:<11}{}\n", label, cells);
        first = last + 1;
    }
    return text + fmt::format("\n# open, + partly open, . closed; {} hours a sign\n", kHoursPerCell);
}

bool isUtf8(std::string_view text) {
    for (auto next = firstChar(text); next.size != 0; next = firstChar(text)) {
        if (!next.valid) return false;
        text.remove_prefix(next.size);
    }
    return true;
}

std::string base64(std::string_view bytes) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t kGroup = 3;  // bytes, for four digits of six bits
    std::string text;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(kGroup, bytes.size()))) {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < kGroup; ++i)
            bits = bits << 8u | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
        for (std::size_t digit = 0; digit <= kGroup; ++digit)
            text += digit <= bytes.size() ? kDigits[bits >> (18u - 6u * digit) & 63u] : '=';
    }
    return text;
}

std::string_view typeName(const QorCalendar& calendar) {
    return calendar.getPropertyType() == QorCalendarPropertyType::Flag ? "flags" : "distributions";
}

}  // namespace

std::string calendarSummary(const QorCalendar& calendar) {
    const auto days = static_cast<std::uint64_t>(calendar.getPeriodLengthInDays());
    return fmt::format("{}, {}, offset {} s, {} of {}", counted(days, "day"),
                       calendar.isCyclic() != 0 ? "repeats" : "does not repeat", calendar.getOffsetInSeconds(),
                       counted(calendar.getProfiles().numberOfElements(), "profile"), typeName(calendar));
}

std::string calendarReport(const QorCalendar& calendar) {
    std::int64_t open = 0;
    (void)calendar.getTimeIntervalsSumOfPeriod(open);
    std::string text = fmt::format("{}\n{} of {} in intervals\n\n", calendarSummary(calendar), durationText(open),
                                   durationText(std::int64_t{calendar.getPeriodLengthInDays()} * kDay));
    auto days = daysByProfile(calendar);
    for (const QorDayProfile* profile : calendar.getProfiles())
        text += fmt::format("{}  {}\n   {}\n   {}, days {}\n", printable(std::string(1, profile->getIdentifier())),
                            printable(profile->getName()), intervalList(*profile), durationText(secondsOf(*profile)),
                            dayRanges(days[profile]));
    return text + weeks(calendar);
}

void writeCalendar(JsonWriter& json, const QorCalendar& calendar) {
    std::int64_t open = 0;
    (void)calendar.getTimeIntervalsSumOfPeriod(open);
    json.field("type", typeName(calendar))
        .field("cyclic", calendar.isCyclic() != 0)
        .field("offset", calendar.getOffsetInSeconds())
        .field("days", std::int64_t{calendar.getPeriodLengthInDays()})
        .field("seconds", open);
    auto days = daysByProfile(calendar);
    json.key("profiles").beginList();
    for (const QorDayProfile* profile : calendar.getProfiles()) {
        const std::string identifier(1, profile->getIdentifier());
        json.beginObject()
            .field("name", profile->getName().view())
            .field("identifier", isUtf8(identifier) ? std::optional(identifier) : std::nullopt)
            .field("identifier_byte", std::int64_t{static_cast<unsigned char>(identifier.front())})
            .field("seconds", secondsOf(*profile));
        json.key("intervals").beginList();
        for (const Interval& interval : intervalsOf(*profile)) {
            json.beginObject(JsonWriter::Layout::Line)
                .field("start", std::int64_t{interval.start})
                .field("end", std::int64_t{interval.end});
            if (!interval.property.empty()) json.field("distribution", std::string_view(interval.property));
            json.endObject();
        }
        json.endList().key("days").beginList(JsonWriter::Layout::Line);
        for (const int day : days[profile]) json.value(std::int64_t{day});
        json.endList().endObject();
    }
    json.endList();
}

void writeCalendarText(JsonWriter& json, std::string_view text) {
    const bool isText = isUtf8(text);
    json.field("calendar", isText ? std::optional(std::string(text)) : std::nullopt)
        .field("calendar_base64", isText ? std::nullopt : std::optional(base64(text)));
}

}  // namespace qor::cli
