// SPDX-License-Identifier: Apache-2.0
#include <string_view>
#include <utility>

#include "cli/CalendarCommand.h"
#include "cli/CommonArguments.h"
#include "cli/DistributionCommand.h"
#include "cli/HelpTexts.h"

namespace qor::cli {

namespace {

/// What the verb does, how many files it takes, and which arguments of its own.
struct CalendarVerb {
    const char* name;
    const char* purpose;
    int files;
    bool instant;
    bool span;
};
constexpr CalendarVerb kCalendarVerbs[] = {
    {"show", "Show profiles, days, and the weeks by hours", 1, false, false},
    {"check", "Tell whether the file is valid, never open, or has unused profiles", 1, false, false},
    {"intersect", "Write the time that both calendars share", 2, false, false},
    {"union", "Write the time that either calendar has", 2, false, false},
    {"minus", "Write the time that only the first calendar has", 2, false, false},
    {"sum", "Tell the working time in a span", 1, false, true},
    {"covered", "Tell whether a span is working time throughout", 1, false, true},
    {"until", "Tell when the current interval ends, or the calendar opens", 1, true, false},
    {"next", "Tell the next interval", 1, true, false},
    {"add", "Tell when so much working time is done; before the instant with a minus sign", 1, true, false},
    {"days", "Tell the days of a year that are a weekday", 0, false, false},
};

void describeVerb(CLI::App& command, const CalendarVerb& verb, CalendarOptions& options) {
    options.verb = verb.name;
    command.add_flag("--json", options.json, "Write one JSON document, qor.calendar/1");
    addLanguage(command, options.language);
    if (verb.files > 0) {
        command.add_option("--offset", options.settings.offset, "Offset in seconds, instead of the file's");
        command.add_option("--cyclic", options.settings.cyclic,
                           "Whether it repeats (true or false), instead of the file's");
        command.add_option("--days", options.settings.days, "Length of the period, instead of the file's")
            ->check(CLI::PositiveNumber);
        command.add_option("FILE", options.file, "The calendar file")->required()->option_text(" ");
        if (verb.files == 2)
            command.add_option("OTHER", options.other, "The second calendar file")->required()->option_text(" ");
    }
    if (verb.span) {
        command.add_option("--from", options.from, "Begin of the span")->required()->option_text("INSTANT");
        command.add_option("--to", options.to, "End of the span")->required()->option_text("INSTANT");
    }
    if (verb.instant) command.add_option("INSTANT", options.from, "The instant")->required()->option_text(" ");
    if (std::string_view(verb.name) == "add")
        command.add_option("DURATION", options.duration, "Working time")->required()->option_text(" ");
    if (std::string_view(verb.name) == "days") {
        command.add_option("--weekday", options.weekday, "Monday to Sunday")->required()->option_text("NAME");
        command.add_option("--year", options.year, "1800 to 9999")->required()->option_text("YEAR");
    }
}

}  // namespace

void describeCalendar(CLI::App& app, Task& task) {
    CLI::App& calendar = *app.add_subcommand("calendar", "Show, combine and reckon with working-time calendars");
    calendar.require_subcommand(1);
    calendar.footer(help::kCalendarExamples);
    for (const CalendarVerb& verb : kCalendarVerbs) {
        CLI::App& command = *calendar.add_subcommand(verb.name, verb.purpose);
        const auto options = std::make_shared<CalendarOptions>();
        describeVerb(command, verb, *options);
        runs(command, task, options, runCalendar);
    }
}

void describeDistribution(CLI::App& app, Task& task) {
    CLI::App& distribution = *app.add_subcommand("distribution", "Check and convert texts of distributions");
    distribution.require_subcommand(1);
    distribution.footer(help::kDistributionExamples);
    for (const auto& [name, purpose] :
         {std::pair("check", "Tell whether the text is a distribution"),
          std::pair("short", "Write the short form, as in calendar files"), std::pair("long", "Write the long form"),
          std::pair("mean", "Write the expected value")}) {
        CLI::App& command = *distribution.add_subcommand(name, purpose);
        const auto options = std::make_shared<DistributionOptions>();
        options->verb = name;
        command.add_flag("--json", options->json, "Write one JSON document, qor.distribution/1");
        addLanguage(command, options->language);
        command.add_option("TEXT", options->text, "The distribution, long or short; - reads a line of standard input")
            ->required()
            ->option_text(" ");
        runs(command, task, options, runDistribution);
    }
}

}  // namespace qor::cli
