// SPDX-License-Identifier: Apache-2.0
// Contradictions among rules, and rules without effect.
#include "cardinality/Desk.h"
#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorCardinalityDoctor.h"
#include "cardinality/QorCardinalityUsage.h"

namespace {

using Fault = QorCardinalityFault;

std::string described(const Desk& desk, const QorCardinalityRule& rule) {
    if (rule.cls < 1) return "-";
    std::string text = desk.names(std::vector<long>{rule.cls}) + "/";
    for (const long id : {rule.relationClass, rule.otherClass})
        if (id > 0) text += desk.names(std::vector<long>{id}) + "/";
    return text + std::string(rule.key) + "=" + std::to_string(rule.limit);
}

std::string diagnoses(const Desk& desk) {
    constexpr const char* kNames[] = {"min>max",  "sum>max", "no room", "refuses", "cannot touch",
                                      "no model", "no end",  "apart",   "nothing", "void"};
    std::string lines;
    EXPECT_TRUE(QorCardinalityDoctor(desk.handler).diagnose([&](const QorCardinalityDiagnosis& found) {
        lines += std::string(kNames[static_cast<int>(found.fault)]) + " " + described(desk, found.rule) + " " +
                 described(desk, found.against) + (found.count > 0 ? " " + std::to_string(found.count) : "") + "\n";
    }));
    return lines;
}

TEST(Doctor, FindsContradictionsAndRulesWithoutEffect) {
    struct Row {
        const char *task, *document;  ///< what stands behind "CARDINALITIES "
        const char* found;            ///< a line each
    };
    const Row rows[] = {
        {"min-outgoing: 1 max-outgoing: 2 min-objects: 1 max-objects: 1", "", ""},
        {"min-objects: 1 RELATION 'uses' TO_CLASS 'Document' min-outgoing: 1", "", ""},
        {"min-objects: 2 max-objects: 1", "", "min>max Task/min-objects=2 Task/max-objects=1\n"},
        {"max-relations: 2 min-incoming: 3", "",
         "min>max Task/min-incoming=3 Task/max-relations=2\nmin>max Task/min-incoming=3 Task/max-relations=2\n"},
        {"max-relations: 2 min-incoming: 1 min-outgoing: 2", "",
         "sum>max Task/min-incoming=1 Task/max-relations=2 3\n"},
        {"RELATION 'then' min-outgoing: 4 max-outgoing: 3", "",
         "min>max Task/then/min-outgoing=4 Task/then/max-outgoing=3\n"},
        {"max-outgoing: 1 RELATION 'then' min-outgoing: 2", "",
         "min>max Task/then/min-outgoing=2 Task/max-outgoing=1\n"},
        {"max-outgoing: 2 RELATION 'then' min-outgoing: 2 RELATION 'uses' min-outgoing: 1", "",
         "sum>max Task/uses/min-outgoing=1 Task/max-outgoing=2 3\n"},
        {"RELATION 'then' max-outgoing: 3 TO_CLASS 'Task' min-outgoing: 2 TO_CLASS 'Document' min-outgoing: 2", "",
         "sum>max Task/then/Document/min-outgoing=2 Task/then/max-outgoing=3 4\n"},
        {"RELATION 'then' TO_CLASS 'Task' min-outgoing: 2 max-outgoing: 1", "",
         "min>max Task/then/Task/min-outgoing=2 Task/then/Task/max-outgoing=1\n"},
        {"RELATION 'uses' TO_CLASS 'Document' min-outgoing: 1", "max-objects: 0",
         "no room Task/uses/Document/min-outgoing=1 Document/max-objects=0\n"},
        {"max-objects: 0", "RELATION 'files' TO_CLASS 'Special' min-outgoing: 1",
         "no room Document/files/Special/min-outgoing=1 Task/max-objects=0\n"},
        {"RELATION 'uses' TO_CLASS 'Document' min-outgoing: 1", "RELATION 'uses' FROM_CLASS 'Task' max-incoming: 0",
         "refuses Task/uses/Document/min-outgoing=1 Document/uses/Task/max-incoming=0\n"},
        {"RELATION 'uses' TO_CLASS 'Document' min-outgoing: 1", "max-incoming: 0",
         "refuses Task/uses/Document/min-outgoing=1 Document/max-incoming=0\n"},
        {"RELATION 'files' max-outgoing: 3", "", "cannot touch Task/files/max-outgoing=3 -\n"},
        {"RELATION 'files' max-incoming: 3 TO_CLASS 'Task' max-outgoing: 1", "",
         "cannot touch Task/files/Task/max-outgoing=1 -\n"},
        {"", "RELATION 'files' TO_CLASS 'Document' max-outgoing: 1",
         "no end Document/files/Document/max-outgoing=1 -\n"},
        {"RELATION 'then' TO_CLASS 'Node' min-outgoing: 1", "", "apart Task/then/Node/min-outgoing=1 -\n"},
        {"max-objects: 65535 max-relations: 70000", "",
         "nothing Task/max-objects=65535 -\nnothing Task/max-relations=70000 -\n"},
        {"max-outgoing: 2 RELATION 'then' max-outgoing: 2", "", "void Task/then/max-outgoing=2 Task/max-outgoing=2\n"},
        {"RELATION 'then' max-outgoing: 2 TO_CLASS 'Task' max-outgoing: 5", "",
         "void Task/then/Task/max-outgoing=5 Task/then/max-outgoing=2\n"},
        {"RELATION 'then' min-outgoing: 1 TO_CLASS 'Task' min-outgoing: 1", "",
         "void Task/then/min-outgoing=1 Task/then/Task/min-outgoing=1\n"},
        {"min-outgoing: 2 RELATION 'then' min-outgoing: 1 RELATION 'uses' min-outgoing: 1", "",
         "void Task/min-outgoing=2 Task/uses/min-outgoing=1\n"},
        {"min-relations: 1 RELATION 'then' min-incoming: 1", "",
         "void Task/min-relations=1 Task/then/min-incoming=1\n"},
    };
    for (const Row& row : rows) {
        Desk desk;
        if (*row.task != '\0') desk.rules("Task", std::string("CARDINALITIES ") + row.task);
        if (*row.document != '\0') desk.rules("Document", std::string("CARDINALITIES ") + row.document);
        EXPECT_EQ(diagnoses(desk), row.found) << row.task << " / " << row.document;
    }
}

TEST(Doctor, KnowsClassesThatNoModelTypeShows) {
    Desk desk;
    const auto loose = desk.workshop.cls("Loose", "Node");
    ASSERT_EQ(desk.handler.decryptKex(desk.workshop.processes, loose, "CARDINALITIES max-outgoing: 3"), 1);
    int found = 0;
    QorCardinalityDoctor doctor(desk.handler);
    EXPECT_TRUE(doctor.diagnose([&](const QorCardinalityDiagnosis& diagnosis) {
        ++found;
        EXPECT_EQ(diagnosis.fault, Fault::ClassInNoModel);
        EXPECT_FALSE(diagnosis.isContradiction());
    }));
    EXPECT_EQ(found, 1);
    desk.watched().record.fail("getAllFromRelationsRecursive", static_cast<QorErrorCode>(4711));
    desk.rules("Task", "CARDINALITIES RELATION 'then' max-outgoing: 1");
    desk.internalErrors.clear();
    desk.watched().record.fail("getAllFromRelationsRecursive", static_cast<QorErrorCode>(4711));
    EXPECT_FALSE(doctor.diagnose([](const auto&) {}));
    EXPECT_EQ(desk.internalErrors.size(), 1U);
}

TEST(Usage, TellsRulesThatNeverCountedAndObjectsWithoutRules) {
    Desk desk;
    desk.draw("a>b a=x").objects("s");
    desk.rules("Task",
               "CARDINALITIES max-incoming: 3 min-outgoing: 1 max-objects: 9\n"
               "RELATION 'uses' max-outgoing: 2 max-incoming: 2 TO_CLASS 'Document' max-outgoing: 1\n"
               "TO_CLASS 'Task' max-outgoing: 1 min-outgoing: 0\n"
               "RELATION 'files' max-outgoing: 0 max-incoming: 2 min-incoming: 0");
    const auto document = desk["Document"];
    ASSERT_EQ(desk.handler.decryptKex(desk.workshop.processes, document, "CARDINALITIES"), 1);
    QorCardinalityUsage usage(desk.handler);
    ASSERT_TRUE(usage.addModel(desk.model));
    std::vector<std::string> unapplied;
    for (const auto& rule : usage.unapplied()) unapplied.push_back(described(desk, rule));
    EXPECT_EQ(unapplied, (std::vector<std::string>{"Task/uses/Task/max-outgoing=1", "Task/uses/max-incoming=2",
                                                   "Task/files/max-incoming=2"}));
    std::string untouched;
    for (const auto& one : usage.untouched())
        untouched += desk.names(std::vector<long>{one.cls}) + " " + std::to_string(one.objects) + " ";
    EXPECT_EQ(untouched, "Document 1 Special 1 ");
    EXPECT_FALSE(usage.addModel(99999));
}

}  // namespace
