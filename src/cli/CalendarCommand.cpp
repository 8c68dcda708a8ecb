// SPDX-License-Identifier: Apache-2.0
#include "cli/CalendarCommand.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <utility>

#include "cli/CalendarReport.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/InputFiles.h"
#include "cli/Instants.h"
#include "cli/JsonWriter.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "simcal/QorCalendarAlgebra.h"
#include "simcal/QorDateFunctions.h"
#include "simcal/QorWorkingTime.h"

namespace qor::cli {

namespace {

using Code = QorCalendarErrorCode;
using Calendars = std::vector<std::unique_ptr<QorCalendar>>;

/// What a verb found: a text for people, or fields of the object "result".
struct Answer {
    Exit exit = Exit::Clean;
    std::string text{};
    std::function<void(JsonWriter&)> write = [](JsonWriter&) {};
    std::string wrongUse{};               ///< why the arguments cannot be meant; then nothing else holds
    std::vector<std::string> warnings{};  ///< about the first file
    bool isFile = false;                  ///< the text is a calendar file: its bytes matter
};

Answer wrongUse(std::string why) {
    Answer answer{Exit::WrongUse};
    answer.wrongUse = std::move(why);
    return answer;
}

Answer failure(Code code, std::string_view why = {}) {
    const std::string reason(why.empty() ? QorCalendarFile::meaningOf(code) : why);
    Answer answer{code == Code::FirstAfterSecond ? Exit::WrongUse : Exit::Findings, reason + '\n'};
    if (code == Code::FirstAfterSecond) answer.wrongUse = reason;
    answer.write = [code, reason](JsonWriter& json) {
        json.field("code", std::int64_t{static_cast<std::int32_t>(code)}).field("why", std::string_view(reason));
    };
    return answer;
}

/// Cut off at the end of 64 bits.
std::int64_t distance(std::int64_t from, std::int64_t to) {
    std::int64_t seconds = 0;
    return __builtin_sub_overflow(to, from, &seconds) ? std::numeric_limits<std::int64_t>::max() : seconds;
}

std::string notAnInstant(const std::string& text) {
    return quoted(text) + " is no instant: seconds, or DAY/HH:MM as in 8/09:30";
}

Answer show(const CalendarOptions&, const Calendars& calendars) {
    const QorCalendar& calendar = *calendars.front();
    Answer answer{Exit::Clean, calendarReport(calendar)};
    answer.write = [&calendar](JsonWriter& json) { writeCalendar(json, calendar); };
    return answer;
}

Answer check(const CalendarOptions&, const Calendars& calendars) {
    const QorCalendar& calendar = *calendars.front();
    Answer answer{Exit::Clean, calendarSummary(calendar) + '\n'};
    int never = 0;
    if (QorWorkingTime(calendar).isNeverOpen(never) == Code::Ok && never != 0)
        answer.warnings.emplace_back("no day of the period has an interval");
    for (const QorDayProfile* profile : calendar.getProfiles()) {
        int used = 0;
        if (calendar.profileIsUsedInCalendar(profile, used) == Code::Ok && used == 0)
            answer.warnings.push_back("no day has the profile " + quoted(profile->getName()));
    }
    answer.exit = answer.warnings.empty() ? Exit::Clean : Exit::Findings;
    answer.write = [&calendar](JsonWriter& json) { writeCalendar(json, calendar); };
    return answer;
}

Answer combined(const Calendars& calendars, Code (*combine)(const QorCalendar&, const QorCalendar&, QorCalendar&)) {
    const QorCalendar& first = *calendars[0];
    QorCalendar result(first.getPropertyType(), first.getOffsetInSeconds(), first.isCyclic(),
                       first.getPeriodLengthInDays());
    if (const Code code = combine(first, *calendars[1], result); code != Code::Ok) return failure(code);
    Answer answer;
    SV::String text;
    answer.isFile = true;
    if (const Code code = QorCalendarFile::write(result, answer.text); code != Code::Ok) return failure(code);
    if (const Code code = result.getCalendarAsString(text); code != Code::Ok) return failure(code);
    answer.write = [text, cyclic = result.isCyclic() != 0, offset = result.getOffsetInSeconds(),
                    days = result.getPeriodLengthInDays()](JsonWriter& json) {
        json.field("cyclic", cyclic).field("offset", offset).field("days", std::int64_t{days});
        writeCalendarText(json, text);
    };
    return answer;
}

Answer intersect(const CalendarOptions&, const Calendars& calendars) {
    return combined(calendars, [](const QorCalendar& first, const QorCalendar& second, QorCalendar& result) {
        return first.intersection(second, result);
    });
}
Answer unite(const CalendarOptions&, const Calendars& calendars) {
    return combined(calendars, QorCalendarAlgebra::unite);
}
Answer subtract(const CalendarOptions&, const Calendars& calendars) {
    return combined(calendars, QorCalendarAlgebra::subtract);
}

Answer sum(const CalendarOptions& options, const Calendars& calendars) {
    const QorCalendar& calendar = *calendars.front();
    const auto from = parseInstant(options.from, calendar);
    const auto to = parseInstant(options.to, calendar);
    if (!from || !to) return wrongUse(notAnInstant(from ? options.to : options.from));
    std::int64_t seconds = 0;
    if (const Code code = QorWorkingTime(calendar).sumBetween(*from, *to, seconds); code != Code::Ok)
        return failure(code);
    Answer answer{Exit::Clean, fmt::format("{} ({} s)\n", durationText(seconds), seconds)};
    answer.write = [=](JsonWriter& json) { json.field("from", *from).field("to", *to).field("seconds", seconds); };
    return answer;
}

Answer covered(const CalendarOptions& options, const Calendars& calendars) {
    const QorCalendar& calendar = *calendars.front();
    const auto from = parseInstant(options.from, calendar);
    const auto to = parseInstant(options.to, calendar);
    if (!from || !to) return wrongUse(notAnInstant(from ? options.to : options.from));
    const QorWorkingTime time(calendar);
    const auto isCovered = [&](std::int64_t end) {
        std::int64_t seconds = 0;
        std::int64_t length = 0;
        return time.sumBetween(*from, end, seconds) == Code::Ok && !__builtin_sub_overflow(end, *from, &length) &&
               seconds == length;
    };
    if (*from > *to) return failure(Code::FirstAfterSecond);
    // The first instant that is not worked: all spans up to it are covered, and none beyond.
    std::int64_t gap = *from;
    if (!isCovered(*to)) {
        for (std::int64_t beyond = *to; gap + 1 < beyond;) {
            const std::int64_t middle = gap + distance(gap, beyond) / 2;
            (isCovered(middle) ? gap : beyond) = middle;
        }
    }
    const bool whole = isCovered(*to);
    SV::String why;
    if (!whole) (void)time.explain(gap, why);
    Answer answer{whole ? Exit::Clean : Exit::Findings,
                  whole ? "covered\n" : fmt::format("not covered: {}\n", printable(why.view()))};
    answer.write = [=](JsonWriter& json) {
        json.field("from", *from).field("to", *to).field("covered", whole);
        if (!whole) json.field("gap", gap).field("why", why.view());
    };
    return answer;
}

Answer until(const CalendarOptions& options, const Calendars& calendars) {
    const QorCalendar& calendar = *calendars.front();
    const auto instant = parseInstant(options.from, calendar);
    if (!instant) return wrongUse(notAnInstant(options.from));
    const QorWorkingTime time(calendar);
    std::int64_t start = 0;
    std::int64_t end = 0;
    SV::String why;
    const bool open = time.currentInterval(*instant, start, end, &why) == Code::Ok;
    if (!open) {
        if (const Code code = time.nextInterval(*instant, start, end, &why); code != Code::Ok)
            return failure(code, why.view());
    }
    const std::int64_t change = open ? end : start;
    const std::int64_t seconds = distance(*instant, change);
    Answer answer{Exit::Clean, fmt::format("{} in {}, at {}\n", open ? "interval ends" : "opens", durationText(seconds),
                                           instantText(change, calendar))};
    answer.write = [=](JsonWriter& json) {
        json.field("instant", *instant).field("open", open).field("until", change).field("seconds", seconds);
        json.field("why", why.view());
    };
    return answer;
}

Answer next(const CalendarOptions& options, const Calendars& calendars) {
    const QorCalendar& calendar = *calendars.front();
    const auto instant = parseInstant(options.from, calendar);
    if (!instant) return wrongUse(notAnInstant(options.from));
    std::int64_t start = 0;
    std::int64_t end = 0;
    SV::String why;
    if (const Code code = QorWorkingTime(calendar).nextInterval(*instant, start, end, &why); code != Code::Ok)
        return failure(code, why.view());
    Answer answer{Exit::Clean, fmt::format("{} to {}\n", instantText(start, calendar), instantText(end, calendar))};
    answer.write = [=](JsonWriter& json) {
        json.field("instant", *instant).field("start", start).field("end", end).field("why", why.view());
    };
    return answer;
}

Answer add(const CalendarOptions& options, const Calendars& calendars) {
    const QorCalendar& calendar = *calendars.front();
    const auto instant = parseInstant(options.from, calendar);
    const auto seconds = parseDuration(options.duration);
    if (!instant) return wrongUse(notAnInstant(options.from));
    if (!seconds || *seconds == std::numeric_limits<std::int64_t>::min())
        return wrongUse(quoted(options.duration) + " is no duration: seconds, or as in 1d12h30m");
    const QorWorkingTime time(calendar);
    std::int64_t result = 0;
    SV::String why;
    const Code code = *seconds < 0 ? time.latestStartFor(*instant, -*seconds, result, &why)
                                   : time.finishOf(*instant, *seconds, result, &why);
    if (code != Code::Ok) return failure(code, why.view());
    Answer answer{Exit::Clean,
                  fmt::format("{} ({})\n{}\n", result, instantText(result, calendar), printable(why.view()))};
    answer.write = [=](JsonWriter& json) {
        json.field("instant", *instant).field("seconds", *seconds).field("result", result).field("why", why.view());
    };
    return answer;
}

Answer days(const CalendarOptions& options, const Calendars&) {
    constexpr std::array<std::string_view, 7> kWeekdays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                           "Friday", "Saturday", "Sunday"};
    const auto weekday = std::find(kWeekdays.begin(), kWeekdays.end(), options.weekday);
    ISortedSet<int> found;
    if (weekday == kWeekdays.end()) return wrongUse(quoted(options.weekday) + " is no weekday, Monday to Sunday");
    if (QorDateFunctions::getAllDaysInYear(static_cast<SV::DayOfWeek>(weekday - kWeekdays.begin()), options.year,
                                           found) == 0)
        return wrongUse("years are from 1800 to 9999");
    Answer answer;
    for (const int day : found) answer.text += fmt::format("{}{}", answer.text.empty() ? "" : " ", day);
    answer.text += '\n';
    answer.write = [found](JsonWriter& json) {
        json.key("days").beginList(JsonWriter::Layout::Line);
        for (const int day : found) json.value(std::int64_t{day});
        json.endList();
    };
    return answer;
}

struct Verb {
    std::string_view name;
    Answer (*answer)(const CalendarOptions&, const Calendars&);
};
constexpr Verb kVerbs[] = {
    {"show", show},      {"check", check}, {"intersect", intersect}, {"union", unite},
    {"minus", subtract}, {"sum", sum},     {"covered", covered},     {"until", until},
    {"next", next},      {"add", add},     {"days", days},
};

std::vector<std::string> filesOf(const CalendarOptions& options) {
    std::vector<std::string> files;
    for (const std::string& file : {options.file, options.other})
        if (!file.empty()) files.push_back(file);
    return files;
}

void writeJson(const CalendarOptions& options, const Answer* answer, const std::vector<QorDiagnostic>& diagnostics,
               Console& console) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.calendar/1").field("command", std::string_view(options.verb));
    json.key("files").beginList(JsonWriter::Layout::Line);
    for (const std::string& file : filesOf(options)) json.value(std::string_view(file));
    json.endList();
    writeDiagnostics(json, diagnostics);
    json.key("result");
    if (answer != nullptr) {
        json.beginObject();
        answer->write(json);
        json.endObject();
    } else {
        json.null();
    }
    json.endObject();
}

