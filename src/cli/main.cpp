// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Nearest.h"

namespace {

using qor::cli::Console;
using qor::cli::Exit;

constexpr const char* kDescription =
    "Checks business-process models against the cardinality rules of their method library.";
constexpr const char* kExitCodes =
    "Exit codes: 0 clean, 1 findings, 2 wrong use, 3 input not readable or not valid,\n"
    "4 locked or busy, 5 output not written, 70 internal error.\n";
constexpr const char* kCheckExamples =
    "Examples:\n"
    "  qor check order.bpmn\n"
    "  qor check --library house-rules.yaml models/*.yaml\n"
    "  qor check --json *.bpmn > report.json\n"
    "  generate-model | qor check --first -\n\n"
    "FILE is a model file (YAML or JSON), a BPMN 2.0 file, or - for standard input. A model\n"
    "file names its library; BPMN files are checked with the library \"bpmn\" that comes along.\n";
constexpr const char* kLibraryExamples =
    "Examples:\n"
    "  qor library house-rules.yaml\n"
    "  qor library --json bpmn\n\n"
    "FILE is a library file, or the name of a library that comes along (\"bpmn\").\n";
constexpr const char* kRulesExamples =
    "Examples:\n"
    "  qor rules house-rules.yaml\n"
    "  qor rules --class Task bpmn\n\n"
    "Errors in rule texts come first, each with its place in the file. FILE is a library file,\n"
    "or the name of a library that comes along (\"bpmn\").\n";

struct Options {
    qor::cli::CheckOptions check;
    qor::cli::LibraryOptions library;
    qor::cli::RulesOptions rules;
};

void addLanguage(CLI::App& command, std::string& language) {
    command.add_option("--language", language, "Language of the messages: en or de")
        ->check(CLI::IsMember(std::vector<std::string>{"en", "de"}))
        ->option_text("LANGUAGE");
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
    check.add_flag("--json", options.check.json, "Write one JSON document, qor.check/1");
    check.add_flag("--quiet", options.check.quiet, "Show breaches and errors only");
    addLanguage(check, options.check.language);
    check.add_option("FILE", options.check.files, "Files to check")->required()->option_text("...");
    check.footer(kCheckExamples);

    CLI::App& library = *app.add_subcommand("library", "Show what is in a method library");
    library.add_flag("--json", options.library.json, "Write one JSON document, qor.library/1");
    library.add_option("FILE", options.library.file, "The library")->required()->option_text(" ");
    library.footer(kLibraryExamples);

    CLI::App& rules = *app.add_subcommand("rules", "Show errors in a library's rule texts, and the rules in force");
    rules.add_option("--class", options.rules.cls, "Only the rules of this class")->option_text("NAME");
    rules.add_flag("--json", options.rules.json, "Write one JSON document, qor.rules/1");
    addLanguage(rules, options.rules.language);
    rules.add_option("FILE", options.rules.file, "The library")->required()->option_text(" ");
    rules.footer(kRulesExamples);

    for (CLI::App* command : {&check, &library, &rules}) command->group("Commands");
}

/// The command that was given, or the whole.
const CLI::App& chosen(const CLI::App& app) {
    const auto commands = app.get_subcommands();
    return commands.empty() ? app : *commands.front();
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

/// What is wrong with the arguments, in words that help.
std::string complaint(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App& command = chosen(app);
    const std::vector<std::string> surplus = app.remaining(true);
    for (const std::string& word : surplus) {
        if (word.size() < 2 || word.front() != '-' || word == "--") continue;
        const std::string name = word.substr(0, word.find('='));
        return "there is no option " + qor::cli::quoted(name) + qor::cli::didYouMean(name, optionNames(command));
    }
    if (!surplus.empty() && &command == &app)
        return "there is no command " + qor::cli::quoted(surplus.front()) +
               qor::cli::didYouMean(surplus.front(), commandNames(app));
    if (!surplus.empty()) return "one FILE is enough, what about " + qor::cli::quoted(surplus.front()) + "?";
    return qor::cli::printable(error.what());
}

Exit refuse(const CLI::App& app, const CLI::ParseError& error, Console& console) {
    const CLI::App& command = chosen(app);
    const bool isBare = &command == &app && app.remaining(true).empty();
    if (isBare) {
        console.err(app.help());
        return Exit::WrongUse;
    }
    const std::string name = &command == &app ? "qor" : "qor " + command.get_name();
    console.err("qor: " + console.errColours().error("error:") + " " + complaint(app, error) + "\n" + "Try: " + name +
                " --help\n");
    return Exit::WrongUse;
}

Exit dispatch(const CLI::App& app, const Options& options, Console& console) {
    if (app.got_subcommand("check")) return runCheck(options.check, console);
    if (app.got_subcommand("library")) return runLibrary(options.library, console);
    return runRules(options.rules, console);
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
