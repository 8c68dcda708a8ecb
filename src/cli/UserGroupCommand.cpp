// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <map>

#include "cli/AdminSession.h"
#include "cli/Members.h"
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

void writeText(AdminSession& session, const QorUserGroupInfo& info, const Members& members) {
    std::string text = quoted(info.name) + (info.isSystem ? ", system user group" : "");
    const auto outer = session.users().groupsOf(info.id);
    if (!outer.empty()) text += ", lies in " + namesText(session, outer);
    if (!members.users.empty()) text += "\n    users: " + namesText(session, members.users);
    if (!members.groups.empty()) text += "\n    groups: " + namesText(session, members.groups);
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
    const std::vector<QorIdentifier> ids = session.chosen(&AdminSession::userGroup, &QorUserAdministration::userGroups);
    MembersByGroup members = membersByGroup(session);
    if (session.isJson()) {
        JsonWriter& json = session.beginJson();
        json.key("groups").beginList();
        for (const QorIdentifier id : ids) writeJson(session, json, session.users().userGroupInfo(id), members[id]);
        json.endList();
        return;
    }
    for (const QorIdentifier id : ids) writeText(session, session.users().userGroupInfo(id), members[id]);
    if (session.hasNone(ids)) session.hint("no user groups yet");
}

constexpr MemberKind kGroup{
    "user group", "lies in", "does not lie in", &AdminSession::userGroup, &QorUserAdministration::renameUserGroup,
    nullptr};
bool rename(AdminSession& session) { return renameMember(session, kGroup); }
bool join(AdminSession& session) { return changeMembership(session, kGroup, true); }
bool leave(AdminSession& session) { return changeMembership(session, kGroup, false); }

bool add(AdminSession& session) {
    for (const std::string& name : session.options.names) {
        if (!session.done(session.users().addUserGroup(name, session.options.system), kGroup.text(name))) return false;
        session.say((session.options.system ? "system " : "") + kGroup.text(name) + " added");
    }
    return true;
}

bool remove(AdminSession& session) {
    std::vector<QorIdentifier> ids;
    if (!session.find(session.options.names, &AdminSession::userGroup, ids)) return false;
    for (std::size_t at = 0; at < ids.size(); ++at) {
        const std::string what = kGroup.text(session.options.names[at]);
        const auto members = session.users().membersOf(ids[at]).size();
        const auto permissions = session.users().permissionsOf(ids[at]).size();
        if (!session.done(session.users().removeUserGroup(ids[at]), what)) return false;
        session.say(fmt::format("{} removed, with {} and {}", what, counted(members, "membership"),
                                counted(permissions, "permission")));
    }
    return true;
}

constexpr AdminArgument kOne{"NAME", "The group"};

}  // namespace

std::span<const AdminVerb> userGroupVerbs() {
    static constexpr AdminVerb kVerbs[] = {
        {"list", "Show user groups with members and permissions", false, list, {}, {}, {"NAME", "Only these"}, true},
        {"add", "Add user groups", true, changing<add>, {}, {}, {"NAME", "Their names"}},
        {"rename", "Give a user group another name", true, changing<rename>, kOne, {"NEW-NAME", "The new name"}},
        {"remove",
         "Remove user groups with memberships and permissions",
         true,
         changing<remove>,
         {},
         {},
         {"NAME", "The groups"}},
        {"join", "Put a user group into others", true, changing<join>, kOne, {}, {"GROUP", "Those it is put into"}},
        {"leave",
         "Take a user group out of others",
         true,
         changing<leave>,
         kOne,
         {},
         {"GROUP", "Those it is taken out of"}},
    };
    return kVerbs;
}

}  // namespace qor::cli
