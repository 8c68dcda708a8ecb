// SPDX-License-Identifier: Apache-2.0
#include "cli/RepoSession.h"

#include <algorithm>

#include "cli/Diagnostics.h"
#include "cli/RepositoryFiles.h"
#include "frame/QorLibLoad.h"

namespace qor::cli {

namespace {

QorEmbeddedOptions platformOptions(const RepositoryOptions& given) {
    QorEmbeddedOptions options;
    options.language = given.language;
    options.user = given.user;
    options.keyFile = given.keyFile;
    return options;
}

}  // namespace

RepoSession::RepoSession(const RepositoryOptions& itsOptions, Console& itsConsole)
    : options(itsOptions),
      console(itsConsole),
      _internalErrors(itsConsole),
      _platform(platformOptions(itsOptions)),
      _host(_platform.host()) {
    _host.windows = &_internalErrors.windows();
    _installation.emplace(_host);
}

RepoSession::~RepoSession() {
    (void)Qor_DiscardLibrary();  // the platform goes with it
    _installation.reset();
}

bool RepoSession::open(QorRepositoryAccess access) {
    (void)tell(_platform.openRepository(options.file, access), options.file);
    return _platform.hasRepository();
}

bool RepoSession::create() { return tell(_platform.createRepository(options.file), options.file); }

bool RepoSession::tell(const QorRepositoryResult& result, const std::string& file) {
    for (const QorDiagnostic& diagnostic : diagnosticsOf(file, result)) tell(diagnostic);
    endAtLeast(exitOf(result.status));
    return result.ok();
}

void RepoSession::tell(const QorDiagnostic& diagnostic) {
    _told.push_back(diagnostic);
    if (!options.json) console.err(diagnosticLine(diagnostic, console.errColours()));
}

bool RepoSession::isNews(const std::string& text) const {
    return std::none_of(_told.begin(), _told.end(), [&](const QorDiagnostic& told) { return told.text == text; });
}

void RepoSession::error(const std::string& file, std::string text, Exit exit) {
    tell({QorSeverity::Error, {file, 0, 0}, std::move(text)});
    endAtLeast(exit);
}

JsonWriter& RepoSession::beginJson() {
    console.setMode(OutputMode::Document);
    _json.emplace([this](std::string_view text) { console.out(text); });
    return _json->beginObject()
        .field("schema", std::string_view(options.schema))
        .field("file", std::string_view(options.file));
}

Exit RepoSession::end() {
    if (options.json) {
        if (!_json) beginJson();
        writeDiagnostics(*_json, _told);
        _json->endObject();
    }
    return _internalErrors.count() != 0 ? Exit::Internal : _exit;
}

}  // namespace qor::cli
