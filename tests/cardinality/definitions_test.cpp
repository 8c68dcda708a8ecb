// SPDX-License-Identifier: Apache-2.0
// Reading rule texts: what is stored, what is reported and where.
#include "cardinality/Desk.h"
#include "platform/QorAttributeIds.h"

namespace {

using ClassRules = QorClassCardinality;
using RelationRules = QorRelationCardinality;
using TargetRules = QorRelationTargetCardinality;
using Limit = QorCardinalityLimit;

constexpr std::uint32_t kNone = QorNoCardinalityLimit;

template <class Record>
struct LimitCase {
    const char* text;
    const char* later;  ///< read after it, into the same record
    Limit Record::*limit;
    std::uint32_t count;
    const char* key;  ///< that the limit comes from
};

/// Reads both texts behind the same beginning and looks the limit up in the record that `find` gives.
template <class Record, std::size_t count, class Find>
void expectLimits(const char* beginning, const LimitCase<Record> (&rows)[count], Find find) {
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " / " + row.later);
        Desk desk;
        for (const char* text : {row.text, row.later}) desk.rules("Task", std::string(beginning) + text);
        const ClassRules* const rules = desk.handler.getClassCardinality(desk["Task"]);
        ASSERT_NE(rules, nullptr);
        const Record* const record = find(desk, *rules);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ((record->*row.limit).count, row.count);
        EXPECT_EQ((record->*row.limit).key, row.key);
        EXPECT_FALSE(desk.handler.isError());
    }
}

const RelationRules* rulesOfThen(const Desk& desk, const ClassRules& rules) {
    return rules.relations.find(static_cast<QorIdentifier>(desk["then"]));
}

const TargetRules* rulesOfThenTask(const Desk& desk, const ClassRules& rules) {
    const RelationRules* const relation = rulesOfThen(desk, rules);
    if (relation == nullptr || relation->targets.numberOfElements() != 1) return nullptr;
    return relation->targets.find(static_cast<QorIdentifier>(desk["Task"]));
}

TEST(ClassKeys, AreReadInTheirOwnOrderAndClampOneWay) {
    const LimitCase<ClassRules> rows[] = {
        {"", "", &ClassRules::maxIn, kNone, ""},
        {"", "", &ClassRules::minTotal, 0, ""},
        {"max-incoming: 5 max-relations: 2", "", &ClassRules::maxIn, 2, "max-relations"},
        {"max-incoming: 2 max-relations: 5", "", &ClassRules::maxIn, 2, "max-incoming"},
        {"max-relations: 2", "", &ClassRules::maxOut, 2, "max-relations"},
        {"max-outgoing: 4 max-relations: 4", "", &ClassRules::maxOut, 4, "max-outgoing"},
        {"max-relations: 3", "max-outgoing: 7", &ClassRules::maxOut, 3, "max-relations"},
        {"max-outgoing: 2", "max-relations: 5", &ClassRules::maxOut, 2, "max-outgoing"},
        {"max-outgoing: 2 max-relations: 3", "max-relations: 9 max-outgoing: 8", &ClassRules::maxOut, 8,
         "max-outgoing"},
        {"max-objects: 9", "max-objects: 12", &ClassRules::maxObjects, 12, "max-objects"},
        {"max-objects: -1", "", &ClassRules::maxObjects, 4294967295u, "max-objects"},
        {"min-objects", "", &ClassRules::minObjects, 0, "min-objects"},
        {"min-incoming: 3 min-relations: 1", "", &ClassRules::minTotal, 3, "min-incoming"},
        {"min-outgoing: 4", "min-relations: 1", &ClassRules::minTotal, 4, "min-outgoing"},
        {"min-outgoing: 4", "min-outgoing: 2", &ClassRules::minTotal, 4, "min-outgoing"},
        {"min-outgoing: 1 max-outgoing: 0", "", &ClassRules::minOut, 1, "min-outgoing"},
    };
    expectLimits("CARDINALITIES ", rows, [](const Desk&, const ClassRules& rules) { return &rules; });
}

