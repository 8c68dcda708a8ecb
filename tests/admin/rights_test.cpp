// SPDX-License-Identifier: Apache-2.0
// What a user may do and why, and the reverse: who can reach a model group.
#include <gtest/gtest.h>

#include "admin/QorModelGroupReach.h"
#include "admin/QorModelGroupRights.h"
#include "support/UserDesk.h"

namespace {

using enum QorErrorCode;
using Sources = std::vector<std::pair<long, std::int32_t>>;  // user group and permission

constexpr auto kUnknownCode = static_cast<QorErrorCode>(4711);
constexpr std::int32_t kRead = QorModelGroupPermission::Read;
constexpr std::int32_t kWrite = QorModelGroupPermission::Write;

Sources listed(std::span<const QorPermissionSource> sources) {
    Sources found;
    for (const auto& source : sources) found.emplace_back(source.userGroup.value(), source.permission);
    return found;
}

class Rights : public testing::Test {
protected:
    Rights() {
        desk.mode = QorSingleSignOnMode::Second;
        desk.join(ada, staff);
        desk.join(ada, bosses);
        desk.join(eve, staff);
        desk.joinSystem(cyd, guests);
        desk.permit(staff, orders, kRead);
        desk.permit(bosses, orders, kWrite);
        desk.permit(bosses, archive, kRead);
        desk.permit(guests, archive, kWrite);
    }

