// SPDX-License-Identifier: Apache-2.0
// The arguments of `qor log`. For the one file that parses arguments.
#pragma once
#include <CLI/CLI.hpp>
#include <string>
#include <string_view>

#include "cli/CommonArguments.h"
#include "cli/HelpTexts.h"
#include "cli/LogCommand.h"

namespace qor::cli {

/// A command on the administrator log.
struct LogVerb {
    const char* name;
    const char* purpose;
    bool filters;
};
inline constexpr LogVerb kLogVerbs[] = {
    {"start", "Write changes of users and memberships into the log from now on", false},
    {"stop", "Write no more", false},
    {"settings", "Show or change what is written", false},
    {"show", "Show the log", true},
    {"export", "Write the log into a file", true},
    {"verify", "Tell whether anybody has tampered with it", false},
    {"head", "Tell where it ends, to be noted elsewhere", false},
    {"rotate", "Put the log aside and begin a new one", false},
};

inline void describeLogVerb(CLI::App& command, const LogVerb& verb, LogOptions& options) {
    const std::string_view name = verb.name;
    command.add_flag("--json", options.repo.json, std::string("Write one JSON document, qor.log.") + verb.name + "/1");
    addLanguage(command, options.repo.language);
    addActor(command, options.repo.user);
    command.add_option("--key-file", options.repo.keyFile, "The key file; else QOR_KEY_FILE, or the usual place")
        ->option_text("PATH");
    if (verb.filters) {
        command
            .add_option("--from", options.from, "Only from this time on, as 2026-03-01 09:05 or the beginning of it")
            ->option_text("TIME");
        command.add_option("--to", options.to, "Only up to this time, which belongs to it")->option_text("TIME");
        command.add_option("--by", options.by, "Only what this administrator did")->option_text("NAME");
        command.add_option("--action", options.action, "Only this action, by its text")->option_text("TEXT");
        command.add_option("--number", options.file, "A log that was put aside")
            ->check(CLI::PositiveNumber)
            ->option_text("N");
    }
    if (name == "start" || name == "settings")
        command.add_option("--names", options.names, "Whether the administrator's name is written")
            ->option_text("yes|no");
    if (name == "verify") {
        command.add_option("--verification-key", options.verificationKey, "Told when logging began; - reads it")
            ->option_text("KEY");
        command.add_option("--head", options.head, "What qor log head told before")->option_text("HEAD");
    }
    command.add_option("FILE", options.repo.file, "The repository file")->required()->option_text(" ");
    if (name != "export") return;
    CLI::Option* const lines =
        command.add_flag("--json-lines", options.jsonLines, "One JSON object a line; else CSV")->option_text(" ");
    command.add_flag("--raw", options.raw, "Exactly what was logged, without care for spreadsheets")
        ->excludes(lines)
        ->option_text(" ");
    command.add_option("TARGET", options.repo.target, "The file to write; - is standard output")
        ->required()
        ->option_text(" ");
    command.callback([&options] {
        const bool filters = !(options.from + options.to + options.by + options.action).empty();
        if (options.raw && filters) throw CLI::ValidationError("--raw writes the whole log");
        if (options.repo.json && options.repo.target == "-")
            throw CLI::ValidationError("only one of these can go to standard output");
    });
}

inline CLI::App& describeLog(CLI::App& app, LogOptions& options) {
    options.repo.family = "log";
    CLI::App& log = *app.add_subcommand("log", "Keep and read the sealed log of what administrators do");
    log.require_subcommand(1);
    log.footer(help::kLogExamples);
    for (const LogVerb& verb : kLogVerbs) {
        CLI::App& command = *log.add_subcommand(verb.name, verb.purpose);
        command.preparse_callback([&options, &verb](std::size_t) { options.repo.verb = verb.name; });
        describeLogVerb(command, verb, options);
    }
    return log;
}

}  // namespace qor::cli
