// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>
#include <string>
#include <vector>

#include "cli/Workspace.h"
#include "interchange/QorImport.h"

namespace qor::cli {

/// A file that a command is to read.
struct FoundFile {
    std::string name;
    bool isGiven = true;  ///< and not only found in a folder, which may hold other things as well
};

/// The files given and, of folders, every file in them and below that by its ending may be read, by name. Folders
/// without any, or that cannot be read, go to `report` with the reason.
[[nodiscard]] std::vector<FoundFile> findFiles(
    const std::vector<std::string>& filesAndFolders,
    const std::function<void(const std::string& folder, const std::string& problem)>& report);

/// The names of files with models: those given, and what folders hold of them. What is wrong with a folder joins the
/// problems.
[[nodiscard]] std::vector<std::string> findModelFiles(const std::vector<std::string>& filesAndFolders,
                                                      Workspace& workspace, std::vector<QorDiagnostic>& problems);

/// Whether the file is to be read whatever it holds; BPMN files are, so that it shows what is wrong with them.
[[nodiscard]] bool isMeant(const FoundFile& file);
[[nodiscard]] bool isOfModels(QorFileKind kind);

}  // namespace qor::cli
