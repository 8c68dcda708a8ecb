// SPDX-License-Identifier: Apache-2.0
#include "cli/Complaint.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/Console.h"
#include "cli/Nearest.h"

namespace qor::cli {

namespace {

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
        return "there is no option " + cli::quoted(name) + didYouMean(name, optionNames(command));
    }
    if (!surplus.empty() && isGroup(command))
        return "there is no command " + cli::quoted(surplus.front()) +
               didYouMean(surplus.front(), commandNames(command));
    if (!surplus.empty()) return "one FILE is enough, what about " + cli::quoted(surplus.front()) + "?";
    return printable(error.what());
}

}  // namespace

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

}  // namespace qor::cli
