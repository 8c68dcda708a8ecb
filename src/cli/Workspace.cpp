// SPDX-License-Identifier: Apache-2.0
#include "cli/Workspace.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "cardinality/QorCardinalityDefinitionError.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cli/RepositoryFiles.h"
#include "frame/QorLibLoad.h"

namespace qor::cli {

namespace {

QorEmbeddedOptions platformOptions(std::string_view language, std::string_view user) {
    QorEmbeddedOptions options;
    options.language = language;
    options.user = user;
    return options;
}

constexpr QorIdentifier kMostUsed = 4'000'000;

/// Finds the errors in the rules of a library file that has other errors as well.
class RuleReview final : public QorLibraryReview {
public:
    explicit RuleReview(Workspace& workspace) : _workspace(workspace) {}

    std::vector<QorDiagnostic> review(QorIdentifier library) override {
        QorCardinalityHandler handler(QorCardinalityHandler::Instance());
        handler.Reset();
        for (const QorLibraryPart part : {QorLibraryPart::BusinessProcess, QorLibraryPart::WorkingEnvironment})
            (void)handler.readFurtherLibrary(_workspace.builder().libraryPart(library, part));
        std::vector<QorDiagnostic> found;
        for (RuleError& error : _workspace.ruleErrorsOf(handler))
            found.push_back({QorSeverity::Error, std::move(error.place), std::move(error.text)});
        return found;
    }

private:
    Workspace& _workspace;
};

/// One name for one file, however its path is written.
std::string canonical(const std::string& path) {
    std::error_code error;
    const auto name = std::filesystem::canonical(path, error);
    return error ? path : name.string();
}

}  // namespace

CommandWindows::~CommandWindows() = default;

int CommandWindows::box(SV::Window*, unsigned long, const SV::String& text) {
    _report(_receiver, text.view());
    return 0;
}

void CommandWindows::internalError(const char* source, long line, const char* text) {
    const bool hasText = text != nullptr && *text != '\0';
    _report(_receiver, fmt::format("{}, line {}{}{}", source, line, hasText ? ": " : "", hasText ? text : ""));
}

Workspace::Workspace(std::string_view language, QorWindows& windows, QorRepositoryAccess access, std::string_view user)
    : _access(access),
      _platform(platformOptions(language, user)),
      _host(_platform.host()),
      _importer(_platform.builder(), _platform.reader()) {
    _host.windows = &windows;
}

Workspace::~Workspace() { leave(); }

void Workspace::install() {
    if (!_installation) _installation.emplace(_host);
}

void Workspace::leave() {
    if (!_installation) return;
    (void)Qor_DiscardLibrary();  // the platform goes with it
    _installation.reset();
}

void Workspace::openLibrary(const std::string& path) {
    _path = path;
    if (readLibrary())
        load();
    else
        _library.library = QorNoIdentifier;
}

/// What is sound of a damaged one is used unless it is to be written, and its findings are errors.
bool Workspace::openRepository() {
    const RepositoryName named = repositoryNamed(_path);
    QorRepositoryResult result = _platform.openRepository(named.file, _access);
    const bool isToBeWritten = _access == QorRepositoryAccess::ReadWrite;
    if (result.ok() && isToBeWritten && _platform.isRepositoryReadOnly()) {
        result.status = QorRepositoryStatus::ReadOnly;
        result.text = Qor_RepositoryStatusText(result.status);
    }
    _repositoryStatus = result.status;
    _library.kind = QorFileKind::Library;
    _library.diagnostics = diagnosticsOf(named.file, result);
    std::string reason;
    if (result.ok() || (result.status == QorRepositoryStatus::Damaged && !isToBeWritten))
        _library.library = chooseLibrary(reader(), named.library, reason);
    if (!reason.empty()) _library.diagnostics.push_back({QorSeverity::Error, {named.file, 0, 0}, std::move(reason)});
    return hasLibrary();
}

std::vector<QorIdentifier> Workspace::models() const { return modelsIn(reader(), _library.library); }

bool Workspace::readLibrary() {
    if (!repositoryNamed(_path).file.empty()) return openRepository();
    const QorFileKind kind = _importer.kindOf(_path);
    RuleReview review(*this);
    if (kind == QorFileKind::Library || kind == QorFileKind::Unknown) _library = _importer.readLibrary(_path, review);
    if (!_library.hasErrors() && !hasLibrary())
        _library.diagnostics.push_back({QorSeverity::Error, {_path, 0, 0}, "this is not a method library"});
    return !_library.hasErrors();
}

void Workspace::load() {
    if (!hasLibrary()) return;
    const bool isToBeWritten = _access == QorRepositoryAccess::ReadWrite && _platform.hasRepository();
    const QorErrorCode loaded =
        Qor_LoadLibrary(nullptr, _library.library, QorLibLoad_InitHandler::Wanted, QorLibLoad_UpdateFacets::Declined,
                        isToBeWritten ? QorLibLoad_AccessMode::Exclusive : QorLibLoad_AccessMode::Shared,
                        QorLibLoad_SilentMode::Silent);
    const std::string file = repositoryNamed(_path).file;
    if (const QorRepositoryResult problem = lockProblem(_platform, loaded); !problem.ok()) {
        _repositoryStatus = problem.status;
        _library.diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, problemText(problem)});
        _library.library = QorNoIdentifier;
        return;
    }
    for (std::string& text : locksTakenOver(_platform))
        _library.diagnostics.push_back({QorSeverity::Warning, {file, 0, 0}, std::move(text)});
    readRulesLeftOut();
    collectRuleErrors(loaded);
}

