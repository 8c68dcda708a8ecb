// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "admin/QorPermissionAssignment.h"
#include "platform/QorMessage.h"
#include "support/UserDesk.h"

namespace {

using enum QorErrorCode;
using State = QorPermissionState;
using Permissions = std::map<std::pair<std::string, std::string>, std::int32_t>;  // model group and user group

constexpr auto kUnknownCode = static_cast<QorErrorCode>(4711);
constexpr std::int32_t kNone = QorModelGroupPermission::None;
constexpr std::int32_t kRead = QorModelGroupPermission::Read;
constexpr std::int32_t kWrite = QorModelGroupPermission::Write;

/// Sales with Orders and Claims below, Claims with Archive below; Staff and Bosses.
class Assignment : public testing::Test {
protected:
    Assignment() {
        desk.permit(staff, sales, kRead);
        desk.permit(staff, orders, kWrite);
        desk.permit(staff, archive, kRead);
        desk.permit(bosses, sales, kWrite);
    }

    [[nodiscard]] QorErrorCode open() { return assignment.open({sales}, {staff, bosses}); }

    /// What the plan changes, by names.
    [[nodiscard]] Permissions planned() const {
        Permissions found;
        for (const auto& change : assignment.changes())
            found[{change.modelGroupName.str(), change.userGroupName.str()}] = change.after;
        return found;
    }

    [[nodiscard]] std::vector<std::int32_t> permissions(QorUserGroupID group) const {
        std::vector<std::int32_t> found;
        for (const long modelGroup : {sales, orders, claims, archive})
            found.push_back(desk.permission(group, modelGroup));
        return found;
    }

