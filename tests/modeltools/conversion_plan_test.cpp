// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityHandler.h"
#include "modeltools/ConversionDesk.h"
#include "modeltools/QorAttributeTransfer.h"
#include "modeltools/QorConversionPlan.h"
#include "support/Picture.h"

namespace {

using Kind = QorConversionProblemKind;

class Planning : public testing::Test {
protected:
    ~Planning() override { QorCardinalityHandler::Instance().Reset(); }

    ConversionDesk desk;
    QorConversionPlan plan;

    bool make(const ISortedSet<long>& objects, std::string_view into = "Check") {
        return plan.make(desk.shop, objects, desk.idOf(into));
    }
    [[nodiscard]] std::vector<Kind> kinds() const {
        std::vector<Kind> all;
        for (const auto& problem : plan.problems()) all.push_back(problem.kind);
        return all;
    }
};

/// The attributes with their fates and the numbers of objects, as far as some have a value: "Count:0*2 ".
std::string fatesIn(const QorConversionPlan& plan, const ConversionDesk& desk) {
    std::string all;
    for (const auto& its : plan.attributes())
        if (its.objects != 0)
            all += std::string(desk.reader().nameOf(static_cast<QorIdentifier>(its.source))) + ":" +
                   std::to_string(static_cast<int>(its.fate)) + "*" + std::to_string(its.objects) + " ";
    return all;
}

TEST_F(Planning, TellsWhatIsCarriedCastDroppedAndLost) {
    desk.text("CLASS \"Check\" ATTR \"Count\" ATTR \"Result\" from: \"Sum\"");
    const auto tasks = desk.objects("Task", {"One", "Two"});
    for (const QorIdentifier task : tasks) desk.value(task, "Count", "7");
    desk.value(tasks[0], "Sum", "1 + 1");
    desk.value(tasks[1], "Info", "lost");
    desk.row(tasks[1], "nail", "3");
    const QorIdentifier lost = desk.connect(tasks[0], "at", tasks[1]);
    desk.connect(tasks[0], "and", tasks[0]);
    const std::string toOne = "OBJECT \"One\" class: \"Task\" model: \"Monday\" type: \"Shop\"";
    desk.value(desk.object("Plain", "Inside"), "Uses", toOne + toOne);
    const QorIdentifier notes = desk.model("Notes", "Outside");
    const QorIdentifier note = desk.object("Plain", "Outside");
    desk.value(note, "Uses", toOne);
    ASSERT_TRUE(plan.make(desk.shop, {tasks[0], tasks[1]}, desk.idOf("Check"), {notes}));
    EXPECT_EQ(fatesIn(plan, desk), "Count:0*2 Table:2*1 Sum:1*1 Info:2*1 ");
    ASSERT_EQ(plan.lostRelations().size(), 2U) << "told for either object";
    EXPECT_EQ(plan.lostRelations()[0].relation, lost);
    std::vector<std::tuple<long, long, long>> references;
    for (const auto& its : plan.lostReferences()) references.emplace_back(its.object, its.model, its.attribute);
    const long uses = desk.attributeOf(note, "Uses");
    EXPECT_EQ(references,
              (std::vector<std::tuple<long, long, long>>{{tasks[0], desk.shop, uses}, {tasks[0], notes, uses}}));
    EXPECT_TRUE(desk.isThere(tasks[0])) << "a plan changes nothing";

    ASSERT_TRUE(plan.carryOut());
    EXPECT_FALSE(desk.isThere(tasks[0]));
    EXPECT_EQ(desk.valueOf(plan.objects()[0].newObject, "Result"), "2");
    EXPECT_EQ(desk.valueOf(plan.objects()[1].newObject, "Count"), "7");
    EXPECT_FALSE(plan.carryOut()) << "once only";
}

TEST_F(Planning, NamesEveryProblemAndChangesNothing) {
    const auto tasks = desk.objects("Task", {"One", "Two", "Three", "Four"});
    (void)desk.object("Check", "One");
    desk.value(tasks[1], "Kind", "c");
    const QorIdentifier then = desk.connect(tasks[2], "then", tasks[3]);
    const auto before = desk.reader().objectsOf(desk.shop);
    EXPECT_FALSE(make({tasks[0], tasks[1], tasks[2]}));
    EXPECT_EQ(kinds(), (std::vector{Kind::NotMade, Kind::ValueRefused, Kind::RelationRefused}));
    EXPECT_EQ(plan.problems()[1].source, desk.attributeOf(tasks[1], "Kind"));
    EXPECT_EQ(plan.problems()[2].relation, then);
    EXPECT_FALSE(plan.carryOut());
    EXPECT_EQ(desk.reader().objectsOf(desk.shop), before);
    EXPECT_EQ(desk.ends(then), std::to_string(tasks[2]) + ">" + std::to_string(tasks[3]));

    EXPECT_FALSE(make({tasks[0]}, "Plain"));
    EXPECT_EQ(kinds(), std::vector{Kind::NotIntoClass});
    EXPECT_FALSE(plan.attributes().empty()) << "what would be lost";
    EXPECT_FALSE(make({before.back(), -1, 0, 4294967296L + tasks[0]}, "Plain"));
    EXPECT_EQ(kinds(),
              (std::vector{Kind::UnknownObject, Kind::UnknownObject, Kind::NoConversions, Kind::UnknownObject}));
    desk.text("CLASS");
    EXPECT_FALSE(make({tasks[3]}));
    EXPECT_EQ(kinds(), std::vector{Kind::WrongText});
    EXPECT_EQ(desk.shown(), "");
}

TEST_F(Planning, IsCarriedOutAsAWholeOrNotAtAll) {
    const auto tasks = desk.objects("Task", {"One", "Two", "Three"});
    ASSERT_TRUE(make({tasks[0], tasks[1], tasks[2]}));
    (void)desk.repository().deleteInstance(desk.shop, tasks[2]);
    EXPECT_FALSE(plan.carryOut()) << "an object is gone";
    EXPECT_EQ(kinds(), std::vector{Kind::UnknownObject});
    EXPECT_TRUE(desk.isThere(tasks[0]));
    EXPECT_TRUE(desk.isThere(tasks[1]));
    EXPECT_EQ(plan.objects()[0].newObject, -1);

    QorHost host = desk.platform.host();
    FailingRepository withoutUnits(*host.repository);
    host.repository = &withoutUnits;
    const QorHostInstallation installed(host);
    desk.value(tasks[0], "Count", "7");
    EXPECT_FALSE(make({tasks[0]}));
    EXPECT_EQ(kinds(), std::vector{Kind::NoUnitsOfWork});
    EXPECT_EQ(fatesIn(plan, desk), "Count:0*1 ") << "counted without a rehearsal";
}

TEST_F(Planning, MovesEveryRelationWhereNoneStaysBehind) {
    ASSERT_TRUE(desk.builder().setUnmovedRelationClass(desk.processes, {}).ok());
    ASSERT_EQ(desk.load(), QorErrorCode::Ok);
    const auto tasks = desk.objects("Task", {"One", "Two"});
    const QorIdentifier and_ = desk.connect(tasks[0], "and", tasks[1]);
    const QorIdentifier at = desk.connect(tasks[1], "at", tasks[0]);
    ASSERT_TRUE(make({tasks[0]}));
    EXPECT_TRUE(plan.lostRelations().empty());
    ASSERT_TRUE(plan.carryOut());
    const auto made = std::to_string(plan.objects()[0].newObject);
    EXPECT_EQ(desk.ends(and_), made + ">" + std::to_string(tasks[1]));
    EXPECT_EQ(desk.ends(at), std::to_string(tasks[1]) + ">" + made);
}

/// Tasks with values, rows and relations, seen through a repository that can fail, and their conversion.
struct FailingDesk : ConversionDesk {
    FailingDesk() {
        value(tasks[0], "Count", "7");
        value(tasks[0], "Info", "seen");
        value(tasks[1], "__Variants__", "two");
        value(tasks[1], "Kind", "a");
        value(tasks[1], "Calls", "MODEL \"Monday\" type: \"Shop\"");
        row(tasks[0], "nail", "3");
        connect(tasks[0], "and", tasks[1]);
        connect(tasks[1], "at", tasks[1]);
        watched().offerUnitsOfWork();
    }
    std::vector<QorIdentifier> tasks = objects("Task", {"One", "Two"});
};

/// Runs `run` without a failure, which tells the calls that it makes, then once for each of them, which fails: the
/// n-th of its operation.
void eachCallFails(std::vector<std::string>& calls, const std::function<void(const std::string&, int)>& run) {
    run({}, 0);
    std::map<std::string, int> counts;
    for (const std::string& operation : std::vector(calls)) run(operation, ++counts[operation]);
    EXPECT_GT(counts.size(), 5U);
}

// While a plan is made or carried out: what is told to be done is done wholly, and what is not has changed nothing.
TEST(PlanningOnAFailingRepository, ConvertsWhollyOrNotAtAll) {
    enum class Step { Make, CarryOut };
    for (const auto failing : {Step::Make, Step::CarryOut}) {
        std::vector<std::string> calls;
        std::string converted;
        eachCallFails(calls, [&](const std::string& operation, int nth) {
            FailingDesk desk;
            auto& record = desk.watched().record;
            const auto arm = [&](Step step) {
                record.forget();
                if (step == failing && nth > 0) record.fail(operation, QorErrorCode::Broken, nth);
            };
            const std::string before = pictureOf(desk.platform);
            QorConversionPlan plan;
            arm(Step::Make);
            const bool made = plan.make(desk.shop, {desk.tasks[0], desk.tasks[1]}, desk.idOf("Check"));
            if (failing == Step::Make) calls = record.order();
            EXPECT_EQ(made, plan.problems().empty()) << operation << nth;
            EXPECT_EQ(pictureOf(desk.platform), before) << operation << nth;
            record.failNothing();
            arm(Step::CarryOut);
            const bool done = plan.carryOut();
            if (failing == Step::CarryOut) calls = record.order();
            if (nth == 0) converted = pictureOf(desk.platform);
            EXPECT_EQ(pictureOf(desk.platform), done ? converted : before) << operation << nth;
            EXPECT_EQ(done, plan.problems().empty() && made) << operation << nth;
        });
    }
    QorCardinalityHandler::Instance().Reset();
}

TEST_F(Planning, TellsWhichCardinalityRulesWouldBreak) {
    desk.classText("Plain", "CARDINALITIES RELATION \"and\" TO_CLASS \"Check\" max-outgoing: 1");
    desk.classText("Check", "CARDINALITIES max-objects: 1");
    QorCardinalityHandler::Instance().Reset();
    QorCardinalityHandler::Instance().init(desk.processes, desk.environment);
    const QorIdentifier plain = desk.object("Plain", "Plain");
    const auto tasks = desk.objects("Task", {"One", "Two"});
    for (const QorIdentifier task : tasks) desk.connect(plain, "and", task);
    ASSERT_TRUE(make({tasks[0]}));
    EXPECT_TRUE(plan.breaches().empty());
    ASSERT_TRUE(make({tasks[0], tasks[1]}));
    ASSERT_EQ(plan.breaches().size(), 2U);
    EXPECT_EQ(plan.breaches()[0].subject, plain);
    EXPECT_EQ(plan.breaches()[0].found, 2U);
    EXPECT_EQ(plan.breaches()[1].subject, desk.idOf("Check"));
    EXPECT_EQ(plan.breaches()[1].objects, (std::vector<long>{tasks[0], tasks[1]}));
    EXPECT_TRUE(plan.carryOut()) << "rules are told, not enforced";
    ASSERT_TRUE(plan.make(desk.shop, {desk.object("Task", "Three")}, desk.idOf("Check")));
    EXPECT_TRUE(plan.breaches().empty()) << "was broken before";
}

TEST(TransferOntoMany, ReportsOnEveryAttribute) {
    using enum QorTransferOutcome;
    ConversionDesk desk;
    const auto tasks = desk.objects("Task", {"Source", "Same", "Other", "No place"});
    const QorIdentifier check = desk.object("Check", "Check");
    const long count = desk.attributeOf(tasks[0], "Count");
    const long table = desk.attributeOf(tasks[0], "Table");
    for (const int at : {0, 1}) {
        desk.value(tasks[static_cast<std::size_t>(at)], "Count", "7");
        desk.row(tasks[static_cast<std::size_t>(at)], "nail", "3");
    }
    desk.row(tasks[2], "nail", "4");
    for (const int at : {0, 1, 2}) desk.value(tasks[static_cast<std::size_t>(at)], "Position", "NODE w:1cm");
    desk.value(tasks[2], "Position", "NODE w:2cm");

    QorAttributeTransfer transfer;
    const ISortedSet<long> attributes{-1, count, table};
    const auto outcomes = [&] {
        std::vector<QorTransferOutcome> all;
        for (const auto& entry : transfer.entries()) all.push_back(entry.outcome);
        return all;
    };
    ASSERT_TRUE(transfer.plan(desk.shop, tasks[0], attributes, {tasks[0], tasks[1], tasks[2], tasks[3], check}));
    EXPECT_EQ(outcomes(), (std::vector{IsSource, IsSource, IsSource, Same, Same, Same, Changes, Changes, Changes,
                                       NoPlaceForSize, Changes, Changes, NotOfClass, NotOfClass, NotOfClass}));
    EXPECT_EQ(transfer.impossibleCount(), 7U);
    EXPECT_FALSE(transfer.carryOut(QorTransferMode::AllOrNothing));
    EXPECT_EQ(desk.valueOf(tasks[3], "Count"), "");
    EXPECT_TRUE(transfer.carryOut(QorTransferMode::WhatFits));
    EXPECT_EQ(desk.valueOf(tasks[3], "Count"), "7");
    EXPECT_EQ(desk.valueOf(tasks[2], "Position"), "NODE w:1cm");
    EXPECT_EQ(desk.rowsOf(tasks[2]), "nail/3/;");

    ASSERT_TRUE(transfer.plan(desk.shop, tasks[0], {desk.attributeOf(check, "Note")}, {tasks[1]}));
    EXPECT_EQ(outcomes(), std::vector{NoAttribute});
    desk.value(tasks[0], "Info", "new");
    ASSERT_TRUE(transfer.plan(desk.shop, tasks[0], {desk.attributeOf(tasks[0], "Info")}, {tasks[1], tasks[2]}));
    (void)desk.repository().deleteInstance(desk.shop, tasks[2]);
    EXPECT_FALSE(transfer.carryOut(QorTransferMode::WhatFits));
    EXPECT_EQ(outcomes(), (std::vector{Changes, Failed}));
    EXPECT_EQ(desk.valueOf(tasks[1], "Info"), "") << "taken back";
}

// Every entry that does not tell of the failure is right, and a transfer that is not done has changed nothing.
TEST(TransferOntoMany, OnAFailingRepositoryIsDoneWhollyOrNotAtAll) {
    std::vector<std::string> calls;
    std::string transferred;
    eachCallFails(calls, [&](const std::string& operation, int nth) {
        FailingDesk desk;
        auto& record = desk.watched().record;
        const std::string before = pictureOf(desk.platform);
        ISortedSet<long> attributes;
        for (const char* name : {"Count", "Info", "Calls", "Table"})
            attributes.add(desk.attributeOf(desk.tasks[0], name));
        record.forget();
        if (nth > 0) record.fail(operation, QorErrorCode::Broken, nth);
        QorAttributeTransfer transfer;
        ASSERT_TRUE(transfer.plan(desk.shop, desk.tasks[0], attributes, {desk.tasks[1]}));
        for (const auto& entry : transfer.entries())
            EXPECT_TRUE(entry.outcome == QorTransferOutcome::Changes || entry.outcome == QorTransferOutcome::Failed)
                << operation << nth << ": " << static_cast<int>(entry.outcome);
        const bool done = transfer.carryOut(QorTransferMode::AllOrNothing);
        if (nth == 0) {
            calls = record.order();
            transferred = pictureOf(desk.platform);
        }
        EXPECT_EQ(pictureOf(desk.platform), done ? transferred : before) << operation << nth;
    });
}

}  // namespace
