// SPDX-License-Identifier: Apache-2.0
#include "cli/SimResetRepository.h"

#include <fmt/format.h>

#include <set>

#include "cli/RepositoryEdit.h"
#include "cli/SimResetReport.h"
#include "cli/Text.h"
#include "simmap/QorSimResultCode.h"
#include "simmap/QorSimResultDefinitions.h"

namespace qor::cli {

namespace {

/// Chooses the models; the library that they belong to, or none after telling why.
QorIdentifier chooseModels(const SimResetOptions& options, RepositoryEdit& repository, ISortedSet<long>& models,
                           Console& console) {
    const QorRepositoryReader& reader = repository.reader();
    ISortedSet<long> offered;
    for (const QorIdentifier library : reader.applicationLibraries()) {
        if (!options.library.empty() && reader.nameOf(library) != options.library) continue;
        for (const QorModelInfo& model : reader.modelsOf(library)) offered.add(model.id);
    }
    if (!chooseModels(options.models, offered, reader, models, console)) return QorNoIdentifier;
    std::set<QorIdentifier> libraries;
    for (const long model : models) libraries.insert(reader.applicationLibraryOf(static_cast<QorIdentifier>(model)));
    if (libraries.size() == 1) return *libraries.begin();
    repository.error("models of those names belong to several libraries; give --library NAME");
    return QorNoIdentifier;
}

void tell(RepositoryEdit& repository, const QorSimDefinitionError& error) {
    if (error.code == QorSimCode::Ok) return;  // left out without harm
    repository.error(fmt::format("simulation results of {}, line {}, column {}: {}",
                                 quoted(repository.nameOf(error.library)), error.position.line, error.position.column,
                                 printable(error.text.view())));
}

Exit resetResults(const SimResetOptions& options, RepositoryEdit& repository, Console& console) {
    if (const Exit exit = repository.openFile(); exit != Exit::Clean) return exit;
    ISortedSet<long> models;
    const QorIdentifier library = chooseModels(options, repository, models, console);
    if (library == QorNoIdentifier) return Exit::WrongUse;
    // What is wrong with its rules does not concern results.
    if (const Exit exit = repository.loadLibrary(library, QorLibLoad_InitHandler::Declined); exit != Exit::Clean)
        return exit;

    const QorSimResultDefinitions definitions;
    for (const QorSimDefinitionError& error : definitions.errors()) tell(repository, error);
    if (!definitions.isUsable()) return Exit::BadInput;
    QorSimResultReset reset;
    if (!reset.plan(definitions, models)) return Exit::Internal;
    if (!options.dryRun && !reset.apply()) return repository.notWritten();
    reportReset(options, repository.reader(), reset, console);
    return Exit::Clean;
}

}  // namespace

Exit resetInRepository(const SimResetOptions& options, Console& console) {
    const RepositoryEditOptions edit{.file = options.file, .dryRun = options.dryRun, .user = options.user};
    RepositoryEdit repository(edit, console);
    return repository.end(resetResults(options, repository, console));
}

}  // namespace qor::cli