TEST(RelationKeys, AreReadInTheirOwnOrderAndMergeWithAnEarlierReading) {
    const LimitCase<RelationRules> rows[] = {
        {"max-outgoing: 2", "", &RelationRules::defaultMaxOut, 2, "max-outgoing"},
        {"max-outgoing: 2", "", &RelationRules::maxIn, kNone, ""},
        {"default-max-outgoing: 5 max-outgoing: 3", "", &RelationRules::defaultMaxOut, 3, "max-outgoing"},
        {"default-max-incoming: 1 max-incoming: 3", "", &RelationRules::defaultMaxIn, 1, "default-max-incoming"},
        {"default-max-outgoing: 2", "max-outgoing: 5", &RelationRules::defaultMaxOut, 2, "default-max-outgoing"},
        {"max-incoming: 2", "default-max-incoming: 5", &RelationRules::defaultMaxIn, 2, "max-incoming"},
        {"min-outgoing: 1 default-min-outgoing: 2", "", &RelationRules::minOut, 2, "default-min-outgoing"},
        {"default-min-incoming: 2", "min-incoming: 1", &RelationRules::minIn, 2, "default-min-incoming"},
        {"min-incoming: 3", "default-min-incoming: 2", &RelationRules::defaultMinIn, 2, "default-min-incoming"},
        {"min-incoming: -1", "", &RelationRules::minIn, 4294967295u, "min-incoming"},
    };
    expectLimits("CARDINALITIES RELATION 'then' ", rows, rulesOfThen);
}

TEST(TargetKeys, KeepTheTighterBoundAlsoAcrossReadings) {
    const LimitCase<TargetRules> rows[] = {
        {"TO_CLASS 'Task' max-outgoing: 5 TO_CLASS 'Task' max-outgoing: 2", "", &TargetRules::maxToTarget, 2,
         "max-outgoing"},
        {"TO_CLASS 'Task' max-outgoing: 2", "TO_CLASS 'Task' max-outgoing: 5", &TargetRules::maxToTarget, 2,
         "max-outgoing"},
        {"TO_CLASS 'Task' min-outgoing: 3", "TO_CLASS 'Task' min-outgoing: 1", &TargetRules::minToTarget, 3,
         "min-outgoing"},
        {"TO_CLASS 'Task' min-outgoing: 3", "", &TargetRules::maxToTarget, kNone, ""},
        {"TO_CLASS 'Task' min-outgoing: 3 FROM_CLASS 'Task' max-incoming: 4", "", &TargetRules::maxFromSource, 4,
         "max-incoming"},
        {"TO_CLASS 'Task' max-outgoing: -1", "", &TargetRules::maxToTarget, kNone, ""},
    };
    expectLimits("CARDINALITIES RELATION 'then' ", rows, rulesOfThenTask);
}

/// The records that the handler holds: class{relation class:target,target ...}.
std::string records(const Desk& desk) {
    std::string text;
    for (const auto& rules : desk.handler.getClassCardinalities()) {
        text += desk.names(std::vector<long>{rules.key()}) + "{";
        for (const auto& relation : rules.relations) {
            text += desk.names(std::vector<long>{relation.key()}) + ":";
            for (const auto& target : relation.targets) text += desk.names(std::vector<long>{target.key()}) + ",";
        }
        text += "}";
    }
    return text;
}

std::string places(const Desk& desk) {
    std::string text;
    for (const auto& error : desk.handler.getDefinitionErrors())
        text += std::to_string(error.position.line) + ":" + std::to_string(error.position.column) + " ";
    return text;
}

