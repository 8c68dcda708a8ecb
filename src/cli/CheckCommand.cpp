// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <set>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cli/CheckReport.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/FirstBreach.h"
#include "cli/InputFiles.h"
#include "cli/InternalErrors.h"
#include "cli/Nearest.h"
#include "cli/RepositoryFiles.h"
#include "cli/RuleOversights.h"
#include "cli/ShippedLibraries.h"
#include "cli/Workspace.h"

namespace qor::cli {

namespace {

using Diagnostics = std::vector<QorDiagnostic>;

QorDiagnostic about(QorSeverity severity, const std::string& file, std::string text) {
    return {severity, {file, 0, 0}, std::move(text)};
}

class CheckRun {
public:
    CheckRun(const CheckOptions& options, Console& console)
        : _options(options),
          _console(console),
          _internalErrors(console),
          _workspaces(options.language, _internalErrors.windows()),
          _report(options.json ? makeJsonReport(console) : makeTextReport(console, options.quiet)),
          _wantedModels(options.models.begin(), options.models.end()) {}

    Exit run() {
        const auto start = std::chrono::steady_clock::now();
        if (!_options.quiet) _console.progress().start();
        for (const std::string& file : _options.files) checkFile(file);
        _summary.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        _summary.internalErrors = _internalErrors.count();
        _report->end(_summary);

        Exit exit = _summary.breaches != 0 ? Exit::Findings : Exit::Clean;
        if (!allModelsFound()) exit = worse(exit, Exit::WrongUse);
        if (_summary.errors != 0) exit = worse(exit, Exit::BadInput);
        return _internalErrors.count() != 0 ? Exit::Internal : exit;
    }

private:
    void checkFile(const std::string& file) {
        _console.progress().say(fmt::format("reading {} ({} of {})", file, _summary.files + 1, _options.files.size()));
        ++_summary.files;
        Diagnostics diagnostics;
        const std::string path = pathOf(file, diagnostics);
        if (!repositoryNamed(path).file.empty()) {
            checkRepository(file, path, diagnostics);
        } else if (Workspace* workspace = hasErrors(diagnostics) ? nullptr : workspaceFor(file, path, diagnostics)) {
            const QorIdentifier lastModel = readAndCheck(*workspace, file, path, diagnostics);
            _workspaces.giveUpWhenGrown(*workspace, lastModel);
        } else {
            beginFile(file, path, diagnostics);
        }
        _report->endFile();
    }

    /// The models of a repository file, where they are.
    void checkRepository(const std::string& file, const std::string& path, Diagnostics& diagnostics) {
        const bool isNamed = _options.library.empty() || !repositoryNamed(path).library.empty();
        Workspace* workspace = openLibrary(isNamed ? path : path + "#" + _options.library, file, diagnostics);
        beginFile(file, path, diagnostics);
        if (workspace == nullptr) return;
        const QorImporter nothingRead(workspace->builder(), workspace->reader());
        checkModels(*workspace, nothingRead, workspace->models());
    }

    /// The last model that was made, none when none was.
    QorIdentifier readAndCheck(Workspace& workspace, const std::string& file, const std::string& path,
                               Diagnostics& diagnostics) {
        QorImporter importer(workspace.builder(), workspace.reader());
        QorImportResult result = importer.readFile(path, workspace.library());
        diagnostics.insert(diagnostics.end(), std::make_move_iterator(result.diagnostics.begin()),
                           std::make_move_iterator(result.diagnostics.end()));
        beginFile(file, path, diagnostics);
        checkModels(workspace, importer, result.models);
        // A folder of files must not take more memory than its largest file.
        for (const QorIdentifier model : result.models) (void)workspace.builder().removeModel(model);
        return result.models.empty() ? QorNoIdentifier : result.models.back();
    }

    /// The path that a file can be opened by more than once; empty, with the reason, when there is none.
    std::string pathOf(const std::string& file, Diagnostics& diagnostics) {
        std::string error;
        std::string path = _inputs.path(file, error);
        if (!error.empty()) diagnostics.push_back(about(QorSeverity::Error, file, error));
        return path;
    }

    void beginFile(const std::string& file, const std::string& path, Diagnostics& diagnostics) {
        for (QorDiagnostic& diagnostic : diagnostics) {
            if (diagnostic.place.file == path) diagnostic.place.file = file;
            ++(diagnostic.severity == QorSeverity::Error ? _summary.errors : _summary.warnings);
        }
        _report->beginFile(file, diagnostics);
    }

