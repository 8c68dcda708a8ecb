// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/MetaModel.h"
#include "embedded/ModelGroups.h"
#include "embedded/Store.h"
#include "embedded/UserRows.h"
#include "embedded/store/StoredRow.h"

namespace qor::embedded {

// The users and user groups of a repository: who is in which group, and what groups may do with which model groups.
// Groups may lie in several others, but not in a circle. Who may change what is not decided here. Operations that
// change something throw std::bad_alloc when memory runs out; several steps are then taken back by who asked for them.
class UserDirectory {
public:
    // The scope that all rows of users belong to: there is one list of users, beside all libraries.
    static constexpr QorIdentifier kScope = 1;

    UserDirectory(Store& store, const MetaModel& meta, const ModelGroups& modelGroups)
        : _store(store), _meta(meta), _modelGroups(modelGroups) {}

    // ---- Changes ----

    QorBuildResult addUser(UserFields fields);
    // Everything but groups and profile, the logon name included.
    QorBuildResult changeUser(QorIdentifier user, UserFields fields);
    // What `changeUser` would answer, as far as the fields say.
    [[nodiscard]] QorBuildResult checkChange(QorIdentifier user, const UserFields& fields) const;
    // With memberships and profile.
    QorBuildResult removeUser(QorIdentifier user);
    QorBuildResult addGroup(std::string_view name, bool isSystem);
    QorBuildResult renameGroup(QorIdentifier group, std::string_view name);
    // With memberships and permissions. O(users).
    QorBuildResult removeGroup(QorIdentifier group);
    // `member` is a user or a group.
    QorBuildResult join(QorIdentifier member, QorIdentifier group);
    QorBuildResult leave(QorIdentifier member, QorIdentifier group);
    QorBuildResult setPermission(QorIdentifier group, QorIdentifier modelGroup, std::int32_t permission);
    // The empty text takes the entry away.
    QorBuildResult setProfileEntry(QorIdentifier user, QorIdentifier entry, std::string_view text);
    QorBuildResult setSignOnMode(std::int32_t mode);
    // What refers to a model group or library that goes.
    void forgetModelGroup(QorIdentifier modelGroup);
    void forgetLibrary(QorIdentifier library);

    // ---- Questions ----

    // Null when the identifier is no user, or no group.
    [[nodiscard]] const UserRow* user(QorIdentifier id) const;
    [[nodiscard]] const UserGroupRow* group(QorIdentifier id) const;
    [[nodiscard]] QorIdentifier findUser(std::string_view logonName) const;
    [[nodiscard]] QorIdentifier findGroup(std::string_view name) const;
    [[nodiscard]] bool hasUsers() const;
    // Neither users nor groups.
    [[nodiscard]] bool isEmpty() const;
    // Whether there is somebody else, or somebody else who is an administrator. O(users).
    [[nodiscard]] bool hasOtherUser(QorIdentifier user, bool administrator) const;
    // The groups of a user, of one sort, with all that these lie in; in ascending order. O(result) where no group lies
    // in another; nothing is allocated once `found` has room.
    void groupsOf(const UserRow& user, bool system, std::vector<QorIdentifier>& found) const;
    [[nodiscard]] bool isMember(QorIdentifier member, QorIdentifier group) const;
    [[nodiscard]] static bool isProfileEntry(QorIdentifier entry, std::string_view text) {
        return entry >= 1 && text.find('\0') == std::string_view::npos;
    }
    // Null when there is none.
    [[nodiscard]] const std::string* profileEntry(const UserRow& user, QorIdentifier entry) const;
    [[nodiscard]] std::int32_t permission(QorIdentifier group, QorIdentifier modelGroup) const;
    // Users and groups that are members themselves, ascending. O(users + groups).
    [[nodiscard]] std::vector<QorIdentifier> membersOf(QorIdentifier group) const;
    [[nodiscard]] std::int32_t signOnMode() const { return _signOnMode; }
    template <class Take>
    void forEachUser(Take take) const {
        for (const UserRow& row : _users)
            if (row.id != QorNoIdentifier) take(row);
    }
    template <class Take>
    void forEachGroup(Take take) const {
        for (const UserGroupRow& row : _groups)
            if (row.id != QorNoIdentifier) take(row);
    }

    // ---- The way back (UserDirectoryJournal.cpp) ----

    void takeBack(const Step& step) noexcept;
    // After the steps were kept: gives up what they replaced. O(users) when a user or group went.
    void bury(bool didGo) noexcept;

    // ---- The repository file (UserDirectoryStored.cpp) ----

    [[nodiscard]] bool adopt(const StoredRow& row);
    // Whether names are unique and no group lies in itself. O(groups).
    [[nodiscard]] bool areSound() const;
    // The row that the step touched: its key, and the whole row as it is now, if it is there.
    [[nodiscard]] static StoredRow keyOf(const Step& step);
    [[nodiscard]] std::optional<StoredRow> stored(const StoredRow& key) const;

private:
    // What a step replaced, for the way back.
    struct Before {
        UserFields fields;
        std::string text;
    };

    [[nodiscard]] UserRow& editUser(QorIdentifier id) { return _users[_store.things.at(id).index]; }
    [[nodiscard]] UserGroupRow& editGroup(QorIdentifier id) { return _groups[_store.things.at(id).index]; }
    [[nodiscard]] const std::vector<QorIdentifier>* groupsOfMember(QorIdentifier member) const;
    [[nodiscard]] std::vector<QorIdentifier>* groupsOfMember(QorIdentifier member);
    void noteMembership(StepKind kind, QorIdentifier member, QorIdentifier group);
    void leaveAll(QorIdentifier member, std::vector<QorIdentifier>& groups);
    void storePermission(QorIdentifier group, QorIdentifier modelGroup, std::int32_t permission) noexcept;
    void swapProfileEntry(QorIdentifier user, QorIdentifier entry, std::string& text) noexcept;
    template <class Row>
    QorBuildResult addRow(std::vector<Row>& rows, QorThingKind thing, Row row);
    template <class Row>
    void removeRow(std::vector<Row>& rows, QorThingKind thing, QorIdentifier id);
    void spread(std::vector<QorIdentifier>& groups) const;
    [[nodiscard]] Step step(StepKind kind, QorThingKind thing, QorIdentifier id) const;
    void keepBefore(Before before);
    void index(QorIdentifier id) noexcept;
    void unindex(QorIdentifier id) noexcept;
    void sweep() noexcept;

    Store& _store;
    const MetaModel& _meta;
    const ModelGroups& _modelGroups;
    std::vector<UserRow> _users;
    std::vector<UserGroupRow> _groups;
    std::int32_t _signOnMode = 0;
    std::vector<Before> _before;      // of UserChanged and ProfileSet, the latest last
    mutable std::vector<bool> _seen;  // of each group, while groups are spread; all false in between
};

}  // namespace qor::embedded
