// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <numeric>

#include "admin/QorPermissionAssignment.h"
#include "platform/QorMessage.h"
#include "support/UserDesk.h"

namespace {

using enum QorErrorCode;
using State = QorPermissionState;
constexpr auto kUnknownCode = static_cast<QorErrorCode>(4711);
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

    /// What the plan changes, by names, in their order: "Claims/Staff=4 ".
    [[nodiscard]] std::string planned() const {
        std::set<std::string> found;
        for (const auto& change : assignment.changes())
            found.insert(change.modelGroupName.str() + "/" + change.userGroupName.str() + "=" +
                         std::to_string(change.after) + " ");
        return std::accumulate(found.begin(), found.end(), std::string());
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
    EXPECT_EQ(assignment.plan(QorSubGroupMode::None), OutOfRange);
    EXPECT_EQ(desk.internalErrors, std::vector<std::string>{"aaccess: No adaption mode active?"});
    EXPECT_EQ(assignment.apply(), NotFound);
    EXPECT_EQ(assignment.open({99}, {staff}), NotFound);
    EXPECT_EQ(assignment.open({sales}, {QorUserGroupID(99)}), NotFound);
    EXPECT_EQ(assignment.state({sales}, {staff}), State::Undetermined) << "closed by the failure";
}

TEST_F(Assignment, PlansFollowTheModeAndTheAnswers) {
    const auto adapted = QorSubGroupMode::AdaptedOnly;
    const auto all = QorSubGroupMode::All;
    const std::string raised = "Archive/Staff=4 Claims/Staff=4 Sales/Staff=4 ";
    const struct {
        const char* name;
        State staffOnSales;
        QorSubGroupMode mode;
        std::string answers;  ///< to as many questions
        std::string changes;
    } cases[] = {
        {"higher ones ask nothing", State::Write, adapted, "", raised},
        {"all brings the other user groups down too", State::Write, all, "",
         "Archive/Bosses=4 Archive/Staff=4 Claims/Bosses=4 Claims/Staff=4 Orders/Bosses=4 Sales/Staff=4 "},
        {"no stops the remaining sub-groups", State::Read, adapted, "n", ""},
        {"yes goes on", State::Read, adapted, "y", "Claims/Staff=2 Orders/Staff=2 "},
        {"each lowering asks", State::NoAccess, adapted, "yn", "Orders/Staff=0 Sales/Staff=0 "},
        {"no is for one user group only", State::NoAccess, all, "n",
         "Archive/Bosses=4 Claims/Bosses=4 Orders/Bosses=4 Sales/Staff=0 "},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        ASSERT_EQ(open(), Ok);
        ASSERT_EQ(assignment.set({sales}, {staff}, it.staffOnSales), Ok);
        std::size_t asked = 0;
        const auto answer = [&](const SV::String&) { return asked < it.answers.size() && it.answers[asked++] == 'y'; };
        ASSERT_EQ(assignment.plan(it.mode, answer), Ok);
        EXPECT_EQ(planned(), it.changes);
        EXPECT_EQ(asked, it.answers.size());
        EXPECT_EQ(assignment.questions().size(), it.answers.size());
        EXPECT_EQ(permissions(staff), (std::vector<std::int32_t>{kRead, kWrite, 0, kRead})) << "a dry run";
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
    EXPECT_EQ(planned(), "Archive/Bosses=4 Claims/Bosses=4 Claims/Staff=2 Orders/Bosses=4 Sales/Staff=4 ");
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
    EXPECT_EQ(planned(), "Archive/Bosses=0 Sales/Bosses=0 ");
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
    for (const char* operation : {"setUserGroupPermission", "commit", "begin", "without units"})
        for (const int nth : {1, 2, 3}) {
            SCOPED_TRACE(operation + std::to_string(nth));
            desk.offersUnits = operation[0] != 'w';
            ASSERT_EQ(open(), Ok);
            ASSERT_EQ(assignment.set({sales}, {staff}, State::Write), Ok);
            ASSERT_EQ(assignment.plan(QorSubGroupMode::AdaptedOnly), Ok);
            desk.record.fail(operation, kUnknownCode);
            if (operation[0] != 'c') desk.record.fail("setUserGroupPermission", kUnknownCode, nth);
            EXPECT_EQ(assignment.apply(), kUnknownCode);
            EXPECT_EQ(permissions(staff), before);
            EXPECT_FALSE(desk.unit.has_value());
            desk.record.failNothing();
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
