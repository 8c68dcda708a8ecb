// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <span>

#include "admin/QorModelGroupReach.h"
#include "admin/QorModelGroupRights.h"
#include "cli/AdminSession.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

/// Through which groups a user is in the groups that count: for each group the one below it on the shortest way.
class Ways {
public:
    Ways(AdminSession& session, QorIdentifier user) : _user(user) {
        std::vector<QorIdentifier> reached{user};
        for (std::size_t at = 0; at < reached.size(); ++at)
            for (const QorIdentifier above : session.users().groupsOf(reached[at]))
                if (_below.try_emplace(above, reached[at]).second) reached.push_back(above);
    }

    /// The groups between the user and the group, the user's own one first.
    [[nodiscard]] std::vector<QorIdentifier> to(QorIdentifier group) const {
        std::vector<QorIdentifier> way;
        for (auto place = _below.find(group); place != _below.end() && place->second != _user;
             place = _below.find(place->second))
            way.push_back(place->second);
        std::reverse(way.begin(), way.end());
        return way;
    }

    [[nodiscard]] bool reaches(QorIdentifier group) const { return _below.contains(group); }

private:
    QorIdentifier _user;
    std::map<QorIdentifier, QorIdentifier> _below;
};

using Sources = std::span<const QorPermissionSource>;

/// "Staff" (read), "Bosses" by "Chiefs" (write)
std::string sourcesText(AdminSession& session, const Ways& ways, Sources sources) {
    std::string text;
    for (const QorPermissionSource& source : sources) {
        const auto group = static_cast<QorIdentifier>(source.userGroup.value());
        text += (text.empty() ? "" : ", ") + quoted(session.nameOf(group));
        for (const QorIdentifier between : ways.to(group)) text += " by " + quoted(session.nameOf(between));
        text += fmt::format(" ({})", permissionWord(source.permission));
    }
    return text;
}

void writeSources(AdminSession& session, JsonWriter& json, const Ways& ways, Sources sources) {
    json.key("sources").beginList(kLine);
    for (const QorPermissionSource& source : sources) {
        const auto group = static_cast<QorIdentifier>(source.userGroup.value());
        json.beginObject(kLine)
            .field("user_group", std::string_view(session.nameOf(group)))
            .field("permission", permissionWord(source.permission));
        json.key("by").beginList(kLine);
        for (const QorIdentifier between : ways.to(group)) json.value(std::string_view(session.nameOf(between)));
        json.endList().endObject();
    }
    json.endList();
}

bool wasRead(AdminSession& session, QorErrorCode code) {
    if (code != QorErrorCode::Ok)
        session.error(fmt::format("the access could not be read (code {})", static_cast<int>(code)), Exit::Internal);
    return code == QorErrorCode::Ok;
}

/// Why somebody reaches nothing, as far as one thing is to blame.
std::string reasonForNothing(AdminSession& session, const QorUserInfo& info, const Ways& ways) {
    if (info.managers.empty()) return "is in no user manager";
    if (info.allowedLibrary == QorNoIdentifier)
        return fmt::format("is allowed no library (qor user set {} {} --library NAME)", printable(session.options.file),
                           printable(info.logonName));
    if (session.users().groupsOf(info.id).empty()) return "is in no user group";
    std::size_t permissions = 0;
    std::size_t elsewhere = 0;
    for (const QorIdentifier group : session.users().userGroups()) {
        if (!ways.reaches(group)) continue;
        for (const QorGroupPermissionInfo& entry : session.users().permissionsOf(group)) {
            ++permissions;
            if (session.reader().applicationLibraryOf(entry.modelGroup) != info.allowedLibrary) ++elsewhere;
        }
    }
    if (permissions == 0) return "is in groups without permissions";
    if (elsewhere == permissions)
        return fmt::format("has permissions in other libraries only than {}, the allowed one",
                           quoted(session.nameOf(info.allowedLibrary)));
    return "is in groups that do not count: which sort does is told by the user manager";
}