TEST(RuleText, StoresWhatItCanAndReportsTheRestWithItsPlace) {
    const struct {
        const char* text;
        int result;
        const char *records, *errors, *places;
    } rows[] = {
        {"", 1, "", "", ""},
        {"# nothing\n", 1, "", "", ""},
        {"CARDINALITIES", 1, "Document{}", "", ""},
        {"RELATION 'then' max-outgoing: 1", 0, "Document{}", "1966{Cardinalities,Document,RELATION,\"CARDINALITIES\"}",
         "1:1 "},
        {"CARDINALITIES RELATION 'then'", 1, "Document{}", "", ""},
        {"CARDINALITIES RELATION 'then' TO_CLASS 'Task' max-incoming: 1", 1, "Document{}", "", ""},
        {"CARDINALITIES RELATION 'then' FROM_CLASS 'Node' max-incoming: 1", 1, "Document{then:Node,}", "", ""},
        {"CARDINALITIES\nFOO max-outgoing: 1\nTO_CLASS 'Task' max-outgoing: 1\nRELATION 'uses' max-outgoing: 1", 0,
         "Document{uses:}",
         "1966{Cardinalities,Document,FOO,\"RELATION\"}1966{Cardinalities,Document,TO_CLASS,\"RELATION\"}", "2:1 3:1 "},
        {"CARDINALITIES\n RELATION 'than' max-outgoing: 1 TO_CLASS 'Tusk' max-outgoing: 1 FOO\n RELATION 'then' "
         "max-outgoing: 2",
         0, "Document{then:}", "1966{Cardinalities,Document,than,1986}", "2:2 "},
        {"CARDINALITIES RELATION 'then'\nTO_CLASS 'Tusk' max-outgoing: 1\nTO_CLASS 'Task' max-outgoing: 1", 0,
         "Document{then:Task,}", "1966{Cardinalities,Document,Tusk,1987}", "2:1 "},
        {"CARDINALITIES RELATION\nRELATION", 0, "Document{}",
         "1966{Cardinalities,Document,,1986}1966{Cardinalities,Document,,1986}", "1:15 2:1 "},
        {"CARDINALITIES RELATION 'files'\nmax-outgoing: 1\nmax-incoming: 2\ndefault-min-incoming: 0", 0,
         "Document{files:}",
         "1975{Cardinalities,Document,max-incoming,files}1975{Cardinalities,Document,default-min-incoming,files}",
         "3:1 4:1 "},
    };
    for (const auto& row : rows) {
        Desk desk;
        EXPECT_EQ(desk.handler.decryptKex(desk.workshop.processes, desk["Document"], quoted(row.text).c_str()),
                  row.result)
            << row.text;
        EXPECT_EQ(records(desk), row.records) << row.text;
        EXPECT_EQ(desk.handler.getErrorText(), row.errors) << row.text;
        EXPECT_EQ(places(desk), row.places) << row.text;
    }
}

TEST(RuleText, WithASyntaxErrorLeavesTheRulesAndTellsWhere) {
    Desk desk;
    EXPECT_EQ(desk.handler.decryptKex(desk.workshop.processes, desk["Task"], "CARDINALITIES\nmax-outgoing: \"open"), 0);
    EXPECT_EQ(records(desk), "");
    ASSERT_EQ(desk.handler.getDefinitionErrors().size(), 1u);
    const auto& error = desk.handler.getDefinitionErrors().front();
    EXPECT_EQ(error.position.line, 2u);
    EXPECT_EQ(error.cls, desk["Task"]);
    EXPECT_EQ(error.attribute, QorAttributeId::Cardinality);
    EXPECT_TRUE(desk.handler.getErrorText().view().starts_with("line 2, column "));
    EXPECT_EQ(error.text.view().find("line 2"), std::string_view::npos) << error.text.view();
    EXPECT_NE(error.text.view().find("\"Task\""), std::string_view::npos) << error.text.view();
}

