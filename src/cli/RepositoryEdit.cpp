// SPDX-License-Identifier: Apache-2.0
#include "cli/RepositoryEdit.h"

#include <fmt/format.h>

#include "cli/RepositoryFiles.h"
#include "cli/Text.h"
#include "platform/QorCoreVar.h"

namespace qor::cli {

RepositoryEdit::RepositoryEdit(const RepositoryEditOptions& options, Console& console)
    : _options(options),
      _console(console),
      _internalErrors(console),
      _platform({.language = options.language, .console = false, .user = options.user}),
      _host(_platform.host()) {
    const RepositoryName named = repositoryNamed(options.file);
    _file = named.file.empty() ? options.file : named.file;
    _libraryName = named.library;
    _host.windows = &_internalErrors.windows();
    _installation.emplace(_host);
}

RepositoryEdit::~RepositoryEdit() {
    (void)Qor_DiscardLibrary();  // the platform goes with it
    _installation.reset();
}

Exit RepositoryEdit::openFile() {
    const QorRepositoryResult opened =
        _platform.openRepository(_file, _options.dryRun ? QorRepositoryAccess::Copy : QorRepositoryAccess::ReadWrite);
    if (!opened.ok()) {
        const Exit exit = fileError(problemText(opened), exitOf(opened.status));
        for (const std::string& finding : opened.findings) (void)fileError(finding, exit);
        return exit;
    }
    if (_options.dryRun || !_platform.isRepositoryReadOnly()) return Exit::Clean;
    return fileError(Qor_RepositoryStatusText(QorRepositoryStatus::ReadOnly), Exit::WriteFailed);
}

Exit RepositoryEdit::loadLibrary(QorIdentifier library, QorLibLoad_InitHandler handlers) {
    const auto access = _options.dryRun ? QorLibLoad_AccessMode::Shared : QorLibLoad_AccessMode::Exclusive;
    const QorErrorCode loaded = Qor_LoadLibrary(nullptr, library, handlers, QorLibLoad_UpdateFacets::Declined, access,
                                                QorLibLoad_SilentMode::Silent);
    if (const QorRepositoryResult problem = lockProblem(_platform, loaded); !problem.ok())
        return fileError(problemText(problem), exitOf(problem.status));
    for (const std::string& text : locksTakenOver(_platform))
        _console.err(
            fmt::format("qor: {} {}: {}\n", _console.errColours().warning("warning:"), printable(_file), text));
    if (Qor_GetCoreVarConst(QorCoreVarType::ApplicationLibrary) == library) return Exit::Clean;
    return fileError(fmt::format("the library {} cannot be loaded", quoted(nameOf(library))), Exit::Locked);
}

std::string RepositoryEdit::nameOf(long id) const {
    return std::string(reader().nameOf(static_cast<QorIdentifier>(id)));
}

void RepositoryEdit::error(std::string_view why) {
    _errors.emplace_back(why);
    if (!_options.json) _console.err(fmt::format("qor: {} {}\n", _console.errColours().error("error:"), why));
}

Exit RepositoryEdit::fileError(std::string_view why, Exit exit) {
    error(fmt::format("{}: {}", printable(_file), printable(why)));
    return exit;
}

Exit RepositoryEdit::notWritten() {
    const QorRepositoryResult& problem = _platform.lastProblem();
    if (problem.ok()) return fileError("nothing was changed: the repository took no change", Exit::WriteFailed);
    return fileError("nothing was changed: " + problemText(problem), exitOf(problem.status));
}

JsonWriter& RepositoryEdit::beginJson(std::string_view schema) {
    _console.setMode(OutputMode::Document);
    _json.emplace([this](std::string_view text) { _console.out(text); });
    return _json->beginObject().field("schema", schema);
}

Exit RepositoryEdit::end(Exit exit) {
    if (_json) {
        _json->key("errors").beginList();
        for (const std::string& text : _errors) _json->value(std::string_view(text));
        _json->endList().endObject();
    }
    return _internalErrors.count() != 0 ? Exit::Internal : exit;
}

}  // namespace qor::cli
