// SPDX-License-Identifier: Apache-2.0
// What is missing before a simulation can run.
#include <span>

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
        attribute("Task", "Computed", QorCoreAttributeType::Expression);
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
        (void)repository().initLibraryHandlers(true);  // makes model types known; the mapping has its faults
    }
    void hierarchyAttribute(const char* name) {
        ASSERT_TRUE(builder().setClassValue(idOf("Call"), QorAttributeId::HierarchyAttribute, name).ok());
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

/// What is found beside what a ready shop lacks, as "ISSUE class.object " in the words of the messages' roles.
std::string foundBesides(ReadyShop& shop, const std::vector<Issue>& issues, int option = 0) {
    QorSimMappingHandler mapping(shop.library);
    const QorSimResultDefinitions results;
    QorSimReadiness readiness;
    EXPECT_TRUE(readiness.check(shop.library, mapping, results, option, {shop.processModel, shop.staffModel}));
    std::string found;
    const auto nameOf = [&](long id) { return std::string(shop.reader().nameOf(static_cast<QorIdentifier>(id))); };
    for (const auto& finding : readiness.findings())
        if (std::find(issues.begin(), issues.end(), finding.issue) != issues.end())
            found += std::to_string(static_cast<int>(finding.issue)) + " " + nameOf(finding.cls) + "." +
                     nameOf(finding.object) + "; ";
    return found;
}

/// What a change of the shop makes missing.
struct Change {
    const char* name;
    std::function<void(ReadyShop&)> change;
    const char* found;
};

void expectFound(std::span<const Change> changes, const std::vector<Issue>& issues) {
    for (const Change& row : changes) {
        ReadyShop shop;
        row.change(shop);
        EXPECT_EQ(foundBesides(shop, issues), row.found) << row.name;
    }
}

// A call needs a model that is there; what an object may call with is a matter of its own class.
TEST(Readiness, CallsNeedAModel) {
    const auto called = [](const char* models) {
        return [models](ReadyShop& s) { s.value(s.deaf, "Called", models); };
    };
    const auto processCall = [](const char* cls) {
        return "SIMOPTION name: \"A\" activity: \"Task\" executiontime: \"Work\" processcall: \"" + std::string(cls) +
               "\"";
    };
    const Change cases[] = {
        {"as it is", [](ReadyShop&) {}, "3 Call.Call nobody; "},
        {"by an attribute of a subclass",
         [](ReadyShop& s) {
             s.cls("Deep call", "Call");
             s.references("Deep call", "Detail");
             s.modelType("Deep", {"Deep call"});
             s.processModel = s.model("Deep", "Deep");
             s.value(s.object("Deep call", "Calls"), "Detail", "MODEL \"Order\" type: \"Process\"");
             s.object("Deep call", "Calls not");
         },
         "3 Deep call.Calls not; "},
        {"by the hierarchy attribute", [](ReadyShop& s) { s.hierarchyAttribute("Called"); }, "3 Call.Call nobody; "},
        {"not by a reference to an object", [](ReadyShop& s) { s.hierarchyAttribute("Performer"); },
         "3 Call.Call nobody; 3 Call.Call; "},
        {"not by a hierarchy attribute that is no reference", [](ReadyShop& s) { s.hierarchyAttribute("Substitute"); },
         "3 Call.Call nobody; "},
        {"nor by a text that is shown as one",
         [&](ReadyShop& s) {
             s.cls("Texts");
             QorAttributeSpec text;
             text.name = "Calls";
             text.shownAs = QorCoreAttributeType::InterReference;
             s.attribute("Texts", text);
             s.modelType("Texts", {"Texts"});
             s.processModel = s.model("Texts", "Texts");
             s.object("Texts", "Calls not");
             s.mapping(processCall("Texts"));
         },
         "2 Texts.; "},
        {"a model that is not there", called("MODEL \"Nowhere\" type: \"Process\""), "4 Call.Call nobody; "},
        {"a model of no known type", called("MODEL \"Order\" type: \"Plan\""), "4 Call.Call nobody; "},
        {"one of two models", called("MODEL \"Nowhere\" type: \"Process\" MODEL \"Order\" type: \"Process\""), ""},
        {"a class that shows no attribute",
         [&](ReadyShop& s) {
             s.cls("Bare");
             s.mapping(processCall("Bare"));
         },
         "2 Bare.; "},
        {"one of two subclasses",
         [&](ReadyShop& s) {
             s.abstractClass("Any");
             s.cls("Some", "Any");
             s.references("Some", "Detail");
             s.cls("None", "Any");
             s.mapping(processCall("Any"));
         },
         "2 None.; "},
    };
    expectFound(cases, {Issue::CannotCallModel, Issue::CallsNoModel, Issue::CalledModelMissing});
}

TEST(Readiness, PerformersNeedACalendarAndAnAssignment) {
    const auto refersTo = [](const char* cls, const char* model, const char* type) {
        return [=](ReadyShop& s) {
            s.value(
                s.deaf, "Performer",
                "OBJECT \"Lazy\" class: \"" + std::string(cls) + "\" model: \"" + model + "\" type: \"" + type + "\"");
        };
    };
    const Change cases[] = {
        {"a reference", refersTo("Robot", "People", "Staff"), "6 Robot.Lazy; "},
        {"to one of another class", refersTo("Person", "People", "Staff"), "6 Robot.Lazy; 7 Robot.Lazy; "},
        {"in another model", refersTo("Robot", "Pool", "Staff"), "6 Robot.Lazy; 7 Robot.Lazy; "},
        {"in a model of another type", refersTo("Robot", "People", "Process"), "6 Robot.Lazy; 7 Robot.Lazy; "},
        {"a relation", [](ReadyShop& s) { s.connect(s.lazy, "helps", s.lazy); }, "6 Robot.Lazy; "},
        {"a calendar of the subclass",
         [](ReadyShop& s) {
             s.environmentClass("Worker");
             s.environmentClass("Smith", "Worker");
             s.attribute("Smith", "Shifts", QorCoreAttributeType::Calendar);
             s.environmentClass("Helper", "Worker");
             s.modelType("Yard", {"Smith", "Helper"});
             s.results("", "PERSON \"Worker\"");
             s.staffModel = s.model("Yard", "Yard");
             s.object("Smith", "Abe");
             s.object("Helper", "Bob");
         },
         "5 Worker.; 5 Helper.; 6 Smith.Abe; 7 Smith.Abe; 7 Helper.Bob; "},
        {"no holder of person results", [](ReadyShop& s) { s.results("", ""); }, "10 .; "},
    };
    expectFound(cases,
                {Issue::CannotHaveCalendar, Issue::HasNoCalendar, Issue::IsNotAssigned, Issue::PerformersNotLookedAt});
}

TEST(Readiness, AnExecutionTimeIsATimeOrAnExpressionThatIsThere) {
    ReadyShop shop;
    shop.mapping("SIMOPTION name: \"Computed\" activity: \"Task\" executiontime: \"Computed\"");
    shop.value(shop.idle, "Computed", "1 + 1");
    EXPECT_EQ(foundBesides(shop, {Issue::NoExecutionTime}), "1 Task.Pack; ") << "what it gives is known in the run";
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
    for (const char* operation : {"getAllInstancesOfClassAndSubClassInModel", "getAllInstancesInModel",
                                  "GetClassOfInstance", "getUIAttributeType", "getAllSubClasses", "getAttributeValue",
                                  "getAttributeValueAsNewChar", "getInterRefsOfSourceModel", "getFromRelationInstances",
                                  "getToRelationInstances", "getLibraryOfClass", "getAllInstantiableClasses"}) {
        auto& calls = shop.watched().record;
        calls.fail(operation, QorErrorCode::NotFound, 0);
        EXPECT_FALSE(readiness.check(shop.library, mapping, results, QorSimReadiness::kAllOptions,
                                     {shop.processModel, shop.staffModel}))
            << operation;
        calls.failNothing();
    }
}

}  // namespace
