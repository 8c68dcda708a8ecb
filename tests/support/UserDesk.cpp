// SPDX-License-Identifier: Apache-2.0
#include "support/UserDesk.h"

#include <optional>
#include <set>

namespace {

struct User {
    std::string first;
    std::string second;
    QorUserLogonNameType kind = QorUserLogonNameType::Plain;
    long manager = 0;
    long library = UserDesk::kLibrary;
    bool isAdministrator = false;
    bool isSubAdministrator = false;
    std::map<long, std::string> profile;
    std::set<long> groups;
    std::set<long> systemGroups;
};

struct UserGroup {
    std::string name;
    std::set<long> containedIn;
};

struct ModelGroup {
    std::string name;
    long library = 0;
    std::set<long> below;
};

struct RawEntry {
    long modelGroup;
    const char* name;
    long library;
    std::int32_t permission;
};

}  // namespace

struct UserDesk::Windows final : QorWindows {
    bool query(SV::Window*, const SV::String& text) override {
        questions.push_back(text.str());
        if (answers.empty()) return false;
        const bool answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    }
    void internalError(const char* source, long, const char* text) override {
        internalErrors.push_back(std::string(source) + ": " + text);
    }

    std::vector<bool> answers;
    std::vector<std::string> questions;
    std::vector<std::string> internalErrors;
};

struct UserDesk::Users final : QorUserService {
    explicit Users(CallRecord& calls) : record(calls) {}

    QorErrorCode currentUser(QorUserID& user) override {
        const auto code = record.note("currentUser");
        user = code == QorErrorCode::Ok ? current : QorUserID();
        return code;
    }

    QorErrorCode fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                 QorUserLogonNameType& kind, bool) override {
        first.Clear();
        second.Clear();
        const auto code = refusal("fullDisplayName", users.contains(user.value()));
        if (code != QorErrorCode::Ok) return code;
        const User& it = users.at(user.value());
        first = SV::String(it.first);
        second = SV::String(it.second);
        kind = it.kind;
        return code;
    }

    QorErrorCode userGroupName(const QorUserGroupID& group, SV::String& name) override {
        name.Clear();
        const auto code = refusal("userGroupName", groups.contains(group.value()));
        if (code == QorErrorCode::Ok) name = SV::String(groups.at(group.value()).name);
        return code;
    }

    bool isAdministrator(const QorUserID& user) override {
        return refusal("isAdministrator", users.contains(user.value())) == QorErrorCode::Ok &&
               users.at(user.value()).isAdministrator;
    }
    bool isSubAdministrator(const QorUserID& user) override {
        return refusal("isSubAdministrator", users.contains(user.value())) == QorErrorCode::Ok &&
               users.at(user.value()).isSubAdministrator;
    }

    QorErrorCode userProfile(const QorUserID& user, long entry, SV::String& value) override {
        value.Clear();
        const auto code = refusal("userProfile", users.contains(user.value()));
        if (code == QorErrorCode::Ok) value = SV::String(users.at(user.value()).profile[entry]);
        return code;
    }

    QorErrorCode push(long manager) override {
        const auto code = record.note("push " + std::to_string(manager));
        if (code == QorErrorCode::Ok) selected.push_back(manager);
        return code;
    }

    QorErrorCode pop() override {
        const auto code = record.note("pop");
        if (selected.empty()) return QorErrorCode::OutOfRange;
        selected.pop_back();  // also when it says that it failed
        return code;
    }

    QorErrorCode allUserIDs(ISortedSet<QorUserID>& found) override {
        found.removeAll();
        const long manager = selected.empty() ? 0 : selected.back();
        const auto code = record.note("allUserIDs " + std::to_string(manager));
        if (code == QorErrorCode::Ok)
            for (const auto& [id, user] : users)
                if (user.manager == manager) found.add(QorUserID(id));
        return code;
    }

    QorErrorCode allowedApplicationLibrary(const QorUserID& user, long& library) override {
        library = -1;
        const auto code = refusal("allowedApplicationLibrary", users.contains(user.value()));
        if (code == QorErrorCode::Ok) library = users.at(user.value()).library;
        return code;
    }

    QorErrorCode modelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                  QorAccModelgroupContainer& entries) override {
        entries.removeAll();
        const auto code = refusal("modelGroupsAccessibleByUserGroup", groups.contains(group.value()));
        if (code != QorErrorCode::Ok) return code;
        const auto add = [&](long modelGroup, const char* name, long library, std::int32_t permission) {
            entries.add(std::make_unique<QorAccModelgroup>(modelGroup, name, library, permission));
        };
        for (const auto& [modelGroup, permission] : permissions[group.value()]) {
            const ModelGroup& it = modelGroups.at(modelGroup);
            add(modelGroup, it.name.c_str(), it.library, permission);
        }
        for (const RawEntry& raw : rawEntries[group.value()])
            add(raw.modelGroup, raw.name, raw.library, raw.permission);
        return code;
    }

    QorErrorCode userGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& found) override {
        return groupsOf("userGroupsOfUser", user, &User::groups, found);
    }
    QorErrorCode systemUserGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& found) override {
        return groupsOf("systemUserGroupsOfUser", user, &User::systemGroups, found);
    }

    QorErrorCode singleSignOnMode(long& found) override {
        const auto code = record.note("singleSignOnMode");
        found = code == QorErrorCode::Ok ? mode : -1;
        return code;
    }

    QorErrorCode refusal(const char* operation, bool exists) {
        const auto code = record.note(operation);
        return code != QorErrorCode::Ok || exists ? code : QorErrorCode::NotFound;
    }

    QorErrorCode groupsOf(const char* operation, const QorUserID& user, std::set<long> User::*own,
                          ISortedSet<QorUserGroupID>& found) {
        found.removeAll();
        const auto code = refusal(operation, users.contains(user.value()));
        if (code != QorErrorCode::Ok) return code;
        const auto& direct = users.at(user.value()).*own;
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

    CallRecord& record;
    QorUserID current;
    long mode = 0;
    std::vector<long> selected;
    std::map<long, User> users;
    std::map<long, UserGroup> groups;
    std::map<long, ModelGroup> modelGroups;
    std::map<long, std::map<long, std::int32_t>> permissions;  // by user group, then model group
    std::map<long, std::vector<RawEntry>> rawEntries;
};