    UserDesk desk;
    QorUserGroupID staff = desk.group("Staff");
    QorUserGroupID bosses = desk.group("Bosses");
    long sales = desk.modelGroup("Sales");
    long orders = desk.modelGroup("Orders", sales);
    long claims = desk.modelGroup("Claims", sales);
    long archive = desk.modelGroup("Archive", claims);
    QorPermissionAssignment assignment;
};

TEST_F(Assignment, StatesCycleAndAnUndeterminedOneGoesToRead) {
    ASSERT_EQ(open(), Ok);
    for (const auto state : {State::Write, State::NoAccess, State::Read}) {
        EXPECT_EQ(assignment.click({sales}, {staff}), Ok);
        EXPECT_EQ(assignment.state({sales}, {staff}), state);
    }
    EXPECT_EQ(assignment.state({sales}, {staff, bosses}), State::Undetermined) << "read and write";
    EXPECT_EQ(assignment.state({sales, claims}, {staff}), State::Undetermined) << "mixed below";
    EXPECT_EQ(assignment.state({sales, archive}, {staff}), State::Read);
    EXPECT_EQ(assignment.click({sales}, {staff, bosses}), Ok);
    EXPECT_EQ(assignment.state({sales}, {staff, bosses}), State::Read);
}

TEST_F(Assignment, OnlyWhatWasOpenedCanBeSetAndOnlyToAPermission) {
    EXPECT_EQ(assignment.set({sales}, {staff}, State::Read), NotFound) << "nothing is open";
    EXPECT_EQ(assignment.plan(QorSubGroupMode::All), NotFound);
    EXPECT_EQ(assignment.apply(), NotFound);
    ASSERT_EQ(open(), Ok);
    for (const int value : {-1, 1, 3, 5, 6})
        EXPECT_EQ(assignment.set({sales}, {staff}, static_cast<State>(value)), OutOfRange) << value;
    EXPECT_EQ(assignment.set({sales, orders}, {staff}, State::Write), NotFound) << "a sub-group";
    EXPECT_EQ(assignment.set({sales}, {staff, QorUserGroupID(4294967296L + staff.value())}, State::Write), NotFound);
    EXPECT_EQ(assignment.state({sales}, {staff}), State::Read);
    EXPECT_EQ(assignment.apply(), NotFound) << "nothing is planned";
    ASSERT_EQ(assignment.plan(QorSubGroupMode::All), Ok);
    ASSERT_EQ(assignment.set({sales}, {staff}, State::Read), Ok);
    EXPECT_EQ(assignment.apply(), NotFound) << "the plan is out of date";
    EXPECT_EQ(assignment.open({99}, {staff}), NotFound);
    EXPECT_EQ(assignment.open({sales}, {QorUserGroupID(99)}), NotFound);
    EXPECT_EQ(assignment.state({sales}, {staff}), State::Undetermined) << "closed by the failure";
}

TEST_F(Assignment, WithoutAModeThereIsNoPlan) {
    ASSERT_EQ(open(), Ok);
    ASSERT_EQ(assignment.set({sales}, {staff}, State::Write), Ok);
    EXPECT_EQ(assignment.plan(QorSubGroupMode::None), OutOfRange);
    EXPECT_EQ(desk.internalErrors, std::vector<std::string>{"aaccess: No adaption mode active?"});
    EXPECT_EQ(assignment.apply(), NotFound);
}

struct PlanCase {
    const char* name;
    State staffOnSales;
    QorSubGroupMode mode;
    std::vector<bool> answers;
    std::size_t questions;
    Permissions changes;
};

TEST_F(Assignment, PlansFollowTheModeAndTheAnswers) {
    const std::pair<std::string, std::string> staffSales{"Sales", "Staff"}, staffOrders{"Orders", "Staff"},
        staffClaims{"Claims", "Staff"}, staffArchive{"Archive", "Staff"}, bossesOrders{"Orders", "Bosses"},
        bossesClaims{"Claims", "Bosses"}, bossesArchive{"Archive", "Bosses"};
    const auto adapted = QorSubGroupMode::AdaptedOnly;
    const auto all = QorSubGroupMode::All;
    const PlanCase cases[] = {
        {"higher ones ask nothing",
         State::Write,
         adapted,
         {},
         0,
         {{staffSales, kWrite}, {staffClaims, kWrite}, {staffArchive, kWrite}}},
        {"all brings the other user groups down too",
         State::Write,
         all,
         {},
         0,
         {{staffSales, kWrite},
          {staffClaims, kWrite},
          {staffArchive, kWrite},
          {bossesOrders, kWrite},
          {bossesClaims, kWrite},
          {bossesArchive, kWrite}}},
        {"no stops the remaining sub-groups", State::Read, adapted, {false}, 1, {}},
        {"yes goes on", State::Read, adapted, {true}, 1, {{staffOrders, kRead}, {staffClaims, kRead}}},
        {"each lowering asks", State::NoAccess, adapted, {true, false}, 2, {{staffSales, kNone}, {staffOrders, kNone}}},
        {"no is for one user group only",
         State::NoAccess,
         all,
         {false},
         1,
         {{staffSales, kNone}, {bossesOrders, kWrite}, {bossesClaims, kWrite}, {bossesArchive, kWrite}}},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        ASSERT_EQ(open(), Ok);
        ASSERT_EQ(assignment.set({sales}, {staff}, it.staffOnSales), Ok);
        auto answers = it.answers;
        std::vector<std::string> asked;
        ASSERT_EQ(assignment.plan(it.mode,
                                  [&](const SV::String& text) {
                                      asked.push_back(text.str());
                                      const bool answer = !answers.empty() && answers.front();
                                      if (!answers.empty()) answers.erase(answers.begin());
                                      return answer;
                                  }),
                  Ok);
        EXPECT_EQ(planned(), it.changes);
        EXPECT_EQ(asked.size(), it.questions);
        EXPECT_EQ(assignment.questions().size(), it.questions);
        EXPECT_EQ(permissions(staff), (std::vector<std::int32_t>{kRead, kWrite, kNone, kRead})) << "a dry run";
    }
}

TEST_F(Assignment, TheQuestionNamesTheSubGroupOnTheTopWindow) {
    ASSERT_EQ(open(), Ok);
    ASSERT_EQ(assignment.set({sales}, {staff}, State::Read), Ok);
    desk.answers = {true};
    ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly), Ok);
    EXPECT_EQ(desk.questions, std::vector<std::string>{Qor_Message(29100, {{"%g", "Orders"}, {"%u", "Staff"}}).str()});
    const auto& question = assignment.questions().front();
    EXPECT_TRUE(question.goOn);
    EXPECT_EQ(question.text.str(), desk.questions.front());
    EXPECT_EQ(std::pair(question.lowering.before, question.lowering.after), std::pair(kWrite, kRead));
    EXPECT_TRUE(!assignment.changes()[0].isRise() && assignment.changes()[1].isRise());
}

TEST_F(Assignment, AChosenGroupBelowAChosenOneKeepsItsOwnChoice) {
    ASSERT_EQ(assignment.open({claims, sales}, {staff, bosses}), Ok);
    ASSERT_EQ(assignment.set({sales}, {staff}, State::Write), Ok);
    ASSERT_EQ(assignment.set({claims}, {staff}, State::Read), Ok);
    ASSERT_EQ(assignment.plan(QorSubGroupMode::All), Ok);
    EXPECT_TRUE(assignment.questions().empty()) << "what the plan itself raised is not lowered by asking";
    EXPECT_EQ(planned(), (Permissions{{{"Sales", "Staff"}, kWrite},
                                      {{"Claims", "Staff"}, kRead},
                                      {{"Orders", "Bosses"}, kWrite},
                                      {{"Claims", "Bosses"}, kWrite},
                                      {{"Archive", "Bosses"}, kWrite}}));
}