    UserDesk desk;
    QorUserID cyd = desk.user("cyd", QorUserManagerNumber::SecondSingleSignOn);
    QorUserID ada = desk.user("ada");
    QorUserID eve = desk.user("eve");
    QorUserGroupID staff = desk.group("Staff");
    QorUserGroupID bosses = desk.group("Bosses");
    QorUserGroupID guests = desk.group("Guests");
    long orders = desk.modelGroup("Orders");
    long archive = desk.modelGroup("Archive");
};

TEST_F(Rights, OfAUserAreMergedToTheHighestWithTheGroupsTheyComeThrough) {
    QorModelGroupRights rights;
    ASSERT_EQ(rights.read(ada), Ok);
    ASSERT_EQ(rights.rights().size(), 2U);
    const auto* right = rights.find(orders);
    ASSERT_NE(right, nullptr);
    EXPECT_EQ(right->name, "Orders");
    EXPECT_EQ(right->permission, kWrite);
    EXPECT_EQ(listed(rights.sources(*right)), (Sources{{staff.value(), kRead}, {bosses.value(), kWrite}}));
    EXPECT_EQ(rights.find(archive), &rights.rights()[1]);
    EXPECT_EQ(rights.find(archive + 1), nullptr);

    ASSERT_EQ(rights.read(cyd), Ok);
    EXPECT_EQ(rights.find(orders), nullptr);
    EXPECT_EQ(listed(rights.sources(rights.rights().front())), (Sources{{guests.value(), kWrite}}));
}

TEST_F(Rights, ThousandsOfEqualEntriesAreOneReason) {
    const auto last = desk.group("Last");
    desk.join(ada, last);
    for (int i = 0; i < 5000; ++i)
        desk.rawEntries.insert({last.value(), {archive, "Archive", UserDesk::kLibrary, i == 2500 ? 4 : 2}});
    desk.rawEntries.insert({last.value(), {archive, "Archive", UserDesk::kLibrary + 1, 4}});
    desk.rawEntries.insert({last.value(), {77, "odd", UserDesk::kLibrary, 3}});
    QorModelGroupRights rights;
    ASSERT_EQ(rights.read(ada), Ok);
    EXPECT_EQ(rights.find(77), nullptr);
    EXPECT_EQ(listed(rights.sources(*rights.find(archive))),
              (Sources{{bosses.value(), kRead}, {last.value(), kWrite}}));

    QorModelGroupReach reach;
    ASSERT_EQ(reach.read(archive), Ok);
    EXPECT_EQ(listed(reach.sources(reach.users()[1])), (Sources{{bosses.value(), kRead}, {last.value(), kWrite}}));
}

TEST_F(Rights, OfAModelGroupAreThoseOfTheUsersWhoReachIt) {
    QorModelGroupReach reach;
    ASSERT_EQ(reach.read(archive), Ok);
    EXPECT_EQ(reach.name(), "Archive");
    ASSERT_EQ(reach.users().size(), 2U);
    EXPECT_EQ(reach.users()[0].user, cyd) << "in order of the users, not of their managers";
    EXPECT_EQ(reach.users()[1].user, ada);
    EXPECT_EQ(reach.users()[1].permission, kRead);
    EXPECT_EQ(listed(reach.sources(reach.users()[1])), (Sources{{bosses.value(), kRead}}));

    desk.of(ada).library = UserDesk::kLibrary + 1;
    desk.mode = 0;
    ASSERT_EQ(reach.read(archive), Ok);
    EXPECT_TRUE(reach.users().empty());
}

/// Both ways to ask give the same pairs, for memberships and permissions without a pattern.
TEST_F(Rights, BothDirectionsAgree) {
    std::mt19937 random(12345);
    std::vector<QorUserID> users{ada, eve, cyd};
    std::vector<QorUserGroupID> groups{staff, bosses, guests};
    std::vector<long> modelGroups{orders, archive};
    desk.populate(random, QorUserManagerNumber::SecondSingleSignOn, users, groups);
    for (int i = 0; i < 12; ++i)
        modelGroups.push_back(desk.modelGroup("m" + std::to_string(i), 0, UserDesk::kLibrary + random() % 2));
    desk.of(cyd).managers.insert(QorUserManagerNumber::Ordinary);
    for (const auto& group : groups)
        for (const long modelGroup : modelGroups)
            desk.permit(group, modelGroup, static_cast<std::int32_t>(random() % 3 * 2));

    using Reached = std::map<std::pair<long, long>, std::pair<std::int32_t, Sources>>;
    Reached forwards;
    Reached backwards;
    QorModelGroupRights rights;
    for (const auto& user : users) {
        ASSERT_EQ(rights.read(user), Ok);
        for (const auto& right : rights.rights())
            forwards[{user.value(), right.modelGroup}] = {right.permission, listed(rights.sources(right))};
    }
    QorModelGroupReach reach;
    for (const long modelGroup : modelGroups) {
        desk.record.forget();
        ASSERT_EQ(reach.read(modelGroup), Ok);
        EXPECT_LE(desk.record.count("modelGroupsAccessibleByUserGroup"), static_cast<int>(groups.size()));
        for (const auto& user : reach.users())
            backwards[{user.user.value(), modelGroup}] = {user.permission, listed(reach.sources(user))};
    }
    EXPECT_GT(forwards.size(), 100U);
    EXPECT_EQ(forwards, backwards);
}

TEST_F(Rights, UnknownUsersAndModelGroupsAreToldApartFromThoseWithoutAccess) {
    QorModelGroupRights rights;
    EXPECT_EQ(rights.read(QorUserID(4294967296L + ada.value())), NotFound);
    EXPECT_EQ(rights.read(desk.user("newcomer")), Ok);
    QorModelGroupReach reach;
    EXPECT_EQ(reach.read(4294967296L + orders), NotFound);
    EXPECT_EQ(reach.read(desk.modelGroup("New")), Ok);
}

TEST_F(Rights, AreEmptyAfterAnyFailureAndReadAgainAfterwards) {
    QorModelGroupRights rights;
    QorModelGroupReach reach;
    const struct {
        const char* operation;
        bool ofUser = true;  ///< is called for the rights of a user, too
        int nth = 1;
    } cases[] = {
        {"push 1000"},
        {"push 1002"},
        {"allUserIDs 1000", false},
        {"allUserIDs 1002"},
        {"singleSignOnMode"},
        {"userGroupsOfUser", false, 2},
        {"systemUserGroupsOfUser"},
        {"allowedApplicationLibrary"},
        {"modelGroupsAccessibleByUserGroup"},
        {"modelGroupInfo", false},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.operation);
        const auto code = std::string_view(it.operation).starts_with("push") ? UserManagerNotSelected : kUnknownCode;
        for (const bool isForwards : {true, false}) {
            if (isForwards && !it.ofUser) continue;
            desk.record.fail(it.operation, kUnknownCode, it.nth);
            EXPECT_EQ(isForwards ? rights.read(cyd) : reach.read(archive), code);
            EXPECT_TRUE(isForwards ? rights.rights().empty() : reach.users().empty() && reach.name().IsEmpty());
            EXPECT_EQ(desk.selected.size(), 0U);
            desk.record.failNothing();
            EXPECT_EQ(isForwards ? rights.read(cyd) : reach.read(archive), Ok);
        }
    }
}

}  // namespace
