// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <set>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cli/BreachJudge.h"
#include "cli/CheckReports.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/FirstBreach.h"
#include "cli/FoundFiles.h"
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
          _reports(options, console),
          _judge(options, _reports, _summary),
          _wantedModels(options.models.begin(), options.models.end()) {}

    Exit run() {
        const auto start = std::chrono::steady_clock::now();
        if (!_options.quiet) _console.progress().start();
        if (!tell(_judge.faults())) return Exit::BadInput;
        const std::vector<std::string> files = findFilesToCheck();
        for (const std::string& file : files) checkFile(file, files.size());
        const std::string unwritten = _judge.end();
        _summary.notShown = _reports.notShown();
        _summary.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        _summary.internalErrors = _internalErrors.count();
        _reports.end(_summary);

        Exit exit = _judge.findings() != 0 ? Exit::Findings : Exit::Clean;
        if (!allModelsFound()) exit = worse(exit, Exit::WrongUse);
        if (_summary.errors != 0) exit = worse(exit, Exit::BadInput);
        Diagnostics failures = _reports.commit();
        if (!unwritten.empty()) failures.push_back(about(QorSeverity::Error, _options.writeBaseline, unwritten));
        if (!tell(failures)) exit = worse(exit, Exit::WriteFailed);
        return _internalErrors.count() != 0 ? Exit::Internal : exit;
    }

private:
    std::vector<std::string> findFilesToCheck() {
        Diagnostics problems;
        std::vector<std::string> files = findModelFiles(_options.files, _workspaces.open(""), problems);
        for (const QorDiagnostic& problem : problems) {
            ++_summary.files;
            Diagnostics ofFolder{problem};
            _judge.beginFile(problem.place.file, ofFolder);
            beginFile(problem.place.file, problem.place.file, ofFolder);
            _reports.endFile();
        }
        return files;
    }

    void checkFile(const std::string& file, std::size_t inAll) {
        _console.progress().say(fmt::format("reading {} ({} of {})", file, _summary.files + 1, inAll));
        if (SettingsFiles::isOne(file)) return;  // a pattern for the models beside it may name it, too
        ++_summary.files;
        Diagnostics diagnostics;
        _judge.beginFile(file, diagnostics);
        std::string path;
        const bool isThere = findPath(file, path, diagnostics);
        if (isThere && !repositoryNamed(path).file.empty()) {
            checkRepository(file, path, diagnostics);
        } else if (Workspace* workspace = isThere ? workspaceFor(file, path, diagnostics) : nullptr) {
            const QorIdentifier lastModel = readAndCheck(*workspace, file, path, diagnostics);
            _workspaces.giveUpWhenGrown(*workspace, lastModel);
        } else {
            beginFile(file, path, diagnostics);
        }
        _reports.endFile();
    }

    /// False when there was anything to tell.
    bool tell(const Diagnostics& diagnostics) {
        for (const QorDiagnostic& diagnostic : diagnostics)
            _console.err(diagnosticLine(diagnostic, _console.errColours()));
        return diagnostics.empty();
    }

    /// The models of a repository file, where they are.
    void checkRepository(const std::string& file, const std::string& path, Diagnostics& diagnostics) {
        const bool isNamed = _options.library.empty() || !repositoryNamed(path).library.empty();
        Workspace* workspace = openLibrary(isNamed ? path : path + "#" + _options.library, file, diagnostics);
        beginFile(file, path, diagnostics);
        if (workspace == nullptr) return;
        _judge.beginModels(file);
        const QorImporter nothingRead(workspace->builder(), workspace->reader());
        checkModels(*workspace, nothingRead, workspace->models());
    }

    /// The last model that was made, none when none was.
    QorIdentifier readAndCheck(Workspace& workspace, const std::string& file, const std::string& path,
                               Diagnostics& diagnostics) {
        QorImporter importer(workspace.builder(), workspace.reader());
        QorImportResult result = importer.readFile(path, workspace.library());
        diagnostics.insert(diagnostics.end(), result.diagnostics.begin(), result.diagnostics.end());
        beginFile(file, path, diagnostics);
        if (!result.hasErrors()) _judge.beginModels(file);
        checkModels(workspace, importer, result.models);
        // A folder of files must not take more memory than its largest file.
        for (const QorIdentifier model : result.models) (void)workspace.builder().removeModel(model);
        return result.models.empty() ? QorNoIdentifier : result.models.back();
    }

    /// The path that a file can be opened by more than once; false, with the reason, when there is none.
    bool findPath(const std::string& file, std::string& path, Diagnostics& diagnostics) {
        std::string error;
        path = _inputs.path(file, error);
        if (!error.empty()) diagnostics.push_back(about(QorSeverity::Error, file, error));
        return error.empty();
    }

    void beginFile(const std::string& file, const std::string& path, Diagnostics& diagnostics) {
        for (QorDiagnostic& diagnostic : diagnostics) {
            if (diagnostic.place.file == path) diagnostic.place.file = file;
            ++(diagnostic.severity == QorSeverity::Error ? _summary.errors : _summary.warnings);
        }
        _reports.beginFile({file, path}, diagnostics);
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
            const Diagnostics& ofFile = workspace.fileDiagnostics();
            diagnostics.insert(diagnostics.end(), ofFile.begin(), ofFile.end());
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
        _reports.beginModel(model);
        _judge.beginModel(model);
        const auto report = [&](const QorCardinalityBreach& breach) {
            _judge.take(model, breach);
            return true;
        };
        const bool isComplete =
            _options.first
                ? reportFirstBreach(model.info.id, report)
                : QorCardinalityCompleteCheck(QorCardinalityHandler::Instance()).checkModel(model.info.id, report);
        if (!isComplete) _internalErrors.add("the check of model " + quoted(model.info.name) + " broke off");
        _reports.endModel();
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
    CheckSummary _summary;
    CheckReports _reports;
    BreachJudge _judge;
    std::set<std::string, std::less<>> _wantedModels;
    std::set<std::string> _modelNames;
    std::map<std::string, std::string> _libraryToldWith;  ///< file that needed it first, by the library's path
    InputFiles _inputs;
};

}  // namespace

Exit runCheck(const CheckOptions& options, Console& console) { return CheckRun(options, console).run(); }

}  // namespace qor::cli
