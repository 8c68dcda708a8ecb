// SPDX-License-Identifier: Apache-2.0
// The arguments of commands on models.
#include "cli/Commands.h"
#include "cli/CommonArguments.h"
#include "cli/ConvertCommand.h"
#include "cli/HelpTexts.h"
#include "cli/HierarchyCommand.h"
#include "cli/RenameCommand.h"
#include "cli/TransferCommand.h"

namespace qor::cli {

namespace {

void describeReports(CLI::App& check, CLI::Option& json, CheckOptions& options) {
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
}

void describeModelEdit(CLI::App& command, ModelEditOptions& options) {
    command.add_option("--model", options.model, "The model, where the library has several")->option_text("NAME");
    command.add_flag("--dry-run", options.dryRun, "Only show what would change");
    command.add_flag("--json", options.json, "Write one JSON document, qor." + command.get_name() + "/1");
    addActor(command, options.user);
    addLanguage(command, options.language);
    command.add_option("FILE", options.file, "The repository file; FILE#NAME for one of several libraries")
        ->required()
        ->option_text(" ");
}

}  // namespace

void describeCheck(CLI::App& app, Task& task) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App& check = *app.add_subcommand("check", "Show which objects and relations of models break the rules");
    check.add_option("--library", options->library, "Check with this library instead of the file's own")
        ->option_text("LIB");
    check.add_option("--model", options->models, "Check only models of this name; may be given several times")
        ->option_text("NAME")
        ->allow_extra_args(false);  // what follows the name is a FILE
    check.add_flag("--first", options->first, "End each model's check at its first breach, as on saving it");
    CLI::Option& json = *check.add_flag("--json", options->json, "Write one JSON document, qor.check/1");
    describeReports(check, json, *options);
    check.add_flag("--quiet", options->quiet, "Show breaches and errors only");
    addLanguage(check, options->language);
    check.add_option("FILE", options->files, "Files to check; of folders all with models")
        ->required()
        ->option_text("...");
    check.footer(help::kCheckExamples);
    check.callback([&task, options] {
        const int onOutput =
            (options->json ? 1 : 0) + (options->sarif == "-" ? 1 : 0) + (options->junit == "-" ? 1 : 0);
        if (onOutput > 1) throw CLI::ValidationError("only one report can go to standard output");
        task = taskOf<CheckOptions>(options, runCheck);
    });
}

void describeHierarchy(CLI::App& app, Task& task) {
    const auto options = std::make_shared<HierarchyOptions>();
    CLI::App& hierarchy = *app.add_subcommand("hierarchy", "Show which models refer to each other");
    hierarchy
        .add_option("--library", options->library,
                    "Read with this library instead of the files' own; in a repository: its name")
        ->option_text("LIB");
    hierarchy.add_option("--model", options->models, "Only models of this name; may be given several times")
        ->option_text("NAME")
        ->allow_extra_args(false);
    hierarchy.add_flag("--where-used", options->whereUsed, "Show which models refer to each one");
    hierarchy.add_flag("--broken", options->broken, "Show references that lead nowhere or to several objects");
    hierarchy.add_option("--max-elements", options->maxElements, "Most elements of a tree; 10000 when not given")
        ->check(CLI::PositiveNumber)
        ->option_text("N");
    hierarchy.add_option("--xml", options->xml, "Write one tree as XML; - is standard output")->option_text("FILE");
    hierarchy.add_option("--svg", options->svg, "Draw one tree; - is standard output")->option_text("FILE");
    hierarchy.add_flag("--json", options->json, "Write one JSON document, qor.hierarchy/1");
    addLanguage(hierarchy, options->language);
    hierarchy.add_option("MODEL", options->files, "Files and folders with models, or a repository file")
        ->required()
        ->option_text("...");
    hierarchy.footer(help::kHierarchyExamples);
    hierarchy.callback([&task, options] {
        const int toOutput = (options->json ? 1 : 0) + (options->xml == "-" ? 1 : 0) + (options->svg == "-" ? 1 : 0);
        const bool alsoText = !options->json && (options->whereUsed || options->broken);
        if (toOutput > 1 || (toOutput == 1 && alsoText))
            throw CLI::ValidationError("only one of these can go to standard output");
        task = taskOf<HierarchyOptions>(options, runHierarchy);
    });
}

void describeRename(CLI::App& app, Task& task) {
    const auto options = std::make_shared<RenameOptions>();
    CLI::App& rename = *app.add_subcommand("rename", "Give objects names made from their attributes, or show which");
    rename.add_option("--library", options->library, "Read with this library instead of the files' own")
        ->option_text("LIB");
    rename.add_option("--model", options->models, "Only models of this name; may be given several times")
        ->option_text("NAME")
        ->allow_extra_args(false);
    rename.add_flag("--dry-run", options->dryRun, "Only show the new names; needed for model files");
    rename.add_flag("--json", options->json, "Write one JSON document, qor.rename/1");
    addActor(rename, options->user);
    addLanguage(rename, options->language);
    rename.add_option("MODEL", options->files, "Repository file; with --dry-run also files and folders with models")
        ->required()
        ->option_text("...");
    rename.footer(help::kRenameExamples);
    runs(rename, task, options, runRename);
}

void describeConvert(CLI::App& app, Task& task) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App& convert = *app.add_subcommand("convert", "Turn objects into objects of another class");
    describeModelEdit(convert, options->edit);
    convert.add_option("OBJECT", options->objects, "The objects")->required()->option_text("...");
    convert.add_option("--to", options->to, "The class that they become objects of")->required()->option_text("CLASS");
    convert.add_flag("--keep", options->keep, "Convert although cardinality rules would be broken");
    convert.footer(help::kConvertExamples);
    runs(convert, task, options, runConvert);
}

void describeTransfer(CLI::App& app, Task& task) {
    const auto options = std::make_shared<TransferOptions>();
    CLI::App& transfer = *app.add_subcommand("transfer", "Copy attributes of an object onto others of its class");
    describeModelEdit(transfer, options->edit);
    transfer.add_option("--from", options->from, "The object to copy from")->required()->option_text("OBJECT");
    transfer.add_option("--to", options->to, "The objects to copy onto")->required()->option_text("OBJECT...");
    transfer.add_option("--attributes", options->attributes, "Names of attributes, and size for width and height")
        ->required()
        ->delimiter(',')
        ->option_text("A,B,size")
        ->allow_extra_args(false);
    transfer.get_option("FILE")->required(false)->description(
        "The repository file; FILE#NAME for one of several libraries; may also be the last of --to");
    transfer.add_flag("--all", options->all, "Write nothing when something is not possible");
    transfer.footer(help::kTransferExamples);
    transfer.callback([&task, options] {
        takeFileFrom(options->to, options->edit.file);
        task = taskOf<TransferOptions>(options, runTransfer);
    });
}

}  // namespace qor::cli