    /// The workspace that the file's models are made in; null, with the reason among the diagnostics, when they cannot
    /// be made.
    Workspace* workspaceFor(const std::string& file, const std::string& path, Diagnostics& diagnostics) {
        Workspace& none = _workspaces.open("");
        QorImporter importer(none.builder(), none.reader());
        const QorFileKind kind = importer.kindOf(path);
        if (kind == QorFileKind::Unknown) return &none;  // reading it will tell why
        if (kind == QorFileKind::Library) {
            (void)openLibrary(path, file, diagnostics);
            diagnostics.push_back(
                about(QorSeverity::Warning, file, "holds a method library and no models; `qor rules` lists its rules"));
            return nullptr;
        }
        const std::string library = libraryFor(kind, path, importer);
        if (!library.empty()) return openLibrary(library, file, diagnostics);
        if (kind == QorFileKind::Models) return &none;
        diagnostics.push_back(about(QorSeverity::Error, file,
                                    fmt::format("the method library for BPMN is not in {}; set QOR_LIBRARIES to the "
                                                "folder that holds {}.yaml, or give --library",
                                                shippedLibrariesFolder(), kBpmnLibrary)));
        return nullptr;
    }

    /// The library file that models of the kind are made with; empty when there is none.
    std::string libraryFor(QorFileKind kind, const std::string& path, QorImporter& importer) {
        if (!_options.library.empty()) return resolveLibrary(_options.library);
        if (kind == QorFileKind::Bpmn) return shippedLibrary(kBpmnLibrary);
        return InputFiles::resolved(importer.libraryNamedBy(path));
    }

    /// What is wrong with a library is told with the first file that needs it; the others refer to that.
    Workspace* openLibrary(const std::string& path, const std::string& file, Diagnostics& diagnostics) {
        Workspace& workspace = _workspaces.open(path);
        const bool isValid = workspace.hasLibrary();
        const auto [told, isFirst] = _libraryToldWith.try_emplace(workspace.libraryPath(), file);
        if (isFirst) {
            diagnostics = workspace.fileDiagnostics();
            for (const RuleError& error : workspace.ruleErrors())
                diagnostics.push_back({QorSeverity::Error, error.place, error.text});
            if (!isValid && path != file)
                diagnostics.push_back(
                    about(QorSeverity::Error, file,
                          fmt::format("not checked because of the errors in its library \"{}\"", path)));
            for (const RuleOversight& oversight : ruleOversights(workspace)) diagnostics.push_back(oversight.warning);
        } else if (!isValid || !workspace.ruleErrors().empty()) {
            diagnostics.push_back(about(QorSeverity::Error, file,
                                        fmt::format("{} because of the errors in its library \"{}\", told with \"{}\"",
                                                    isValid ? "checked without some rules" : "not checked",
                                                    workspace.libraryPath(), told->second)));
        }
        return isValid ? &workspace : nullptr;
    }

    void checkModels(Workspace& workspace, const QorImporter& importer, const std::vector<QorIdentifier>& models) {
        RulePlaces rulePlaces(workspace.reader(), workspace.libraryImporter());
        for (const QorIdentifier id : models) {
            const QorModelInfo info = workspace.reader().modelInfo(id);
            _modelNames.insert(std::string(info.name));
            if (!_wantedModels.empty() && !_wantedModels.contains(info.name)) continue;
            checkModel({info, workspace.reader().objectsOf(id).size(), workspace.reader().relationsOf(id).size(),
                        workspace.reader(), importer, rulePlaces});
        }
    }

    void checkModel(const CheckedModel& model) {
        _console.progress().say(fmt::format("checking model {} ({} objects, {} relations)", quoted(model.info.name),
                                            model.objects, model.relations));
        ++_summary.models;
        _summary.objects += model.objects;
        _summary.relations += model.relations;
        _report->beginModel(model);
        const auto report = [this](const QorCardinalityBreach& breach) {
            ++_summary.breaches;
            _report->breach(breach);
            return true;
        };
        const bool isComplete =
            _options.first
                ? reportFirstBreach(model.info.id, report)
                : QorCardinalityCompleteCheck(QorCardinalityHandler::Instance()).checkModel(model.info.id, report);
        if (!isComplete) _internalErrors.add("the check of model " + quoted(model.info.name) + " broke off");
        _report->endModel();
    }

    bool allModelsFound() {
        bool allFound = true;
        const std::vector<std::string> names(_modelNames.begin(), _modelNames.end());
        for (const std::string& wanted : _wantedModels) {
            if (_modelNames.contains(wanted)) continue;
            allFound = false;
            _console.err(fmt::format("qor: {} no model is named {}{}\n", _console.errColours().error("error:"),
                                     quoted(wanted), didYouMean(wanted, names)));
        }
        return allFound;
    }

    const CheckOptions& _options;
    Console& _console;
    InternalErrors _internalErrors;
    Workspaces _workspaces;
    std::unique_ptr<CheckReport> _report;
    std::set<std::string, std::less<>> _wantedModels;
    std::set<std::string> _modelNames;
    std::map<std::string, std::string> _libraryToldWith;  ///< file that needed it first, by the library's path
    InputFiles _inputs;
    CheckSummary _summary;
};

}  // namespace

Exit runCheck(const CheckOptions& options, Console& console) { return CheckRun(options, console).run(); }

}  // namespace qor::cli
