// SPDX-License-Identifier: Apache-2.0
#include "embedded/Users.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "embedded/Answers.h"

namespace qor::embedded {

namespace {

// The repository hands its identifiers out from below, so the two never meet.
constexpr long kFirstGuest = std::numeric_limits<QorIdentifier>::max();

// The operating system's user; by number when it has no name for it.
std::string systemUser() {
    const passwd* entry = ::getpwuid(::getuid());
    if (entry != nullptr && entry->pw_name != nullptr && *entry->pw_name != '\0') return entry->pw_name;
    return "user" + std::to_string(::getuid());
}

}  // namespace

// ---- Who is who ----

Users::Users(const Repository& repository, std::string_view currentUser) : _repository(repository) {
    setCurrentUser(currentUser.empty() ? std::string_view(systemUser()) : currentUser);
}

Users::~Users() = default;

void Users::setCurrentUser(std::string_view logonName) {
    std::string name(logonName);
    // A guest in any case: the repository's user may go while the name stays.
    if (std::find(_guests.begin(), _guests.end(), name) == _guests.end()) _guests.push_back(name);
    _currentName = std::move(name);
}

QorUserID Users::identify(std::string_view logonName) {
    if (const QorIdentifier id = directory().findUser(logonName); id != QorNoIdentifier) return QorUserID(id);
    auto place = std::find(_guests.begin(), _guests.end(), logonName);
    if (place == _guests.end()) place = _guests.insert(_guests.end(), std::string(logonName));
    return QorUserID(kFirstGuest - (place - _guests.begin()));
}

QorUserID Users::current() const {
    if (_announcing != nullptr) return _announcing->_actor;
    if (const QorIdentifier id = directory().findUser(_currentName); id != QorNoIdentifier) return QorUserID(id);
    return QorUserID(kFirstGuest - (std::find(_guests.begin(), _guests.end(), _currentName) - _guests.begin()));
}

const std::string* Users::guestName(const QorUserID& user) const {
    const long number = kFirstGuest - user.value();
    return number >= 0 && number < static_cast<long>(_guests.size()) ? &_guests[static_cast<std::size_t>(number)]
                                                                     : nullptr;
}

const UserRow* Users::row(const QorUserID& user) const { return directory().user(narrow(user.value())); }

Users::Announcing::Announcing(Users& users, QorIdentifier leaving)
    : _users(users),
      _outer(users._announcing),
      _actor(users.current()),
      _isAdministrator(users.isAdministrator(_actor)),
      _isSubAdministrator(users.isSubAdministrator(_actor)) {
    if (const UserRow* const row = users.directory().user(leaving)) {
        _leaving = QorUserID(leaving);
        _leavingFields = row->fields;
    }
    if (const UserGroupRow* const row = users.directory().group(leaving)) {
        _leavingGroup = QorUserGroupID(leaving);
        _leavingGroupName = row->name;
    }
    users._announcing = this;
}

Users::Announcing::~Announcing() { _users._announcing = _outer; }

// ---- Users by themselves ----

QorErrorCode Users::currentUser(QorUserID& user) {
    user = current();
    return QorErrorCode::Ok;
}

QorErrorCode Users::fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                    QorUserLogonNameType& kind, bool shortForm) {
    first.Clear();
    second.Clear();
    kind = QorUserLogonNameType::Plain;
    return answered([&] {
        const UserRow* const its = row(user);
        const UserFields* fields = its != nullptr ? &its->fields : nullptr;
        for (const Announcing* at = _announcing; at != nullptr && fields == nullptr; at = at->_outer)
            if (!at->_leaving.isNone() && at->_leaving == user) fields = &at->_leavingFields;
        if (fields == nullptr) {
            const std::string* const name = guestName(user);
            if (name == nullptr) return QorErrorCode::NotFound;
            first = SV::String(*name);
            return QorErrorCode::Ok;
        }
        SV::String shown(fields->shownName());
        if (!shortForm && fields->kind == QorUserLogonNameType::TwoPart) {
            second = SV::String(fields->secondName);
            kind = fields->kind;
        }
        first = std::move(shown);
        return QorErrorCode::Ok;
    });
}

bool Users::isAdministrator(const QorUserID& user) {
    if (_announcing != nullptr && user == _announcing->_actor) return _announcing->_isAdministrator;
    if (const UserRow* const its = row(user)) return its->fields.isAdministrator;
    return guestName(user) != nullptr && !directory().hasUsers();
}

bool Users::isSubAdministrator(const QorUserID& user) {
    if (_announcing != nullptr && user == _announcing->_actor) return _announcing->_isSubAdministrator;
    const UserRow* const its = row(user);
    return its != nullptr && its->fields.isSubAdministrator;
}

