// SPDX-License-Identifier: Apache-2.0
#include "cli/CommonArguments.h"
#include "cli/HelpTexts.h"
#include "cli/LogCommand.h"
#include "cli/RepoCommand.h"

namespace qor::cli {

namespace {

void describeVerb(CLI::App& command, const RepoVerb& verb, RepoOptions& options) {
    const std::string name = verb.name;
    options.verb = &verb;
    options.repository.schema = "qor.repo." + name + "/1";
    command.add_flag("--json", options.repository.json, "Write one JSON document, " + options.repository.schema);
    command.add_option("FILE", options.repository.file, "The repository file")->required()->option_text(" ");
    if (name == "import" || name == "unlock") addActor(command, options.repository.user);
    if (name == "import") {
        addLanguage(command, options.repository.language);
        command.add_option("--library", options.library, "The repository's library that the models are made with")
            ->option_text("NAME");
        command.add_flag("--keep", options.keep, "Take in models that break rules checked before saving, too");
        command.add_option("INPUT", options.inputs, "Files to take in, and folders of such files")
            ->required()
            ->option_text("...");
    }
    if (name == "export") {
        command.add_option("--library", options.library, "Only this library, with its models")->option_text("NAME");
        command.add_option("FOLDER", options.target, "Where the files go")->required()->option_text(" ");
    }
    if (name == "unlock") command.add_option("LIBRARY", options.library, "Only this one")->option_text(" ");
    if (name == "backup")
        command.add_option("TARGET", options.target, "The copy; an older one is replaced")
            ->required()
            ->option_text(" ");
}

void describeFilters(CLI::App& command, LogOptions& options) {
    command.add_option("--from", options.from, "Only from this time on, as 2026-03-01 09:05 or the beginning of it")
        ->option_text("TIME");
    command.add_option("--to", options.to, "Only up to this time, which belongs to it")->option_text("TIME");
    command.add_option("--by", options.by, "Only what this administrator did")->option_text("NAME");
    command.add_option("--action", options.action, "Only this action, by its text")->option_text("TEXT");
    command.add_option("--number", options.number, "A log that was put aside")
        ->check(CLI::PositiveNumber)
        ->option_text("N");
}

void describeVerb(CLI::App& command, const LogVerb& verb, LogOptions& options) {
    const std::string name = verb.name;
    options.verb = &verb;
    options.repository.schema = "qor.log." + name + "/1";
    command.add_flag("--json", options.repository.json, "Write one JSON document, " + options.repository.schema);
    addLanguage(command, options.repository.language);
    addActor(command, options.repository.user);
    command.add_option("--key-file", options.repository.keyFile, "The key file; else QOR_KEY_FILE, or the usual place")
        ->option_text("PATH");
    if (verb.filters) describeFilters(command, options);
    if (name == "start" || name == "settings")
        command.add_option("--names", options.names, "Whether the administrator's name is written")
            ->option_text("yes|no");
    if (name == "verify") {
        command.add_option("--verification-key", options.verificationKey, "Told when logging began; - reads it")
            ->option_text("KEY");
        command.add_option("--head", options.head, "What qor log head told before")->option_text("HEAD");
    }
    command.add_option("FILE", options.repository.file, "The repository file")->required()->option_text(" ");
    if (name != "export") return;
    CLI::Option* const lines =
        command.add_flag("--json-lines", options.jsonLines, "One JSON object a line; else CSV")->option_text(" ");
    command.add_flag("--raw", options.raw, "Exactly what was logged, without care for spreadsheets")
        ->excludes(lines)
        ->option_text(" ");
    command.add_option("TARGET", options.target, "The file to write; - is standard output")
        ->required()
        ->option_text(" ");
}

void refuseContradictions(const LogOptions& options) {
    const bool filters = !(options.from + options.to + options.by + options.action).empty();
    if (options.raw && filters) throw CLI::ValidationError("--raw writes the whole log");
    if (options.repository.json && options.target == "-")
        throw CLI::ValidationError("only one of these can go to standard output");
}

}  // namespace

void describeRepo(CLI::App& app, Task& task) {
    CLI::App& repo = *app.add_subcommand("repo", "Keep libraries and models in a repository file");
    repo.require_subcommand(1);
    repo.footer(help::kRepoExamples);
    for (const RepoVerb& verb : repoVerbs()) {
        CLI::App& command = *repo.add_subcommand(verb.name, verb.purpose);
        const auto options = std::make_shared<RepoOptions>();
        describeVerb(command, verb, *options);
        runs(command, task, options, runRepo);
    }
}

void describeLog(CLI::App& app, Task& task) {
    CLI::App& log = *app.add_subcommand("log", "Keep and read the sealed log of what administrators do");
    log.require_subcommand(1);
    log.footer(help::kLogExamples);
    for (const LogVerb& verb : logVerbs()) {
        CLI::App& command = *log.add_subcommand(verb.name, verb.purpose);
        const auto options = std::make_shared<LogOptions>();
        describeVerb(command, verb, *options);
        command.callback([&task, options] {
            refuseContradictions(*options);
            task = taskOf<LogOptions>(options, runLog);
        });
    }
}

}  // namespace qor::cli
