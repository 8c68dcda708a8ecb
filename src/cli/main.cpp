// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "cli/AdminArguments.h"
#include "cli/CalendarCommand.h"
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/Console.h"
#include "cli/ConvertCommand.h"
#include "cli/DistributionCommand.h"
#include "cli/HelpTexts.h"
#include "cli/HierarchyCommand.h"
#include "cli/LogArguments.h"
#include "cli/Nearest.h"
#include "cli/RenameCommand.h"
#include "cli/RepoCommand.h"
#include "cli/SimCommands.h"

using namespace qor::cli::help;

namespace {

using qor::cli::addActor;
using qor::cli::addLanguage;
using qor::cli::Console;
using qor::cli::Exit;

/// What of a library's simulation texts is listed, by the command's name.
struct SimListingName {
    const char* name;
    qor::cli::SimListing listing;
    const char* description;
};
constexpr SimListingName kSimListings[] = {
    {"options", qor::cli::SimListing::Options, "Show the simulation options and which attributes they use"},
    {"classes", qor::cli::SimListing::Classes, "Show the classes that may be simulated"},
    {"actions", qor::cli::SimListing::Actions, "Show the attributes that are evaluated on simulation events"},
    {"texts", qor::cli::SimListing::Texts, "Show the texts that label results"},
    {"results", qor::cli::SimListing::Results, "Show which attributes take results"},
};

/// What a command on a repository does, and which arguments of its own it takes.
struct RepoVerb {
    const char* name;
    const char* purpose;
};
constexpr RepoVerb kRepoVerbs[] = {
    {"init", "Make an empty repository file"},
    {"import", "Take in libraries and models from YAML, JSON and BPMN files"},
    {"export", "Write libraries and models as YAML files into a folder"},
    {"info", "Show what is in it"},
    {"verify", "Compare everything in it with its hashes"},
    {"backup", "Copy it while it is in use"},
    {"unlock", "Break the locks of its libraries, as an administrator"},
};

struct Options {
    qor::cli::RepoOptions repo;
    qor::cli::LogOptions log;
    qor::cli::ConnectOptions connect;
    qor::cli::SimListOptions simList;
    qor::cli::SimCheckOptions simCheck;
    qor::cli::SimWriteOptions simWrite;
    qor::cli::SimResetOptions simReset;
    qor::cli::CheckOptions check;
    qor::cli::LibraryOptions library;
    qor::cli::RulesOptions rules;
    qor::cli::CalendarOptions calendar;
    qor::cli::DistributionOptions distribution;
    qor::cli::HierarchyOptions hierarchy;
    qor::cli::RenameOptions rename;
    qor::cli::ConvertOptions convert;
    qor::cli::TransferOptions transfer;
    qor::cli::AdminOptions admin;
};

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

void describeCalendarVerb(CLI::App& command, const CalendarVerb& verb, qor::cli::CalendarOptions& options) {
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

CLI::App& describeCalendar(CLI::App& app, qor::cli::CalendarOptions& options) {
    CLI::App& calendar = *app.add_subcommand("calendar", "Show, combine and reckon with working-time calendars");
    calendar.require_subcommand(1);
    calendar.footer(kCalendarExamples);
    for (const CalendarVerb& verb : kCalendarVerbs) {
        CLI::App& command = *calendar.add_subcommand(verb.name, verb.purpose);
        describeCalendarVerb(command, verb, options);
        command.callback([&options, &verb] { options.verb = verb.name; });
    }
    return calendar;
}

CLI::App& describeDistribution(CLI::App& app, qor::cli::DistributionOptions& options) {
    CLI::App& distribution = *app.add_subcommand("distribution", "Check and convert texts of distributions");
    distribution.require_subcommand(1);
    distribution.footer(kDistributionExamples);
    for (const auto& [name, purpose] :
         {std::pair("check", "Tell whether the text is a distribution"),
          std::pair("short", "Write the short form, as in calendar files"), std::pair("long", "Write the long form"),
          std::pair("mean", "Write the expected value")}) {
        CLI::App& command = *distribution.add_subcommand(name, purpose);
        command.add_flag("--json", options.json, "Write one JSON document, qor.distribution/1");
        addLanguage(command, options.language);
        command.add_option("TEXT", options.text, "The distribution, long or short; - reads a line of standard input")
            ->required()
            ->option_text(" ");
        command.callback([&options, verb = std::string(name)] { options.verb = verb; });
    }
    return distribution;
}

CLI::App& describeRepo(CLI::App& app, qor::cli::RepoOptions& options) {
    CLI::App& repo = *app.add_subcommand("repo", "Keep libraries and models in a repository file");
    repo.require_subcommand(1);
    repo.footer(kRepoExamples);
    for (const RepoVerb& verb : kRepoVerbs) {
        const std::string name = verb.name;
        CLI::App& command = *repo.add_subcommand(name, verb.purpose);
        command.add_flag("--json", options.json, "Write one JSON document, qor.repo." + name + "/1");
        command.add_option("FILE", options.file, "The repository file")->required()->option_text(" ");
        if (name == "import" || name == "unlock") addActor(command, options.user);
        if (name == "import") {
            addLanguage(command, options.language);
            command.add_option("--library", options.library, "The repository's library that the models are made with")
                ->option_text("NAME");
            command.add_flag("--keep", options.keep, "Take in models that break rules checked before saving, too");
            command.add_option("INPUT", options.inputs, "Files to take in")->required()->option_text("...");
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
        command.callback([&options, name] { options.verb = name; });
    }
    return repo;
}

CLI::App& describeConnect(CLI::App& app, qor::cli::ConnectOptions& options) {
    CLI::App& connect = *app.add_subcommand("may-connect", "Explain whether the rules allow a relation to be drawn");
    connect.add_option("--in", options.file, "The file with the model that the objects are in")->option_text("FILE");
    connect.add_option("--model", options.model, "The model, when the file has several")->option_text("NAME");
    connect.add_flag("--json", options.json, "Write one JSON document, qor.may-connect/1");
    addLanguage(connect, options.language);
    connect.add_option("LIB", options.library, "The library")->required()->option_text(" ");
    connect.add_option("RELATION", options.relation, "The relation class")->required()->option_text(" ");
    connect.add_option("SOURCE", options.source, "Where the relation begins")->required()->option_text(" ");
    connect.add_option("TARGET", options.target, "Where it ends")->required()->option_text(" ");
    connect.footer(kConnectExamples);
    return connect;
}

CLI::App& describeHierarchy(CLI::App& app, qor::cli::HierarchyOptions& options) {
    CLI::App& hierarchy = *app.add_subcommand("hierarchy", "Show which models refer to each other");
    hierarchy
        .add_option("--library", options.library,
                    "Read with this library instead of the files' own; in a repository: its name")
        ->option_text("LIB");
    hierarchy.add_option("--model", options.models, "Only models of this name; may be given several times")
        ->option_text("NAME")
        ->allow_extra_args(false);
    hierarchy.add_flag("--where-used", options.whereUsed, "Show which models refer to each one");
    hierarchy.add_flag("--broken", options.broken, "Show references that lead nowhere or to several objects");
    hierarchy.add_option("--max-elements", options.maxElements, "Most elements of a tree; 10000 when not given")
        ->check(CLI::PositiveNumber)
        ->option_text("N");
    hierarchy.add_option("--xml", options.xml, "Write one tree as XML; - is standard output")->option_text("FILE");
    hierarchy.add_option("--svg", options.svg, "Draw one tree; - is standard output")->option_text("FILE");
    hierarchy.add_flag("--json", options.json, "Write one JSON document, qor.hierarchy/1");
    addLanguage(hierarchy, options.language);
    hierarchy.add_option("MODEL", options.files, "Files and folders with models, or a repository file")
        ->required()
        ->option_text("...");
    hierarchy.footer(kHierarchyExamples);
    hierarchy.callback([&options] {
        const int toOutput = (options.json ? 1 : 0) + (options.xml == "-" ? 1 : 0) + (options.svg == "-" ? 1 : 0);
        const bool alsoText = !options.json && (options.whereUsed || options.broken);
        if (toOutput > 1 || (toOutput == 1 && alsoText))
            throw CLI::ValidationError("only one of these can go to standard output");
    });
    return hierarchy;
}

CLI::App& describeRename(CLI::App& app, qor::cli::RenameOptions& options) {
    CLI::App& rename = *app.add_subcommand("rename", "Give objects names made from their attributes, or show which");
    rename.add_option("--library", options.library, "Read with this library instead of the files' own")
        ->option_text("LIB");
    rename.add_option("--model", options.models, "Only models of this name; may be given several times")
        ->option_text("NAME")
        ->allow_extra_args(false);
    rename.add_flag("--dry-run", options.dryRun, "Only show the new names; needed for model files");
    rename.add_flag("--json", options.json, "Write one JSON document, qor.rename/1");
    addActor(rename, options.user);
    addLanguage(rename, options.language);
    rename.add_option("MODEL", options.files, "Repository file; with --dry-run also files and folders with models")
        ->required()
        ->option_text("...");
    rename.footer(kRenameExamples);
    return rename;
}

/// Of an option that takes several names, the last one is FILE when FILE stands nowhere else: behind the names nothing
/// tells them apart.
void takeFileFrom(std::vector<std::string>& names, std::string& file) {
    if (!file.empty()) return;
    if (names.size() < 2) throw CLI::RequiredError("FILE");
    file = std::move(names.back());
    names.pop_back();
}

void describeModelEdit(CLI::App& command, qor::cli::ModelEditOptions& options) {
    command.add_option("--model", options.model, "The model, where the library has several")->option_text("NAME");
    command.add_flag("--dry-run", options.dryRun, "Only show what would change");
    command.add_flag("--json", options.json, "Write one JSON document, qor." + command.get_name() + "/1");
    addActor(command, options.user);
    addLanguage(command, options.language);
    command.add_option("FILE", options.file, "The repository file; FILE#NAME for one of several libraries")
        ->required()
        ->option_text(" ");
}

CLI::App& describeConvert(CLI::App& app, qor::cli::ConvertOptions& options) {
    CLI::App& convert = *app.add_subcommand("convert", "Turn objects into objects of another class");
    describeModelEdit(convert, options.edit);
    convert.add_option("OBJECT", options.objects, "The objects")->required()->option_text("...");
    convert.add_option("--to", options.to, "The class that they become objects of")->required()->option_text("CLASS");
    convert.add_flag("--keep", options.keep, "Convert although cardinality rules would be broken");
    convert.footer(kConvertExamples);
    return convert;
}

CLI::App& describeTransfer(CLI::App& app, qor::cli::TransferOptions& options) {
    CLI::App& transfer = *app.add_subcommand("transfer", "Copy attributes of an object onto others of its class");
    describeModelEdit(transfer, options.edit);
    transfer.add_option("--from", options.from, "The object to copy from")->required()->option_text("OBJECT");
    transfer.add_option("--to", options.to, "The objects to copy onto")->required()->option_text("OBJECT...");
    transfer.add_option("--attributes", options.attributes, "Names of attributes, and size for width and height")
        ->required()
        ->delimiter(',')
        ->option_text("A,B,size")
        ->allow_extra_args(false);
    transfer.get_option("FILE")->required(false);
    transfer.callback([&options] { takeFileFrom(options.to, options.edit.file); });
    transfer.add_flag("--all", options.all, "Write nothing when something is not possible");
    transfer.footer(kTransferExamples);
    return transfer;
}

void describeSim(CLI::App& sim, Options& options) {
    sim.require_subcommand(1);
    sim.footer(kSimExamples);
    for (const SimListingName& row : kSimListings) {
        CLI::App& list = *sim.add_subcommand(row.name, row.description);
        list.add_flag("--json", options.simList.json,
                      std::string("Write one JSON document, qor.sim.") + row.name + "/1");
        addLanguage(list, options.simList.language);
        list.add_option("LIB", options.simList.library, "The library")->required()->option_text(" ");
    }

    CLI::App& check = *sim.add_subcommand("check", "Show errors in simulation texts, and what models lack for a run");
    check.add_option("--option", options.simCheck.option, "Only this simulation option")->option_text("NAME");
    check.add_flag("--json", options.simCheck.json, "Write one JSON document, qor.sim.check/1");
    addLanguage(check, options.simCheck.language);
    check.add_option("LIB", options.simCheck.library, "The library")->required()->option_text(" ");
    check.add_option("MODEL", options.simCheck.files, "Files with models")->option_text("...");

    CLI::App& write = *sim.add_subcommand("write", "Write the simulation mapping as keyword text");
    write.add_flag("--without-classes", options.simWrite.withoutClasses, "Leave out the classes that may be simulated");
    write.add_option("LIB", options.simWrite.library, "The library")->required()->option_text(" ");

    CLI::App& reset = *sim.add_subcommand("reset", "Take simulation results away, or show which");
    reset
        .add_option("--library", options.simReset.library,
                    "Read with this library instead of the file's own; in a repository: its name")
        ->option_text("LIB");
    reset.add_option("--model", options.simReset.models, "The models to reset")->required()->option_text("NAME...");
    reset.add_flag("--dry-run", options.simReset.dryRun, "Only show what would change; needed for model files");
    reset.add_flag("--json", options.simReset.json, "Write one JSON document, qor.sim.reset/1");
    addActor(reset, options.simReset.user);
    reset.add_option("FILE", options.simReset.file, "Repository file, or with --dry-run a file with models")
        ->option_text(" ");
    reset.callback([&options] { takeFileFrom(options.simReset.models, options.simReset.file); });
}

void describeCheckReports(CLI::App& check, CLI::Option& json, qor::cli::CheckOptions& options) {
    const auto oneOf = [](std::vector<std::string> words) { return CLI::IsMember(std::move(words)); };
    check.add_option("--max-breaches", options.maxBreaches, "Show at most so many; all are counted")
        ->option_text("NUMBER");
    check.add_option("--group", options.group, "Show breaches by object, or by rule or class with numbers first")
        ->check(oneOf({"object", "rule", "class"}))
        ->option_text("object|rule|class")
        ->excludes(&json);
    check.add_option("--sarif", options.sarif, "Also write SARIF 2.1.0; - is standard output")->option_text("FILE");
    check.add_option("--junit", options.junit, "Also write a JUnit report; - is standard output")->option_text("FILE");
    check.add_option("--baseline", options.baseline, "Report only what this file does not hold")->option_text("FILE");
    check
        .add_option("--write-baseline", options.writeBaseline, "Write the breaches to this file, as known from now on")
        ->option_text("FILE");
    check.add_option("--settings", options.settings, "Settings to use instead of qor-check.yaml beside the models")
        ->option_text("FILE");
    check.add_option("--fail-on", options.failOn, "What ends with code 1; without, the settings say")
        ->check(oneOf({"error", "warning", "never"}))
        ->option_text("error|warning|never");
    check.callback([&options] {
        const int onOutput = (options.json ? 1 : 0) + (options.sarif == "-" ? 1 : 0) + (options.junit == "-" ? 1 : 0);
        if (onOutput > 1) throw CLI::ValidationError("only one report can go to standard output");
    });
}

void describeRules(CLI::App& rules, qor::cli::RulesOptions& options) {
    CLI::Option& cls = *rules.add_option("--class", options.cls, "Only the rules of this class")->option_text("NAME");
    CLI::Option& doctor =
        *rules.add_flag("--doctor", options.doctor, "Show contradictions, and rules without effect")->excludes(&cls);
    CLI::Option& models =
        *rules.add_option("--models", options.models, "Also show which rules and objects of these files never meet")
             ->needs(&doctor)
             ->option_text("FILE...");
    rules.add_option("--against", options.against, "Also show what changes for these models beside this other library")
        ->needs(&models)
        ->option_text("LIB");
}

void describe(CLI::App& app, Options& options) {
    app.require_subcommand(1);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND [FILE]");
    app.get_formatter()->label("Positionals", "Arguments");
    app.set_version_flag("--version", "qor " QOR_VERSION, "Show the version and end");
    app.set_help_flag("-h,--help", "Show this help and end; after a command, that command's");
    app.footer(std::string("qor COMMAND --help shows more, with examples.\n") + kExitCodes);

    CLI::App& check = *app.add_subcommand("check", "Show which objects and relations of models break the rules");
    check.add_option("--library", options.check.library, "Check with this library instead of the file's own")
        ->option_text("LIB");
    check.add_option("--model", options.check.models, "Check only models of this name; may be given several times")
        ->option_text("NAME")
        ->allow_extra_args(false);  // what follows the name is a FILE
    check.add_flag("--first", options.check.first, "End each model's check at its first breach, as on saving it");
    CLI::Option& json = *check.add_flag("--json", options.check.json, "Write one JSON document, qor.check/1");
    describeCheckReports(check, json, options.check);
    check.add_flag("--quiet", options.check.quiet, "Show breaches and errors only");
    addLanguage(check, options.check.language);
    check.add_option("FILE", options.check.files, "Files to check")->required()->option_text("...");
    check.footer(kCheckExamples);

    CLI::App& library = *app.add_subcommand("library", "Show what is in a method library");
    library.add_flag("--json", options.library.json, "Write one JSON document, qor.library/1");
    library.add_option("FILE", options.library.file, "The library")->option_text(" ");
    library.footer(kLibraryExamples);
    CLI::App& libraryCheck =
        *library.add_subcommand("check", "Show errors in a library's texts about conversion and naming");
    libraryCheck.add_flag("--json", options.library.json, "Write one JSON document, qor.library.check/1");
    libraryCheck.add_option("LIB", options.library.file, "The library")->required()->option_text(" ");
    library.final_callback([&library, &options] {
        if (!library.got_subcommand("check") && options.library.file.empty()) throw CLI::RequiredError("FILE");
    });

    CLI::App& rules = *app.add_subcommand("rules", "Show errors in a library's rule texts, and the rules in force");
    describeRules(rules, options.rules);
    rules.add_flag("--json", options.rules.json, "Write one JSON document, qor.rules/1");
    addLanguage(rules, options.rules.language);
    rules.add_option("FILE", options.rules.file, "The library")->required()->option_text(" ");
    rules.footer(kRulesExamples);

    CLI::App& connect = describeConnect(app, options.connect);
    CLI::App& calendar = describeCalendar(app, options.calendar);
    CLI::App& distribution = describeDistribution(app, options.distribution);
    CLI::App& sim = *app.add_subcommand("sim", "Show and check what a library says about simulation");
    describeSim(sim, options);

    CLI::App& repo = describeRepo(app, options.repo);
    CLI::App& log = describeLog(app, options.log);

    CLI::App& hierarchy = describeHierarchy(app, options.hierarchy);
    CLI::App& rename = describeRename(app, options.rename);
    CLI::App& convert = describeConvert(app, options.convert);
    CLI::App& transfer = describeTransfer(app, options.transfer);
    CLI::App& user = describeUsers(app, options.admin);
    CLI::App& group = describeUserGroups(app, options.admin);
    CLI::App& permission = describePermissions(app, options.admin);
    CLI::App& access = describeAccess(app, options.admin);

    for (CLI::App* command : {&check, &library, &rules, &connect, &repo, &calendar, &distribution, &sim, &hierarchy,
                              &rename, &convert, &transfer, &log, &user, &group, &permission, &access})
        command->group("Commands");
}

/// The command that was given, or the whole.
const CLI::App& chosen(const CLI::App& app) {
    const auto commands = app.get_subcommands();
    return commands.empty() ? app : chosen(*commands.front());
}

/// "qor calendar sum"
std::string fullName(const CLI::App& command) {
    const CLI::App* parent = command.get_parent();
    return parent == nullptr ? command.get_name() : fullName(*parent) + " " + command.get_name();
}

std::vector<std::string> optionNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    return names;
}

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

/// Stands for nothing by itself: one of its commands must be given.
bool isGroup(const CLI::App& command) { return command.get_require_subcommand_min() > 0; }

/// What is wrong with the arguments, in words that help.
std::string complaint(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App& command = chosen(app);
    const std::vector<std::string> surplus = app.remaining(true);
    for (const std::string& word : surplus) {
        if (word.size() < 2 || word.front() != '-' || word == "--") continue;
        const std::string name = word.substr(0, word.find('='));
        return "there is no option " + qor::cli::quoted(name) + qor::cli::didYouMean(name, optionNames(command));
    }
    if (!surplus.empty() && isGroup(command))
        return "there is no command " + qor::cli::quoted(surplus.front()) +
               qor::cli::didYouMean(surplus.front(), commandNames(command));
    if (!surplus.empty()) return "one FILE is enough, what about " + qor::cli::quoted(surplus.front()) + "?";
    return qor::cli::printable(error.what());
}

Exit refuse(const CLI::App& app, const CLI::ParseError& error, Console& console) {
    const CLI::App& command = chosen(app);
    if (isGroup(command) && app.remaining(true).empty()) {
        console.err(app.help());
        return Exit::WrongUse;
    }
    console.err("qor: " + console.errColours().error("error:") + " " + complaint(app, error) + "\n" +
                "Try: " + fullName(command) + " --help\n");
    return Exit::WrongUse;
}

Exit dispatchSim(const CLI::App& sim, const Options& options, Console& console) {
    for (const SimListingName& row : kSimListings)
        if (sim.got_subcommand(row.name)) return runSimList(row.listing, options.simList, console);
    if (sim.got_subcommand("check")) return runSimCheck(options.simCheck, console);
    if (sim.got_subcommand("write")) return runSimWrite(options.simWrite, console);
    return runSimReset(options.simReset, console);
}

Exit dispatch(const CLI::App& app, const Options& options, Console& console) {
    if (app.got_subcommand("check")) return runCheck(options.check, console);
    if (app.got_subcommand("sim")) return dispatchSim(*app.get_subcommand("sim"), options, console);
    if (app.got_subcommand("may-connect")) return runMayConnect(options.connect, console);
    if (app.got_subcommand("library")) {
        const bool isCheck = app.get_subcommand("library")->got_subcommand("check");
        return isCheck ? runLibraryCheck(options.library, console) : runLibrary(options.library, console);
    }
    if (app.got_subcommand("repo")) return runRepo(options.repo, console);
    if (app.got_subcommand("log")) return runLog(options.log, console);
    if (app.got_subcommand("calendar")) return runCalendar(options.calendar, console);
    if (app.got_subcommand("distribution")) return runDistribution(options.distribution, console);
    if (app.got_subcommand("hierarchy")) return runHierarchy(options.hierarchy, console);
    if (app.got_subcommand("rename")) return runRename(options.rename, console);
    if (app.got_subcommand("convert")) return runConvert(options.convert, console);
    if (app.got_subcommand("transfer")) return runTransfer(options.transfer, console);
    if (app.got_subcommand("user")) return runUser(options.admin, console);
    if (app.got_subcommand("group")) return runUserGroup(options.admin, console);
    if (app.got_subcommand("permission")) return runPermission(options.admin, console);
    if (app.got_subcommand("access")) return runAccess(options.admin, console);
    return options.rules.doctor ? runDoctor(options.rules, console) : runRules(options.rules, console);
}

Exit run(int argc, char** argv, Console& console) {
    CLI::App app(kDescription, "qor");
    Options options;
    describe(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        console.out(app.help());
        return Exit::Clean;
    } catch (const CLI::CallForVersion& version) {
        console.out(std::string(version.what()) + "\n");
        return Exit::Clean;
    } catch (const CLI::ParseError& error) {
        return refuse(app, error, console);
    }
    return dispatch(app, options, console);
}

}  // namespace

int main(int argc, char** argv) {
    Console console;
    Exit exit = Exit::Internal;
    try {
        exit = run(argc, argv, console);
        if (!console.finish()) exit = worse(exit, Exit::WriteFailed);
    } catch (const std::bad_alloc&) {
        console.err("qor: error: out of memory\n");
    } catch (const std::exception& error) {
        console.err(std::string("qor: internal error: ") + error.what() + "\n");
    }
    return static_cast<int>(exit);
}