/// All files are read, so that the errors of all are told.
Calendars readAll(const CalendarOptions& options, std::vector<QorDiagnostic>& diagnostics) {
    Calendars calendars;
    for (const std::string& file : filesOf(options))
        calendars.push_back(QorCalendarFile::read(file, options.settings, diagnostics));
    return calendars;
}

Exit refuse(const CalendarOptions& options, const std::string& why, Console& console) {
    console.err(fmt::format("qor: {} {}\nTry: qor calendar {} --help\n", console.errColours().error("error:"), why,
                            options.verb));
    return Exit::WrongUse;
}

}  // namespace

Exit runCalendar(const CalendarOptions& options, Console& console) {
    if (options.file == kStandardInput && options.other == kStandardInput)
        return refuse(options, "standard input can be read only once", console);
    QorEmbeddedOptions platformOptions;
    platformOptions.language = options.language;
    const QorEmbeddedPlatform platform(platformOptions);
    const QorHostInstallation installation(platform.host());

    std::vector<QorDiagnostic> diagnostics;
    const Calendars calendars = readAll(options, diagnostics);
    Answer answer;
    const bool valid = !hasErrors(diagnostics);
    if (valid) {
        const auto verb = std::find_if(std::begin(kVerbs), std::end(kVerbs),
                                       [&](const Verb& candidate) { return candidate.name == options.verb; });
        if (verb == std::end(kVerbs)) return Exit::Internal;
        answer = verb->answer(options, calendars);
        if (!answer.wrongUse.empty()) return refuse(options, answer.wrongUse, console);
        for (std::string& warning : answer.warnings)
            diagnostics.push_back({QorSeverity::Warning, {options.file}, std::move(warning)});
    }
    if (options.json) {
        writeJson(options, valid ? &answer : nullptr, diagnostics, console);
    } else {
        for (const QorDiagnostic& diagnostic : diagnostics)
            console.err(diagnosticLine(diagnostic, console.errColours()));
        const bool asItIs = answer.isFile && ::isatty(STDOUT_FILENO) == 0;
        console.out(asItIs ? answer.text : printableLines(answer.text));
    }
    return valid ? answer.exit : Exit::BadInput;
}

}  // namespace qor::cli
