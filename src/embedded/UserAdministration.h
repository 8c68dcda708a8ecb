// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Announcements.h"
#include "embedded/QorUserAdministration.h"
#include "embedded/Repository.h"
#include "embedded/Users.h"

namespace qor::embedded {

class UserAdministration final : public QorUserAdministration {
public:
    UserAdministration(Repository& repository, Users& users, Announcements& announcements)
        : _repository(repository), _users(users), _announcements(announcements) {}
    ~UserAdministration() override;

    QorBuildResult addUser(std::string_view logonName, long userManager) override;
    QorBuildResult renameUser(QorIdentifier user, std::string_view logonName) override;
    QorBuildResult setDisplayName(QorIdentifier user, std::string_view displayName,
                                  std::string_view secondName) override;
    QorBuildResult removeUser(QorIdentifier user) override;
    QorBuildResult setRight(QorIdentifier user, long right, bool granted) override;
    QorBuildResult setManager(QorIdentifier user, long userManager, bool isMember) override;
    QorBuildResult setAllowedLibrary(QorIdentifier user, QorIdentifier applicationLibrary) override;
    QorBuildResult setProfileEntry(QorIdentifier user, long entry, std::string_view text) override;
    QorBuildResult setSingleSignOnMode(long mode) override;

    QorBuildResult addUserGroup(std::string_view name, bool isSystem) override;
    QorBuildResult renameUserGroup(QorIdentifier group, std::string_view name) override;
    QorBuildResult removeUserGroup(QorIdentifier group) override;
    QorBuildResult join(QorIdentifier member, QorIdentifier group) override;
    QorBuildResult leave(QorIdentifier member, QorIdentifier group) override;
    QorBuildResult setPermission(QorIdentifier group, QorIdentifier modelGroup, std::int32_t permission) override;

    [[nodiscard]] bool hasUsers() const override { return directory().hasUsers(); }
    [[nodiscard]] bool mayAdminister(bool everything) const override;
    [[nodiscard]] QorIdentifier findUser(std::string_view logonName) const override;
    [[nodiscard]] QorIdentifier findUserGroup(std::string_view name) const override;
    [[nodiscard]] std::vector<QorIdentifier> users() const override;
    [[nodiscard]] std::vector<QorIdentifier> userGroups() const override;
    [[nodiscard]] QorUserInfo userInfo(QorIdentifier user) const override;
    [[nodiscard]] QorUserGroupInfo userGroupInfo(QorIdentifier group) const override;
    [[nodiscard]] std::vector<QorProfileEntryInfo> profileOf(QorIdentifier user) const override;
    [[nodiscard]] std::vector<QorIdentifier> groupsOf(QorIdentifier member) const override;
    [[nodiscard]] std::vector<QorIdentifier> membersOf(QorIdentifier group) const override;
    [[nodiscard]] std::vector<QorGroupPermissionInfo> permissionsOf(QorIdentifier group) const override;
    [[nodiscard]] long singleSignOnMode() const override { return directory().signOnMode(); }

private:
    [[nodiscard]] UserDirectory& directory() { return _repository.users(); }
    [[nodiscard]] const UserDirectory& directory() const { return _repository.users(); }
    // Whether the current user may change this user; None when so.
    [[nodiscard]] QorBuildError refusal(QorIdentifier user) const;
    [[nodiscard]] QorBuildError refusal(bool everything) const;
    // The same for a user or group as a member.
    [[nodiscard]] QorBuildError refusalOfMember(QorIdentifier member) const;
    QorBuildResult changeName(QorIdentifier user, UserFields fields);
    template <class Edit>
    QorBuildResult changeFields(QorIdentifier user, Edit edit);
    QorBuildResult changeMembership(QorIdentifier member, QorIdentifier group, bool joins);
    void announceMembership(QorIdentifier member, QorIdentifier group, bool isSystem, bool joins) const;
    template <class Operation, class Announce>
    QorBuildResult changed(Operation operation, Announce announce, QorIdentifier leaving = QorNoIdentifier);

    Repository& _repository;
    Users& _users;
    Announcements& _announcements;
};

}  // namespace qor::embedded
