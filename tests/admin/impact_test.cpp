// SPDX-License-Identifier: Apache-2.0
// What changes of permissions come to for users.
#include "admin/QorRightImpact.h"

#include <gtest/gtest.h>

#include "admin/QorModelGroupRights.h"
#include "support/UserDesk.h"

namespace {

using enum QorErrorCode;
using RightChange = std::tuple<long, long, std::int32_t, std::int32_t>;  // user, model group, before, after

std::vector<RightChange> listed(const QorRightImpact& impact) {
    std::vector<RightChange> found;
    for (const auto& it : impact.changes()) found.emplace_back(it.user.value(), it.modelGroup, it.before, it.after);
    return found;
}

class Impact : public testing::Test {
protected:
    Impact() {
        desk.join(ada, staff);
        desk.join(ada, bosses);
        desk.join(eve, staff);
        desk.permit(staff, orders, 2);
        desk.permit(bosses, orders, 4);
    }

    /// The change of one permission, planned.
    void plan(QorUserGroupID group, long modelGroup, QorPermissionState state) {
        ASSERT_EQ(assignment.open({modelGroup}, {group}), Ok);
        ASSERT_EQ(assignment.set({modelGroup}, {group}, state), Ok);
        ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly, [](const SV::String&) { return true; }), Ok);
    }

    UserDesk desk;
    QorUserID ada = desk.user("ada");
    QorUserID eve = desk.user("eve");
    QorUserGroupID staff = desk.group("Staff");
    QorUserGroupID bosses = desk.group("Bosses");
    long orders = desk.modelGroup("Orders");
    QorPermissionAssignment assignment;
    QorRightImpact impact;
};

TEST_F(Impact, WhoHasAsMuchThroughAnotherGroupLosesNothing) {
    plan(staff, orders, QorPermissionState::NoAccess);
    ASSERT_EQ(impact.read(assignment.changes()), Ok);
    EXPECT_EQ(listed(impact), (std::vector<RightChange>{{eve.value(), orders, 2, 0}}));
    EXPECT_FALSE(impact.changes().front().isRise());
}

TEST_F(Impact, OfEntriesThatContradictEachOtherTheHighestCounts) {
    desk.join(eve, bosses);
    for (const std::int32_t permission : {2, 4, 0, 2})
        desk.rawEntries.insert({bosses.value(), {orders, "Orders", UserDesk::kLibrary, permission}});
    desk.permit(bosses, orders, 2);
    plan(staff, orders, QorPermissionState::Write);
    ASSERT_EQ(impact.read(assignment.changes()), Ok);
    EXPECT_TRUE(impact.changes().empty());
}

TEST_F(Impact, AModelGroupThatNobodyReachesCountsForUsersOfItsLibrary) {
    const long fresh = desk.modelGroup("New");
    desk.of(eve).library = UserDesk::kLibrary + 1;
    plan(staff, fresh, QorPermissionState::Read);
    ASSERT_EQ(impact.read(assignment.changes()), Ok);
    EXPECT_EQ(listed(impact), (std::vector<RightChange>{{ada.value(), fresh, 0, 2}}));
}

/// Rights read before and after changes differ by exactly what was foretold.
TEST_F(Impact, IsWhatTheRightsShowAfterwards) {
    std::mt19937 random(99);
    desk.mode = QorSingleSignOnMode::First;
    std::vector<QorUserID> users{ada, eve};
    std::vector<QorUserGroupID> groups{staff, bosses};
    desk.populate(random, QorUserManagerNumber::FirstSingleSignOn, users, groups);
    ISortedSet<long> roots;
    for (int i = 0; i < 8; ++i) {
        const long root = desk.modelGroup("m" + std::to_string(i), 0, UserDesk::kLibrary + random() % 2);
        roots.add(root);
        desk.modelGroup("s" + std::to_string(i), root, desk.modelGroups[root].library);
    }
    const auto witness = desk.group("Witness");  // tells the library of all of them
    desk.join(ada, witness);
    for (const auto& [modelGroup, it] : desk.modelGroups) {
        desk.permit(witness, modelGroup, 2);
        for (const auto& group : groups)
            if (random() % 2 == 0) desk.permit(group, modelGroup, static_cast<std::int32_t>(2 + 2 * (random() % 2)));
    }
    const auto rights = [&] {
        std::map<std::pair<long, long>, std::int32_t> found;
        QorModelGroupRights read;
        for (const auto& user : users) {
            EXPECT_EQ(read.read(user), Ok);
            for (const auto& right : read.rights()) found[{user.value(), right.modelGroup}] = right.permission;
        }
        return found;
    };
    std::size_t seen = 0;
    for (int round = 0; round < 20; ++round) {
        ISortedSet<QorUserGroupID> some{groups[random() % 10], groups[random() % 10], groups[random() % 10]};
        ASSERT_EQ(assignment.open(roots, some), Ok);
        for (const auto& group : some)
            for (const long root : roots) {
                if (random() % 2 != 0) continue;
                ASSERT_EQ(assignment.set({root}, {group}, static_cast<QorPermissionState>(2 * (random() % 3))), Ok);
            }
        ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly, [&](const SV::String&) { return random() % 2 == 0; }),
                  Ok);
        ASSERT_EQ(impact.read(assignment.changes()), Ok);
        auto foretold = rights();
        for (const auto& it : impact.changes()) {
            EXPECT_EQ((foretold[{it.user.value(), it.modelGroup}]), it.before);
            foretold[{it.user.value(), it.modelGroup}] = it.after;
        }
        std::erase_if(foretold, [](const auto& right) { return right.second == 0; });
        ASSERT_EQ(assignment.apply(), Ok);
        EXPECT_EQ(rights(), foretold);
        seen += impact.changes().size();
    }
    EXPECT_GT(seen, 100U);
}

TEST_F(Impact, IsEmptyAfterAnyFailure) {
    plan(staff, orders, QorPermissionState::NoAccess);
    for (const char* operation : {"push 1000", "allUserIDs 1000", "singleSignOnMode", "userGroupsOfUser",
                                  "modelGroupsAccessibleByUserGroup", "allowedApplicationLibrary"}) {
        desk.record.fail(operation, UserManagerNotSelected);
        EXPECT_EQ(impact.read(assignment.changes()), UserManagerNotSelected) << operation;
        EXPECT_TRUE(impact.changes().empty());
        ASSERT_EQ(impact.read(assignment.changes()), Ok);
        EXPECT_EQ(impact.changes().size(), 1U);
    }
    EXPECT_EQ(impact.read({}), Ok);
    EXPECT_TRUE(impact.changes().empty());
}

}  // namespace
