// SPDX-License-Identifier: Apache-2.0
#include "cli/SimLibrary.h"

#include "platform/QorAttributeIds.h"

namespace qor::cli {

SimLibrary::SimLibrary(Workspace& workspace)
    : _workspace(workspace), _mapping(workspace.library()), _texts(workspace.library()) {
    _mapping.init(true);
    for (const auto& error : _mapping.definitionErrors()) _mappingErrors.push_back(diagnosticOf(error));
    for (const auto& error : _results.errors()) _resultErrors.push_back(diagnosticOf(error));
    readTexts();
}

/// A library without the texts is in order.
void SimLibrary::readTexts() {
    const QorIdentifier library = _workspace.library();
    if (reader().libraryValue(library, QorAttributeId::SimulationText).empty() || _texts.init() == 1) return;
    _textErrors.push_back(diagnosticOf(
        {library, QorAttributeId::SimulationText, QorSimCode::BadText, _texts.errorPosition(), _texts.getErrorText()}));
}

QorDiagnostic SimLibrary::diagnosticOf(const QorSimDefinitionError& error) const {
    auto place = _workspace.libraryImporter().placeInText(static_cast<QorIdentifier>(error.library),
                                                          static_cast<QorIdentifier>(error.attribute), error.position);
    if (place.file.empty()) place.file = _workspace.libraryPath();
    std::string text = _workspace.libraryImporter().messageInFile(
        static_cast<QorIdentifier>(error.library), static_cast<QorIdentifier>(error.attribute), error.text.view());
    text.erase(text.find_last_not_of('\n') + 1);
    return {error.code == QorSimCode::Ok ? QorSeverity::Warning : QorSeverity::Error, std::move(place),
            std::move(text)};
}

std::vector<QorDiagnostic> SimLibrary::allErrors() const {
    std::vector<QorDiagnostic> all = _mappingErrors;
    all.insert(all.end(), _resultErrors.begin(), _resultErrors.end());
    all.insert(all.end(), _textErrors.begin(), _textErrors.end());
    return all;
}

std::string SimLibrary::nameOf(long id) const { return std::string(reader().nameOf(static_cast<QorIdentifier>(id))); }

}  // namespace qor::cli
