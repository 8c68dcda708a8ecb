// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "cli/InputFiles.h"
#include "cli/Workspace.h"
#include "platform/ISortedSet.h"

namespace qor::cli {

/// Model files read into a workspace, all of them together, so that references between them can be followed.
class SimModels {
public:
    explicit SimModels(Workspace& workspace) : _workspace(workspace) {}

    /// Files, and folders with files of models.
    void read(const std::vector<std::string>& filesAndFolders);

    /// Everything that was wrong with the files, in their order.
    [[nodiscard]] const std::vector<QorDiagnostic>& diagnostics() const { return _diagnostics; }
    [[nodiscard]] const ISortedSet<long>& models() const { return _models; }
    /// Where the object, or else the file where the model, was written.
    [[nodiscard]] QorFilePlace placeOf(long model, long object) const;

private:
    struct File {
        std::string name;
        std::unique_ptr<QorImporter> importer;
        std::vector<QorIdentifier> models;
    };

    void readFile(const std::string& file);
    void readRepository(const std::string& file);

    Workspace& _workspace;
    InputFiles _inputs;
    std::vector<File> _files;
    std::vector<QorDiagnostic> _diagnostics;
    ISortedSet<long> _models;
};

}  // namespace qor::cli
