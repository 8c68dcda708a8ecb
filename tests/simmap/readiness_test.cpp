// SPDX-License-Identifier: Apache-2.0
// What is missing before a simulation can run.
#include "simmap/QorSimReadiness.h"
#include "simmap/Shop.h"

namespace {

using Issue = QorSimReadinessIssue;

constexpr const char* kMapping = R"(
SIMOPTION name: "Times" activity: "Task" executiontime: "Work" waitingtime: "Priority"
  processcall: "Call" subperformerattr: "Substitute"
SIMOPTION name: "No times" activity: "Check"
SIMCLASSES bp-1: "Step" we-none
)";

struct ReadyShop : Shop {
    ReadyShop() {
        attribute("Call", "Performer", QorCoreAttributeType::InterReference);
        relationClass("helps", "Person", "Person");
        mapping(kMapping);
        results("PROCESSSTART \"Start\" fixedinfo: \"Costs\"", "PERSON \"Person\"");
        processModel = model("Process", "Order");
        const auto pack = object("Task", "Pack");
        value(pack, "Work", "00:000:00:10:00");
        idle = object("Check", "Look");
        value(idle, "Work", "00:000:00:00:00");
        deaf = object("Call", "Call nobody");
        value(deaf, "Performer", "OBJECT \"Nobody\" class: \"Person\" model: \"People\" type: \"Staff\"");
        const auto caller = object("Call", "Call");
        value(caller, "Called", "MODEL \"Order\" type: \"Process\"");
        staffModel = model("Staff", "People");
        lazy = object("Robot", "Lazy");
        open();
    }
    QorIdentifier processModel = 0;
    QorIdentifier staffModel = 0;
    QorIdentifier idle = 0;
    QorIdentifier deaf = 0;
    QorIdentifier lazy = 0;
};

/// Issue, option, class, attribute, object of each finding.
using Row = std::tuple<Issue, int, long, long, long>;
std::vector<Row> rows(const QorSimReadiness& readiness) {
    std::vector<Row> all;
    for (const auto& finding : readiness.findings()) {
        all.emplace_back(finding.issue, finding.option, finding.cls, finding.attribute, finding.object);
        EXPECT_EQ(finding.text.view().find('%'), std::string_view::npos) << finding.text.view();
    }
    return all;
}

TEST(Readiness, FindsWhatIsMissingForEachOption) {
    ReadyShop shop;
    QorSimMappingHandler mapping(shop.library);
    const QorSimResultDefinitions results;
    QorSimReadiness readiness;
    ASSERT_TRUE(readiness.check(shop.library, mapping, results, QorSimReadiness::kAllOptions,
                                {shop.processModel, shop.staffModel}));
    const std::vector<Row> expected = {
        {Issue::NoExecutionTime, 0, shop.idOf("Check"), shop.at("Task", "Work"), shop.idle},
        {Issue::CallsNoModel, 0, shop.idOf("Call"), 0, shop.deaf},
        {Issue::NoExecutionTimeNamed, 1, 0, 0, 0},
        {Issue::TypeDoesNotFit, 0, shop.idOf("Task"), shop.at("Task", "Priority"), 0},
        {Issue::TypeDoesNotFit, -1, shop.idOf("Start"), shop.at("Start", "Costs"), 0},
        {Issue::HasNoCalendar, -1, shop.idOf("Robot"), 0, shop.lazy},
        {Issue::IsNotAssigned, -1, shop.idOf("Robot"), 0, shop.lazy},
    };
    EXPECT_EQ(rows(readiness), expected);

    ASSERT_TRUE(readiness.check(shop.library, mapping, results, 1, {shop.processModel}));
    EXPECT_EQ(rows(readiness),
              (std::vector<Row>{{Issue::NoExecutionTimeNamed, 1, 0, 0, 0},
                                {Issue::TypeDoesNotFit, -1, shop.idOf("Start"), shop.at("Start", "Costs"), 0},
                                {Issue::ClassTakesNoPart, -1, shop.idOf("Call"), 0, 0}}))
        << "the process call belongs to the other option";
    EXPECT_EQ(readiness.findings().back().count, 2U);
    for (const int none : {-2, 2}) EXPECT_FALSE(readiness.check(shop.library, mapping, results, none, {}));
}

TEST(Readiness, APerformerIsAssignedByARelationOrAReference) {
    ReadyShop shop;
    QorSimMappingHandler mapping(shop.library);
    const QorSimResultDefinitions results;
    QorSimReadiness readiness;
    const auto unassigned = [&] {
        EXPECT_TRUE(readiness.check(shop.library, mapping, results, 1, {shop.processModel, shop.staffModel}));
        return std::count_if(readiness.findings().begin(), readiness.findings().end(),
                             [](const auto& finding) { return finding.issue == Issue::IsNotAssigned; });
    };
    EXPECT_EQ(unassigned(), 1);
    shop.value(shop.deaf, "Performer", "OBJECT \"Lazy\" class: \"Robot\" model: \"People\" type: \"Staff\"");
    EXPECT_EQ(unassigned(), 0);
    const auto busy = shop.object("Robot", "Busy");
    EXPECT_EQ(unassigned(), 1);
    shop.connect(shop.lazy, "helps", busy);
    EXPECT_EQ(unassigned(), 0);
}

TEST(Readiness, TellsWhatEverythingIsUsedFor) {
    ReadyShop shop;
    QorSimMappingHandler mapping(shop.library);
    const QorSimResultDefinitions results;
    QorSimReadiness readiness;
    ASSERT_TRUE(readiness.check(shop.library, mapping, results, 0, {}));
    std::string uses;
    for (const auto& use : readiness.uses())
        uses += use.key.str() + ":" + std::string(shop.reader().nameOf(static_cast<QorIdentifier>(use.cls))) + "." +
                std::string(shop.reader().nameOf(static_cast<QorIdentifier>(use.attribute))) + " ";
    EXPECT_EQ(uses,
              "activity:Task. executiontime:Task.Work waitingtime:Task.Priority processcall:Call. "
              "subperformerattr:Call.Substitute PROCESSSTART:Start. fixedinfo:Start.Costs PERSON:Person. ");
}

// What the repository does not tell is not reported as missing.
TEST(Readiness, EndsWithAFailingRepository) {
    ReadyShop shop;
    QorSimMappingHandler mapping(shop.library);
    ASSERT_EQ(mapping.init(false), 0);
    const QorSimResultDefinitions results;
    QorSimReadiness readiness;
    for (const char* operation :
         {"getAllInstancesOfClassAndSubClassInModel", "getAllInstancesInModel", "GetClassOfInstance",
          "getUIAttributeType", "getAllSubClasses", "getAttributeValue", "getAttributeValueAsNewChar",
          "getInterRefsOfSourceModel", "getFromRelationInstances", "getToRelationInstances"}) {
        auto& calls = shop.watched().record;
        calls.fail(operation, QorErrorCode::NotFound, 0);
        EXPECT_FALSE(readiness.check(shop.library, mapping, results, QorSimReadiness::kAllOptions,
                                     {shop.processModel, shop.staffModel}))
            << operation;
        calls.failNothing();
    }
}

}  // namespace
