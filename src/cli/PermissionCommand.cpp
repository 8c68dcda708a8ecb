// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <optional>

#include "cli/AdminSession.h"
#include "cli/PermissionSetting.h"
#include "cli/Text.h"
#include "platform/QorAccess.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

void list(AdminSession& session) {
    const std::vector<QorIdentifier> groups =
        session.chosen(&AdminSession::userGroup, &QorUserAdministration::userGroups);
    JsonWriter* const json = session.isJson() ? &session.beginJson() : nullptr;
    if (json != nullptr) json->key("permissions").beginList();
    std::size_t count = 0;
    for (const QorIdentifier group : groups)
        for (const QorGroupPermissionInfo& entry : session.users().permissionsOf(group)) {
            ++count;
            const QorIdentifier library = session.reader().applicationLibraryOf(entry.modelGroup);
            if (json != nullptr)
                json->beginObject(kLine)
                    .field("user_group", std::string_view(session.nameOf(group)))
                    .field("library", std::string_view(session.nameOf(library)))
                    .field("model_group", std::string_view(session.wayTo(entry.modelGroup)))
                    .field("permission", permissionWord(entry.permission))
                    .endObject();
            else
                session.console.out(fmt::format(
                    "{}: {} on {} of library {}\n", quoted(session.nameOf(group)), permissionWord(entry.permission),
                    quoted(session.wayTo(entry.modelGroup)), quoted(session.nameOf(library))));
        }
    if (json != nullptr)
        json->endList();
    else if (count == 0 && session.isOpen())
        session.hint("no permissions");
}

/// Of one user group on model groups: no sub-groups, no questions.
bool give(AdminSession& session, std::int32_t permission) {
    const QorIdentifier group = session.userGroup(session.options.subject);
    std::vector<QorIdentifier> modelGroups;
    if (!session.find(session.options.names, &AdminSession::modelGroup, modelGroups) || group == QorNoIdentifier)
        return false;
    for (const QorIdentifier modelGroup : modelGroups) {
        const std::string name = quoted(session.nameOf(group));
        const std::string way = quoted(session.wayTo(modelGroup));
        if (!session.done(session.users().setPermission(group, modelGroup, permission),
                          fmt::format("{} on {}", name, way)))
            return false;
        session.say(fmt::format("{}: {} on {}", name, permissionWord(permission), way));
    }
    return true;
}

bool grant(AdminSession& session) {
    return give(session, permissionNamed(session.options.word).value_or(QorModelGroupPermission::None));
}
bool revoke(AdminSession& session) { return give(session, QorModelGroupPermission::None); }

}  // namespace

std::optional<std::int32_t> permissionNamed(std::string_view word) {
    if (word == "read") return QorModelGroupPermission::Read;
    if (word == "write") return QorModelGroupPermission::Write;
    if (word == "none") return QorModelGroupPermission::None;
    return std::nullopt;
}

std::span<const AdminVerb> permissionVerbs() {
    static constexpr AdminArgument kGroup{"USERGROUP", "The user group"};
    static constexpr AdminArgument kModelGroups{"GROUP", "The model groups"};
    static constexpr AdminVerb kVerbs[] = {
        {"list",
         "Show the permissions of user groups on model groups",
         false,
         list,
         {},
         {},
         {"USERGROUP", "Only of these"},
         true},
        {"grant",
         "Give a user group a permission on model groups, as they are",
         true,
         changing<grant>,
         kGroup,
         {"PERMISSION", "read, write or none", {"read", "write", "none"}},
         kModelGroups},
        {"revoke",
         "Take a user group's permission on model groups away",
         true,
         changing<revoke>,
         kGroup,
         {},
         kModelGroups},
        {"set",
         "Set permissions on model groups and those below, shown before",
         true,
         setPermissions,
         {},
         {},
         {"GROUP", "The model groups; after them, or at the end of --to, read, write or none"}},
    };
    return kVerbs;
}

}  // namespace qor::cli
