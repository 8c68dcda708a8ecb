// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <charconv>

#include "cli/AdminSession.h"
#include "cli/Members.h"
#include "cli/Nearest.h"
#include "cli/Text.h"
#include "platform/QorUserEventKind.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;
constexpr std::array<const char*, 3> kRights{"administrator", "sub-administrator"};

// ---- List ----

void writeUser(AdminSession& session, JsonWriter& json, const QorUserInfo& info) {
    json.beginObject(kLine)
        .field("name", info.logonName)
        .field("display_name", info.displayName)
        .field("second_name", info.secondName)
        .field("administrator", info.isAdministrator)
        .field("sub_administrator", info.isSubAdministrator)
        .field("library", info.allowedLibrary == QorNoIdentifier ? std::optional<std::string>()
                                                                 : std::optional(session.nameOf(info.allowedLibrary)));
    json.key("managers").beginList(kLine);
    for (const long manager : info.managers) json.value(std::int64_t{manager});
    json.endList();
    writeNames(session, json, "groups", session.users().groupsOf(info.id));
    json.key("profile").beginList(kLine);
    for (const QorProfileEntryInfo& entry : session.users().profileOf(info.id))
        json.beginObject(kLine).field("entry", std::int64_t{entry.number}).field("text", entry.text).endObject();
    json.endList().endObject();
}

std::string described(AdminSession& session, const QorUserInfo& info) {
    std::string text = quoted(info.logonName);
    if (info.displayName != info.logonName || !info.secondName.empty())
        text += fmt::format(" ({})", printable(session.displayNameOf(info.id)));
    if (info.isAdministrator) text += ", administrator";
    if (info.isSubAdministrator) text += ", sub-administrator";
    for (const long manager : info.managers)
        if (manager != QorUserManagerNumber::Ordinary) text += fmt::format(", manager {}", manager);
    text += info.allowedLibrary == QorNoIdentifier ? std::string(", no library")
                                                   : ", library " + quoted(session.nameOf(info.allowedLibrary));
    const auto groups = session.users().groupsOf(info.id);
    if (!groups.empty()) text += ", in " + namesText(session, groups);
    for (const QorProfileEntryInfo& entry : session.users().profileOf(info.id))
        text += fmt::format(
            "\n    {}: {}",
            entry.number == QorUserProfileEntry::Remark ? "remark" : "profile " + std::to_string(entry.number),
            printable(entry.text));
    return text;
}

void list(AdminSession& session) {
    const std::vector<QorIdentifier> ids = session.chosen(&AdminSession::user, &QorUserAdministration::users);
    if (session.isJson()) {
        JsonWriter& json = session.beginJson();
        json.field("sign_on_mode", std::int64_t{session.users().singleSignOnMode()}).key("users").beginList();
        for (const QorIdentifier id : ids) writeUser(session, json, session.users().userInfo(id));
        json.endList();
        return;
    }
    for (const QorIdentifier id : ids) session.console.out(described(session, session.users().userInfo(id)) + "\n");
    if (session.hasNone(ids))
        session.hint("no users yet: everybody is an administrator, and so will be the first one added");
}

// ---- Changes ----

/// Why a membership has no effect for now; empty when it has.
std::string withoutEffect(AdminSession& session, QorIdentifier user, bool isSystem) {
    bool isOrdinary = false;
    for (const long manager : session.users().userInfo(user).managers)
        isOrdinary = isOrdinary || manager == QorUserManagerNumber::Ordinary;
    if (isOrdinary != isSystem) return {};
    return isSystem ? " (without effect: of users of manager 1000 the system user groups do not count)"
                    : " (without effect: of single sign-on users only the system user groups count)";
}

constexpr MemberKind kUser{"user",       "is in", "is not in", &AdminSession::user, &QorUserAdministration::renameUser,
                           withoutEffect};

/// What --display, --organisation, --library, --remark, --profile and --manager ask for.
bool furnish(AdminSession& session, QorIdentifier user) {
    QorUserAdministration& users = session.users();
    const AdminOptions& options = session.options;
    const std::string what = kUser.text(session.nameOf(user));
    if (options.display || options.organisation) {
        const QorUserInfo info = users.userInfo(user);
        const bool hasOwnName = info.displayName != info.logonName;
        const std::string display = options.display.value_or(std::string(hasOwnName ? info.displayName : ""));
        const std::string organisation = options.organisation.value_or(std::string(info.secondName));
        if (!session.done(users.setDisplayName(user, display, organisation), what)) return false;
    }
    if (options.noLibrary && !session.done(users.setAllowedLibrary(user, QorNoIdentifier), what)) return false;
    if (!options.library.empty()) {
        const QorIdentifier library = session.library(options.library);
        if (library == QorNoIdentifier || !session.done(users.setAllowedLibrary(user, library), what)) return false;
    }
    if (options.remark &&
        !session.done(users.setProfileEntry(user, QorUserProfileEntry::Remark, *options.remark), what))
        return false;
    for (const std::string& given : options.profile) {
        const std::size_t sign = given.find('=');
        long entry = 0;
        const char* const end = given.data() + std::min(sign, given.size());
        const auto [stop, failure] = std::from_chars(given.data(), end, entry);
        if (sign == std::string::npos || failure != std::errc() || stop != end) {
            session.error(fmt::format("{} is no ENTRY=TEXT, as in 7=Engineer", quoted(given)), Exit::WrongUse);
            return false;
        }
        if (!session.done(users.setProfileEntry(user, entry, given.substr(sign + 1)), what)) return false;
    }
    // Into the new managers first: so a user is never in none on the way.
    for (const long manager : options.managers)
        if (!session.done(users.setManager(user, manager, true), what)) return false;
    for (const long manager : options.noManagers)
        if (!session.done(users.setManager(user, manager, false), what)) return false;
    return true;
}

