// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "cli/Console.h"
#include "cli/Exit.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "cli/RepositoryOptions.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/QorImport.h"

namespace qor::cli {

/// One run of `qor repo` or `qor log`: the repository file, opened as the installed host, and what is told of it.
class RepoSession {
public:
    RepoSession(const RepositoryOptions& options, Console& console);
    RepoSession(const RepoSession&) = delete;
    RepoSession& operator=(const RepoSession&) = delete;
    ~RepoSession();

    const RepositoryOptions& options;
    Console& console;

    [[nodiscard]] QorEmbeddedPlatform& platform() { return _platform; }
    [[nodiscard]] const QorRepositoryReader& reader() const { return _platform.reader(); }

    /// Opens or makes the file. False, after telling why, when nothing of it can be read; what is damaged is told, too.
    bool open(QorRepositoryAccess access);
    bool create();
    /// Tells what went wrong with the repository, or another file; the worst of all decides how the command ends.
    bool tell(const QorRepositoryResult& result, const std::string& file);
    void tell(const QorDiagnostic& diagnostic);
    /// Whether it was not told yet.
    [[nodiscard]] bool isNews(const std::string& text) const;
    void error(const std::string& file, std::string text, Exit exit);
    void endAtLeast(Exit exit) { _exit = worse(_exit, exit); }
    [[nodiscard]] Exit exit() const { return _exit; }

    /// Begins the document in which results are written with --json.
    JsonWriter& beginJson();
    /// Ends it with what was told, or does nothing.
    [[nodiscard]] Exit end();

private:
    InternalErrors _internalErrors;
    QorEmbeddedPlatform _platform;
    QorHost _host;
    std::optional<QorHostInstallation> _installation;
    std::optional<JsonWriter> _json;
    std::vector<QorDiagnostic> _told;
    Exit _exit = Exit::Clean;
};

}  // namespace qor::cli
