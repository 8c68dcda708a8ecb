// SPDX-License-Identifier: Apache-2.0
#include "cli/AdminSession.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/Diagnostics.h"
#include "cli/LogSettings.h"
#include "cli/Nearest.h"
#include "cli/RepositoryFiles.h"
#include "cli/Text.h"
#include "cli/Utf8.h"
#include "platform/QorAccess.h"
#include "platform/QorCoreUnitsOfWork.h"

namespace qor::cli {

std::string_view permissionWord(std::int32_t permission) {
    if (permission == QorModelGroupPermission::Write) return "write";
    return permission == QorModelGroupPermission::Read ? "read" : "none";
}

AdminSession::AdminSession(const AdminOptions& itsOptions, Console& itsConsole)
    : options(itsOptions),
      console(itsConsole),
      _internalErrors(itsConsole),
      _platform(
          {.language = itsOptions.language, .console = false, .user = itsOptions.actor, .keyFile = itsOptions.keyFile}),
      _host(_platform.host()) {
    _host.windows = &_internalErrors.windows();
    _installation.emplace(_host);
}

AdminSession::~AdminSession() { _installation.reset(); }

void AdminSession::open() { _isOpen = openFile(); }

bool AdminSession::openFile() {
    const bool forWriting = options.verb->writes;
    const QorRepositoryResult result =
        _platform.openRepository(options.file, forWriting && !options.dryRun ? QorRepositoryAccess::ReadWrite
                                               : forWriting                  ? QorRepositoryAccess::Copy
                                                                             : QorRepositoryAccess::ReadOnly);
    for (const QorDiagnostic& diagnostic : diagnosticsOf(options.file, result)) {
        _errors.push_back(diagnostic.text);
        if (!isJson()) console.err(diagnosticLine(diagnostic, console.errColours()));
    }
    endAtLeast(exitOf(result.status));
    if (options.dryRun && forWriting) return result.ok();
    if (!_platform.hasRepository()) return false;
    if (!forWriting) return true;
    if (_platform.isRepositoryReadOnly()) {
        if (result.ok()) error(Qor_RepositoryStatusText(QorRepositoryStatus::ReadOnly), Exit::WriteFailed);
        return false;
    }
    return true;
}

// ---- Names ----

// Names are shown, compared and stored as text; bytes that are none belong to no name.
bool AdminSession::isPlainText(const std::string& name) {
    for (std::string_view rest = name; !rest.empty();) {
        const Utf8Char next = firstChar(rest);
        if (!next.valid) {
            error(fmt::format("{} is not UTF-8", quoted(name)), Exit::WrongUse);
            return false;
        }
        rest.remove_prefix(next.size);
    }
    return true;
}

QorIdentifier AdminSession::user(const std::string& name) {
    const QorIdentifier found = users().findUser(name);
    if (found != QorNoIdentifier) return found;
    std::vector<std::string> names;
    for (const QorIdentifier id : users().users()) names.push_back(nameOf(id));
    error(fmt::format("there is no user {}{}", quoted(name), didYouMean(name, names)), Exit::WrongUse);
    return QorNoIdentifier;
}

QorIdentifier AdminSession::userGroup(const std::string& name) {
    const QorIdentifier found = users().findUserGroup(name);
    if (found != QorNoIdentifier) return found;
    std::vector<std::string> names;
    for (const QorIdentifier id : users().userGroups()) names.push_back(nameOf(id));
    error(fmt::format("there is no user group {}{}", quoted(name), didYouMean(name, names)), Exit::WrongUse);
    return QorNoIdentifier;
}

QorIdentifier AdminSession::library(const std::string& name) {
    std::string reason;
    const QorIdentifier found = chooseLibrary(reader(), name, reason);
    if (found == QorNoIdentifier) error(reason, Exit::WrongUse);
    return found;
}

namespace {

/// A name as a step of a way.
std::string stepFor(std::string_view name) {
    std::string step;
    for (const char c : name) {
        if (c == '/' || c == '\\') step += '\\';
        step += c;
    }
    return step;
}

}  // namespace

QorIdentifier AdminSession::modelGroup(const std::string& name) {
    std::vector<QorIdentifier> byWay;
    std::vector<QorIdentifier> byName;
    std::vector<std::string> ways;
    for (const QorIdentifier its : reader().applicationLibraries()) {
        if (!options.library.empty() && reader().nameOf(its) != options.library) continue;
        for (const QorModelGroupInfo& group : reader().modelGroupsOf(its)) {
            ways.push_back(wayTo(group.id));
            if (ways.back() == name) byWay.push_back(group.id);
            if (group.name == name || stepFor(group.name) == name) byName.push_back(group.id);
        }
    }
    const auto& found = byWay.empty() ? byName : byWay;
    if (found.size() == 1) return found.front();
    if (found.empty()) {
        error(fmt::format("there is no model group {}{}", quoted(name), didYouMean(name, ways)), Exit::WrongUse);
        return QorNoIdentifier;
    }
    // Within a library no two have the same way.
    const std::string way = wayTo(found.front());
    const bool haveOneWay =
        std::all_of(found.begin(), found.end(), [&](QorIdentifier group) { return wayTo(group) == way; });
    error(fmt::format("{} are called {}; {}", counted(found.size(), "model group"), quoted(name),
                      haveOneWay ? "give their --library" : "give the way from the top, as in " + quoted(way)),
          Exit::WrongUse);
    return QorNoIdentifier;
}

bool AdminSession::find(const std::vector<std::string>& names,
                        QorIdentifier (AdminSession::*findOne)(const std::string&), std::vector<QorIdentifier>& found) {
    bool all = true;
    for (const std::string& name : names) {
        found.push_back((this->*findOne)(name));
        all = all && found.back() != QorNoIdentifier;
    }
    return all;
}

std::vector<QorIdentifier> AdminSession::chosen(QorIdentifier (AdminSession::*findOne)(const std::string&),
                                                std::vector<QorIdentifier> (QorUserAdministration::*all)() const) {
    std::vector<QorIdentifier> ids;
    if (!_isOpen) return ids;
    if (options.names.empty()) return (users().*all)();
    if (!find(options.names, findOne, ids)) std::erase(ids, QorNoIdentifier);
    return ids;
}

std::string AdminSession::nameOf(long id) const { return std::string(reader().nameOf(static_cast<QorIdentifier>(id))); }

std::string AdminSession::wayTo(long modelGroup) const {
    std::string way;
    for (QorModelGroupInfo at = reader().modelGroupInfo(static_cast<QorIdentifier>(modelGroup));
         at.id != QorNoIdentifier; at = reader().modelGroupInfo(at.parent))
        way.insert(0, stepFor(at.name) + (way.empty() ? "" : "/"));
    return way;
}

std::string AdminSession::displayNameOf(QorIdentifier user) {
    const QorUserInfo info = users().userInfo(user);
    std::string name(info.displayName);
    if (!info.secondName.empty()) name += ";" + std::string(info.secondName);
    return name;
}

// ---- Changes ----

void AdminSession::change(const std::function<bool()>& changes) {
    if (!_isOpen || !isPlainText(options.subject) || !isPlainText(options.word)) return;
    for (const auto* names : {&options.names, &options.groups, &options.profile})
        for (const std::string& name : *names)
            if (!isPlainText(name)) return;
    for (const auto* text : {&options.display, &options.organisation, &options.remark})
        if (*text && !isPlainText(**text)) return;
    if (!rehearse(changes)) return _messages.clear();
    if (!startLog()) return;
    QorUnitOfWork unit;
    if (!changes()) return _messages.clear();
    if (unit.commit() == QorErrorCode::Ok) {
        if (!isJson())
            for (const std::string& message : _messages) console.out(message + "\n");
        return;
    }
    _messages.clear();
    tellNotStored();
}

// The log tells of every change at once, so that what would be refused half-way must show before it is switched on.
bool AdminSession::rehearse(const std::function<bool()>& changes) {
    const QorUnitOfWork takenBack;
    if (!takenBack.isOpen()) {
        tellNotStored();
        return false;
    }
    const bool succeeded = changes();
    _messages.clear();
    if (_actedBefore) _platform.setCurrentUser(*_actedBefore);
    return succeeded;
}

// It writes down what follows, if the repository wants that.
bool AdminSession::startLog() {
    const QorRepositoryResult log = keepLog(_platform.fileArea());
    if (!log.ok()) error(log.text, exitOf(log.status));
    return log.ok();
}

void AdminSession::actAs(const std::string& name) {
    if (!_actedBefore) _actedBefore = currentName();
    _platform.setCurrentUser(name);
}

std::string AdminSession::currentName() const {
    QorUserID current;
    SV::String first;
    SV::String second;
    auto kind = QorUserLogonNameType::Plain;
    (void)QorUserManager::allUmansGetCurrentUserID(current);
    (void)QorUserManager::allUmansGetUserFullDisplayNameOfUserID(current, first, second, kind, true);
    return first.str();
}

bool AdminSession::done(const QorBuildResult& result, const std::string& what) {
    if (!result.ok()) tellRefusal(result.error, what);
    return result.ok();
}

void AdminSession::tellRefusal(QorBuildError why, const std::string& what) {
    if (why == QorBuildError::NotStored) return tellNotStored();
    std::string text = fmt::format("{}: {}", what, Qor_BuildErrorText(why));
    if (why == QorBuildError::NotAllowed)
        text += fmt::format("; you are {}, --user NAME names somebody else", quoted(currentName()));
    error(text, why == QorBuildError::NoIdentifiersLeft ? Exit::WriteFailed : Exit::WrongUse);
}

void AdminSession::tellNotStored() {
    const QorRepositoryResult& problem = _platform.lastProblem();
    error(fmt::format("nothing was changed: {}",
                      problem.ok() ? "the repository took no change" : Qor_RepositoryStatusText(problem.status)),
          problem.ok() ? Exit::WriteFailed : exitOf(problem.status));
}

void AdminSession::error(const std::string& text, Exit exit) {
    _errors.push_back(text);
    if (!isJson()) console.err(fmt::format("qor: {} {}\n", console.errColours().error("error:"), text));
    endAtLeast(exit);
}

void AdminSession::say(const std::string& text) { _messages.push_back(text); }

void AdminSession::hint(const std::string& text) {
    if (!isJson()) console.err(text + "\n");
}

// ---- The end ----

JsonWriter& AdminSession::beginJson() {
    console.setMode(OutputMode::Document);
    _json.emplace([this](std::string_view text) { console.out(text); });
    return _json->beginObject()
        .field("schema", std::string_view(options.schema))
        .field("file", std::string_view(options.file));
}

Exit AdminSession::end() {
    if (const std::string lost = lostLines(_platform.fileArea()); !lost.empty()) error(lost, Exit::WriteFailed);
    if (isJson()) {
        if (!_json) {
            JsonWriter& json = beginJson();
            json.key("messages").beginList();
            for (const std::string& message : _messages) json.value(std::string_view(message));
            json.endList();
        }
        _json->key("errors").beginList();
        for (const std::string& text : _errors) _json->value(std::string_view(text));
        _json->endList().endObject();
    }
    return _internalErrors.count() != 0 ? Exit::Internal : _exit;
}

Exit runAdmin(const AdminOptions& options, Console& console) {
    AdminSession session(options, console);
    session.open();
    options.verb->run(session);
    return session.end();
}

}  // namespace qor::cli
