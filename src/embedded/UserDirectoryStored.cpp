// SPDX-License-Identifier: Apache-2.0
// Users and groups: their rows in a repository file.
#include <algorithm>
#include <utility>

#include "embedded/UserDirectory.h"

namespace qor::embedded {

namespace {

constexpr QorIdentifier kSignOnSetting = 1;  // the one row of user_settings

}  // namespace

bool UserDirectory::adopt(const StoredRow& stored) {
    const auto& numbers = stored.numbers;
    const QorIdentifier id = numbers[0];
    switch (stored.table) {
        case StoredTable::UserGroups: {
            UserGroupRow row;
            row.id = id;
            row.name = stored.texts[0];
            row.isSystem = numbers[1] != 0;
            _store.names.makeRoom(1);
            _groups.push_back(std::move(row));
            _store.things.place(id, QorThingKind::UserGroup, _groups.size() - 1);
            index(id);
            return true;
        }
        case StoredTable::Users: {
            UserRow row;
            row.id = id;
            row.fields.kind = static_cast<QorUserLogonNameType>(numbers[1]);
            row.fields.managers = static_cast<std::uint8_t>(numbers[2] & kAllManagerBits);
            row.fields.isAdministrator = numbers[3] != 0;
            row.fields.isSubAdministrator = numbers[4] != 0;
            row.fields.library = numbers[5];
            row.fields.logonName = stored.texts[0];
            row.fields.displayName = stored.texts[1];
            row.fields.secondName = stored.texts[2];
            if (row.fields.library != QorNoIdentifier && _meta.library(row.fields.library) == nullptr) return false;
            _store.names.makeRoom(1);
            _users.push_back(std::move(row));
            _store.things.place(id, QorThingKind::User, _users.size() - 1);
            index(id);
            return true;
        }
        case StoredTable::Memberships: {
            std::vector<QorIdentifier>* const groups = groupsOfMember(id);
            const UserGroupRow* const holder = group(numbers[1]);
            const UserGroupRow* const inner = group(id);
            if (groups == nullptr || holder == nullptr || (inner != nullptr && inner->isSystem != holder->isSystem))
                return false;
            groups->push_back(numbers[1]);  // rows come by their key
            return true;
        }
        case StoredTable::Permissions:
            return setPermission(id, numbers[1], numbers[2]).ok();
        case StoredTable::ProfileEntries:
            return setProfileEntry(id, numbers[1], stored.texts[0]).ok();
        case StoredTable::UserSettings:
            return id == kSignOnSetting && setSignOnMode(numbers[1]).ok();
        default:
            return false;
    }
}

// Groups that lie in nothing that is left are taken away until none is left, or only circles.
bool UserDirectory::areSound() const {
    for (const UserRow& row : _users)
        if (findUser(row.fields.logonName) != row.id) return false;
    std::vector<std::size_t> inners(_groups.size());  // how many groups lie in each
    for (const UserGroupRow& row : _groups) {
        if (findGroup(row.name) != row.id) return false;
        for (const QorIdentifier above : row.groups) ++inners[_store.things.at(above).index];
    }
    std::vector<std::size_t> free;
    for (std::size_t at = 0; at < inners.size(); ++at)
        if (inners[at] == 0) free.push_back(at);
    for (std::size_t at = 0; at < free.size(); ++at)
        for (const QorIdentifier above : _groups[free[at]].groups)
            if (const std::size_t outer = _store.things.at(above).index; --inners[outer] == 0) free.push_back(outer);
    return free.size() == _groups.size();
}

StoredRow UserDirectory::keyOf(const Step& step) {
    switch (step.kind) {
        case StepKind::Joined:
        case StepKind::Left:
            return {StoredTable::Memberships, {step.id, step.other}};
        case StepKind::PermissionSet:
            return {StoredTable::Permissions, {step.id, step.other}};
        case StepKind::ProfileSet:
            return {StoredTable::ProfileEntries, {step.id, step.other}};
        case StepKind::SignOnModeSet:
            return {StoredTable::UserSettings, {kSignOnSetting}};
        default:
            return {step.thing == QorThingKind::User ? StoredTable::Users : StoredTable::UserGroups, {step.id}};
    }
}

std::optional<StoredRow> UserDirectory::stored(const StoredRow& key) const {
    const QorIdentifier id = key.numbers[0];
    const QorIdentifier other = key.numbers[1];
    const UserRow* const its = user(id);
    const UserGroupRow* const itsGroup = group(id);
    switch (key.table) {
        case StoredTable::UserGroups:
            if (itsGroup == nullptr) return std::nullopt;
            return StoredRow{key.table, {id, itsGroup->isSystem ? 1 : 0}, {itsGroup->name}};
        case StoredTable::Users: {
            if (its == nullptr) return std::nullopt;
            const UserFields& fields = its->fields;
            return StoredRow{key.table,
                             {id, static_cast<QorIdentifier>(fields.kind), fields.managers,
                              fields.isAdministrator ? 1 : 0, fields.isSubAdministrator ? 1 : 0, fields.library},
                             {fields.logonName, fields.displayName, fields.secondName}};
        }
        case StoredTable::Memberships: {
            if (its == nullptr && itsGroup == nullptr) return std::nullopt;
            const auto& groups = its != nullptr ? its->groups : itsGroup->groups;
            if (!std::binary_search(groups.begin(), groups.end(), other)) return std::nullopt;
            return StoredRow{key.table, {id, other}};
        }
        case StoredTable::Permissions:
            if (const std::int32_t value = permission(id, other); value != QorModelGroupPermission::None)
                return StoredRow{key.table, {id, other, value}};
            return std::nullopt;
        case StoredTable::ProfileEntries:
            if (const std::string* const text = its != nullptr ? profileEntry(*its, other) : nullptr)
                return StoredRow{key.table, {id, other}, {*text}};
            return std::nullopt;
        case StoredTable::UserSettings:
            if (_signOnMode == 0) return std::nullopt;
            return StoredRow{key.table, {id, _signOnMode}};
        default:
            return std::nullopt;
    }
}

}  // namespace qor::embedded