/// A load ends its reading of rules at the first part with an error; people want the errors and rules of both.
void Workspace::readRulesLeftOut() {
    auto& handler = QorCardinalityHandler::Instance();
    const QorIdentifier first = part(QorLibraryPart::BusinessProcess);
    const auto& errors = handler.getDefinitionErrors();
    if (std::any_of(errors.begin(), errors.end(), [first](const auto& error) { return error.library == first; }))
        (void)handler.readFurtherLibrary(part(QorLibraryPart::WorkingEnvironment));  // told by its definition errors
}

std::vector<RuleError> Workspace::ruleErrorsOf(const QorCardinalityHandler& handler) const {
    std::vector<RuleError> errors;
    for (const QorCardinalityDefinitionError& error : handler.getDefinitionErrors()) {
        const auto cls = static_cast<QorIdentifier>(error.cls);
        const auto attribute = static_cast<QorIdentifier>(error.attribute);
        std::string text = _importer.messageInFile(cls, attribute, error.text.view());
        while (text.ends_with('\n')) text.pop_back();  // the handler's texts are lines
        QorFilePlace place = _importer.placeInText(cls, attribute, error.position);
        if (place.file.empty()) place.file = _path;
        errors.push_back({cls, std::move(place), std::move(text)});
    }
    return errors;
}

void Workspace::collectRuleErrors(QorErrorCode loaded) {
    _ruleErrors = ruleErrorsOf(QorCardinalityHandler::Instance());
    if (loaded == QorErrorCode::Ok || !_ruleErrors.empty()) return;
    _ruleErrors.push_back({QorNoIdentifier,
                           {_path, 0, 0},
                           fmt::format("the library's rules could not be set up (code {})", static_cast<int>(loaded))});
}

Workspaces::~Workspaces() {
    if (_installed != nullptr) _installed->leave();
}

Workspace& Workspaces::open(const std::string& libraryPath) {
    std::unique_ptr<Workspace>& workspace = _byPath[libraryPath.empty() ? libraryPath : canonical(libraryPath)];
    const bool isNew = !workspace;
    if (isNew) workspace = std::make_unique<Workspace>(_language, _windows, _access, _user);
    if (_installed != workspace.get()) {
        if (_installed != nullptr) _installed->leave();
        workspace->install();
        _installed = workspace.get();
        if (!isNew) workspace->load();
    }
    if (isNew && !libraryPath.empty()) workspace->openLibrary(libraryPath);
    return *workspace;
}

void Workspaces::giveUpWhenGrown(Workspace& workspace, QorIdentifier used) {
    std::error_code error;
    const bool canBeReadAgain = std::filesystem::is_regular_file(workspace.libraryPath(), error);
    if (used < kMostUsed || !canBeReadAgain) return;
    if (_installed == &workspace) _installed = nullptr;
    std::erase_if(_byPath, [&](const auto& entry) { return entry.second.get() == &workspace; });
}

}  // namespace qor::cli
