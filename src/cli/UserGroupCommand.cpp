// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <map>

#include "cli/AdminSession.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

struct Members {
    std::vector<QorIdentifier> users;
    std::vector<QorIdentifier> groups;
};
using MembersByGroup = std::map<QorIdentifier, Members>;

/// Of all groups at once: each member is looked at once.
MembersByGroup membersByGroup(AdminSession& session) {
    MembersByGroup members;
    for (const QorIdentifier user : session.users().users())
        for (const QorIdentifier group : session.users().groupsOf(user)) members[group].users.push_back(user);
    for (const QorIdentifier inner : session.users().userGroups())
        for (const QorIdentifier group : session.users().groupsOf(inner)) members[group].groups.push_back(inner);
    return members;
}

std::string joined(const AdminSession& session, const std::vector<QorIdentifier>& ids) {
    std::string text;
    for (const QorIdentifier id : ids) text += (text.empty() ? "" : ", ") + quoted(session.nameOf(id));
    return text;
}

void writeNames(AdminSession& session, JsonWriter& json, const char* key, const std::vector<QorIdentifier>& ids) {
    json.key(key).beginList(kLine);
    for (const QorIdentifier id : ids) json.value(std::string_view(session.nameOf(id)));
    json.endList();
}

void writeText(AdminSession& session, const QorUserGroupInfo& info, const Members& members) {
    std::string text = quoted(info.name) + (info.isSystem ? ", system user group" : "");
    const auto outer = session.users().groupsOf(info.id);
    if (!outer.empty()) text += ", lies in " + joined(session, outer);
    if (!members.users.empty()) text += "\n    users: " + joined(session, members.users);
    if (!members.groups.empty()) text += "\n    groups: " + joined(session, members.groups);
    for (const QorGroupPermissionInfo& entry : session.users().permissionsOf(info.id))
        text +=
            fmt::format("\n    {} on {}", permissionWord(entry.permission), quoted(session.wayTo(entry.modelGroup)));
    session.console.out(text + "\n");
}

void writeJson(AdminSession& session, JsonWriter& json, const QorUserGroupInfo& info, const Members& members) {
    json.beginObject(kLine).field("name", info.name).field("system", info.isSystem);
    writeNames(session, json, "users", members.users);
    writeNames(session, json, "groups", members.groups);
    writeNames(session, json, "lies_in", session.users().groupsOf(info.id));
    json.key("permissions").beginList(kLine);
    for (const QorGroupPermissionInfo& entry : session.users().permissionsOf(info.id))
        json.beginObject(kLine)
            .field("library", session.reader().nameOf(session.reader().applicationLibraryOf(entry.modelGroup)))
            .field("model_group", std::string_view(session.wayTo(entry.modelGroup)))
            .field("permission", permissionWord(entry.permission))
            .endObject();
    json.endList().endObject();
}

void list(AdminSession& session) {
    std::vector<QorIdentifier> ids;
    if (session.options.names.empty())
        ids = session.users().userGroups();
    else if (!session.find(session.options.names, &AdminSession::userGroup, ids))
        return;
    MembersByGroup members = membersByGroup(session);
    if (session.isJson()) {
        JsonWriter& json = session.beginJson();
        json.key("groups").beginList();
        for (const QorIdentifier id : ids) writeJson(session, json, session.users().userGroupInfo(id), members[id]);
        json.endList();
        return;
    }
    for (const QorIdentifier id : ids) writeText(session, session.users().userGroupInfo(id), members[id]);
    if (ids.empty()) session.hint("no user groups yet");
}

std::string groupText(const std::string& name) { return "user group " + quoted(name); }

bool add(AdminSession& session) {
    for (const std::string& name : session.options.names) {
        if (!session.done(session.users().addUserGroup(name, session.options.system), groupText(name))) return false;
        session.say((session.options.system ? "system " : "") + groupText(name) + " added");
    }
    return true;
}

bool rename(AdminSession& session) {
    const auto& names = session.options.names;
    const QorIdentifier group = session.userGroup(names.front());
    if (group == QorNoIdentifier ||
        !session.done(session.users().renameUserGroup(group, names.back()), groupText(names.back())))
        return false;
    session.say(fmt::format("{} is now {}", groupText(names.front()), quoted(names.back())));
    return true;
}

bool remove(AdminSession& session) {
    std::vector<QorIdentifier> ids;
    if (!session.find(session.options.names, &AdminSession::userGroup, ids)) return false;
    for (std::size_t at = 0; at < ids.size(); ++at) {
        const std::string what = groupText(session.options.names[at]);
        const auto members = session.users().membersOf(ids[at]).size();
        const auto permissions = session.users().permissionsOf(ids[at]).size();
        if (!session.done(session.users().removeUserGroup(ids[at]), what)) return false;
        session.say(fmt::format("{} removed, with {} and {}", what, counted(members, "membership"),
                                counted(permissions, "permission")));
    }
    return true;
}

bool changeMembership(AdminSession& session, bool joins) {
    const auto& names = session.options.names;
    const QorIdentifier inner = session.userGroup(names.front());
    std::vector<QorIdentifier> groups;
    if (!session.find({names.begin() + 1, names.end()}, &AdminSession::userGroup, groups) || inner == QorNoIdentifier)
        return false;
    for (const QorIdentifier group : groups) {
        const QorBuildResult result = joins ? session.users().join(inner, group) : session.users().leave(inner, group);
        if (!session.done(result, fmt::format("{} in {}", groupText(names.front()), quoted(session.nameOf(group)))))
            return false;
        session.say(fmt::format("{} {} in {}", groupText(names.front()), joins ? "lies" : "does not lie",
                                quoted(session.nameOf(group))));
    }
    return true;
}

bool join(AdminSession& session) { return changeMembership(session, true); }
bool leave(AdminSession& session) { return changeMembership(session, false); }

struct Verb {
    std::string_view name;
    bool (*run)(AdminSession& session);
};
constexpr Verb kChanges[] = {
    {"add", add}, {"rename", rename}, {"remove", remove}, {"join", join}, {"leave", leave},
};

}  // namespace

Exit runUserGroup(const AdminOptions& options, Console& console) {
    AdminSession session(options, console);
    if (options.verb == "list" && session.open(false)) list(session);
    for (const Verb& verb : kChanges)
        if (options.verb == verb.name && session.open(true)) session.change([&] { return verb.run(session); });
    return session.end();
}

}  // namespace qor::cli
