// SPDX-License-Identifier: Apache-2.0
#include "support/UserDesk.h"

using enum QorErrorCode;

UserDesk::UserDesk() {
    host = _platform.host();
    host.repository = &_repository;
    host.users = this;
    host.modelGroups = this;
    host.windows = this;
    _installation.emplace(host);
}

QorUserID UserDesk::user(std::string_view name, long userManager) {
    const long id = static_cast<long>(users.size()) + 1;
    users[id].first = name;
    users[id].managers = {userManager};
    return QorUserID(id);
}

QorUserGroupID UserDesk::group(std::string_view name) {
    const long id = 1001 + static_cast<long>(groups.size());
    groups[id].name = name;
    return QorUserGroupID(id);
}

long UserDesk::modelGroup(std::string_view name, long parent, long library) {
    const long id = 2001 + static_cast<long>(modelGroups.size());
    modelGroups[id] = {std::string(name), library, {}};
    if (parent != 0) modelGroups.at(parent).below.insert(id);
    return id;
}

void UserDesk::permit(QorUserGroupID group, long modelGroup, std::int32_t permission) {
    permissions[{group.value(), modelGroup}] = permission;
}

std::int32_t UserDesk::permission(QorUserGroupID group, long modelGroup) const {
    const auto place = permissions.find({group.value(), modelGroup});
    return place == permissions.end() ? QorModelGroupPermission::None : place->second;
}

void UserDesk::populate(std::mt19937& random, long manager, std::vector<QorUserID>& some,
                        std::vector<QorUserGroupID>& all) {
    for (int i = 0; i < 30; ++i) {
        some.push_back(user("u" + std::to_string(i), random() % 3 == 0 ? manager : QorUserManagerNumber::Ordinary));
        all.push_back(group("g" + std::to_string(i)));
    }
    for (const auto& each : some) {
        of(each).library = kLibrary + random() % 2;
        for (const auto& group : all)
            if (random() % 4 == 0) random() % 2 == 0 ? joinSystem(each, group) : join(each, group);
    }
}

QorErrorCode UserDesk::refusal(const char* operation, bool exists) {
    const auto code = record.note(operation);
    return code != Ok || exists ? code : NotFound;
}

// ---- Users ----

QorErrorCode UserDesk::currentUser(QorUserID& user) {
    const auto code = record.note("currentUser");
    user = code == Ok ? current : QorUserID();
    return code;
}

QorErrorCode UserDesk::fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                       QorUserLogonNameType& kind, bool) {
    const auto code = refusal("fullDisplayName", user);
    const User it = code == Ok ? of(user) : User();
    first = SV::String(it.first);
    second = SV::String(it.second);
    kind = it.kind;
    return code;
}

QorErrorCode UserDesk::userGroupName(const QorUserGroupID& group, SV::String& name) {
    const auto code = refusal("userGroupName", groups.contains(group.value()));
    name = SV::String(code == Ok ? groups.at(group.value()).name : "");
    return code;
}

bool UserDesk::isAdministrator(const QorUserID& user) {
    return refusal("isAdministrator", user) == Ok && of(user).isAdministrator;
}

bool UserDesk::isSubAdministrator(const QorUserID& user) {
    return refusal("isSubAdministrator", user) == Ok && of(user).isSubAdministrator;
}

QorErrorCode UserDesk::userProfile(const QorUserID& user, long entry, SV::String& value) {
    const auto code = refusal("userProfile", user);
    value = SV::String(code == Ok ? of(user).profile[entry] : "");
    return code;
}

QorErrorCode UserDesk::push(long manager) {
    const auto code = record.note("push " + std::to_string(manager));
    if (code == Ok) selected.push_back(manager);
    return code;
}

QorErrorCode UserDesk::pop() {
    const auto code = record.note("pop");
    if (selected.empty()) return OutOfRange;
    selected.pop_back();  // also when it says that it failed
    return code;
}

QorErrorCode UserDesk::allUserIDs(ISortedSet<QorUserID>& found) {
    found.removeAll();
    const long manager = selected.empty() ? 0 : selected.back();
    const auto code = record.note("allUserIDs " + std::to_string(manager));
    if (code == Ok)
        for (const auto& [id, user] : users)
            if (user.managers.contains(manager)) found.add(QorUserID(id));
    return code;
}

QorErrorCode UserDesk::allowedApplicationLibrary(const QorUserID& user, long& library) {
    const auto code = refusal("allowedApplicationLibrary", user);
    library = code == Ok ? of(user).library : -1;
    return code;
}