QorErrorCode Users::userProfile(const QorUserID& user, long entry, SV::String& value) {
    value.Clear();
    return answered([&] {
        const UserRow* const its = row(user);
        const std::string* const text = its != nullptr ? directory().profileEntry(*its, narrow(entry)) : nullptr;
        if (text == nullptr) return QorErrorCode::NotFound;
        value = SV::String(*text);
        return QorErrorCode::Ok;
    });
}

QorErrorCode Users::allowedApplicationLibrary(const QorUserID& user, long& library) {
    library = QorNoIdentifier;
    const UserRow* const its = row(user);
    if (its == nullptr) return guestName(user) != nullptr ? QorErrorCode::Ok : QorErrorCode::NotFound;
    library = its->fields.library;
    return QorErrorCode::Ok;
}

// ---- User managers ----

QorErrorCode Users::push(long userManager) {
    if (managerBit(userManager) == 0) return QorErrorCode::UserManagerNotSelected;
    return answered([&] {
        _selected.push_back(userManager);
        return QorErrorCode::Ok;
    });
}

QorErrorCode Users::pop() {
    if (_selected.empty()) return QorErrorCode::OutOfRange;
    _selected.pop_back();
    return QorErrorCode::Ok;
}

QorErrorCode Users::allUserIDs(ISortedSet<QorUserID>& users) {
    users.removeAll();
    return answered([&] {
        const std::uint8_t wanted = _selected.empty() ? kOrdinaryBit : managerBit(_selected.back());
        ISortedSet<QorUserID> found;
        directory().forEachUser([&](const UserRow& its) {
            if ((its.fields.managers & wanted) != 0) found.add(QorUserID(its.id));
        });
        if (wanted == kOrdinaryBit && !directory().hasUsers())
            for (std::size_t at = _guests.size(); at-- > 0;) found.add(QorUserID(kFirstGuest - static_cast<long>(at)));
        users = std::move(found);
        return QorErrorCode::Ok;
    });
}

QorErrorCode Users::singleSignOnMode(long& mode) {
    mode = directory().signOnMode();
    return QorErrorCode::Ok;
}

// ---- User groups ----

QorErrorCode Users::userGroupName(const QorUserGroupID& group, SV::String& name) {
    name.Clear();
    return answered([&] {
        const UserGroupRow* const its = directory().group(narrow(group.value()));
        const std::string* found = its != nullptr ? &its->name : nullptr;
        for (const Announcing* at = _announcing; at != nullptr && found == nullptr; at = at->_outer)
            if (!group.isNone() && at->_leavingGroup == group) found = &at->_leavingGroupName;
        if (found == nullptr) return QorErrorCode::NotFound;
        name = SV::String(*found);
        return QorErrorCode::Ok;
    });
}

QorErrorCode Users::allUserGroups(ISortedSet<QorUserGroupID>& groups) {
    groups.removeAll();
    return answered([&] {
        ISortedSet<QorUserGroupID> found;
        directory().forEachGroup([&](const UserGroupRow& its) { found.add(QorUserGroupID(its.id)); });
        groups = std::move(found);
        return QorErrorCode::Ok;
    });
}

QorErrorCode Users::groupsOf(const QorUserID& user, bool system, ISortedSet<QorUserGroupID>& groups) {
    groups.removeAll();
    return answered([&] {
        const UserRow* const its = row(user);
        if (its == nullptr) return guestName(user) != nullptr ? QorErrorCode::Ok : QorErrorCode::NotFound;
        directory().groupsOf(*its, system, _groups);
        groups.reserve(_groups.size());
        for (const QorIdentifier id : _groups) groups.add(QorUserGroupID(id));
        return QorErrorCode::Ok;
    });
}

QorErrorCode Users::userGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) {
    return groupsOf(user, false, groups);
}

QorErrorCode Users::systemUserGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) {
    return groupsOf(user, true, groups);
}

QorErrorCode Users::modelGroupsAccessibleByUserGroup(const QorUserGroupID& group, QorAccModelgroupContainer& entries) {
    entries.removeAll();
    const QorErrorCode code = answered([&] {
        const UserGroupRow* const its = directory().group(narrow(group.value()));
        if (its == nullptr) return QorErrorCode::NotFound;
        for (const PermissionEntry& entry : its->permissions) {
            const GroupRow& modelGroup = *_repository.groups().group(entry.modelGroup);
            const SV::String name(_repository.text(modelGroup.name));
            entries.add(std::make_unique<QorAccModelgroup>(entry.modelGroup, name.c_str(), modelGroup.library,
                                                           entry.permission));
        }
        return QorErrorCode::Ok;
    });
    if (code != QorErrorCode::Ok) entries.removeAll();
    return code;
}

}  // namespace qor::embedded
