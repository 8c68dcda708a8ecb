// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/AdminCommands.h"
#include "cli/Console.h"
#include "cli/InternalErrors.h"
#include "cli/JsonWriter.h"
#include "embedded/QorEmbeddedPlatform.h"

namespace qor::cli {

/// One run of a command about users, groups, permissions or access: the repository file, opened as the installed host
/// for whoever acts, the names that were given, and what is told.
class AdminSession {
public:
    AdminSession(const AdminOptions& options, Console& console);
    AdminSession(const AdminSession&) = delete;
    AdminSession& operator=(const AdminSession&) = delete;
    ~AdminSession();

    const AdminOptions& options;
    Console& console;

    [[nodiscard]] QorUserAdministration& users() { return _platform.userAdministration(); }
    [[nodiscard]] const QorRepositoryReader& reader() const { return _platform.reader(); }
    [[nodiscard]] bool isJson() const { return options.json; }

    /// Opens the file. False, after telling why, when nothing of it can be read, or nothing written to it.
    bool open(bool forWriting);

    /// Goes on as this user, when so far a guest has acted.
    void actAs(const std::string& name);

    // ---- Names; none after telling what is not there ----

    [[nodiscard]] QorIdentifier user(const std::string& name);
    [[nodiscard]] QorIdentifier userGroup(const std::string& name);
    /// "Sales/Orders", the way from the top, or the name alone where just one group has it.
    [[nodiscard]] QorIdentifier modelGroup(const std::string& name);
    [[nodiscard]] QorIdentifier library(const std::string& name);
    /// The names, one by one; false when one of them is not there.
    [[nodiscard]] bool find(const std::vector<std::string>& names,
                            QorIdentifier (AdminSession::*findOne)(const std::string&),
                            std::vector<QorIdentifier>& found);

    [[nodiscard]] std::string nameOf(long id) const;
    /// "Sales/Orders", quoted when it is shown to people.
    [[nodiscard]] std::string wayTo(long modelGroup) const;
    [[nodiscard]] std::string displayNameOf(QorIdentifier user);

    // ---- What is told ----

    /// Runs changes as one: all of them are kept, or none when one is refused. They are run twice, the first time to be
    /// taken back again.
    void change(const std::function<bool()>& changes);
    /// Makes the administrator log hear of changes. False, after telling why, when it is on and cannot be written.
    bool startLog();
    /// False, after telling why, when the repository refused to change what is named.
    bool done(const QorBuildResult& result, const std::string& what);
    /// Why a change was not written.
    void tellNotStored();
    void tellRefusal(QorBuildError error, const std::string& what);
    void error(const std::string& text, Exit exit);
    /// To people at once, with --json in the document's "messages".
    void say(const std::string& text);
    void hint(const std::string& text);
    void endAtLeast(Exit exit) { _exit = worse(_exit, exit); }

    /// Begins the document "qor.COMMAND.VERB/1".
    JsonWriter& beginJson();
    [[nodiscard]] Exit end();

private:
    [[nodiscard]] bool isPlainText(const std::string& name);
    [[nodiscard]] bool rehearse(const std::function<bool()>& changes);
    /// As it is shown; of a guest it is the logon name.
    [[nodiscard]] std::string currentName() const;

    InternalErrors _internalErrors;
    QorEmbeddedPlatform _platform;
    QorHost _host;
    std::optional<QorHostInstallation> _installation;
    std::optional<JsonWriter> _json;
    std::vector<std::string> _messages;
    std::vector<std::string> _errors;
    std::optional<std::string> _actedBefore;
    Exit _exit = Exit::Clean;
};

/// "no access", "read", "write".
[[nodiscard]] std::string_view permissionWord(std::int32_t permission);

}  // namespace qor::cli
