// SPDX-License-Identifier: Apache-2.0
#include "cli/ModelFiles.h"

#include <utility>

namespace qor::cli {

std::vector<QorIdentifier> ModelFiles::read(const std::string& file) {
    _importer = std::make_unique<QorImporter>(_workspace.builder(), _workspace.reader());
    _models.clear();
    std::string error;
    const std::string path = _inputs.path(file, error);
    if (!error.empty()) {
        _diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, error});
        return {};
    }
    QorImportResult result;
    if (_importer->kindOf(path) == QorFileKind::Library)
        result.diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, "holds a method library and no models"});
    else
        result = _importer->readFile(path, _workspace.library());
    for (QorDiagnostic& diagnostic : result.diagnostics) {
        if (diagnostic.place.file == path) diagnostic.place.file = file;
        _diagnostics.push_back(std::move(diagnostic));
    }
    _models = std::move(result.models);
    return _models;
}

void ModelFiles::giveUp() {
    for (const QorIdentifier model : _models) (void)_workspace.builder().removeModel(model);
    _models.clear();
}

}  // namespace qor::cli
