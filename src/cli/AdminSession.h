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

    /// Opens the file for what the verb wants. Tells why when nothing of it can be read, or nothing written to it; then
    /// the verb runs all the same, for the sake of its document, and does nothing.
    void open();
    [[nodiscard]] bool isOpen() const { return _isOpen; }

    /// Goes on as this user, when so far a guest has acted.
    void actAs(const std::string& name);

    // ---- Names; none after telling what is not there ----

    [[nodiscard]] QorIdentifier user(const std::string& name);
    [[nodiscard]] QorIdentifier userGroup(const std::string& name);
    /// "Sales/Orders", the way from the top as `wayTo` writes it, or the name alone where just one group has it.
    [[nodiscard]] QorIdentifier modelGroup(const std::string& name);
    [[nodiscard]] QorIdentifier library(const std::string& name);
    /// The names, one by one; false when one of them is not there.
    [[nodiscard]] bool find(const std::vector<std::string>& names,
                            QorIdentifier (AdminSession::*findOne)(const std::string&),
                            std::vector<QorIdentifier>& found);

    /// Those of the arguments' names that are there, or all when the arguments name none.
    [[nodiscard]] std::vector<QorIdentifier> chosen(QorIdentifier (AdminSession::*findOne)(const std::string&),
                                                    std::vector<QorIdentifier> (QorUserAdministration::*all)() const);
    /// Whether nothing was chosen because there is nothing.
    [[nodiscard]] bool hasNone(const std::vector<QorIdentifier>& chosen) const {
        return _isOpen && options.names.empty() && chosen.empty();
    }

    [[nodiscard]] std::string nameOf(long id) const;
    /// "Sales/Orders", with "\/" for a slash within a name and "\\" for a backslash.
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

    /// Begins the document.
    JsonWriter& beginJson();
    [[nodiscard]] Exit end();

private:
    [[nodiscard]] bool isPlainText(const std::string& name);
    [[nodiscard]] bool openFile();
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
    bool _isOpen = false;
    Exit _exit = Exit::Clean;
};

/// As a verb's `run`: what `make` changes, all of it or nothing.
template <bool (*make)(AdminSession& session)>
void changing(AdminSession& session) {
    session.change([&] { return make(session); });
}

/// "none", "read", "write".
[[nodiscard]] std::string_view permissionWord(std::int32_t permission);

}  // namespace qor::cli
