// SPDX-License-Identifier: Apache-2.0
// Users, user groups and permissions: who may change what, what the contracts then answer, which events tell of it.
#include <gtest/gtest.h>

#include <set>

#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorEventListener.h"
#include "platform/QorUserEventKind.h"
#include "support/OnStores.h"
#include "support/Picture.h"

namespace {

using Code = QorErrorCode;
using Error = QorBuildError;
using Raised = std::vector<std::vector<long>>;
using Groups = ISortedSet<QorUserGroupID>;

// Fields 8 to 11 of every user event, 8 to 10 of every user-group event, and the names that can be asked for meanwhile.
class Listener final : public QorEventListener {
public:
    Listener() {
        setEventHandler(QorEventType::UserChanged, &Listener::user, 400);
        setEventHandler(QorEventType::UserGroupChanged, &Listener::group, 400);
    }
    Raised seen;
    std::vector<std::string> names;
    bool byAdministrator = true;

private:
    void user(const QorUserEvent& event) {
        seen.push_back({701, event.kind(), event.user(), event.value(), event.furtherValue()});
        look(event.user());
    }
    void group(const QorUserGroupEvent& event) {
        seen.push_back({702, event.kind(), event.userGroup(), event.user()});
        SV::String name;
        (void)QorUserManager::allUmansGetUserGroupName(QorUserGroupID(event.userGroup()), name);
        names.push_back(name.str());
    }
    void look(long id) {
        SV::String first;
        SV::String second;
        auto kind = QorUserLogonNameType::Plain;
        (void)QorUserManager::allUmansGetUserFullDisplayNameOfUserID(QorUserID(id), first, second, kind, false);
        names.push_back(Qor_JoinDisplayName(first, second, kind).str());
        QorUserID current;
        (void)QorUserManager::allUmansGetCurrentUserID(current);
        byAdministrator = byAdministrator && QorUserManager::isUserAdmin(current);
    }
};

struct UsersOf : OnStores {
    QorUserAdministration& users = platform.userAdministration();
    QorIdentifier sales = builder().addModelGroup(library, "Sales").id;
    QorIdentifier archive = builder().addModelGroup(library, "Archive").id;

