// SPDX-License-Identifier: Apache-2.0
#include "cli/ModelSet.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <utility>

#include "cli/Diagnostics.h"
#include "cli/FoundFiles.h"
#include "cli/Nearest.h"
#include "cli/RepositoryFiles.h"
#include "cli/ShippedLibraries.h"
#include "cli/Text.h"

namespace qor::cli {

void ModelSet::read(const std::vector<std::string>& filesAndFolders) {
    readModels(sourcesOf(filesAndFolders));
    if (_calls == nullptr) return;
    for (QorDiagnostic& warning : _calls->link()) _diagnostics.push_back(std::move(warning));
}

std::vector<ModelSet::Source> ModelSet::sourcesOf(const std::vector<std::string>& filesAndFolders) {
    std::vector<Source> sources;
    const auto tell = [this](const std::string& folder, const std::string& problem) { report(folder, problem); };
    for (const FoundFile& file : findFiles(filesAndFolders, tell)) {
        std::string problem;
        const std::string path = file.isGiven ? _inputs.path(file.name, problem) : file.name;
        if (problem.empty())
            sources.push_back({file.name, path, file.isGiven});
        else
            report(file.name, problem);
    }
    return sources;
}

void ModelSet::readModels(const std::vector<Source>& sources) {
    std::vector<const Source*> own;
    for (const Source& source : sources)
        if (belongs(source)) own.push_back(&source);
    if (own.empty() && _diagnostics.empty() && !sources.empty())
        report(sources.front().file, "holds no models, nor does any other file");
    if (!_libraryPath.empty()) openLibrary(_libraryPath);
    if (_workspace == nullptr) return;
    _calls = std::make_unique<QorCalledProcesses>(_workspace->builder(), _workspace->reader());
    for (const Source* source : own) readFile(*source);
}

bool ModelSet::belongs(const Source& source) {
    if (const RepositoryName repository = repositoryNamed(source.path); !repository.file.empty()) {
        const bool isNamed = _libraryGiven.empty() || !repository.library.empty();
        return isOfLibrary(source, isNamed ? source.path : source.path + "#" + _libraryGiven);
    }
    Workspace& none = _workspaces.open("");
    QorImporter importer(none.builder(), none.reader());
    const QorFileKind kind = importer.kindOf(source.path);
    if (kind == QorFileKind::Unknown || kind == QorFileKind::Library) {
        if (!isMeant({source.file, source.given})) return false;
        if (kind == QorFileKind::Library)
            report(source.file, "holds a method library and no models");
        else
            keep(importer.readFile(source.path, QorNoIdentifier).diagnostics, source);  // tells why
        return false;
    }
    const std::string library = libraryFor(source, kind, importer);
    if (library.empty()) {
        report(source.file,
               kind == QorFileKind::Bpmn
                   ? fmt::format("the method library for BPMN is not in {}; set QOR_LIBRARIES to the folder "
                                 "that holds {}.yaml, or give --library",
                                 shippedLibrariesFolder(), kBpmnLibrary)
                   : std::string("names no method library; give --library"));
        return false;
    }
    return isOfLibrary(source, library);
}

bool ModelSet::isOfLibrary(const Source& source, const std::string& library) {
    if (_libraryPath.empty()) _libraryPath = library;
    if (library == _libraryPath) return true;
    report(source.file, fmt::format("is left out: its library is {}, and that of the files before it is {}",
                                    cli::quoted(library), cli::quoted(_libraryPath)));
    return false;
}

std::string ModelSet::libraryFor(const Source& source, QorFileKind kind, QorImporter& importer) const {
    if (!_libraryGiven.empty()) return resolveLibrary(_libraryGiven);
    if (kind == QorFileKind::Bpmn) return shippedLibrary(kBpmnLibrary);
    return InputFiles::resolved(importer.libraryNamedBy(source.path));
}

void ModelSet::openLibrary(const std::string& path) {
    Workspace& workspace = _workspaces.open(path);
    for (const QorDiagnostic& diagnostic : workspace.fileDiagnostics()) _diagnostics.push_back(diagnostic);
    _repositoryStatus = workspace.repositoryStatus();
    if (workspace.hasLibrary()) _workspace = &workspace;
}

void ModelSet::takeRepository(const Source& source) {
    QorImportResult held;
    held.kind = QorFileKind::Bpmn;  // there may be calls among what it holds; those of no process are told
    held.models = _workspace->models();
    take(source, std::make_unique<QorImporter>(_workspace->builder(), _workspace->reader()), held);
}

void ModelSet::readFile(const Source& source) {
    if (!repositoryNamed(source.path).file.empty()) return takeRepository(source);
    auto importer = std::make_unique<QorImporter>(_workspace->builder(), _workspace->reader());
    QorImportResult result = importer->readFile(source.path, _workspace->library());
    take(source, std::move(importer), result);
    keep(std::move(result.diagnostics), source);
}

void ModelSet::take(const Source& source, std::unique_ptr<QorImporter> importer, const QorImportResult& result) {
    for (const QorIdentifier model : result.models) {
        _models.add(model);
        _origins.emplace(model, std::pair(source.file, importer.get()));
    }
    _calls->add(source.file, *importer, result);
    _importers.push_back(std::move(importer));
}

void ModelSet::report(const std::string& file, std::string text) {
    _diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, std::move(text)});
}

void ModelSet::keep(std::vector<QorDiagnostic> diagnostics, const Source& source) {
    for (QorDiagnostic& diagnostic : diagnostics) {
        if (diagnostic.severity != QorSeverity::Error) continue;
        if (diagnostic.place.file == source.path) diagnostic.place.file = source.file;
        _diagnostics.push_back(std::move(diagnostic));
    }
}

std::vector<std::string> ModelSet::unknownNames(const std::vector<std::string>& wanted) const {
    std::set<std::string> names;
    for (const long model : _models) names.emplace(_workspace->reader().nameOf(static_cast<QorIdentifier>(model)));
    std::vector<std::string> complaints;
    for (const std::string& name : wanted)
        if (!names.contains(name))
            complaints.push_back(fmt::format("no model is named {}{}", cli::quoted(name),
                                             didYouMean(name, std::vector<std::string>(names.begin(), names.end()))));
    return complaints;
}

Exit ModelSet::exit() const {
    return worse(hasErrors(_diagnostics) ? Exit::BadInput : Exit::Clean, exitOf(_repositoryStatus));
}

std::vector<QorCalledProcesses::UnknownCall> ModelSet::unknownCalls() const {
    return _calls != nullptr ? _calls->unknownCalls() : std::vector<QorCalledProcesses::UnknownCall>();
}

QorFilePlace ModelSet::placeOf(long model, long object) const {
    const auto origin = _origins.find(model);
    if (origin == _origins.end()) return {};
    QorFilePlace place;
    if (object > 0) place = origin->second.second->placeOf(static_cast<QorIdentifier>(object));
    place.file = origin->second.first;
    return place;
}

}  // namespace qor::cli
