// SPDX-License-Identifier: Apache-2.0
#include "embedded/UserDirectory.h"

#include <algorithm>
#include <utility>

namespace qor::embedded {

namespace {

constexpr NameScope kUserNames{UserDirectory::kScope, nameTag::kUser};
constexpr NameScope kGroupNames{UserDirectory::kScope, nameTag::kUserGroup};

bool holds(const std::vector<QorIdentifier>& sorted, QorIdentifier id) {
    return std::binary_search(sorted.begin(), sorted.end(), id);
}

template <class Entries, class Key>
auto placeOf(Entries& sorted, QorIdentifier wanted, Key key) {
    return std::lower_bound(sorted.begin(), sorted.end(), wanted,
                            [&](const auto& entry, QorIdentifier id) { return entry.*key < id; });
}

bool isPermission(std::int32_t permission) {
    return permission == QorModelGroupPermission::None || permission == QorModelGroupPermission::Read ||
           permission == QorModelGroupPermission::Write;
}

}  // namespace

// ---- Questions ----

const UserRow* UserDirectory::user(QorIdentifier id) const {
    return rowOf(_store.things, _users, id, QorThingKind::User);
}

const UserGroupRow* UserDirectory::group(QorIdentifier id) const {
    return rowOf(_store.things, _groups, id, QorThingKind::UserGroup);
}

QorIdentifier UserDirectory::findUser(std::string_view logonName) const {
    return _store.names.find(NameIndex::hashOf(kUserNames, logonName), [&](QorIdentifier id) {
        const UserRow* const row = user(id);
        return row != nullptr && row->fields.logonName == logonName;
    });
}

QorIdentifier UserDirectory::findGroup(std::string_view name) const {
    return _store.names.find(NameIndex::hashOf(kGroupNames, name), [&](QorIdentifier id) {
        const UserGroupRow* const row = group(id);
        return row != nullptr && row->name == name;
    });
}

bool UserDirectory::hasUsers() const {
    return std::any_of(_users.begin(), _users.end(), [](const UserRow& row) { return row.id != QorNoIdentifier; });
}

bool UserDirectory::isEmpty() const {
    return !hasUsers() && std::all_of(_groups.begin(), _groups.end(),
                                      [](const UserGroupRow& row) { return row.id == QorNoIdentifier; });
}

bool UserDirectory::hasOtherUser(QorIdentifier id, bool administrator) const {
    return std::any_of(_users.begin(), _users.end(), [&](const UserRow& row) {
        return row.id != QorNoIdentifier && row.id != id && (!administrator || row.fields.isAdministrator);
    });
}

void UserDirectory::groupsOf(const UserRow& user, bool system, std::vector<QorIdentifier>& found) const {
    found.clear();
    bool liesInOthers = false;
    for (const QorIdentifier id : user.groups) {
        const UserGroupRow& row = *group(id);
        if (row.isSystem != system) continue;
        found.push_back(id);
        liesInOthers = liesInOthers || !row.groups.empty();
    }
    if (liesInOthers) spread(found);
}

// Adds all groups that the groups lie in, at any depth.
void UserDirectory::spread(std::vector<QorIdentifier>& groups) const {
    if (_seen.size() < _groups.size()) _seen.resize(_groups.size());
    const auto see = [&](QorIdentifier id) -> std::vector<bool>::reference {
        return _seen[_store.things.at(id).index];
    };
    for (const QorIdentifier id : groups) see(id) = true;
    try {
        for (std::size_t at = 0; at < groups.size(); ++at)
            for (const QorIdentifier above : group(groups[at])->groups) {
                if (see(above)) continue;
                groups.push_back(above);
                see(above) = true;
            }
    } catch (...) {
        _seen.clear();
        throw;
    }
    for (const QorIdentifier id : groups) see(id) = false;
    std::sort(groups.begin(), groups.end());
}

bool UserDirectory::isMember(QorIdentifier member, QorIdentifier groupId) const {
    const auto* const groups = groupsOfMember(member);
    return groups != nullptr && holds(*groups, groupId);
}

const std::string* UserDirectory::profileEntry(const UserRow& user, QorIdentifier entry) const {
    const auto place = placeOf(user.profile, entry, &ProfileEntry::number);
    return place != user.profile.end() && place->number == entry ? &place->text : nullptr;
}

std::int32_t UserDirectory::permission(QorIdentifier groupId, QorIdentifier modelGroup) const {
    const UserGroupRow* const row = group(groupId);
    if (row == nullptr) return QorModelGroupPermission::None;
    const auto place = placeOf(row->permissions, modelGroup, &PermissionEntry::modelGroup);
    return place != row->permissions.end() && place->modelGroup == modelGroup ? place->permission
                                                                              : QorModelGroupPermission::None;
}

std::vector<QorIdentifier> UserDirectory::membersOf(QorIdentifier groupId) const {
    std::vector<QorIdentifier> members;
    forEachUser([&](const UserRow& row) {
        if (holds(row.groups, groupId)) members.push_back(row.id);
    });
    forEachGroup([&](const UserGroupRow& row) {
        if (holds(row.groups, groupId)) members.push_back(row.id);
    });
    std::sort(members.begin(), members.end());
    return members;
}

// ---- Changes ----

void UserDirectory::index(QorIdentifier id) noexcept {
    const UserRow* const row = user(id);
    _store.names.add(row != nullptr ? NameIndex::hashOf(kUserNames, row->fields.logonName)
                                    : NameIndex::hashOf(kGroupNames, group(id)->name),
                     id);
}

void UserDirectory::unindex(QorIdentifier id) noexcept {
    const UserRow* const row = user(id);
    _store.names.remove(row != nullptr ? NameIndex::hashOf(kUserNames, row->fields.logonName)
                                       : NameIndex::hashOf(kGroupNames, group(id)->name),
                        id);
}

namespace {

QorBuildError checkFields(const UserFields& fields, const MetaModel& meta) {
    if (const QorBuildError error = checkName(fields.logonName); error != QorBuildError::None) return error;
    for (const std::string* name : {&fields.displayName, &fields.secondName})
        if (!name->empty() && checkName(*name) != QorBuildError::None) return QorBuildError::NameRefused;
    if (fields.library != QorNoIdentifier && meta.library(fields.library) == nullptr)
        return QorBuildError::UnknownIdentifier;
    const bool isTwoPart = fields.kind == QorUserLogonNameType::TwoPart;
    if (!isTwoPart && fields.kind != QorUserLogonNameType::Plain) return QorBuildError::ValueRefused;
    if (isTwoPart == fields.secondName.empty())
        return isTwoPart ? QorBuildError::EmptyName : QorBuildError::ValueRefused;
    return QorBuildError::None;
}

}  // namespace

template <class Row>
QorBuildResult UserDirectory::addRow(std::vector<Row>& rows, QorThingKind thing, Row row) {
    if (!_store.things.hasRoomFor(1, rows.size())) return refused(QorBuildError::NoIdentifiersLeft);
    makeRoomForOne(rows);
    _store.things.makeRoom(1);
    _store.names.makeRoom(1);
    _store.journal.makeRoom(1);

    const QorIdentifier id = row.id = _store.things.add(thing, rows.size());
    rows.push_back(std::move(row));
    index(id);
    _store.journal.note(step(StepKind::Added, thing, id));
    return {id};
}

// It stands there still, without its identifier, for the way back.
template <class Row>
void UserDirectory::removeRow(std::vector<Row>& rows, QorThingKind thing, QorIdentifier id) {
    Step gone = step(StepKind::Removed, thing, id);
    gone.row = _store.things.at(id).index;
    _store.journal.note(gone);
    unindex(id);
    rows[gone.row].id = QorNoIdentifier;
    _store.things.remove(id);
    if (!_store.journal.isOn()) sweep();
}

QorBuildResult UserDirectory::addUser(UserFields fields) {
    if (const QorBuildError error = checkFields(fields, _meta); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findUser(fields.logonName); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    UserRow row;
    row.fields = std::move(fields);
    return addRow(_users, QorThingKind::User, std::move(row));
}

QorBuildResult UserDirectory::checkChange(QorIdentifier id, const UserFields& fields) const {
    if (user(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkFields(fields, _meta); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findUser(fields.logonName); holder != QorNoIdentifier && holder != id)
        return refused(QorBuildError::DuplicateName, holder);
    return {id};
}

QorBuildResult UserDirectory::changeUser(QorIdentifier id, UserFields fields) {
    if (const QorBuildResult result = checkChange(id, fields); !result.ok()) return result;
    if (_store.journal.isOn()) makeRoomForOne(_before);
    _store.names.makeRoom(1);
    _store.journal.note(step(StepKind::UserChanged, QorThingKind::User, id));
    unindex(id);
    std::swap(editUser(id).fields, fields);
    index(id);
    keepBefore({std::move(fields), {}});
    return {id};
}

QorBuildResult UserDirectory::removeUser(QorIdentifier id) {
    if (user(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    leaveAll(id, editUser(id).groups);
    while (!user(id)->profile.empty()) (void)setProfileEntry(id, user(id)->profile.back().number, {});
    removeRow(_users, QorThingKind::User, id);
    return {id};
}

QorBuildResult UserDirectory::addGroup(std::string_view name, bool isSystem) {
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    if (const QorIdentifier holder = findGroup(name); holder != QorNoIdentifier)
        return refused(QorBuildError::DuplicateName, holder);
    UserGroupRow row;
    row.name = name;
    row.isSystem = isSystem;
    return addRow(_groups, QorThingKind::UserGroup, std::move(row));
}

QorBuildResult UserDirectory::renameGroup(QorIdentifier id, std::string_view name) {
    if (group(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (const QorBuildError error = checkName(name); error != QorBuildError::None) return refused(error);
    const QorIdentifier holder = findGroup(name);
    if (holder == id) return {id};
    if (holder != QorNoIdentifier) return refused(QorBuildError::DuplicateName, holder);
    std::string text(name);
    if (_store.journal.isOn()) makeRoomForOne(_before);
    _store.names.makeRoom(1);
    _store.journal.note(step(StepKind::Renamed, QorThingKind::UserGroup, id));
    unindex(id);
    std::swap(editGroup(id).name, text);
    index(id);
    keepBefore({{}, std::move(text)});
    return {id};
}

QorBuildResult UserDirectory::removeGroup(QorIdentifier id) {
    if (group(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    for (const QorIdentifier member : membersOf(id)) (void)leave(member, id);
    leaveAll(id, editGroup(id).groups);
    while (!group(id)->permissions.empty())
        (void)setPermission(id, group(id)->permissions.back().modelGroup, QorModelGroupPermission::None);
    removeRow(_groups, QorThingKind::UserGroup, id);
    return {id};
}

// Null when nobody of that identifier can be a member.
const std::vector<QorIdentifier>* UserDirectory::groupsOfMember(QorIdentifier member) const {
    if (const UserRow* const row = user(member)) return &row->groups;
    const UserGroupRow* const row = group(member);
    return row != nullptr ? &row->groups : nullptr;
}

std::vector<QorIdentifier>* UserDirectory::groupsOfMember(QorIdentifier member) {
    if (user(member) != nullptr) return &editUser(member).groups;
    return group(member) != nullptr ? &editGroup(member).groups : nullptr;
}

void UserDirectory::noteMembership(StepKind kind, QorIdentifier member, QorIdentifier groupId) {
    Step noted = step(kind, QorThingKind::UserGroup, member);
    noted.other = groupId;
    noted.hadValue = kind == StepKind::Left;
    _store.journal.note(noted);
}

QorBuildResult UserDirectory::join(QorIdentifier member, QorIdentifier groupId) {
    std::vector<QorIdentifier>* const groups = groupsOfMember(member);
    const UserGroupRow* const row = group(groupId);
    if (groups == nullptr || row == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (holds(*groups, groupId)) return {groupId};
    if (const UserGroupRow* const inner = group(member)) {
        if (inner->isSystem != row->isSystem) return refused(QorBuildError::MixedGroups);
        std::vector<QorIdentifier> above{groupId};
        spread(above);
        if (holds(above, member)) return refused(QorBuildError::GroupInItself);
    }
    makeRoomForOne(*groups);
    noteMembership(StepKind::Joined, member, groupId);
    insertSorted(*groups, groupId);
    return {groupId};
}

QorBuildResult UserDirectory::leave(QorIdentifier member, QorIdentifier groupId) {
    std::vector<QorIdentifier>* const groups = groupsOfMember(member);
    if (groups == nullptr || group(groupId) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (!holds(*groups, groupId)) return {groupId};
    noteMembership(StepKind::Left, member, groupId);
    eraseSorted(*groups, groupId);
    return {groupId};
}

void UserDirectory::leaveAll(QorIdentifier member, std::vector<QorIdentifier>& groups) {
    for (; !groups.empty(); groups.pop_back()) noteMembership(StepKind::Left, member, groups.back());
}

QorBuildResult UserDirectory::setPermission(QorIdentifier groupId, QorIdentifier modelGroup, std::int32_t permission) {
    if (!isPermission(permission)) return refused(QorBuildError::ValueRefused);
    if (group(groupId) == nullptr || _modelGroups.group(modelGroup) == nullptr)
        return refused(QorBuildError::UnknownIdentifier);
    const std::int32_t before = this->permission(groupId, modelGroup);
    if (before == permission) return {groupId};
    Step noted = step(StepKind::PermissionSet, QorThingKind::UserGroup, groupId);
    noted.other = modelGroup;
    noted.position = static_cast<std::uint32_t>(before);
    noted.hadValue = noted.position != 0;
    makeRoomForOne(editGroup(groupId).permissions);
    _store.journal.note(noted);
    storePermission(groupId, modelGroup, permission);
    return {groupId};
}

// Needs room for one more.
void UserDirectory::storePermission(QorIdentifier groupId, QorIdentifier modelGroup, std::int32_t permission) noexcept {
    auto& permissions = editGroup(groupId).permissions;
    const auto place = placeOf(permissions, modelGroup, &PermissionEntry::modelGroup);
    const bool isThere = place != permissions.end() && place->modelGroup == modelGroup;
    if (permission == QorModelGroupPermission::None) {
        if (isThere) permissions.erase(place);
    } else if (isThere) {
        place->permission = permission;
    } else {
        permissions.insert(place, {modelGroup, permission});
    }
}

QorBuildResult UserDirectory::setProfileEntry(QorIdentifier id, QorIdentifier entry, std::string_view text) {
    if (user(id) == nullptr) return refused(QorBuildError::UnknownIdentifier);
    if (!isProfileEntry(entry, text)) return refused(QorBuildError::ValueRefused);
    std::string now(text);
    Step noted = step(StepKind::ProfileSet, QorThingKind::User, id);
    noted.other = entry;
    noted.hadValue = profileEntry(*user(id), entry) != nullptr;
    if (_store.journal.isOn()) makeRoomForOne(_before);
    makeRoomForOne(editUser(id).profile);
    _store.journal.note(noted);
    swapProfileEntry(id, entry, now);
    keepBefore({{}, std::move(now)});
    return {id};
}

// Needs room for one more. The empty text stands for no entry, in both directions.
void UserDirectory::swapProfileEntry(QorIdentifier id, QorIdentifier entry, std::string& text) noexcept {
    auto& profile = editUser(id).profile;
    const auto place = placeOf(profile, entry, &ProfileEntry::number);
    if (place != profile.end() && place->number == entry) {
        place->text.swap(text);
        if (place->text.empty()) profile.erase(place);
    } else if (!text.empty()) {
        profile.insert(place, {entry, std::exchange(text, {})});
    }
}

QorBuildResult UserDirectory::setSignOnMode(std::int32_t mode) {
    if (mode != 0 && mode != QorSingleSignOnMode::First && mode != QorSingleSignOnMode::Second)
        return refused(QorBuildError::ValueRefused);
    if (mode == _signOnMode) return {kScope};
    Step noted = step(StepKind::SignOnModeSet, QorThingKind::User, kScope);
    noted.position = static_cast<std::uint32_t>(_signOnMode);
    noted.hadValue = _signOnMode != 0;
    _store.journal.note(noted);
    _signOnMode = mode;
    return {kScope};
}

void UserDirectory::forgetModelGroup(QorIdentifier modelGroup) {
    for (const UserGroupRow& row : _groups)
        if (row.id != QorNoIdentifier && permission(row.id, modelGroup) != QorModelGroupPermission::None)
            (void)setPermission(row.id, modelGroup, QorModelGroupPermission::None);
}

void UserDirectory::forgetLibrary(QorIdentifier library) {
    for (const UserRow& row : _users) {
        if (row.id == QorNoIdentifier || row.fields.library != library) continue;
        UserFields fields = row.fields;
        fields.library = QorNoIdentifier;
        (void)changeUser(row.id, std::move(fields));
    }
}

}  // namespace qor::embedded