TEST_F(Assignment, WhatWasSetIsNotAskedForFromAbove) {
    desk.permit(staff, claims, kWrite);
    ASSERT_EQ(assignment.open({claims, sales}, {staff}), Ok);
    ASSERT_EQ(assignment.set({sales}, {staff}, State::NoAccess), Ok);
    ASSERT_EQ(assignment.set({claims}, {staff}, State::Read), Ok);
    ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly, [](const SV::String&) { return true; }), Ok);
    ASSERT_EQ(assignment.questions().size(), 2U);
    EXPECT_EQ(assignment.questions()[0].lowering.modelGroup, orders);
    EXPECT_EQ(assignment.questions()[1].lowering.modelGroup, archive);
}

TEST_F(Assignment, ACircleOfModelGroupsEnds) {
    desk.modelGroups[archive].below.insert(sales);
    desk.permit(bosses, archive, kWrite);
    ASSERT_EQ(assignment.open({sales, archive}, {bosses}), Ok);
    ASSERT_EQ(assignment.set({sales}, {bosses}, State::NoAccess), Ok);
    ASSERT_EQ(assignment.plan(QorSubGroupMode::All, [](const SV::String&) { return true; }), Ok);
    EXPECT_EQ(planned(), (Permissions{{{"Sales", "Bosses"}, kNone}, {{"Archive", "Bosses"}, kNone}}));
    EXPECT_EQ(assignment.questions().size(), 1U) << "no group is a sub-group of its own";
}

TEST_F(Assignment, APlanIsCarriedOutOnceAndCountsFromThen) {
    ASSERT_EQ(open(), Ok);
    ASSERT_EQ(assignment.set({sales}, {staff}, State::Write), Ok);
    ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly), Ok);
    ASSERT_EQ(assignment.apply(), Ok);
    EXPECT_EQ(permissions(staff), (std::vector<std::int32_t>{kWrite, kWrite, kWrite, kWrite}));
    EXPECT_EQ(assignment.changes().size(), 3U);
    EXPECT_EQ(assignment.apply(), NotFound);
    EXPECT_EQ(assignment.state({sales, orders, claims, archive}, {staff}), State::Write);
    ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly), Ok);
    EXPECT_TRUE(assignment.changes().empty());
}

TEST_F(Assignment, AFailureAnywhereChangesNothing) {
    const auto before = permissions(staff);
    for (const bool offersUnits : {true, false})
        for (const char* operation : {"setUserGroupPermission", "commit", "begin"}) {
            if (!offersUnits && operation[0] != 's') continue;
            for (const int nth : {1, 2, 3}) {
                SCOPED_TRACE(std::string(operation) + " " + std::to_string(nth) +
                             (offersUnits ? "" : " without units"));
                desk.offersUnits = offersUnits;
                ASSERT_EQ(open(), Ok);
                ASSERT_EQ(assignment.set({sales}, {staff}, State::Write), Ok);
                ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly), Ok);
                desk.record.fail(operation, kUnknownCode, operation[0] == 's' ? nth : 1);
                if (operation[0] == 'b') desk.record.fail("setUserGroupPermission", kUnknownCode, nth);
                EXPECT_EQ(assignment.apply(), kUnknownCode);
                EXPECT_EQ(permissions(staff), before);
                EXPECT_FALSE(desk.unit.has_value());
                desk.record.failNothing();
            }
        }
    ASSERT_EQ(assignment.apply(), Ok) << "the plan stays";
    EXPECT_EQ(desk.permission(staff, claims), kWrite);
}

TEST_F(Assignment, CannotBeOpenedWhenAPermissionCannotBeRead) {
    for (const char* operation : {"subGroups", "modelGroupsAccessibleByUserGroup"}) {
        desk.record.fail(operation, kUnknownCode);
        EXPECT_EQ(open(), kUnknownCode) << operation;
        EXPECT_EQ(assignment.set({sales}, {staff}, State::Read), NotFound);
    }
    desk.record.fail("userGroupName", kUnknownCode);
    EXPECT_EQ(open(), Ok) << "a name is not worth a refusal";
    ASSERT_EQ(assignment.set({sales}, {staff}, State::Write), Ok);
    ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly), Ok);
    EXPECT_EQ(assignment.changes().front().userGroupName.str(), "#" + std::to_string(staff.value()));
}

}  // namespace
