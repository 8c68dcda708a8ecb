// SPDX-License-Identifier: Apache-2.0
#include "cli/SimModels.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "cli/FoundFiles.h"
#include "cli/RepositoryFiles.h"

namespace qor::cli {

void SimModels::read(const std::vector<std::string>& filesAndFolders) {
    for (const std::string& file : findModelFiles(filesAndFolders, _workspace, _diagnostics)) readFile(file);
}

void SimModels::readFile(const std::string& file) {
    std::string error;
    const std::string path = _inputs.path(file, error);
    if (path.empty()) {
        _diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, error});
        return;
    }
    if (isRepositoryFile(path)) return readRepository(file);
    File entry{file, std::make_unique<QorImporter>(_workspace.builder(), _workspace.reader()), {}};
    QorImportResult result = entry.importer->readFile(path, _workspace.library());
    if (result.kind == QorFileKind::Library)
        result.diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, "holds a method library and no models"});
    for (QorDiagnostic& diagnostic : result.diagnostics) {
        if (diagnostic.place.file == path) diagnostic.place.file = file;
        _diagnostics.push_back(std::move(diagnostic));
    }
    for (const QorIdentifier model : result.models) _models.add(model);
    entry.models = std::move(result.models);
    _files.push_back(std::move(entry));
}

/// Its models are in the workspace already when its library is.
void SimModels::readRepository(const std::string& file) {
    const std::string own = repositoryNamed(_workspace.libraryPath()).file;
    std::error_code error;
    if (own.empty() || !std::filesystem::equivalent(own, file, error)) {
        _diagnostics.push_back(
            {QorSeverity::Error, {file, 0, 0}, "is a repository; its models are read with its own library only"});
        return;
    }
    File entry{file, std::make_unique<QorImporter>(_workspace.builder(), _workspace.reader()), _workspace.models()};
    for (const QorIdentifier model : entry.models) _models.add(model);
    _files.push_back(std::move(entry));
}

QorFilePlace SimModels::placeOf(long model, long object) const {
    for (const File& file : _files) {
        if (std::find(file.models.begin(), file.models.end(), model) == file.models.end()) continue;
        QorFilePlace place;
        if (object != 0) place = file.importer->placeOf(static_cast<QorIdentifier>(object));
        place.file = file.name;
        return place;
    }
    return {};
}

}  // namespace qor::cli
