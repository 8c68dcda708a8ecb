// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/FoundFiles.h"
#include "cli/InputFiles.h"
#include "cli/Workspace.h"

namespace qor::cli {

/// Reads model files one after the other with the library of a workspace.
class ModelFiles {
public:
    explicit ModelFiles(Workspace& workspace) : _workspace(workspace) {}

    /// The files to read: of folders those with models.
    [[nodiscard]] std::vector<std::string> find(const std::vector<std::string>& filesAndFolders) {
        return findModelFiles(filesAndFolders, _workspace, _diagnostics);
    }
    /// The models of the file; none when it has an error.
    [[nodiscard]] std::vector<QorIdentifier> read(const std::string& file);
    /// Where the models' things were written.
    [[nodiscard]] const QorImporter& importer() const { return *_importer; }
    /// Takes the models of the last file out of the workspace.
    void giveUp();

    /// Everything that was wrong with the files, in their order.
    [[nodiscard]] const std::vector<QorDiagnostic>& diagnostics() const { return _diagnostics; }

private:
    Workspace& _workspace;
    InputFiles _inputs;
    std::unique_ptr<QorImporter> _importer;
    std::vector<QorIdentifier> _models;
    std::vector<QorDiagnostic> _diagnostics;
};

}  // namespace qor::cli