TEST(RuleText, OfAnIdentifierBeyond32BitsIsNobodys) {
    Desk desk;
    EXPECT_EQ(
        desk.handler.checkCardinalityDefinition(desk.workshop.processes, desk["Task"] + 4294967296, "CARDINALITIES"),
        0);
    EXPECT_EQ(records(desk), "");
    EXPECT_EQ(desk.handler.createClassItem(desk["Task"] + 4294967296), nullptr);
    EXPECT_FALSE(desk.internalErrors.empty());
}

TEST(Library, IsReadToItsEndAndTheSecondOneOnlyAfterACleanFirst) {
    Desk desk;
    desk.workshop.classText("Task", "CARDINALITIES max-objects: 1 max-objects: 2");
    desk.workshop.classText("Special", "CARDINALITIES");
    desk.waitsBegun = 0;
    EXPECT_EQ(desk.handler.init(desk.workshop.processes, -1), 0);
    EXPECT_EQ(records(desk), "Special{}");
    EXPECT_TRUE(desk.internalErrors.empty()) << "the second library was asked for";

    desk.workshop.classText("Task", "");
    desk.workshop.classText("Document", "CARDINALITIES");
    EXPECT_EQ(desk.handler.init(desk.workshop.processes, desk.workshop.environment), 1);
    EXPECT_EQ(records(desk), "Document{}Special{}") << "a reading adds to the rules";
    EXPECT_FALSE(desk.handler.isError());
    EXPECT_TRUE(desk.handler.getDefinitionErrors().empty());
    EXPECT_EQ(desk.handler.init(desk.workshop.processes, -1), 0);
    EXPECT_FALSE(desk.internalErrors.empty());
    EXPECT_EQ(desk.waitsBegun, 3);
    EXPECT_FALSE(desk.waitCursor);

    desk.handler.setActivation(0);
    desk.handler.Reset();
    EXPECT_EQ(records(desk), "");
    EXPECT_EQ(desk.handler.getActivation(), 1);
}

TEST(AutomaticChecks, FollowTheLastElementOfTheLibrarysText) {
    const struct {
        const char* text;
        bool beforeSave, afterAction;
    } rows[] = {
        {"", false, false},
        {"CHECK_CARDINALITIES before-save: 1", true, false},
        {"CHECK_CARDINALITIES before-save: 1 OTHER CHECK_CARDINALITIES after-modeling-action: -1", false, true},
        {"OTHER before-save: 1", false, false},
        {"CHECK_CARDINALITIES before-save: 1 before-save: 1", false, false},
    };
    for (const auto& row : rows) {
        Desk desk;
        desk.workshop.libraryText(desk.workshop.processes, QorAttributeId::AutomaticChecks, row.text);
        EXPECT_EQ(desk.handler.init(desk.workshop.processes, desk.workshop.environment), 1) << row.text;
        EXPECT_EQ(desk.handler.isCheckCardinalitiesBeforeSave(), row.beforeSave) << row.text;
        EXPECT_EQ(desk.handler.isCheckCardinalitiesAfterModelingAction(), row.afterAction) << row.text;
        desk.handler.Reset();
        EXPECT_EQ(desk.handler.isCheckCardinalitiesBeforeSave(), row.beforeSave) << "a reset leaves them";
    }
}

TEST(Handler, IsCopiedWithItsRules) {
    Desk desk;
    desk.rules("Task", "CARDINALITIES max-objects: 0 RELATION 'then' TO_CLASS 'Task' max-outgoing: 1");
    desk.objects("a");
    EXPECT_FALSE(desk.handler.checkClass(desk.model, desk["Task"], true, true));

    OpenHandler copy(desk.handler);
    auto& same = copy;
    copy = same;
    desk.handler.Reset();
    EXPECT_EQ(desk.names(copy.getBadObjects()), "a");
    EXPECT_TRUE(copy.isError());
    ASSERT_NE(copy.getClassCardinality(desk["Task"]), nullptr);
    const auto& relations = copy.getClassCardinality(desk["Task"])->relations;
    EXPECT_EQ(relations.find(static_cast<QorIdentifier>(desk["then"]))->targets.numberOfElements(), 1u);

    copy = desk.handler;
    EXPECT_EQ(copy.getClassCardinality(desk["Task"]), nullptr);
    EXPECT_FALSE(copy.isError());
}

