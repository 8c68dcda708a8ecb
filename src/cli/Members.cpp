// SPDX-License-Identifier: Apache-2.0
#include "cli/Members.h"

#include <fmt/format.h>

#include "cli/Text.h"

namespace qor::cli {

std::string MemberKind::text(const std::string& name) const { return fmt::format("{} {}", noun, quoted(name)); }

bool renameMember(AdminSession& session, const MemberKind& kind) {
    const std::string& name = session.options.subject;
    const std::string& newName = session.options.word;
    const QorIdentifier member = (session.*kind.find)(name);
    if (member == QorNoIdentifier || !session.done((session.users().*kind.rename)(member, newName), kind.text(newName)))
        return false;
    session.say(fmt::format("{} is now {}", kind.text(name), quoted(newName)));
    return true;
}

bool changeMembership(AdminSession& session, const MemberKind& kind, bool joins) {
    const std::string what = kind.text(session.options.subject);
    const QorIdentifier member = (session.*kind.find)(session.options.subject);
    std::vector<QorIdentifier> groups;
    if (!session.find(session.options.names, &AdminSession::userGroup, groups) || member == QorNoIdentifier)
        return false;
    for (const QorIdentifier group : groups) {
        const std::string in = quoted(session.nameOf(group));
        if (!session.done(joins ? session.users().join(member, group) : session.users().leave(member, group),
                          fmt::format("{} in {}", what, in)))
            return false;
        const bool hasRemark = joins && kind.remark != nullptr;
        session.say(fmt::format(
            "{} {} {}{}", what, joins ? kind.isIn : kind.isNotIn, in,
            hasRemark ? kind.remark(session, member, session.users().userGroupInfo(group).isSystem) : std::string()));
    }
    return true;
}

std::string namesText(const AdminSession& session, const std::vector<QorIdentifier>& ids) {
    std::string text;
    for (const QorIdentifier id : ids) text += (text.empty() ? "" : ", ") + quoted(session.nameOf(id));
    return text;
}

void writeNames(const AdminSession& session, JsonWriter& json, const char* key, const std::vector<QorIdentifier>& ids) {
    json.key(key).beginList(JsonWriter::Layout::Line);
    for (const QorIdentifier id : ids) json.value(std::string_view(session.nameOf(id)));
    json.endList();
}

}  // namespace qor::cli