QorErrorCode UserDesk::modelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                        QorAccModelgroupContainer& entries) {
    entries.removeAll();
    const auto code = refusal("modelGroupsAccessibleByUserGroup", groups.contains(group.value()));
    if (code != Ok) return code;
    for (const auto& [pair, permission] : permissions) {
        if (pair.first != group.value()) continue;
        const ModelGroup& it = modelGroups.at(pair.second);
        entries.add(std::make_unique<QorAccModelgroup>(pair.second, it.name.c_str(), it.library, permission));
    }
    const auto [first, last] = rawEntries.equal_range(group.value());
    for (auto raw = first; raw != last; ++raw) {
        const RawEntry& it = raw->second;
        entries.add(std::make_unique<QorAccModelgroup>(it.modelGroup, it.name, it.library, it.permission));
    }
    return code;
}

QorErrorCode UserDesk::userGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& found) {
    return groupsOf(refusal("userGroupsOfUser", user), user, &User::groups, found);
}

QorErrorCode UserDesk::systemUserGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& found) {
    return groupsOf(refusal("systemUserGroupsOfUser", user), user, &User::systemGroups, found);
}

QorErrorCode UserDesk::groupsOf(QorErrorCode code, const QorUserID& user, std::set<long> User::*own,
                                ISortedSet<QorUserGroupID>& found) {
    found.removeAll();
    if (code != Ok) return code;
    const auto& direct = of(user).*own;
    std::vector<long> pending(direct.begin(), direct.end());
    while (!pending.empty()) {
        const long group = pending.back();
        pending.pop_back();
        if (!found.add(QorUserGroupID(group))) continue;
        const auto& outer = groups.at(group).containedIn;
        pending.insert(pending.end(), outer.begin(), outer.end());
    }
    return code;
}

QorErrorCode UserDesk::singleSignOnMode(long& found) {
    const auto code = record.note("singleSignOnMode");
    found = code == Ok ? mode : -1;
    return code;
}

// ---- Model groups, units of work, windows, libraries ----

QorErrorCode UserDesk::subGroups(long modelGroup, ISortedSet<long>& found, bool recursive) {
    found.removeAll();
    const auto code = refusal("subGroups", modelGroups.contains(modelGroup));
    if (code != Ok) return code;
    std::vector<long> pending{modelGroup};
    while (!pending.empty()) {
        const auto& below = modelGroups.at(pending.back()).below;
        pending.pop_back();
        for (const long group : below)
            if (found.add(group) && recursive) pending.push_back(group);
    }
    return code;
}

QorErrorCode UserDesk::modelGroupInfo(long modelGroup, SV::String& name, long& library) {
    const auto code = refusal("modelGroupInfo", modelGroups.contains(modelGroup));
    name = SV::String(code == Ok ? modelGroups.at(modelGroup).name : "");
    library = code == Ok ? modelGroups.at(modelGroup).library : -1;
    return code;
}

QorErrorCode UserDesk::setUserGroupPermission(long modelGroup, const QorUserGroupID& group, std::int32_t permission) {
    const auto code =
        refusal("setUserGroupPermission", modelGroups.contains(modelGroup) && groups.contains(group.value()));
    if (code != Ok) return code;
    if (permission == QorModelGroupPermission::None)
        permissions.erase({group.value(), modelGroup});
    else
        permit(group, modelGroup, permission);
    return code;
}

QorErrorCode UserDesk::begin() {
    const auto code = record.note("begin");
    if (code == Ok) unit = permissions;
    return code;
}

QorErrorCode UserDesk::commit() {
    const auto code = record.note("commit");
    if (code != Ok) permissions = *unit;
    unit.reset();
    return code;
}

void UserDesk::rollBack() noexcept {
    permissions = *unit;
    unit.reset();
}

bool UserDesk::query(SV::Window*, const SV::String& text) {
    questions.push_back(text.str());
    if (answers.empty()) return false;
    const bool answer = answers.front();
    answers.erase(answers.begin());
    return answer;
}

void UserDesk::internalError(const char* source, long, const char* text) {
    internalErrors.push_back(std::string(source) + ": " + text);
}

QorErrorCode UserDesk::Repository::getAppLibraryName(long library, char*& name) {
    const std::string text = "Library " + std::to_string(library);
    name = new char[text.size() + 1]{};
    text.copy(name, text.size());
    return Ok;
}
