// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <exception>
#include <new>
#include <string>

#include "cli/Arguments.h"
#include "cli/Complaint.h"
#include "cli/Console.h"
#include "cli/HelpTexts.h"

namespace {

using qor::cli::Console;
using qor::cli::Exit;
using qor::cli::Task;

/// In the order of the help.
constexpr void (*kCommands[])(CLI::App& app, Task& task) = {
    qor::cli::describeCheck,       qor::cli::describeLibrary,  qor::cli::describeRules,
    qor::cli::describeConnect,     qor::cli::describeCalendar, qor::cli::describeDistribution,
    qor::cli::describeSim,         qor::cli::describeRepo,     qor::cli::describeLog,
    qor::cli::describeHierarchy,   qor::cli::describeRename,   qor::cli::describeConvert,
    qor::cli::describeTransfer,    qor::cli::describeUsers,    qor::cli::describeUserGroups,
    qor::cli::describePermissions, qor::cli::describeAccess,
};

void describe(CLI::App& app, Task& task) {
    app.require_subcommand(1);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND [FILE]");
    app.get_formatter()->label("Positionals", "Arguments");
    app.set_version_flag("--version", "qor " QOR_VERSION, "Show the version and end");
    app.set_help_flag("-h,--help", "Show this help and end; after a command, that command's");
    app.footer(std::string("qor COMMAND --help shows more, with examples.\n") + qor::cli::help::kExitCodes);
    for (const auto add : kCommands) add(app, task);
    for (CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) command->group("Commands");
}

Exit run(int argc, char** argv, Console& console) {
    CLI::App app(qor::cli::help::kDescription, "qor");
    Task task;
    describe(app, task);
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
    return task(console);
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