    QorIdentifier added(std::string_view name, long manager = 1000) { return users.addUser(name, manager).id; }
    QorIdentifier group(std::string_view name, bool isSystem = false) { return users.addUserGroup(name, isSystem).id; }
    Groups groupsOf(QorIdentifier user, bool isSystem = false) {
        Groups found;
        EXPECT_EQ(isSystem ? QorDBAdministration::getSysUsergroups(QorUserID(user), found)
                           : QorDBAdministration::getUsergroups(QorUserID(user), found),
                  Code::Ok);
        return found;
    }
    static Groups setOf(std::initializer_list<QorIdentifier> ids) {
        Groups set;
        for (const QorIdentifier id : ids) set.add(QorUserGroupID(id));
        return set;
    }
    static std::vector<QorIdentifier> listed(long manager) {
        ISortedSet<QorUserID> found;
        EXPECT_EQ(QorUserManager::push(manager), Code::Ok);
        EXPECT_EQ(QorUserManager::getAllUserIDs(found), Code::Ok);
        EXPECT_EQ(QorUserManager::pop(), Code::Ok);
        std::vector<QorIdentifier> ids;
        for (const QorUserID& user : found) ids.push_back(static_cast<QorIdentifier>(user.value()));
        return ids;
    }
};
QOR_ON_ALL_STORES(UsersOf);

TEST_P(UsersOf, ARepositoryAreChangedByThoseWhoMay) {
    EXPECT_TRUE(users.mayAdminister(true)) << "everybody while there are none";
    const QorIdentifier ada = added("ada");
    const QorIdentifier bob = added("bob");
    const QorIdentifier cyd = added("cyd");
    EXPECT_TRUE(users.userInfo(ada).isAdministrator) << "the first";
    EXPECT_EQ(users.setRight(ada, QorUserRight::Administrator, false).error, Error::LastAdministrator);
    EXPECT_EQ(users.removeUser(ada).error, Error::LastAdministrator);
    ASSERT_TRUE(users.setRight(bob, QorUserRight::SubAdministrator, true).ok());

    platform.setCurrentUser("bob");
    EXPECT_TRUE(users.mayAdminister(false) && !users.mayAdminister(true));
    const QorIdentifier staff = group("Staff");
    EXPECT_TRUE(users.join(cyd, staff).ok() && users.setPermission(staff, sales, 2).ok());
    EXPECT_TRUE(users.setDisplayName(cyd, "Cyd").ok());
    platform.setCurrentUser("ada");
    const QorIdentifier bosses = group("Bosses");
    EXPECT_TRUE(users.join(ada, bosses).ok());
    platform.setCurrentUser("bob");
    for (const auto& refused :
         {users.renameUser(ada, "eve"), users.setDisplayName(ada, "Eve"), users.removeUser(ada), users.join(ada, staff),
          users.setManager(ada, 1001, true), users.setAllowedLibrary(ada, library), users.setProfileEntry(ada, 6, "x"),
          users.setRight(cyd, QorUserRight::SubAdministrator, true), users.setSingleSignOnMode(667),
          users.removeUserGroup(bosses)})
        EXPECT_EQ(refused.error, Error::NotAllowed);

    for (const char* name : {"cyd", "nobody"}) {
        platform.setCurrentUser(name);
        EXPECT_FALSE(users.mayAdminister(false)) << name;
        for (const auto& refused :
             {users.addUser("x"), users.addUserGroup("x"), users.removeUser(cyd), users.leave(cyd, staff),
              users.setPermission(staff, sales, 4), users.renameUserGroup(staff, "x"), users.removeUserGroup(staff)})
            EXPECT_EQ(refused.error, Error::NotAllowed) << name;
        EXPECT_EQ(QorCoreModelGroupManager::SetUserGroupPermission(sales, QorUserGroupID(staff), 4),
                  QorRepositoryCode::NotAllowed);
    }
    platform.setCurrentUser("ada");
    for (const QorIdentifier user : {bob, cyd, ada}) EXPECT_TRUE(users.removeUser(user).ok());
    EXPECT_TRUE(users.mayAdminister(true)) << "nobody is left";
}

TEST_P(UsersOf, ARepositoryAreRefusedWhatCannotBe) {
    const QorIdentifier ada = added("ada");
    const QorIdentifier staff = group("Staff");
    const QorIdentifier guests = group("Guests", true);
    const std::string picture = pictureOf(platform);
    const std::pair<QorBuildResult, Error> cases[] = {
        {users.addUser(""), Error::EmptyName},
        {users.addUser("a\nb"), Error::NameRefused},
        {users.addUser("ada"), Error::DuplicateName},
        {users.addUser("x", 999), Error::ValueRefused},
        {users.addUserGroup("Staff", true), Error::DuplicateName},
        {users.addUserGroup("a\x7f"), Error::NameRefused},
        {users.renameUser(ada, "\x1b[2J"), Error::NameRefused},
        {users.renameUser(staff, "x"), Error::UnknownIdentifier},
        {users.renameUserGroup(guests, "Staff"), Error::DuplicateName},
        {users.setDisplayName(ada, "A", "\t"), Error::NameRefused},
        {users.setAllowedLibrary(ada, sales), Error::UnknownIdentifier},
        {users.setProfileEntry(ada, 0, "x"), Error::ValueRefused},
        {users.setProfileEntry(ada, 6 + (1L << 32), "x"), Error::ValueRefused},
        {users.setProfileEntry(ada, 6, std::string_view("a\0b", 3)), Error::ValueRefused},
        {users.setRight(ada, 5012, true), Error::ValueRefused},
        {users.setSingleSignOnMode(669), Error::ValueRefused},
        {users.join(staff, guests), Error::MixedGroups},
        {users.join(staff, staff), Error::GroupInItself},
        {users.join(ada, sales), Error::UnknownIdentifier},
        {users.join(sales, staff), Error::UnknownIdentifier},
        {users.setPermission(staff, sales, 3), Error::ValueRefused},
        {users.setPermission(staff, library, 2), Error::UnknownIdentifier},
        {users.setPermission(ada, sales, 2), Error::UnknownIdentifier},
    };
    for (const auto& [result, error] : cases) EXPECT_EQ(result.error, error) << &result - &cases[0].first;
    EXPECT_EQ(pictureOf(platform), picture);
    EXPECT_EQ(QorCoreModelGroupManager::SetUserGroupPermission(sales, QorUserGroupID(staff), 3), Code::OutOfRange);
    EXPECT_EQ(QorUserManager::push(1003), Code::UserManagerNotSelected);
    EXPECT_NE(QorUserManager::pop(), Code::Ok);
}

TEST_P(UsersOf, ManagersAndGroupsAreWhatTheContractsAnswer) {
    const QorIdentifier ada = added("ada");
    const QorIdentifier sam = added("sam", 1001);
    const QorIdentifier staff = group("Staff");
    const QorIdentifier all = group("All");
    const QorIdentifier top = group("Top");
    const QorIdentifier guests = group("Guests", true);
    ASSERT_TRUE(users.setManager(sam, 1002, true).ok());
    EXPECT_EQ(listed(1000), (std::vector<QorIdentifier>{ada}));
    EXPECT_EQ(listed(1001), (std::vector<QorIdentifier>{sam}));
    EXPECT_EQ(listed(1002), (std::vector<QorIdentifier>{sam}));
    ASSERT_TRUE(users.setSingleSignOnMode(668).ok());
    long mode = 0;
    EXPECT_EQ(QorDataSourceDB::Instance().getSingleSignOnMode(mode), Code::Ok);
    EXPECT_EQ(mode, 668);

    for (const auto& [member, into] : {std::pair(ada, staff), {ada, guests}, {staff, all}, {all, top}, {staff, top}})
        ASSERT_TRUE(users.join(member, into).ok());
    EXPECT_EQ(users.join(top, staff).error, Error::GroupInItself);
    EXPECT_EQ(groupsOf(ada), setOf({staff, all, top})) << "with all that they lie in";
    EXPECT_EQ(groupsOf(ada, true), setOf({guests}));
    ASSERT_TRUE(users.removeUserGroup(all).ok());
    EXPECT_EQ(groupsOf(ada), setOf({staff, top}));
    ASSERT_TRUE(users.leave(staff, top).ok());
    EXPECT_EQ(groupsOf(ada), setOf({staff}));
    Groups found;
    EXPECT_EQ(QorUserManager::allUmansGetAllUserGroups(found), Code::Ok);
    EXPECT_EQ(found, setOf({staff, top, guests}));

    ASSERT_TRUE(users.setDisplayName(ada, "Ada Lovelace", "Engines Ltd").ok());
    SV::String first;
    SV::String second;
    auto kind = QorUserLogonNameType::Plain;
    const auto name = [&](bool shortForm) {
        EXPECT_EQ(
            QorUserManager::allUmansGetUserFullDisplayNameOfUserID(QorUserID(ada), first, second, kind, shortForm),
            Code::Ok);
        return Qor_JoinDisplayName(first, second, kind).str();
    };
    EXPECT_EQ(name(false), "Ada Lovelace;Engines Ltd");
    EXPECT_EQ(static_cast<int>(kind), 445);
    EXPECT_EQ(name(true), "Ada Lovelace");
    ASSERT_TRUE(users.setDisplayName(ada, "").ok());
    EXPECT_EQ(name(false), "ada");
}

TEST_P(UsersOf, PermissionsGoWithWhatTheyAreOn) {
    const QorIdentifier ada = added("ada");
    const QorIdentifier staff = group("Staff");
    const QorIdentifier other = builder().addApplicationLibrary("Other", {}, {}).id;
    const QorIdentifier elsewhere = builder().addModelGroup(other, "Elsewhere").id;
    ASSERT_TRUE(users.setAllowedLibrary(ada, other).ok());
    for (const auto& [modelGroup, permission] : {std::pair(sales, 2), {archive, 4}, {elsewhere, 2}, {sales, 4}})
        ASSERT_EQ(QorCoreModelGroupManager::SetUserGroupPermission(modelGroup, QorUserGroupID(staff), permission),
                  Code::Ok);
    const auto access = [&] {
        QorAccModelgroupContainer entries;
        EXPECT_EQ(QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(QorUserGroupID(staff), entries),
                  Code::Ok);
        std::set<std::string> found;
        for (const auto& entry : entries)
            found.insert(entry->getName().str() + (entry->getApplicationLibraryID() == library ? " here " : " there ") +
                         std::to_string(entry->getPermission()));
        return found;
    };
    EXPECT_EQ(access(), (std::set<std::string>{"Sales here 4", "Archive here 4", "Elsewhere there 2"}));
    SV::String name;
    long its = 0;
    EXPECT_EQ(QorCoreModelGroupManager::GetModelGroupInfo(elsewhere, name, its), Code::Ok);
    EXPECT_TRUE(name == "Elsewhere" && its == other);
    ASSERT_TRUE(builder().removeModelGroup(archive).ok());
    ASSERT_TRUE(builder().removeApplicationLibrary(other).ok());
    ASSERT_TRUE(users.setPermission(staff, sales, 2).ok());
    EXPECT_EQ(access(), (std::set<std::string>{"Sales here 2"}));
    EXPECT_EQ(QorUserManager::allUmansGetAllowedApplicationLibrary(QorUserID(ada), its), Code::Ok);
    EXPECT_EQ(its, -1) << "the library went";
    ASSERT_TRUE(users.setPermission(staff, sales, 0).ok());
    EXPECT_TRUE(access().empty());
}

// The rows of the table in docs/events.md.
TEST_P(UsersOf, ChangesAreAnnouncedWithWhatTheListenersAskFor) {
    Listener listener;
    const auto expect = [&](const QorBuildResult& result, const Raised& raised) {
        EXPECT_TRUE(result.ok()) << Qor_BuildErrorText(result.error);
        EXPECT_EQ(listener.seen, raised);
        listener.seen.clear();
        return result.id;
    };
    const long next = group("x") + 1;
    listener.seen.clear();
    platform.setCurrentUser("somebody");
    const QorIdentifier ada = expect(users.addUser("ada"), {{701, 2, next, 0, 0}, {701, 8, next, 5010, 1}});
    platform.setCurrentUser("ada");
    const QorIdentifier sam =
        expect(users.addUser("sam", 1001),
               {{701, 2, next + 1, 0, 0}, {701, 21, next + 1, 1001, 0}, {701, 18, next + 1, 1, 0}});
    const QorIdentifier staff = expect(users.addUserGroup("Staff"), {{702, 1, next + 2, -1}});
    const QorIdentifier guests = expect(users.addUserGroup("Guests", true), {{702, 1, next + 3, -1}});
    listener.names.clear();
    expect(users.renameUser(sam, "samuel"), {{701, 13, sam, 0, 0}, {701, 14, sam, 0, 0}});
    expect(users.setDisplayName(sam, "Sam", "Firm"), {{701, 13, sam, 0, 0}, {701, 14, sam, 0, 0}});
    EXPECT_EQ(listener.names, (std::vector<std::string>{"sam", "samuel", "samuel", "Sam;Firm"}));
    expect(users.setDisplayName(sam, "Sam", "Firm"), {});
    EXPECT_FALSE(users.renameUser(sam, "ada").ok() || !listener.seen.empty()) << "what is refused is not announced";
    expect(users.setProfileEntry(sam, 6, "a\nb"), {{701, 11, sam, 6, 0}, {701, 12, sam, 6, 0}});
    expect(users.setAllowedLibrary(sam, library), {{701, 10, sam, library, 0}});
    expect(users.setManager(sam, 1001, false), {{701, 22, sam, 1001, 0}, {701, 18, sam, 0, 0}});
    expect(users.setManager(sam, 1000, true), {{701, 21, sam, 1000, 0}});
    expect(users.join(sam, staff), {{702, 4, staff, sam}});
    expect(users.join(sam, staff), {});
    expect(users.join(sam, guests), {{701, 16, sam, guests, 0}});
    expect(users.leave(sam, guests), {{701, 17, sam, guests, 0}});
    expect(users.setPermission(staff, sales, 2), {{702, 8, staff, -1}});
    const auto generation = platform.repositoryGeneration();
    expect(users.setPermission(staff, sales, 2), {});
    expect(users.renameUserGroup(staff, "Staff"), {});
    EXPECT_EQ(platform.repositoryGeneration(), generation) << "nothing was written";
    expect(users.setRight(sam, 5010, true), {{701, 8, sam, 5010, 1}});
    expect(users.setRight(ada, 5010, false), {{701, 8, ada, 5010, 3}});
    platform.setCurrentUser("samuel");
    listener.names.clear();
    expect(users.removeUserGroup(staff), {{702, 6, staff, sam}, {702, 2, staff, -1}});
    expect(users.removeUser(ada), {{701, 4, ada, 0, 0}});
    expect(users.removeUser(sam), {{701, 4, sam, 0, 0}});
    EXPECT_EQ(listener.names, (std::vector<std::string>{"Staff", "Staff", "ada", "Sam;Firm"}));
    EXPECT_TRUE(listener.byAdministrator) << "who made a change counts as what they were before it";
}

}  // namespace