TEST(Watcher, KeepsTheRulesInStepWithTheLibrary) {
    Desk desk;
    desk.workshop.classText("Task", "CARDINALITIES max-objects: 1");
    auto& handler = QorCardinalityHandler::Instance();

    handler.setActivation(0);
    ASSERT_EQ(desk.workshop.load(false), QorErrorCode::Ok);
    EXPECT_NE(handler.getClassCardinality(desk["Task"]), nullptr);
    EXPECT_EQ(handler.getActivation(), 1);

    ASSERT_EQ(desk.workshop.discard(), QorErrorCode::Ok);
    EXPECT_EQ(handler.getClassCardinality(desk["Task"]), nullptr);
}

std::string reportOfTask(const Desk& desk) {
    SV::String text("> ");
    EXPECT_EQ(&desk.handler.getClassCardinality(desk["Task"])->toReportText(text), &text);
    return text.str();
}

TEST(Report, ListsDefaultsOnlyAndARelationWithoutTargets) {
    Desk desk;
    const std::string ofClass =
        "> Cardinalities for Task:\nmaxObjects: 65535\nmaxTotal:   65535\nmaxIn:      65535\nmaxOut:     65535\n\n"
        "minObjects: 0\nminTotal:   0\nminIn:      0\nminOut:     0\n\n";
    desk.rules("Task", "CARDINALITIES");
    EXPECT_EQ(reportOfTask(desk), ofClass + "=======\n\n");
    desk.rules("Task", "CARDINALITIES RELATION 'then' min-outgoing: 0");
    EXPECT_EQ(reportOfTask(desk), ofClass +
                                      "Relation then:\nmaxIn:         65535\nmaxOut:        65535\n\n"
                                      "defaultMaxIn:  65535\ndefaultMaxOut: 65535\n\n"
                                      "minIn:         0\nminOut:        0\n\n"
                                      "defaultMinIn:  0\ndefaultMinOut: 0\n\n\n=======\n\n");
}

TEST(Report, ListsAllRulesOfAClass) {
    Desk desk;
    desk.rules("Task",
               "CARDINALITIES max-relations: 9 max-incoming: 4 min-objects: 1 min-outgoing: 2\n"
               "RELATION 'then' max-outgoing: 3 min-incoming: 1\n"
               "TO_CLASS 'Document' max-outgoing: 2 FROM_CLASS 'Task' min-incoming: 1");
    std::string expected = R"(> Cardinalities for Task:
maxObjects: 65535
maxTotal:   9
maxIn:      4
maxOut:     9

minObjects: 1
minTotal:   2
minIn:      0
minOut:     2

Relation then:
maxIn:         65535
maxOut:        3

defaultMaxIn:  65535
defaultMaxOut: 3

minIn:         1
minOut:        0

defaultMinIn:  0
defaultMinOut: 0

Related class Task:
maxToTarget:         65535
maxFromSource:       65535

minToTarget:         0
minFromSource:       1

Related class Document:
maxToTarget:         2
maxFromSource:       65535

minToTarget:         0
minFromSource:       0


=======

)";
    EXPECT_EQ(reportOfTask(desk), expected);

    // Without names the labels stay.
    for (const std::string name : {"Task:", "Document:", "then:"})
        for (std::size_t at = 0; (at = expected.find(name)) != std::string::npos;)
            expected.replace(at, name.size(), ":");
    desk.watched().record.fail("getAttributeValue", QorErrorCode::NoValue, 0);
    EXPECT_EQ(reportOfTask(desk), expected);
    EXPECT_TRUE(desk.internalErrors.empty());
}

}  // namespace