struct UserDesk::ModelGroups final : QorModelGroupService {
    explicit ModelGroups(Users& holder) : desk(holder) {}

    QorErrorCode subGroups(long modelGroup, ISortedSet<long>& found, bool recursive) override {
        found.removeAll();
        const auto code = desk.refusal("subGroups", desk.modelGroups.contains(modelGroup));
        if (code != QorErrorCode::Ok) return code;
        std::vector<long> pending{modelGroup};
        while (!pending.empty()) {
            const auto& below = desk.modelGroups.at(pending.back()).below;
            pending.pop_back();
            for (const long group : below)
                if (found.add(group) && recursive) pending.push_back(group);
        }
        return code;
    }

    QorErrorCode setUserGroupPermission(long modelGroup, const QorUserGroupID& group,
                                        std::int32_t permission) override {
        const bool exists = desk.modelGroups.contains(modelGroup) && desk.groups.contains(group.value());
        const auto code = desk.refusal("setUserGroupPermission", exists);
        if (code != QorErrorCode::Ok) return code;
        if (permission == QorModelGroupPermission::None)
            desk.permissions[group.value()].erase(modelGroup);
        else
            desk.permissions[group.value()][modelGroup] = permission;
        return code;
    }

    Users& desk;
};

struct UserDesk::Units final : QorCoreUnitsOfWork {
    explicit Units(Users& holder) : desk(holder) {}

    QorErrorCode begin() override {
        const auto code = desk.record.note("begin");
        if (code == QorErrorCode::Ok) before = desk.permissions;
        return code;
    }
    QorErrorCode commit() override {
        const auto code = desk.record.note("commit");
        if (code != QorErrorCode::Ok) desk.permissions = *before;
        before.reset();
        return code;
    }
    void rollBack() noexcept override {
        desk.permissions = *before;
        before.reset();
    }

    Users& desk;
    std::optional<std::map<long, std::map<long, std::int32_t>>> before;
};

struct UserDesk::Repository final : QorCoreModelingManager {
    explicit Repository(Users& users) : units(users) {}
    QorCoreUnitsOfWork* unitsOfWork() override { return offersUnits ? &units : nullptr; }
    QorErrorCode getAppLibraryName(long library, char*& name) override {
        const std::string text = "Library " + std::to_string(library);
        name = new char[text.size() + 1];
        text.copy(name, text.size());
        name[text.size()] = '\0';
        return QorErrorCode::Ok;
    }
    using QorCoreModelingManager::getAppLibraryName;

