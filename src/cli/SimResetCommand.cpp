// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <set>

#include "cli/Console.h"
#include "cli/JsonWriter.h"
#include "cli/Nearest.h"
#include "cli/SimCommands.h"
#include "cli/SimLibrary.h"
#include "cli/SimModels.h"
#include "cli/SimTable.h"
#include "simmap/QorSimResultReset.h"

namespace qor::cli {

namespace {

void refuse(Console& console, const std::string& why) {
    console.err(fmt::format("qor: {} {}\n", console.errColours().error("error:"), why));
}

/// The library to read the file with; empty when there is none.
std::string libraryFor(const SimResetOptions& options, Workspaces& workspaces) {
    if (!options.library.empty()) return resolveLibrary(options.library);
    Workspace& none = workspaces.open("");
    QorImporter importer(none.builder(), none.reader());
    if (importer.kindOf(options.file) == QorFileKind::Bpmn) return shippedLibrary(kBpmnLibrary);
    return importer.libraryNamedBy(options.file);
}

/// The models of those names; false, after telling so, when a name has none.
bool chooseModels(const std::vector<std::string>& wanted, const SimModels& models, const SimLibrary& library,
                  ISortedSet<long>& chosen, Console& console) {
    std::vector<std::string> names;
    std::set<std::string> missing(wanted.begin(), wanted.end());
    for (const long model : models.models()) {
        names.push_back(library.nameOf(model));
        if (std::find(wanted.begin(), wanted.end(), names.back()) == wanted.end()) continue;
        chosen.add(model);
        missing.erase(names.back());
    }
    for (const std::string& name : missing)
        refuse(console, fmt::format("no model is named {}{}", quoted(name), didYouMean(name, names)));
    return missing.empty();
}

void writeText(Console& console, const SimLibrary& library, const QorSimResultReset& reset) {
    SimTable table({"model", "object", "attribute", "now", "after"});
    std::set<long> objects;
    for (const QorSimResultChange& change : reset.changes()) {
        objects.insert(change.object);
        table.add({library.nameOf(change.model), library.nameOf(change.object), library.nameOf(change.attribute),
                   change.before.str(), QorSimResultReset::textAfter(change)});
    }
    table.write(console);
    console.out(fmt::format("A reset would change {} of {}\n", counted(reset.changes().size(), "value"),
                            counted(objects.size(), "object")));
}

void writeJson(Console& console, const SimLibrary& library, const QorSimResultReset& reset) {
    console.setMode(OutputMode::Document);
    JsonWriter json([&console](std::string_view text) { console.out(text); });
    json.beginObject().field("schema", "qor.sim.reset/1").field("dry_run", true).key("changes").beginList();
    for (const QorSimResultChange& change : reset.changes())
        json.beginObject(JsonWriter::Layout::Line)
            .field("model", std::string_view(library.nameOf(change.model)))
            .field("object", std::string_view(library.nameOf(change.object)))
            .field("attribute", std::string_view(library.nameOf(change.attribute)))
            .field("now", change.before.view())
            .field("after", std::string_view(QorSimResultReset::textAfter(change)))
            .endObject();
    json.endList().endObject();
}

}  // namespace

Exit runSimReset(const SimResetOptions& options, Console& console) {
    if (!options.dryRun) {
        refuse(console, "model files are not changed; --dry-run shows what a reset would change");
        return Exit::WrongUse;
    }
    InternalErrors internalErrors(console);
    Workspaces workspaces("en", internalErrors.windows());
    const std::string libraryPath = libraryFor(options, workspaces);
    Workspace& workspace = workspaces.open(libraryPath);
    for (const QorDiagnostic& diagnostic : workspace.fileDiagnostics())
        console.err(diagnosticLine(diagnostic, console.errColours()));
    if (!workspace.hasLibrary()) {
        if (libraryPath.empty()) refuse(console, quoted(options.file) + " names no method library; give --library");
        return Exit::BadInput;
    }

    SimLibrary library(workspace);
    for (const QorDiagnostic& error : library.resultErrors()) console.err(diagnosticLine(error, console.errColours()));
    SimModels models(workspace);
    models.read(options.file);
    for (const QorDiagnostic& diagnostic : models.diagnostics())
        console.err(diagnosticLine(diagnostic, console.errColours()));
    if (hasErrors(models.diagnostics())) return Exit::BadInput;
    ISortedSet<long> chosen;
    if (!chooseModels(options.models, models, library, chosen, console)) return Exit::WrongUse;

    QorSimResultReset reset;
    if (!library.results().isUsable()) return Exit::BadInput;
    if (!reset.plan(library.results(), chosen)) return Exit::Internal;
    (options.json ? writeJson : writeText)(console, library, reset);
    return internalErrors.count() != 0 ? Exit::Internal : Exit::Clean;
}

}  // namespace qor::cli
