// SPDX-License-Identifier: Apache-2.0
#include "cli/Instants.h"

#include <fmt/format.h>

#include <charconv>

namespace qor::cli {

namespace {

constexpr std::int64_t kDay = QorCalendar::kSecondsPerDay;

/// Takes a number from the front of the text.
bool takeNumber(std::string_view& text, std::int64_t& number) {
    if (text.empty() || text.front() < '0' || text.front() > '9') return false;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(rest - text.data()));
    return error == std::errc();
}

bool takeMark(std::string_view& text, char mark) {
    if (!text.starts_with(mark)) return false;
    text.remove_prefix(1);
    return true;
}

std::optional<std::int64_t> timeOfDay(std::string_view text) {
    std::int64_t hours = 0;
    std::int64_t minutes = 0;
    std::int64_t seconds = 0;
    if (!takeNumber(text, hours) || !takeMark(text, ':') || !takeNumber(text, minutes)) return std::nullopt;
    if (takeMark(text, ':') && !takeNumber(text, seconds)) return std::nullopt;
    if (!text.empty() || hours > 24 || minutes > 59 || seconds > 59) return std::nullopt;
    const std::int64_t time = hours * 3600 + minutes * 60 + seconds;
    return time <= kDay ? std::optional(time) : std::nullopt;
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || rest != text.data() + text.size()) return std::nullopt;
    return number;
}

std::int64_t secondsOf(char unit) {
    switch (unit) {
        case 'd':
            return kDay;
        case 'h':
            return 3600;
        case 'm':
            return 60;
        case 's':
            return 1;
        default:
            return 0;
    }
}

}  // namespace

std::optional<std::int64_t> parseInstant(std::string_view text, const QorCalendar& calendar) {
    const auto slash = text.find('/');
    if (slash == std::string_view::npos) return wholeNumber(text);
    const auto day = wholeNumber(text.substr(0, slash));
    const auto time = timeOfDay(text.substr(slash + 1));
    std::int64_t instant = 0;
    if (!day || *day < 1 || !time || __builtin_mul_overflow(*day - 1, kDay, &instant) ||
        __builtin_add_overflow(instant, *time, &instant) ||
        __builtin_sub_overflow(instant, calendar.getOffsetInSeconds(), &instant))
        return std::nullopt;
    return instant;
}

std::optional<std::int64_t> parseDuration(std::string_view text) {
    if (const auto seconds = wholeNumber(text)) return seconds;
    const bool negative = takeMark(text, '-');
    if (text.empty()) return std::nullopt;
    std::int64_t sum = 0;
    while (!text.empty()) {
        std::int64_t part = 0;
        if (!takeNumber(text, part) || text.empty()) return std::nullopt;
        const std::int64_t unit = secondsOf(text.front());
        text.remove_prefix(1);
        if (unit == 0 || __builtin_mul_overflow(part, unit, &part) || __builtin_add_overflow(sum, part, &sum))
            return std::nullopt;
    }
    return negative ? -sum : sum;
}

std::string clockText(std::int64_t secondOfDay) {
    const std::int64_t seconds = secondOfDay % 60;
    const std::string text = fmt::format("{:02}:{:02}", secondOfDay / 3600, secondOfDay / 60 % 60);
    return seconds == 0 ? text : fmt::format("{}:{:02}", text, seconds);
}

std::string durationText(std::int64_t seconds) {
    return fmt::format("{}:{:02}:{:02} h", seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string instantText(std::int64_t instant, const QorCalendar& calendar) {
    std::int64_t moment = 0;
    if (__builtin_add_overflow(instant, calendar.getOffsetInSeconds(), &moment) || moment < 0)
        return "before the period";
    const std::int64_t day = moment / kDay;
    const std::int64_t cycle = day / calendar.getPeriodLengthInDays();
    const std::string text =
        fmt::format("day {} {}", day % calendar.getPeriodLengthInDays() + 1, clockText(moment % kDay));
    return cycle == 0 ? text : fmt::format("cycle {} {}", cycle, text);
}

}  // namespace qor::cli
