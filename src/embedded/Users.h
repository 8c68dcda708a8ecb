// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/Repository.h"
#include "platform/QorUserManager.h"

namespace qor::embedded {

// Who works on the platform, and the users of the repository as the contracts show them.
//
// The current user is known by the logon name. One whom the repository does not have is a guest: somebody with a name
// and an identifier and nothing else. While the repository has no users at all, guests are all there is; they are
// administrators then, so that somebody can add the first user.
class Users final : public QorUserService {
public:
    // No name: the operating system's user.
    Users(const Repository& repository, std::string_view currentUser);
    ~Users() override;

    void setCurrentUser(std::string_view logonName);
    [[nodiscard]] QorUserID current() const;
    [[nodiscard]] const std::string& currentName() const { return _currentName; }
    // The user of that name; a guest when the repository has none.
    [[nodiscard]] QorUserID identify(std::string_view logonName);

    // While a change is announced, whoever made it counts as what they were before it: who withdraws the own right, or
    // adds the first user, did that as an administrator. A user or group that was removed still has a name meanwhile.
    class Announcing {
    public:
        // `leaving`: a user or group about to be removed, or none.
        Announcing(Users& users, QorIdentifier leaving = QorNoIdentifier);
        Announcing(const Announcing&) = delete;
        Announcing& operator=(const Announcing&) = delete;
        ~Announcing();

    private:
        Users& _users;
        Announcing* _outer;
        QorUserID _actor;
        bool _isAdministrator;
        bool _isSubAdministrator;
        QorUserID _leaving;
        UserFields _leavingFields;
        QorUserGroupID _leavingGroup;
        std::string _leavingGroupName;
        friend class Users;
    };

    QorErrorCode currentUser(QorUserID& user) override;
    QorErrorCode fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                 QorUserLogonNameType& kind, bool shortForm) override;
    QorErrorCode userGroupName(const QorUserGroupID& group, SV::String& name) override;
    bool isAdministrator(const QorUserID& user) override;
    bool isSubAdministrator(const QorUserID& user) override;
    QorErrorCode userProfile(const QorUserID& user, long entry, SV::String& value) override;
    QorErrorCode push(long userManager) override;
    QorErrorCode pop() override;
    QorErrorCode allUserIDs(ISortedSet<QorUserID>& users) override;
    QorErrorCode allUserGroups(ISortedSet<QorUserGroupID>& groups) override;
    QorErrorCode allowedApplicationLibrary(const QorUserID& user, long& library) override;
    QorErrorCode modelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                  QorAccModelgroupContainer& entries) override;
    QorErrorCode userGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) override;
    QorErrorCode systemUserGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& groups) override;
    QorErrorCode singleSignOnMode(long& mode) override;

private:
    [[nodiscard]] const UserDirectory& directory() const { return _repository.users(); }
    [[nodiscard]] const UserRow* row(const QorUserID& user) const;
    [[nodiscard]] const std::string* guestName(const QorUserID& user) const;
    QorErrorCode groupsOf(const QorUserID& user, bool system, ISortedSet<QorUserGroupID>& groups);

    const Repository& _repository;
    std::vector<std::string> _guests;  // the first one has the greatest identifier there is
    std::string _currentName;
    std::vector<long> _selected;  // user managers, the one in force last
    Announcing* _announcing = nullptr;
    std::vector<QorIdentifier> _groups;  // of the user asked for; here so that its room is used again
};

}  // namespace qor::embedded
