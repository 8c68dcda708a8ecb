// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "cli/Diagnostics.h"
#include "cli/InternalErrors.h"
#include "cli/ShippedLibraries.h"
#include "cli/Workspace.h"
#include "simmap/QorSimMappingHandler.h"
#include "simmap/QorSimResultDefinitions.h"
#include "simmap/QorSimTextHandler.h"

namespace qor::cli {

/// A method library with its simulation texts, all of them read to their ends.
class SimLibrary {
public:
    /// Of the library that is open in the workspace.
    explicit SimLibrary(Workspace& workspace);

    [[nodiscard]] Workspace& workspace() { return _workspace; }
    [[nodiscard]] const QorRepositoryReader& reader() const { return _workspace.reader(); }
    /// With the defaults in force when the text has errors.
    [[nodiscard]] QorSimMappingHandler& mapping() { return _mapping; }
    [[nodiscard]] const QorSimResultDefinitions& results() const { return _results; }
    [[nodiscard]] const QorSimTextHandler& texts() const { return _texts; }

    /// Errors in the texts, and as warnings what is left out without harm.
    [[nodiscard]] const std::vector<QorDiagnostic>& mappingErrors() const { return _mappingErrors; }
    [[nodiscard]] const std::vector<QorDiagnostic>& resultErrors() const { return _resultErrors; }
    [[nodiscard]] const std::vector<QorDiagnostic>& textErrors() const { return _textErrors; }
    [[nodiscard]] std::vector<QorDiagnostic> allErrors() const;

    [[nodiscard]] std::string nameOf(long id) const;

private:
    void readTexts();
    [[nodiscard]] QorDiagnostic diagnosticOf(const QorSimDefinitionError& error) const;

    Workspace& _workspace;
    QorSimMappingHandler _mapping;
    QorSimResultDefinitions _results;
    QorSimTextHandler _texts;
    std::vector<QorDiagnostic> _mappingErrors;
    std::vector<QorDiagnostic> _resultErrors;
    std::vector<QorDiagnostic> _textErrors;
};

}  // namespace qor::cli