bool add(AdminSession& session) {
    QorUserAdministration& users = session.users();
    const AdminOptions& options = session.options;
    std::vector<QorIdentifier> groups;
    if (!session.find(options.groups, &AdminSession::userGroup, groups)) return false;
    const auto libraries = session.reader().applicationLibraries();
    for (const std::string& name : options.names) {
        const bool isFirst = !users.hasUsers();
        const long manager = options.managers.empty() ? QorUserManagerNumber::Ordinary : options.managers.front();
        const QorBuildResult added = users.addUser(name, manager);
        if (!session.done(added, kUser.text(name))) return false;
        std::string text = kUser.text(name) + " added";
        if (isFirst)
            text += fmt::format(", the first one and so an administrator; from now on act with --user {}", name);
        // The others are added, and all of them furnished, by the one who may do so from now on.
        if (isFirst) session.actAs(name);
        if (options.library.empty() && !options.noLibrary && libraries.size() == 1 &&
            !session.done(users.setAllowedLibrary(added.id, libraries.front()), kUser.text(name)))
            return false;
        if (!furnish(session, added.id)) return false;
        for (const QorIdentifier group : groups) {
            if (!session.done(users.join(added.id, group), kUser.text(name))) return false;
            text += fmt::format(", in {}{}", quoted(session.nameOf(group)),
                                withoutEffect(session, added.id, users.userGroupInfo(group).isSystem));
        }
        session.say(text);
    }
    return true;
}

bool set(AdminSession& session) {
    const QorIdentifier user = session.user(session.options.subject);
    if (user == QorNoIdentifier || !furnish(session, user)) return false;
    session.say(described(session, session.users().userInfo(user)));
    return true;
}

bool setRight(AdminSession& session, bool granted) {
    const std::string& name = session.options.subject;
    const std::string& word = session.options.word;
    const QorIdentifier user = session.user(name);
    if (user == QorNoIdentifier) return false;
    const long right = word == kRights[0] ? QorUserRight::Administrator : QorUserRight::SubAdministrator;
    if (!session.done(session.users().setRight(user, right, granted), kUser.text(name))) return false;
    session.say(fmt::format("{} is {}{}", kUser.text(name), granted ? "now " : "no longer ", word));
    return true;
}

bool grant(AdminSession& session) { return setRight(session, true); }
bool revoke(AdminSession& session) { return setRight(session, false); }

bool remove(AdminSession& session) {
    std::vector<QorIdentifier> ids;
    if (!session.find(session.options.names, &AdminSession::user, ids)) return false;
    for (std::size_t at = 0; at < ids.size(); ++at) {
        const std::string what = kUser.text(session.options.names[at]);
        if (!session.done(session.users().removeUser(ids[at]), what)) return false;
        session.say(what + " removed");
    }
    if (!session.users().hasUsers()) session.say("no users are left: everybody is an administrator again");
    return true;
}

bool rename(AdminSession& session) { return renameMember(session, kUser); }
bool join(AdminSession& session) { return changeMembership(session, kUser, true); }
bool leave(AdminSession& session) { return changeMembership(session, kUser, false); }

bool signOn(AdminSession& session) {
    const std::string& given = session.options.word;
    long mode = 0;
    if (given != "none") (void)std::from_chars(given.data(), given.data() + given.size(), mode);
    if (!session.done(session.users().setSingleSignOnMode(mode), "sign-on mode")) return false;
    session.say(mode == 0 ? "no single sign-on" : fmt::format("single sign-on mode {}", mode));
    return true;
}

constexpr AdminArgument kOne{"USER", "The user"};

}  // namespace

std::span<const AdminVerb> userVerbs() {
    static constexpr AdminArgument kRight{"RIGHT", "administrator or sub-administrator", kRights};
    static constexpr AdminVerb kVerbs[] = {
        {"list", "Show users with their groups", false, list, {}, {}, {"NAME", "Only these"}, true},
        {"add",
         "Add users; the first one is an administrator",
         true,
         changing<add>,
         {},
         {},
         {"NAME", "Their logon names"}},
        {"rename", "Give a user another logon name", true, changing<rename>, kOne, {"NEW-NAME", "The new logon name"}},
        {"set", "Change a user's display name, library, profile or user managers", true, changing<set>, kOne},
        {"grant", "Make a user an administrator or a sub-administrator", true, changing<grant>, kOne, kRight},
        {"revoke", "Take that right away again", true, changing<revoke>, kOne, kRight},
        {"remove", "Remove users with their memberships", true, changing<remove>, {}, {}, {"NAME", "The users"}},
        {"join", "Put a user into user groups", true, changing<join>, kOne, {}, {"GROUP", "The groups"}},
        {"leave", "Take a user out of user groups", true, changing<leave>, kOne, {}, {"GROUP", "The groups"}},
        {"sign-on",
         "Say which further user manager counts",
         true,
         changing<signOn>,
         {},
         {"MODE", "667, 668 or none", {"667", "668", "none"}}},
    };
    return kVerbs;
}

}  // namespace qor::cli
