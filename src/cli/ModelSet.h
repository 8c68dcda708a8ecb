// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "cli/Exit.h"
#include "cli/InputFiles.h"
#include "cli/Workspace.h"
#include "interchange/QorCalledProcesses.h"
#include "platform/ISortedSet.h"

namespace qor::cli {

/// The models of several files and folders, or of a repository file, with one method library, together so that
/// references between them can be followed.
class ModelSet {
public:
    /// `library`: read with this one instead of the one that the files name, or the one of this name in a repository
    /// file; empty: with that one.
    ModelSet(Workspaces& workspaces, std::string library)
        : _workspaces(workspaces), _libraryGiven(std::move(library)) {}

    /// Reads the files, and of folders every file with models in them and below, by name.
    void read(const std::vector<std::string>& filesAndFolders);

    /// The library's; null when it cannot be used.
    [[nodiscard]] Workspace* workspace() const { return _workspace; }
    [[nodiscard]] const ISortedSet<long>& models() const { return _models; }
    /// One complaint for each wanted name that no model has.
    [[nodiscard]] std::vector<std::string> unknownNames(const std::vector<std::string>& wanted) const;
    /// Calls of BPMN files that name no process of these files.
    [[nodiscard]] std::vector<QorCalledProcesses::UnknownCall> unknownCalls() const;
    /// What was wrong with files and library, in the order of reading. What reading BPMN leaves out is not told here.
    [[nodiscard]] const std::vector<QorDiagnostic>& diagnostics() const { return _diagnostics; }
    /// How a command ends because of them.
    [[nodiscard]] Exit exit() const;
    /// Where the object, or else the file where the model, was written.
    [[nodiscard]] QorFilePlace placeOf(long model, long object = -1) const;

private:
    struct Source {
        std::string file;  // as it was given
        std::string path;  // to open it by
        bool given;        // and not only found in a folder
    };

    [[nodiscard]] std::vector<Source> sourcesOf(const std::vector<std::string>& filesAndFolders);
    void readModels(const std::vector<Source>& sources);
    void readFile(const Source& source);
    void takeRepository(const Source& source);
    void take(const Source& source, std::unique_ptr<QorImporter> importer, const QorImportResult& result);
    /// Whether the file holds models of the set's library, which the first one decides.
    [[nodiscard]] bool belongs(const Source& source);
    [[nodiscard]] bool isOfLibrary(const Source& source, const std::string& library);
    [[nodiscard]] std::string libraryFor(const Source& source, QorFileKind kind, QorImporter& importer) const;
    void openLibrary(const std::string& path);
    void report(const std::string& file, std::string text);
    void keep(std::vector<QorDiagnostic> diagnostics, const Source& source);

    Workspaces& _workspaces;
    std::string _libraryGiven;
    std::string _libraryPath;
    Workspace* _workspace = nullptr;
    QorRepositoryStatus _repositoryStatus = QorRepositoryStatus::Ok;
    InputFiles _inputs;
    std::vector<std::unique_ptr<QorImporter>> _importers;
    std::map<long, std::pair<std::string, const QorImporter*>> _origins;  // of models
    std::unique_ptr<QorCalledProcesses> _calls;
    ISortedSet<long> _models;
    std::vector<QorDiagnostic> _diagnostics;
};

}  // namespace qor::cli