void showRights(AdminSession& session, const std::string& name) {
    const QorIdentifier user = session.isOpen() ? session.user(name) : QorNoIdentifier;
    QorModelGroupRights rights;
    const QorErrorCode code = user == QorNoIdentifier ? QorErrorCode::NotFound : rights.read(QorUserID(user));
    const bool isKnown = user != QorNoIdentifier && (code == QorErrorCode::NotFound || wasRead(session, code));
    const QorUserInfo info = session.users().userInfo(user);
    const Ways ways(session, user);
    if (session.isJson()) {
        JsonWriter& json = session.beginJson();
        json.field("user", isKnown ? info.logonName : std::string_view(name))
            .field("library", info.allowedLibrary == QorNoIdentifier
                                  ? std::optional<std::string>()
                                  : std::optional(session.nameOf(info.allowedLibrary)));
        json.key("rights").beginList();
        for (const QorModelGroupRight& right : rights.rights()) {
            json.beginObject(kLine)
                .field("model_group", std::string_view(session.wayTo(right.modelGroup)))
                .field("permission", permissionWord(right.permission));
            writeSources(session, json, ways, rights.sources(right));
            json.endObject();
        }
        json.endList();
        return;
    }
    for (const QorModelGroupRight& right : rights.rights()) {
        session.console.out(
            fmt::format("{:5}  {}\n", permissionWord(right.permission), quoted(session.wayTo(right.modelGroup))));
        if (session.options.why)
            session.console.out(fmt::format("       through {}\n", sourcesText(session, ways, rights.sources(right))));
    }
    if (isKnown && rights.rights().empty())
        session.hint(
            fmt::format("{} {}, and so reaches no model group", quoted(name), reasonForNothing(session, info, ways)));
}

void showReach(AdminSession& session) {
    const QorIdentifier modelGroup = session.isOpen() ? session.modelGroup(session.options.who) : QorNoIdentifier;
    QorModelGroupReach reach;
    const bool isKnown = modelGroup != QorNoIdentifier && wasRead(session, reach.read(modelGroup));
    JsonWriter* const json = session.isJson() ? &session.beginJson() : nullptr;
    if (json != nullptr)
        json->field("model_group", std::string_view(isKnown ? session.wayTo(modelGroup) : session.options.who))
            .field("library", isKnown ? std::optional(session.nameOf(session.reader().applicationLibraryOf(modelGroup)))
                                      : std::optional<std::string>())
            .key("users")
            .beginList();
    for (const QorReachingUser& reaching : reach.users()) {
        const auto user = static_cast<QorIdentifier>(reaching.user.value());
        const bool wantsWays = json != nullptr || session.options.why;
        const Ways ways(session, wantsWays ? user : QorNoIdentifier);
        if (json != nullptr) {
            json->beginObject(kLine)
                .field("user", std::string_view(session.nameOf(user)))
                .field("permission", permissionWord(reaching.permission));
            writeSources(session, *json, ways, reach.sources(reaching));
            json->endObject();
            continue;
        }
        session.console.out(
            fmt::format("{:5}  {}\n", permissionWord(reaching.permission), quoted(session.nameOf(user))));
        if (session.options.why)
            session.console.out(
                fmt::format("       through {}\n", sourcesText(session, ways, reach.sources(reaching))));
    }
    if (json != nullptr)
        json->endList();
    else if (isKnown && reach.users().empty())
        session.hint(fmt::format("nobody reaches {}", quoted(session.wayTo(modelGroup))));
}

void show(AdminSession& session) {
    if (session.options.who.empty())
        showRights(session, session.options.subject);
    else
        showReach(session);
}

}  // namespace

const AdminVerb& accessVerb() {
    static constexpr AdminVerb kVerb{
        "access", "Show which model groups a user reaches, or who reaches one", false, show, {"USER", "The user"}};
    return kVerb;
}

}  // namespace qor::cli
