// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"
#include "cli/RepositoryFiles.h"
#include "cli/SimCommands.h"
#include "cli/SimLibrary.h"
#include "cli/SimModels.h"
#include "cli/SimResetReport.h"
#include "cli/SimResetRepository.h"

namespace qor::cli {

namespace {

/// The library to read the file with; empty when there is none.
std::string libraryFor(const SimResetOptions& options, Workspaces& workspaces) {
    if (!options.library.empty()) return resolveLibrary(options.library);
    Workspace& none = workspaces.open("");
    QorImporter importer(none.builder(), none.reader());
    if (importer.kindOf(options.file) == QorFileKind::Bpmn) return shippedLibrary(kBpmnLibrary);
    return importer.libraryNamedBy(options.file);
}

}  // namespace

Exit runSimReset(const SimResetOptions& options, Console& console) {
    if (isRepositoryFile(options.file)) return resetInRepository(options, console);
    if (!options.dryRun) {
        refuseReset(console, "only results in repository files are reset; --dry-run shows what would change in others");
        return Exit::WrongUse;
    }
    InternalErrors internalErrors(console);
    Workspaces workspaces("en", internalErrors.windows());
    const std::string libraryPath = libraryFor(options, workspaces);
    Workspace& workspace = workspaces.open(libraryPath);
    for (const QorDiagnostic& diagnostic : workspace.fileDiagnostics())
        console.err(diagnosticLine(diagnostic, console.errColours()));
    if (!workspace.hasLibrary()) {
        if (libraryPath.empty())
            refuseReset(console, quoted(options.file) + " names no method library; give --library");
        return Exit::BadInput;
    }

    SimLibrary library(workspace);
    for (const QorDiagnostic& error : library.resultErrors()) console.err(diagnosticLine(error, console.errColours()));
    SimModels models(workspace);
    models.read({options.file});
    for (const QorDiagnostic& diagnostic : models.diagnostics())
        console.err(diagnosticLine(diagnostic, console.errColours()));
    if (hasErrors(models.diagnostics())) return Exit::BadInput;
    ISortedSet<long> chosen;
    if (!chooseModels(options.models, models.models(), workspace.reader(), chosen, console)) return Exit::WrongUse;

    QorSimResultReset reset;
    if (!library.results().isUsable()) return Exit::BadInput;
    if (!reset.plan(library.results(), chosen)) return Exit::Internal;
    reportReset(options, workspace.reader(), reset, console);
    return internalErrors.count() != 0 ? Exit::Internal : Exit::Clean;
}

}  // namespace qor::cli
