// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/QorImport.h"
#include "platform/QorErrorCode.h"
#include "platform/QorHost.h"
#include "platform/QorWindows.h"

class QorCardinalityHandler;

namespace qor::cli {

/// What the system wants to show the user while the command runs: internal errors, which are told at once.
class CommandWindows final : public QorWindows {
public:
    using Report = void (*)(void* receiver, std::string_view line);
    CommandWindows(Report report, void* receiver) : _report(report), _receiver(receiver) {}
    ~CommandWindows() override;

    int box(SV::Window* parent, unsigned long style, const SV::String& text) override;
    void internalError(const char* source, long line, const char* text) override;

private:
    Report _report;
    void* _receiver;
};

/// An error in the rule text of a class.
struct RuleError {
    QorIdentifier cls = QorNoIdentifier;
    QorFilePlace place;
    std::string text;
};

/// A platform of its own for each method library: two files may bring libraries of the same name.
class Workspace {
public:
    /// `access`: how repository files are opened; `user`: who works on them, empty for the operating system's.
    Workspace(std::string_view language, QorWindows& windows, QorRepositoryAccess access, std::string_view user);
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    ~Workspace();

    /// Makes this workspace's platform the installed host. One at a time.
    void install();
    /// Gives up the current library and the host.
    void leave();

    /// Reads the library file and, when it is valid, makes the library current with its handlers.
    void openLibrary(const std::string& path);
    /// The models of its own that a repository file brings, of the library that is open.
    [[nodiscard]] std::vector<QorIdentifier> models() const;
    /// Makes the library current, again after `leave`.
    void load();

    [[nodiscard]] QorRepositoryBuilder& builder() { return _platform.builder(); }
    [[nodiscard]] const QorRepositoryReader& reader() const { return _platform.reader(); }
    /// Knows where the library's texts were written.
    [[nodiscard]] QorImporter& libraryImporter() { return _importer; }

    [[nodiscard]] const std::string& libraryPath() const { return _path; }
    [[nodiscard]] bool hasLibrary() const { return _library.library != QorNoIdentifier; }
    /// None when the file was not valid.
    [[nodiscard]] QorIdentifier library() const { return _library.library; }
    [[nodiscard]] QorIdentifier part(QorLibraryPart part) { return builder().libraryPart(library(), part); }
    /// How opening a repository file went; Ok for other files.
    [[nodiscard]] QorRepositoryStatus repositoryStatus() const { return _repositoryStatus; }
    /// Why the repository file last took no change.
    [[nodiscard]] const QorRepositoryResult& lastProblem() const { return _platform.lastProblem(); }
    /// What was wrong with the file as such.
    [[nodiscard]] const std::vector<QorDiagnostic>& fileDiagnostics() const { return _library.diagnostics; }
    /// The errors that reading rules left in the handler, with their places in the library's file.
    [[nodiscard]] std::vector<RuleError> ruleErrorsOf(const QorCardinalityHandler& handler) const;
    /// What was wrong with the rule texts; the other rules are in force.
    [[nodiscard]] const std::vector<RuleError>& ruleErrors() const { return _ruleErrors; }

private:
    [[nodiscard]] bool readLibrary();
    [[nodiscard]] bool openRepository();
    void readRulesLeftOut();
    void collectRuleErrors(QorErrorCode loaded);

    QorRepositoryAccess _access;
    QorRepositoryStatus _repositoryStatus = QorRepositoryStatus::Ok;
    QorEmbeddedPlatform _platform;
    QorHost _host;
    QorImporter _importer;
    std::string _path;
    QorImportResult _library;
    std::vector<RuleError> _ruleErrors;
    std::optional<QorHostInstallation> _installation;
};

/// The workspaces of a run, one for each library file, and one without a library.
class Workspaces {
public:
    /// Repository files are copied into memory unless they are to be written.
    Workspaces(std::string language, QorWindows& windows, QorRepositoryAccess access = QorRepositoryAccess::Copy,
               std::string user = {})
        : _language(std::move(language)), _windows(windows), _access(access), _user(std::move(user)) {}
    Workspaces(const Workspaces&) = delete;
    Workspaces& operator=(const Workspaces&) = delete;
    ~Workspaces();

    /// The workspace of the library file, read on first use, with its host installed. An empty path stands for no
    /// library.
    Workspace& open(const std::string& libraryPath);

    /// To be called when the workspace's models are gone, with an identifier that one of them had. Identifiers are not
    /// used twice, and each that was ever used takes some bytes: a workspace that has used too many is given up, and
    /// its library is read again when it is next opened.
    void giveUpWhenGrown(Workspace& workspace, QorIdentifier used);

private:
    std::string _language;
    QorWindows& _windows;
    QorRepositoryAccess _access;
    std::string _user;
    std::map<std::string, std::unique_ptr<Workspace>> _byPath;
    Workspace* _installed = nullptr;
};

}  // namespace qor::cli
