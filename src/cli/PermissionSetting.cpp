// SPDX-License-Identifier: Apache-2.0
#include "cli/PermissionSetting.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <set>
#include <string>

#include "admin/QorPermissionAssignment.h"
#include "admin/QorRightImpact.h"
#include "cli/AdminSession.h"
#include "cli/Text.h"
#include "platform/QorCoreModelGroupManager.h"

namespace qor::cli {

namespace {

constexpr auto kLine = JsonWriter::Layout::Line;

/// What is to be set, as the arguments say it. The permission is the last word, wherever the words went.
struct Wish {
    std::vector<std::string> modelGroups;
    std::vector<std::string> userGroups;
    std::optional<std::int32_t> permission;
};

Wish wishOf(const AdminOptions& options) {
    Wish wish{options.names, options.groups, std::nullopt};
    for (auto* words : {&wish.userGroups, &wish.modelGroups}) {
        if (words->size() < 2 || wish.permission) continue;
        wish.permission = permissionNamed(words->back());
        if (wish.permission) words->pop_back();
    }
    return wish;
}

class Setting {
public:
    explicit Setting(AdminSession& session) : _session(session) {}

    void run() {
        const bool isPlanned = _session.isOpen() && openAssignment() && plan();
        const bool carriesOut = isPlanned && !_session.options.dryRun && apply();
        if (_session.isJson())
            writeJson(carriesOut);
        else if (carriesOut || (isPlanned && _session.options.dryRun))
            writeText(carriesOut);
    }

private:
    bool openAssignment() {
        const Wish wish = wishOf(_session.options);
        if (!wish.permission) {
            _session.error("end with the permission: read, write or none", Exit::WrongUse);
            return false;
        }
        std::vector<QorIdentifier> modelGroups;
        std::vector<QorIdentifier> userGroups;
        const bool found = _session.find(wish.modelGroups, &AdminSession::modelGroup, modelGroups);
        if (!_session.find(wish.userGroups, &AdminSession::userGroup, userGroups) || !found) return false;
        if (!_session.options.dryRun && !_session.users().mayAdminister(false)) {
            _session.tellRefusal(QorBuildError::NotAllowed, "permissions");
            return false;
        }
        ISortedSet<long> rows;
        for (const QorIdentifier id : modelGroups) rows.add(id);
        ISortedSet<QorUserGroupID> columns;
        for (const QorIdentifier id : userGroups) columns.add(QorUserGroupID(id));
        _hasSubGroups = std::any_of(modelGroups.begin(), modelGroups.end(), [&](QorIdentifier id) {
            ISortedSet<long> below;
            return QorCoreModelGroupManager::GetAllSubGroupsOfModelGroup(id, below, false) == QorErrorCode::Ok &&
                   !below.isEmpty();
        });
        return ok(_assignment.open(rows, columns)) &&
               ok(_assignment.set(rows, columns, static_cast<QorPermissionState>(*wish.permission)));
    }

    bool plan() {
        const std::string& given = _session.options.subGroups;
        if (given.empty() && _hasSubGroups) {
            _session.error(
                "there are groups below: --sub-groups adapted gives them these permissions, --sub-groups all every "
                "permission of the group above them",
                Exit::WrongUse);
            return false;
        }
        if (!ok(_assignment.plan(given == "all" ? QorSubGroupMode::All : QorSubGroupMode::AdaptedOnly,
                                 [this](const SV::String& text) { return answer(text.str()); })))
            return false;
        if (!ok(_impact.read(_assignment.changes()))) return false;
        if (!_isUnanswered) return true;
        _session.error("nothing was changed: higher permissions below would be lowered; --yes says yes to that",
                       Exit::WrongUse);
        return false;
    }

    /// A dry run shows what yes would come to. Where nobody can be asked, nothing is lowered without a word.
    bool answer(const std::string& question) {
        if (_session.options.yes || _session.options.dryRun) return true;
        if (_session.isJson() || ::isatty(STDIN_FILENO) == 0) {
            _session.hint(printable(question));
            _isUnanswered = true;
            return false;
        }
        _session.console.err(printable(question) + " [y/N]\n");
        std::string line;
        return std::getline(std::cin, line) && (line == "y" || line == "Y" || line == "yes");
    }

    bool apply() {
        if (_assignment.changes().empty()) return true;
        if (!_session.startLog()) return false;
        const QorErrorCode code = _assignment.apply();
        if (code == QorRepositoryCode::NotStored) _session.tellNotStored();
        return code == QorErrorCode::Ok || (code != QorRepositoryCode::NotStored && ok(code));
    }

    bool ok(QorErrorCode code) {
        if (code == QorErrorCode::Ok) return true;
        _session.error(fmt::format("the permissions could not be set (code {})", static_cast<int>(code)),
                       Exit::Internal);
        return false;
    }

    [[nodiscard]] std::string quotedWay(long modelGroup) const { return quoted(_session.wayTo(modelGroup)); }
    [[nodiscard]] std::string userName(QorUserID user) const { return _session.nameOf(user.value()); }

    void writeText(bool carriedOut) {
        for (const QorPermissionQuestion& question : _assignment.questions())
            _session.console.out(fmt::format("{} {}\n", printable(question.text.view()),
                                             _session.options.dryRun && !_session.options.yes ? "(would be asked)"
                                             : question.goOn                                  ? "yes"
                                                                                              : "no"));
        for (const QorPermissionChange& change : _assignment.changes())
            _session.console.out(fmt::format("{} on {}: {} -> {}\n", quoted(change.userGroupName.view()),
                                             quotedWay(change.modelGroup), permissionWord(change.before),
                                             permissionWord(change.after)));
        std::set<long> users;
        for (const QorUserRightChange& change : _impact.changes()) {
            users.insert(change.user.value());
            _session.console.out(fmt::format("    user {} on {}: {} -> {}\n", quoted(userName(change.user)),
                                             quotedWay(change.modelGroup), permissionWord(change.before),
                                             permissionWord(change.after)));
        }
        _session.console.out(fmt::format("{} {}, {} affected\n", counted(_assignment.changes().size(), "permission"),
                                         carriedOut ? "changed" : "would change", counted(users.size(), "user")));
    }

    void writeJson(bool carriedOut) {
        JsonWriter& json = _session.beginJson();
        json.field("carried_out", carriedOut).key("changes").beginList();
        for (const QorPermissionChange& change : _assignment.changes())
            json.beginObject(kLine)
                .field("user_group", change.userGroupName.view())
                .field("model_group", std::string_view(_session.wayTo(change.modelGroup)))
                .field("before", permissionWord(change.before))
                .field("after", permissionWord(change.after))
                .endObject();
        json.endList().key("questions").beginList();
        for (const QorPermissionQuestion& question : _assignment.questions())
            json.beginObject(kLine).field("text", question.text.view()).field("yes", question.goOn).endObject();
        json.endList().key("users").beginList();
        for (const QorUserRightChange& change : _impact.changes())
            json.beginObject(kLine)
                .field("user", std::string_view(userName(change.user)))
                .field("model_group", std::string_view(_session.wayTo(change.modelGroup)))
                .field("before", permissionWord(change.before))
                .field("after", permissionWord(change.after))
                .endObject();
        json.endList();
    }

    AdminSession& _session;
    QorPermissionAssignment _assignment;
    QorRightImpact _impact;
    bool _hasSubGroups = false;
    bool _isUnanswered = false;
};

}  // namespace

void setPermissions(AdminSession& session) { Setting(session).run(); }

}  // namespace qor::cli
