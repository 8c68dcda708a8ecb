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
    std::vector<QorIdentifier> groups;
    if (session.options.names.empty())
        groups = session.users().userGroups();
    else if (!session.find(session.options.names, &AdminSession::userGroup, groups))
        return;
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
    else if (count == 0)
        session.hint("no permissions");
}

/// Of one user group on model groups: no sub-groups, no questions.
bool give(AdminSession& session, std::size_t firstModelGroup, std::int32_t permission) {
    const auto& names = session.options.names;
    const QorIdentifier group = session.userGroup(names.front());
    std::vector<QorIdentifier> modelGroups;
    const std::vector<std::string> given(names.begin() + static_cast<std::ptrdiff_t>(firstModelGroup), names.end());
    if (!session.find(given, &AdminSession::modelGroup, modelGroups) || group == QorNoIdentifier) return false;
    for (const QorIdentifier modelGroup : modelGroups) {
        const std::string what =
            fmt::format("{} on {}", quoted(session.nameOf(group)), quoted(session.wayTo(modelGroup)));
        if (!session.done(session.users().setPermission(group, modelGroup, permission), what)) return false;
        session.say(fmt::format("{}: {} on {}", quoted(session.nameOf(group)), permissionWord(permission),
                                quoted(session.wayTo(modelGroup))));
    }
    return true;
}

bool grant(AdminSession& session) {
    const auto permission = permissionNamed(session.options.names[1]);
    if (permission && session.options.names.size() > 2) return give(session, 2, *permission);
    session.error(
        permission ? "name a model group" : quoted(session.options.names[1]) + " is none of read, write, none",
        Exit::WrongUse);
    return false;
}

bool revoke(AdminSession& session) { return give(session, 1, QorModelGroupPermission::None); }

}  // namespace

std::optional<std::int32_t> permissionNamed(std::string_view word) {
    if (word == "read") return QorModelGroupPermission::Read;
    if (word == "write") return QorModelGroupPermission::Write;
    if (word == "none") return QorModelGroupPermission::None;
    return std::nullopt;
}

Exit runPermission(const AdminOptions& options, Console& console) {
    AdminSession session(options, console);
    if (options.verb == "list") {
        if (session.open(false)) list(session);
    } else if (session.open(true)) {
        if (options.verb == "grant") session.change([&] { return grant(session); });
        if (options.verb == "revoke") session.change([&] { return revoke(session); });
        if (options.verb == "set") setPermissions(session);
    }
    return session.end();
}

}  // namespace qor::cli
