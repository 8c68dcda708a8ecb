// SPDX-License-Identifier: Apache-2.0
// A repository that fails, at every call once: an internal error, the failure value, and all is well the next time.
#include <algorithm>

#include "cardinality/Desk.h"
#include "cardinality/QorCardinalityCompleteCheck.h"
#include "platform/QorAttributeIds.h"

namespace {

constexpr auto kFailure = static_cast<QorErrorCode>(4711);

/// Lets the act run once undisturbed, which must give `well`, then once for each of its calls with that call failing;
/// `judge` is told the operation and what the act gave. Operations that may fail quietly are left out.
template <class Act, class Judge>
void failEveryCall(Desk& desk, int well, std::initializer_list<std::string_view> quiet, const Act& act,
                   const Judge& judge) {
    auto& record = desk.watched().record;
    record.forget();
    ASSERT_EQ(act(), well);
    const auto calls = record.order();
    ASSERT_GT(calls.size(), 3u);
    for (auto call = calls.begin(); call != calls.end(); ++call) {
        if (std::find(quiet.begin(), quiet.end(), *call) != quiet.end()) continue;
        SCOPED_TRACE(*call + ", call " + std::to_string(call - calls.begin()));
        record.fail(*call, kFailure, static_cast<int>(std::count(calls.begin(), call + 1, *call)));
        desk.internalErrors.clear();
        judge(*call, act());
        EXPECT_EQ(desk.internalErrors, std::vector<std::string>{"acard"});
        EXPECT_FALSE(desk.waitCursor);
        record.failNothing();
    }
    EXPECT_EQ(act(), well);
}

constexpr const char* kRules =
    "CARDINALITIES max-relations: 9 max-objects: 9 min-incoming: 1\n"
    "RELATION 'then' max-outgoing: 2 TO_CLASS 'Task' min-outgoing: 1";

TEST(FailingRepository, MakesAReadingFail) {
    Desk desk;
    desk.workshop.classText("Task", quoted(kRules));
    desk.workshop.classText("Document", "CARDINALITIES");
    desk.workshop.libraryText(desk.workshop.processes, QorAttributeId::AutomaticChecks,
                              "CHECK_CARDINALITIES before-save: 1");
    const auto act = [&] {
        desk.handler.Reset();
        return desk.handler.init(desk.workshop.processes, desk.workshop.environment);
    };
    const auto judge = [&](const std::string&, int result) {
        // The automatic checks are read first; without them they are off and the reading goes on.
        EXPECT_EQ(result, desk.handler.isCheckCardinalitiesBeforeSave() ? 0 : 1);
    };
    failEveryCall(desk, 1, {"getClassIDFromClassName", "getRelationIDFromRelationName"}, act, judge);
}

TEST(FailingRepository, TurnsDirectionsIntoImpossibleOnesAndNamesIntoUnknownOnes) {
    const struct {
        const char *operation, *error;
        std::size_t internalErrors;
    } rows[] = {
        {"getAllFromRelationsRecursive", "1975{Cardinalities,Task,max-outgoing,then}", 1},
        {"getRelationIDFromRelationName", "1966{Cardinalities,Task,then,1986}", 0},
        {"getClassIDFromClassName", "1966{Cardinalities,Task,Task,1987}", 0},
    };
    for (const auto& row : rows) {
        Desk desk;
        desk.watched().record.fail(row.operation, kFailure);
        desk.rules("Task", kRules);
        EXPECT_EQ(desk.handler.getErrorText(), row.error);
        EXPECT_EQ(desk.internalErrors.size(), row.internalErrors);
    }
}

TEST(FailingRepository, MakesEveryCheckFail) {
    Desk desk;
    desk.draw("a>b b>a x>a").rules("Task", kRules);
    auto& handler = desk.handler;
    const auto fails = [&](const std::string&, int result) {
        EXPECT_EQ(result, 0);
        EXPECT_FALSE(handler.isError());
    };
    failEveryCall(
        desk, 1, {}, [&] { return handler.checkModel(desk.model, 0); }, fails);
    failEveryCall(
        desk, 1, {}, [&] { return handler.checkObject(desk["a"], true, true); }, fails);
    failEveryCall(
        desk, 1, {}, [&] { return handler.checkObject(desk["a"], true, false); }, fails);
    QorCardinalityCompleteCheck complete(handler);
    const auto sink = [](const auto&) { return true; };
    failEveryCall(
        desk, 1, {}, [&] { return complete.checkModel(desk.model, sink) ? 1 : 0; }, fails);
    const auto ask = [&] {
        const auto task = desk["Task"];
        return handler.isNewObjectInBetweenAllowed(desk.model, task, desk["then"], desk["a"], desk["b"]) &&
                       handler.isNewObjectAllowed(desk.model, desk["Special"], desk["then"], desk["b"], false)
                   ? 1
                   : 0;
    };
    failEveryCall(desk, 1, {}, ask, fails);
}

TEST(FailingRepository, DoesNotHideABreachWhoseNamesItRefuses) {
    Desk desk;
    desk.draw("a>b").rules("Task", "CARDINALITIES RELATION 'then' max-outgoing: 0");
    const auto judge = [&](const std::string& operation, int result) {
        EXPECT_EQ(result, 0);
        const bool isName =
            operation == "getClassName" || operation == "getRelationClassName" || operation == "getAttributeValue";
        EXPECT_EQ(desk.names(desk.handler.getBadRelations()), isName ? "a>b" : "");
        EXPECT_EQ(desk.handler.getErrorText().view().starts_with("1964{1984<"), isName);
    };
    failEveryCall(
        desk, 0, {"isClass"}, [&] { return desk.handler.checkModel(desk.model, 0); }, judge);
}

TEST(FailingRepository, LetsARelationPassWhenAnEndCannotBeChecked) {
    Desk desk;
    desk.draw("a>b").rules("Task", "CARDINALITIES max-outgoing: 5");
    auto& record = desk.watched().record;
    record.fail("getFromRelationInstances", kFailure);
    EXPECT_EQ(desk.handler.checkRelation(desk["a>b"], true, true), 1) << "no breach put it among the bad ones";
    EXPECT_EQ(desk.internalErrors.size(), 1u);
    record.fail("relationOf", kFailure);
    EXPECT_EQ(desk.handler.checkRelation(desk["a>b"], true, true), 0);
}

}  // namespace