    Units units;
    bool offersUnits = true;
};

struct UserDesk::State {
    explicit State(CallRecord& record) : users(record) {}

    [[nodiscard]] QorHost allServices() {
        QorHost all = platform.host();
        all.repository = &repository;
        all.users = &users;
        all.modelGroups = &modelGroups;
        all.windows = &windows;
        return all;
    }

    QorEmbeddedPlatform platform{{.language = "en", .console = false, .user = "ada"}};
    Users users;
    ModelGroups modelGroups{users};
    Repository repository{users};
    Windows windows;
    QorHost host = allServices();
    QorHostInstallation installation{host};
};

UserDesk::UserDesk() : _state(std::make_unique<State>(record)) {}
UserDesk::~UserDesk() = default;

QorUserID UserDesk::user(std::string_view name, long userManager) {
    auto& users = _state->users.users;
    const long id = static_cast<long>(users.size()) + 1;
    users[id].first = name;
    users[id].manager = userManager;
    return QorUserID(id);
}

void UserDesk::allow(QorUserID user, long library) { _state->users.users.at(user.value()).library = library; }
void UserDesk::current(QorUserID user) { _state->users.current = user; }

void UserDesk::administrator(QorUserID user, bool isSubAdministrator) {
    User& it = _state->users.users.at(user.value());
    it.isAdministrator = !isSubAdministrator;
    it.isSubAdministrator = isSubAdministrator;
}

void UserDesk::rename(QorUserID user, std::string_view first, std::string_view second, QorUserLogonNameType kind) {
    User& it = _state->users.users.at(user.value());
    it.first = first;
    it.second = second;
    it.kind = kind;
}

void UserDesk::profile(QorUserID user, long entry, std::string_view value) {
    _state->users.users.at(user.value()).profile[entry] = value;
}

void UserDesk::signOnMode(long mode) { _state->users.mode = mode; }

QorUserGroupID UserDesk::group(std::string_view name) {
    auto& groups = _state->users.groups;
    const long id = 1001 + static_cast<long>(groups.size());
    groups[id].name = name;
    return QorUserGroupID(id);
}

void UserDesk::join(QorUserID user, QorUserGroupID group) {
    _state->users.users.at(user.value()).groups.insert(group.value());
}

void UserDesk::joinSystem(QorUserID user, QorUserGroupID group) {
    _state->users.users.at(user.value()).systemGroups.insert(group.value());
}

void UserDesk::nest(QorUserGroupID outer, QorUserGroupID inner) {
    _state->users.groups.at(inner.value()).containedIn.insert(outer.value());
}

long UserDesk::modelGroup(std::string_view name, long parent, long library) {
    auto& groups = _state->users.modelGroups;
    const long id = 2001 + static_cast<long>(groups.size());
    groups[id].name = name;
    groups[id].library = library;
    if (parent != 0) nestModelGroup(parent, id);
    return id;
}

void UserDesk::nestModelGroup(long outer, long inner) { _state->users.modelGroups.at(outer).below.insert(inner); }

void UserDesk::permit(QorUserGroupID group, long modelGroup, std::int32_t permission) {
    _state->users.permissions[group.value()][modelGroup] = permission;
}

std::int32_t UserDesk::permission(QorUserGroupID group, long modelGroup) const {
    const auto& own = _state->users.permissions[group.value()];
    const auto place = own.find(modelGroup);
    return place == own.end() ? QorModelGroupPermission::None : place->second;
}

void UserDesk::rawEntry(QorUserGroupID group, long modelGroup, const char* name, long library,
                        std::int32_t permission) {
    _state->users.rawEntries[group.value()].push_back({modelGroup, name, library, permission});
}

std::size_t UserDesk::selected() const { return _state->users.selected.size(); }
void UserDesk::offerUnitsOfWork(bool offered) { _state->repository.offersUnits = offered; }
bool UserDesk::isUnitOpen() const { return _state->repository.units.before.has_value(); }
void UserDesk::answer(std::vector<bool> answers) { _state->windows.answers = std::move(answers); }
const std::vector<std::string>& UserDesk::questions() const { return _state->windows.questions; }
const std::vector<std::string>& UserDesk::internalErrors() const { return _state->windows.internalErrors; }
const QorHost& UserDesk::host() const { return _state->host; }
