// SPDX-License-Identifier: Apache-2.0
#include "admin/QorAllModelStructure.h"

#include <gtest/gtest.h>

#include <set>

#include "support/UserDesk.h"

namespace {

using enum QorErrorCode;
using Entries = std::multiset<std::pair<long, std::int32_t>>;  // model group and permission

constexpr auto kUnknownCode = static_cast<QorErrorCode>(4711);
constexpr long kRead = QorModelGroupPermission::Read;
constexpr long kWrite = QorModelGroupPermission::Write;

Entries entries(const QorAccModelgroupContainer& container) {
    Entries found;
    for (const auto& entry : container) found.emplace(entry->getModelGroupID(), entry->getPermission());
    return found;
}

struct Access {
    QorErrorCode code = Ok;
    Entries found;
};

Access accessOf(QorUserID user) {
    QorAccModelgroupContainer container;
    const auto code = QorAllModelStructure::Instance().GetModelGroupsOfUser(user, container);
    return {code, entries(container)};
}

class Structure : public QorAllModelStructure {
public:
    QorErrorCode groups(QorUserID user, ISortedSet<QorUserGroupID>& found) {
        return _GetAllUserGroupsOfUser(user, found);
    }
};

/// "ada" of the ordinary manager and two users of the managers behind it; each reaches one model group.
class AccessStructure : public testing::Test {
protected:
    AccessStructure() {
        desk.mode = QorSingleSignOnMode::First;
        desk.join(ada, staff);
        desk.join(ada, bosses);
        desk.joinSystem(bob, guests);
        desk.join(bob, bosses);  // what the user administration would say of him does not count
        desk.joinSystem(cyd, guests);
        desk.permit(staff, orders, QorModelGroupPermission::Read);
        desk.permit(bosses, orders, QorModelGroupPermission::Write);
        desk.permit(guests, orders, QorModelGroupPermission::Read);
    }

    UserDesk desk;
    QorUserID ada = desk.user("ada");
    QorUserID bob = desk.user("bob", QorUserManagerNumber::FirstSingleSignOn);
    QorUserID cyd = desk.user("cyd", QorUserManagerNumber::SecondSingleSignOn);
    QorUserGroupID staff = desk.group("Staff");
    QorUserGroupID bosses = desk.group("Bosses");
    QorUserGroupID guests = desk.group("Guests");
    long orders = desk.modelGroup("Orders");
};

TEST_F(AccessStructure, AModelGroupAppearsOnceForEachUserGroup) {
    const auto access = accessOf(ada);
    EXPECT_EQ(access.code, Ok);
    EXPECT_EQ(access.found, (Entries{{orders, kRead}, {orders, kWrite}}));
}

TEST_F(AccessStructure, OnlyReadAndWriteInTheAllowedLibraryCount) {
    const auto eve = desk.user("eve");
    const auto group = desk.group("Odd");
    desk.join(eve, group);
    for (const std::int32_t permission : {-2, 0, 1, 2, 3, 4, 5, 6})
        desk.rawEntries.insert({group.value(), {100 + permission, nullptr, UserDesk::kLibrary, permission}});
    desk.rawEntries.insert({group.value(), {200, "elsewhere", UserDesk::kLibrary + 1, 4}});
    desk.rawEntries.insert({group.value(), {201, "nowhere", -1, 4}});
    EXPECT_EQ(accessOf(eve).found, (Entries{{102, 2}, {104, 4}}));
    desk.of(eve).library = UserDesk::kLibrary + 1;
    EXPECT_EQ(accessOf(eve).found, (Entries{{200, 4}}));
}

TEST_F(AccessStructure, TheContainerIsAddedToWithCopiesOfItsOwn) {
    QorAccModelgroupContainer container;
    container.add(std::make_unique<QorAccModelgroup>(7, "own", 1, 0));
    ASSERT_EQ(QorAllModelStructure::Instance().GetModelGroupsOfUser(ada, container), Ok);
    ASSERT_EQ(QorAllModelStructure::Instance().GetModelGroupsOfUser(ada, container), Ok);
    EXPECT_EQ(container.numberOfElements(), 5U);
    for (const auto& entry : container) EXPECT_EQ(entry->getName(), entry->getModelGroupID() == 7 ? "own" : "Orders");
}

TEST_F(AccessStructure, NestedGroupsCountAndCirclesOfGroupsEnd) {
    const auto all = desk.group("Everybody");
    desk.groups[staff.value()].containedIn = {all.value()};
    desk.groups[all.value()].containedIn = {staff.value()};
    const long archive = desk.modelGroup("Archive");
    desk.permit(all, archive, QorModelGroupPermission::Read);
    EXPECT_EQ(accessOf(ada).found, (Entries{{archive, kRead}, {orders, kRead}, {orders, kWrite}}));
}

TEST_F(AccessStructure, TheSignOnModeSaysWhichSecondManagerIsAsked) {
    const struct {
        long mode;
        std::size_t bobs, cyds;  ///< entries
        const char* managers;
    } cases[] = {
        {0, 0, 0, "push 1000 "},
        {666, 0, 0, "push 1000 "},
        {667, 1, 0, "push 1000 push 1001 "},
        {668, 0, 1, "push 1000 push 1002 "},
        {669, 0, 0, "push 1000 "},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.mode);
        desk.mode = it.mode;
        EXPECT_EQ(accessOf(bob).found.size(), it.bobs);
        desk.record.forget();
        EXPECT_EQ(accessOf(cyd).found.size(), it.cyds);
        std::string pushes;
        for (const auto& call : desk.record.order())
            if (call.starts_with("push")) pushes += call + " ";
        EXPECT_EQ(pushes, it.managers);
        EXPECT_EQ(desk.selected.size(), 0U);
    }
}

