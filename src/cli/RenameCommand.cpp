// SPDX-License-Identifier: Apache-2.0
#include "cli/RenameCommand.h"

#include <fmt/format.h>

#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "cli/ModelSet.h"
#include "cli/RenameView.h"
#include "cli/RepositoryFiles.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

std::string_view wordOf(QorNameReason reason) {
    return reason == QorNameReason::DefaultName ? "default_name" : "source_changed";
}

void writeChange(const RenameView& view, long model, const QorNameChange& change, Console& console) {
    const QorFilePlace known = view.set().placeOf(model, change.object);
    std::string place = printable(placeText(known));
    if (known.line == 0) place += fmt::format(": model {}", quoted(view.nameOf(model)));  // nothing else tells where
    const bool isDefault = change.reason == QorNameReason::DefaultName;
    console.out(fmt::format(
        "{}{}{} -> {}  {}\n", place, place.empty() ? "" : ": ", quoted(change.oldName), quoted(change.newName),
        console.outColours().dim(isDefault ? "was never named" : "what it is named after has changed")));
    if (change.takenNumbers > 0)
        console.out(fmt::format(
            "    {} taken, the first by {}\n",
            change.takenNumbers == 1 ? "1 lower number is" : fmt::format("{} lower numbers are", change.takenNumbers),
            quoted(view.nameOf(change.takenBy))));
    if (change.cut) console.out("    cut to 240 bytes before the number\n");
}

void writeText(const RenameView& view, Console& console) {
    for (const QorDiagnostic& error : view.errors()) console.out(diagnosticLine(error, console.outColours()));
    std::size_t changes = 0;
    std::size_t byHand = 0;
    std::size_t upToDate = 0;
    for (const auto& [model, plan] : view.plans()) {
        for (const QorNameChange& change : plan.changes()) writeChange(view, model, change, console);
        changes += plan.changes().size();
        byHand += plan.keptCount(QorNameKept::GivenByHand);
        upToDate += plan.keptCount(QorNameKept::UpToDate);
    }
    for (const LostReference& lost : view.lost()) {
        const std::string text =
            fmt::format("model {}: {}: refers to {}, which {} {}", quoted(view.nameOf(lost.reference.source)),
                        printable(view.nameOf(lost.reference.attribute)), quoted(lost.oldName),
                        view.isCarriedOut() ? "is now called" : "becomes", quoted(lost.newName));
        console.out(diagnosticLine({QorSeverity::Warning, view.set().placeOf(lost.reference.source), text},
                                   console.outColours()));
    }
    console.out(fmt::format("{}{} in {}; {} up to date, {} named by hand\n", counted(changes, "new name"),
                            view.isCarriedOut() ? " given" : "", counted(view.plans().size(), "model"), upToDate,
                            byHand));
}

void writeJson(const RenameView& view, Console& console) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.rename/1").field("carried_out", view.isCarriedOut());
    std::vector<QorDiagnostic> diagnostics = view.set().diagnostics();
    diagnostics.insert(diagnostics.end(), view.errors().begin(), view.errors().end());
    writeDiagnostics(json, diagnostics);
    json.key("changes").beginList();
    for (const auto& [model, plan] : view.plans()) {
        for (const QorNameChange& change : plan.changes()) {
            const QorFilePlace place = view.set().placeOf(model, change.object);
            json.beginObject(kLine)
                .field("model", std::string_view(view.nameOf(model)))
                .field("class", std::string_view(view.nameOf(change.cls)))
                .field("old", change.oldName.view())
                .field("new", change.newName.view())
                .field("reason", wordOf(change.reason))
                .field("taken", std::int64_t{change.takenNumbers})
                .field("taken_by", std::string_view(change.takenBy > 0 ? view.nameOf(change.takenBy) : std::string()))
                .field("cut", change.cut)
                .field("file", std::string_view(place.file))
                .field("line", std::int64_t{place.line})
                .field("column", std::int64_t{place.column})
                .endObject();
        }
    }
    json.endList().key("broken_references").beginList();
    for (const LostReference& lost : view.lost())
        json.beginObject(kLine)
            .field("model", std::string_view(view.nameOf(lost.reference.source)))
            .field("attribute", std::string_view(view.nameOf(lost.reference.attribute)))
            .field("old", std::string_view(lost.oldName))
            .field("new", std::string_view(lost.newName))
            .endObject();
    json.endList().endObject();
}

void refuse(Console& console, std::string_view why) {
    console.err(fmt::format("qor: {} {}\n", console.errColours().error("error:"), why));
}

/// Whether what is given can be written.
bool isOneRepository(const std::vector<std::string>& files) {
    return files.size() == 1 && !repositoryNamed(files.front()).file.empty();
}

/// Whatever is in the way of one name is in the way of all: people look at it before anything is changed.
Exit carryOut(const RenameOptions& options, RenameView& view, const InternalErrors& internalErrors, Console& console) {
    if (hasErrors(view.set().diagnostics()) || !view.errors().empty()) {
        refuse(console, fmt::format("{}: nothing was renamed because of the errors", printable(options.files.front())));
        return Exit::Clean;
    }
    std::string problem;
    const Exit exit = view.carryOut(internalErrors, problem);
    if (exit == Exit::Internal) problem = "nothing was renamed, since some objects did not take their names";
    if (exit != Exit::Clean) refuse(console, fmt::format("{}: {}", printable(options.files.front()), problem));
    return exit;
}

}  // namespace

Exit runRename(const RenameOptions& options, Console& console) {
    if (!options.dryRun && !isOneRepository(options.files)) {
        refuse(console,
               "only objects in a repository file, one at a time, are renamed; --dry-run shows the new names of "
               "others");
        return Exit::WrongUse;
    }
    InternalErrors internalErrors(console);
    console.progress().start();
    console.progress().say("reading models");
    Workspaces workspaces(options.language, internalErrors.windows(),
                          options.dryRun ? QorRepositoryAccess::Copy : QorRepositoryAccess::ReadWrite, options.user);
    ModelSet set(workspaces, options.library);
    set.read(options.files);
    if (!options.json || set.workspace() == nullptr)
        for (const QorDiagnostic& diagnostic : set.diagnostics())
            console.err(diagnosticLine(diagnostic, console.errColours()));
    if (set.workspace() == nullptr) return set.exit();
    const std::vector<std::string> unknown = set.unknownNames(options.models);
    for (const std::string& complaint : unknown) refuse(console, complaint);
    if (!unknown.empty()) return Exit::WrongUse;

    console.progress().say("looking for names");
    RenameView view(set);
    if (!view.make(options.models)) internalErrors.add("the names could not be planned");
    if (!options.dryRun && internalErrors.count() == 0)
        if (const Exit exit = carryOut(options, view, internalErrors, console); exit != Exit::Clean) return exit;
    const auto write = options.json ? writeJson : writeText;
    write(view, console);
    if (internalErrors.count() != 0) return Exit::Internal;
    return worse(set.exit(), view.errors().empty() ? Exit::Clean : Exit::Findings);
}

}  // namespace qor::cli
