// SPDX-License-Identifier: Apache-2.0
// The arguments of commands on method libraries.
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/HelpTexts.h"
#include "cli/SimCommands.h"

namespace qor::cli {

namespace {

/// What of a library's simulation texts is listed, by the command's name.
struct SimListingName {
    const char* name;
    SimListing listing;
    const char* description;
};
constexpr SimListingName kSimListings[] = {
    {"options", SimListing::Options, "Show the simulation options and which attributes they use"},
    {"classes", SimListing::Classes, "Show the classes that may be simulated"},
    {"actions", SimListing::Actions, "Show the attributes that are evaluated on simulation events"},
    {"texts", SimListing::Texts, "Show the texts that label results"},
    {"results", SimListing::Results, "Show which attributes take results"},
};

void describeListing(CLI::App& sim, const SimListingName& row, Task& task) {
    CLI::App& list = *sim.add_subcommand(row.name, row.description);
    const auto options = std::make_shared<SimListOptions>();
    options->listing = row.listing;
    list.add_flag("--json", options->json, std::string("Write one JSON document, qor.sim.") + row.name + "/1");
    addLanguage(list, options->language);
    list.add_option("LIB", options->library, "The library")->required()->option_text(" ");
    runs(list, task, options, runSimList);
}

void describeSimCheck(CLI::App& sim, Task& task) {
    CLI::App& check = *sim.add_subcommand("check", "Show errors in simulation texts, and what models lack for a run");
    const auto options = std::make_shared<SimCheckOptions>();
    check.add_option("--option", options->option, "Only this simulation option")->option_text("NAME");
    check.add_flag("--json", options->json, "Write one JSON document, qor.sim.check/1");
    addLanguage(check, options->language);
    check.add_option("LIB", options->library, "The library")->required()->option_text(" ");
    check.add_option("MODEL", options->files, "Files and folders with models")->option_text("...");
    runs(check, task, options, runSimCheck);
}

void describeSimWrite(CLI::App& sim, Task& task) {
    CLI::App& write = *sim.add_subcommand("write", "Write the simulation mapping as keyword text");
    const auto options = std::make_shared<SimWriteOptions>();
    write.add_flag("--without-classes", options->withoutClasses, "Leave out the classes that may be simulated");
    write.add_option("LIB", options->library, "The library")->required()->option_text(" ");
    runs(write, task, options, runSimWrite);
}

void describeSimReset(CLI::App& sim, Task& task) {
    CLI::App& reset = *sim.add_subcommand("reset", "Take simulation results away, or show which");
    const auto options = std::make_shared<SimResetOptions>();
    reset
        .add_option("--library", options->library,
                    "Read with this library instead of the file's own; in a repository: its name")
        ->option_text("LIB");
    reset.add_option("--model", options->models, "The models to reset")->required()->option_text("NAME...");
    reset.add_flag("--dry-run", options->dryRun, "Only show what would change; needed for model files");
    reset.add_flag("--json", options->json, "Write one JSON document, qor.sim.reset/1");
    addActor(reset, options->user);
    reset
        .add_option("FILE", options->file,
                    "Repository file, or with --dry-run a file with models; may also be the last of --model")
        ->option_text(" ");
    reset.callback([&task, options] {
        takeFileFrom(options->models, options->file);
        task = taskOf<SimResetOptions>(options, runSimReset);
    });
}

}  // namespace

void describeLibrary(CLI::App& app, Task& task) {
    const auto options = std::make_shared<LibraryOptions>();
    CLI::App& library = *app.add_subcommand("library", "Show what is in a method library");
    library.add_flag("--json", options->json, "Write one JSON document, qor.library/1");
    library.add_option("FILE", options->file, "The library")->option_text(" ");
    library.footer(help::kLibraryExamples);
    CLI::App& libraryCheck =
        *library.add_subcommand("check", "Show errors in a library's texts about conversion and naming");
    libraryCheck.add_flag("--json", options->json, "Write one JSON document, qor.library.check/1");
    libraryCheck.add_option("LIB", options->file, "The library")->required()->option_text(" ");
    library.callback([&library, &task, options] {
        const bool isCheck = library.got_subcommand("check");
        if (!isCheck && options->file.empty()) throw CLI::RequiredError("FILE");
        task = taskOf<LibraryOptions>(options, isCheck ? runLibraryCheck : runLibrary);
    });
}

void describeRules(CLI::App& app, Task& task) {
    const auto options = std::make_shared<RulesOptions>();
    CLI::App& rules = *app.add_subcommand("rules", "Show errors in a library's rule texts, and the rules in force");
    CLI::Option& cls = *rules.add_option("--class", options->cls, "Only the rules of this class")->option_text("NAME");
    CLI::Option& doctor =
        *rules.add_flag("--doctor", options->doctor, "Show contradictions, and rules without effect")->excludes(&cls);
    CLI::Option& models = *rules
                               .add_option("--models", options->models,
                                           "Also show which rules and objects of these files and folders never meet")
                               ->needs(&doctor)
                               ->option_text("FILE...");
    rules
        .add_option("--against", options->against, "Also show what changes for these models beside this other library")
        ->needs(&models)
        ->option_text("LIB");
    rules.add_flag("--json", options->json, "Write one JSON document, qor.rules/1");
    addLanguage(rules, options->language);
    rules.add_option("FILE", options->file, "The library")->required()->option_text(" ");
    rules.footer(help::kRulesExamples);
    rules.callback([&task, options] { task = taskOf<RulesOptions>(options, options->doctor ? runDoctor : runRules); });
}

void describeConnect(CLI::App& app, Task& task) {
    const auto options = std::make_shared<ConnectOptions>();
    CLI::App& connect = *app.add_subcommand("may-connect", "Explain whether the rules allow a relation to be drawn");
    connect.add_option("--in", options->file, "The file with the model that the objects are in")->option_text("FILE");
    connect.add_option("--model", options->model, "The model, when the file has several")->option_text("NAME");
    connect.add_flag("--json", options->json, "Write one JSON document, qor.may-connect/1");
    addLanguage(connect, options->language);
    connect.add_option("LIB", options->library, "The library")->required()->option_text(" ");
    connect.add_option("RELATION", options->relation, "The relation class")->required()->option_text(" ");
    connect.add_option("SOURCE", options->source, "Where the relation begins")->required()->option_text(" ");
    connect.add_option("TARGET", options->target, "Where it ends")->required()->option_text(" ");
    connect.footer(help::kConnectExamples);
    runs(connect, task, options, runMayConnect);
}

void describeSim(CLI::App& app, Task& task) {
    CLI::App& sim = *app.add_subcommand("sim", "Show and check what a library says about simulation");
    sim.require_subcommand(1);
    sim.footer(help::kSimExamples);
    for (const SimListingName& row : kSimListings) describeListing(sim, row, task);
    describeSimCheck(sim, task);
    describeSimWrite(sim, task);
    describeSimReset(sim, task);
}

}  // namespace qor::cli