TEST_F(AccessStructure, AnUnknownUserHasNoGroupsAndTheCodeOfTheLastLookup) {
    const QorUserID nobody(99);
    Structure structure;
    ISortedSet<QorUserGroupID> groups{staff};
    EXPECT_EQ(structure.groups(nobody, groups), Ok);
    EXPECT_TRUE(groups.isEmpty());
    EXPECT_EQ(accessOf(nobody).code, NotFound) << "the answer to the question for the library";
    desk.record.fail("allUserIDs 1000", kUnknownCode);
    EXPECT_EQ(accessOf(nobody).code, NotFound) << "the second listing succeeded";
    EXPECT_EQ(accessOf(QorUserID()).code, NotFound);
    EXPECT_EQ(desk.selected.size(), 0U);
    desk.mode = 0;
    desk.record.fail("allUserIDs 1000", kUnknownCode);
    EXPECT_EQ(accessOf(ada).code, kUnknownCode);
}

/// Every call fails once, with every code that is tested and with one that nobody knows.
TEST_F(AccessStructure, EachFailingCallHasItsOutcomeAndLeavesNoManagerSelected) {
    const auto same = NoValue;  // stands for the code of the failing call
    const struct {
        const char* operation;
        QorUserID user;
        QorErrorCode outcome;
        std::size_t found;  ///< entries that are in the container all the same
    } cases[] = {
        {"push 1000", ada, UserManagerNotSelected, 0},
        {"push 1001", bob, UserManagerNotSelected, 0},
        {"allUserIDs 1001", bob, same, 0},
        {"singleSignOnMode", bob, same, 0},
        {"userGroupsOfUser", ada, same, 0},
        {"systemUserGroupsOfUser", bob, same, 0},
        {"modelGroupsAccessibleByUserGroup", ada, same, 0},
        {"allUserIDs 1000", bob, Ok, 1},
        {"pop", ada, Ok, 2},
        {"pop", bob, Ok, 1},
    };
    for (const auto& it : cases)
        for (const auto code : {UserManagerNotSelected, NotFound, kUnknownCode}) {
            SCOPED_TRACE(std::string(it.operation) + " " + std::to_string(static_cast<int>(code)));
            desk.record.fail(it.operation, code);
            const auto access = accessOf(it.user);
            EXPECT_EQ(access.code, it.outcome == same ? code : it.outcome);
            EXPECT_EQ(access.found.size(), it.found);
            EXPECT_EQ(desk.selected.size(), 0U);
            desk.record.failNothing();
        }
    // Without a user administration no manager counts as selected.
    desk.record.fail("userGroupsOfUser", NotInstalled);
    EXPECT_EQ(accessOf(ada).code, UserManagerNotSelected);
    desk.record.fail("systemUserGroupsOfUser", NotInstalled);
    EXPECT_EQ(accessOf(bob).code, UserManagerNotSelected);
    // Entries of the groups before a failing one stay; user groups are asked in ascending order.
    desk.record.fail("modelGroupsAccessibleByUserGroup", kUnknownCode, 2);
    const auto access = accessOf(ada);
    EXPECT_EQ(access.code, kUnknownCode);
    EXPECT_EQ(access.found, (Entries{{orders, kRead}}));
}

TEST_F(AccessStructure, AFailingQuestionForTheLibraryDoesNotStopTheRun) {
    desk.rawEntries.insert({bosses.value(), {300, "without a library", -1, 2}});
    desk.record.fail("allowedApplicationLibrary", kUnknownCode);
    const auto access = accessOf(ada);
    EXPECT_EQ(access.code, Ok) << "that of the last user group";
    EXPECT_EQ(access.found, (Entries{{300, kRead}}));
    const auto loner = desk.user("without groups");
    desk.record.fail("allowedApplicationLibrary", kUnknownCode);
    EXPECT_EQ(accessOf(loner).code, kUnknownCode);
}

TEST_F(AccessStructure, CopiesOfAContainerHaveEntriesOfTheirOwn) {
    QorAccModelgroupContainer original;
    for (const std::int32_t permission : {1, 4})
        original.add(std::make_unique<QorAccModelgroup>(7, "Sales", 5, permission));
    QorAccModelgroupContainer copy(original);
    const auto& itself = copy;
    copy = itself;
    original = QorAccModelgroupContainer();
    EXPECT_EQ(original.numberOfElements(), 0U);
    EXPECT_EQ(entries(copy), (Entries{{7, 0}, {7, kWrite}})) << "1 is read as no access";
}

}  // namespace
