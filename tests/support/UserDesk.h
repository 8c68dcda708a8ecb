// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"
#include "support/FailingRepository.h"

/// A host with users in several user managers, nested user groups, a tree of model groups and permissions between them,
/// in memory and installed. Texts are those of the embedded platform. Every call is recorded and can be made to fail.
class UserDesk final : public QorUserService,
                       public QorModelGroupService,
                       public QorCoreUnitsOfWork,
                       public QorWindows {
public:
    static constexpr long kLibrary = 500;  ///< the one that users are allowed unless said otherwise

    struct User {
        std::string first;
        std::string second;
        QorUserLogonNameType kind = QorUserLogonNameType::Plain;
        std::set<long> managers;
        long library = kLibrary;
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
        long library = kLibrary;
        std::set<long> below;
    };
    /// An access entry as it comes, beside those that permissions make.
    struct RawEntry {
        long modelGroup = 0;
        const char* name = nullptr;
        long library = kLibrary;
        std::int32_t permission = 0;
    };
    using Permissions = std::map<std::pair<long, long>, std::int32_t>;  // by user group, then model group

    UserDesk();

    QorUserID user(std::string_view name, long userManager = QorUserManagerNumber::Ordinary);
    [[nodiscard]] User& of(QorUserID user) { return users.at(user.value()); }
    QorUserGroupID group(std::string_view name);
    void join(QorUserID user, QorUserGroupID group) { of(user).groups.insert(group.value()); }
    void joinSystem(QorUserID user, QorUserGroupID group) { of(user).systemGroups.insert(group.value()); }
    long modelGroup(std::string_view name, long parent = 0, long library = kLibrary);
    void permit(QorUserGroupID group, long modelGroup, std::int32_t permission);
    [[nodiscard]] std::int32_t permission(QorUserGroupID group, long modelGroup) const;

    /// Adds users, some of that manager, and user groups, in libraries and memberships without a pattern.
    void populate(std::mt19937& random, long manager, std::vector<QorUserID>& some, std::vector<QorUserGroupID>& all);

    CallRecord record;
    std::map<long, User> users;
    std::map<long, UserGroup> groups;
    std::map<long, ModelGroup> modelGroups;
    Permissions permissions;
    std::multimap<long, RawEntry> rawEntries;  // by user group
    QorUserID current;
    long mode = 0;               ///< of single sign-on
    std::vector<long> selected;  ///< user managers, the one in force last
    bool offersUnits = true;
    std::optional<Permissions> unit;  ///< the permissions before the open unit of work

    std::vector<bool> answers;  ///< to the coming questions; behind the last one every answer is no
    std::vector<std::string> questions;
    std::vector<std::string> internalErrors;

    QorHost host;

private:
    struct Repository final : QorCoreModelingManager {
        explicit Repository(UserDesk& holder) : desk(holder) {}
        QorCoreUnitsOfWork* unitsOfWork() override { return desk.offersUnits ? &desk : nullptr; }
        QorErrorCode getAppLibraryName(long library, char*& name) override;
        using QorCoreModelingManager::getAppLibraryName;
        UserDesk& desk;
    };

    QorErrorCode currentUser(QorUserID& user) override;
    QorErrorCode fullDisplayName(const QorUserID& user, SV::String& first, SV::String& second,
                                 QorUserLogonNameType& kind, bool shortForm) override;
    QorErrorCode userGroupName(const QorUserGroupID& group, SV::String& name) override;
    bool isAdministrator(const QorUserID& user) override;
    bool isSubAdministrator(const QorUserID& user) override;
    QorErrorCode userProfile(const QorUserID& user, long entry, SV::String& value) override;
    QorErrorCode push(long manager) override;
    QorErrorCode pop() override;
    QorErrorCode allUserIDs(ISortedSet<QorUserID>& found) override;
    QorErrorCode allowedApplicationLibrary(const QorUserID& user, long& library) override;
    QorErrorCode modelGroupsAccessibleByUserGroup(const QorUserGroupID& group,
                                                  QorAccModelgroupContainer& entries) override;
    QorErrorCode userGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& found) override;
    QorErrorCode systemUserGroupsOfUser(const QorUserID& user, ISortedSet<QorUserGroupID>& found) override;
    QorErrorCode singleSignOnMode(long& found) override;
    QorErrorCode subGroups(long modelGroup, ISortedSet<long>& found, bool recursive) override;
    QorErrorCode modelGroupInfo(long modelGroup, SV::String& name, long& library) override;
    QorErrorCode setUserGroupPermission(long modelGroup, const QorUserGroupID& group, std::int32_t permission) override;
    QorErrorCode begin() override;
    QorErrorCode commit() override;
    void rollBack() noexcept override;
    bool query(SV::Window*, const SV::String& text) override;
    void internalError(const char* source, long, const char* text) override;

    [[nodiscard]] QorErrorCode refusal(const char* operation, bool exists);
    [[nodiscard]] QorErrorCode refusal(const char* operation, const QorUserID& user) {
        return refusal(operation, users.contains(user.value()));
    }
    QorErrorCode groupsOf(QorErrorCode code, const QorUserID& user, std::set<long> User::*own,
                          ISortedSet<QorUserGroupID>& found);

    QorEmbeddedPlatform _platform{{.language = "en", .console = false, .user = "ada"}};
    Repository _repository{*this};
    std::optional<QorHostInstallation> _installation;
};
