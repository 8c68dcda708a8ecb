// SPDX-License-Identifier: Apache-2.0
// What a library file may say, what is said about its faults, and what it becomes.
#include "interchange/Files.h"
#include "platform/QorAttributeIds.h"

namespace {

using qor::test::expectDiagnostics;
using qor::test::Fault;
using qor::test::Files;

std::string attribute(const std::string& keys) {
    return "  classes:\n    - name: A\n      attributes:\n        - {" + keys + "}\n";
}

// The texts stand from line 4 on, in the business-process part.
const Fault kFaults[] = {
    {"  clases: []\n", "4:3 no key \"clases\"; did you mean \"classes\"?"},
    {"  classes: {name: A}\n", "4:12 \"classes\" must be a list, not a mapping"},
    {"  classes:\n    - A\n    - {name: B}\n", "5:7 a class must be a mapping, not a text"},
    {"  classes:\n    - {abstract: true}\n", "5:7 a class needs the key \"name\""},
    {"  classes:\n    - {name: \"\"}\n", "5:14 the name is empty"},
    {"  classes:\n    - name:\n", "5:12 \"name\" has no value"},
    {"  classes:\n    - {name: " + std::string(65536, 'n') + "}\n", "5:14 a name has 65535 bytes at most"},
    {"  classes:\n    - {name: \"a\\nb\"}\n", "5:14 neither line breaks nor control characters"},
    {"  classes:\n    - {name: A, abstract: yes}\n", "5:27 must be true or false, not \"yes\""},
    {"  classes:\n    - {name: A}\n    - {name: A, values: {Y: 1}}\n",
     "6:14 \"A\" is taken by the class \"A\" at line 5\n6:26 class \"A\" at line 6 has no attribute \"Y\""},
    {"  classes:\n    - {name: A}\n  record_classes:\n    - {name: A}\n",
     "5:14 \"A\" is taken by the record class \"A\" at line 7"},
    {"  classes:\n    - {name: Task}\n    - {name: B, extends: Tusk}\n    - {name: C, extends: B}\n",
     "6:26 no class \"Tusk\"; did you mean \"Task\"?"},
    {"  record_classes: [{name: R}]\n  classes:\n    - {name: B, extends: R}\n", "6:26 \"R\" is a record class"},
    {"  classes:\n    - {name: A, extends: A}\n", "5:26 \"A\" extends \"A\""},
    {"  classes:\n    - {name: Z, extends: A}\n    - {name: A, extends: B}\n    - {name: B, extends: C}\n    - {name: "
     "C, extends: A}\n",
     "6:26 \"A\" extends \"B\" extends \"C\" extends \"A\""},
    {"  classes:\n    - {name: A, extends: {name: A, part: there}}\n", "5:42 \"there\" is no part of a library"},
    {"  record_classes:\n    - {name: A, abstract: true, cardinalities: X}\n",
     "5:27 no key \"abstract\"\n5:48 no key \"cardinalities\""},
    {"  classes:\n    - {name: A, extend: B}\n    - {nam: B}\n    - {name: A}\n  model_types:\n    - {classes: [X]}\n",
     "5:17 no key \"extend\"; did you mean \"extends\"?\n6:7 needs the key \"name\"\n6:8 no key \"nam\"\n7:14 "
     "taken\n9:7 a model type needs the key \"name\"\n9:18 no class \"X\""},
    {attribute("name: X"), "7:11 an attribute needs the key \"type\""},
    {attribute("name: X, type: integr"), "7:27 no attribute type \"integr\"; did you mean \"integer\"?"},
    {attribute("name: X, type: text, level: all"), "7:40 \"level\" is instance or class, not \"all\""},
    {attribute("name: X, type: reference, refers_to: all"), "7:49 objects or models"},
    {attribute("name: X, type: enumeration"), "7:11 \"enumeration\" needs the key \"values\""},
    {attribute("name: X, type: enumeration, values: []"), "7:48 at least one value"},
    {attribute("name: X, type: text, values: [a]"), "7:41 \"text\" has no key \"values\""},
    {attribute("name: X, type: enumeration, values: [a, b, a]"), "7:55 \"a\" stands here twice"},
    {attribute("name: X, type: enumeration, values: [a, \"\"]"), "7:52 \"\" cannot be a value"},
    {attribute("name: X, type: enumeration list, values: [\"a;b\"]"), "7:54 semicolons part"},
    {attribute("name: X, type: enumeration, values: [[a]]"), "7:49 must be a text, not a list"},
    {attribute("name: X, type: enumeration, values: [a], default: b"), "7:62 \"b\" cannot be the default of \"X\""},
    {attribute("name: X, type: integer, default: 2147483648"), "7:45 a whole number from -2147483648"},
    {attribute("name: X, type: floating, default: 1e400"), "7:46 a number such as"},
    {attribute("name: X, type: text, shown_as: refrence"),
     "7:43 no attribute type \"refrence\"; did you mean \"reference\"?"},
    {attribute("name: X, type: expression, default: 1 + (2"), "7:54 in the expression: \")\" is missing"},
    {attribute("name: X, type: record"), "7:11 \"record\" needs the key \"record_class\""},
    {attribute("name: X, type: record, record_class: A"), "7:49 \"A\" is no record class"},
    {"  record_classes: [{name: R}]\n" + attribute("name: X, type: record, record_class: R, level: class"),
     "8:11 \"record\" belongs to each object"},
    {attribute("name: X, type: attribute profile, profile_class: P"), "7:61 no class \"P\""},
    {attribute("name: X, type: text}\n        - {name: X, type: date"),
     "8:18 \"X\" is taken by the attribute \"X\" of class \"A\" at line 5"},
    {"  classes:\n    - {name: B, extends: A, attributes: [{name: X, type: text}]}\n    - {name: A, attributes: "
     "[{name: X, type: text}]}\n",
     "6:37 \"X\" is taken by the attribute \"X\" of class \"B\" at line 5"},
    {attribute("name: Cardinalities, type: text"), "7:18 \"Cardinalities\" is taken"},
    {attribute("name: X, type: txt") + "      values: {X: 1, Y: 2}\n",
     "7:27 \"txt\"\n8:22 class \"A\" at line 5 has no attribute \"Y\""},
    {"  classes: [{name: A}]\n  relation_classes:\n    - {name: r, from: B, to: A}\n    - {name: s, from: A}\n",
     "6:23 \"from\": there is no class \"B\"\n7:7 a relation class needs the key \"to\""},
    {"  classes: [{name: A}]\n  relation_classes: [{name: holds, from: A, to: A}]\n  unmoved_relation_class: hold\n",
     "6:27 no relation class \"hold\"; did you mean \"holds\"?"},
    {"  classes: [{name: A}]\n  relation_classes:\n    - {name: r, from: A, to: A}\n    - {name: r, from: A, to: A}\n",
     "7:14 taken by the relation class \"r\" at line 6"},
    {"  classes:\n    - name: A\n      attributes:\n        - {name: X, type: integer, level: class}\n        - {name: "
     "Y, type: text}\n      values:\n        X: many\n        Y: y\n        Z: z\n        Cardinalities: c\n",
     "10:12 \"X\" does not take \"many\": it holds a whole number\n11:9 \"Y\" has a value for each object\n12:9 class "
     "\"A\" at line 5 has no attribute \"Z\"\n13:9 under the key \"cardinalities\""},
    {"  classes:\n    - {name: A, cardinalities: [a]}\n", "5:32 \"cardinalities\" must be a text, not a list"},
    {"  texts:\n    automatic_checks: \"x: 1\"\n    simulation_result: \"A b: 1 b: 2\"\n  classes:\n    - {name: A, "
     "extends: Gone, cardinalities: \"C a: 1 a: 2\"}\n    - {cardinalities: \"C a:\\n1 a: 2\"}\n",
     "5:24 automatic_checks: the key \"x\"\n6:32 already has the key \"b\", in line 6, column 27\n8:26 \"Gone\"\n8:55 "
     "of class \"A\": the element \"C\" already has the key \"a\", in line 8, column 50\n9:7 needs the key\n9:23 "
     "Cardinalities: the element \"C\" already has the key \"a\", in line 1, column 3 of the text"},
    {"  texts: {automatic_check: x}\n", "4:11 no key \"automatic_check\"; did you mean \"automatic_checks\"?"},
    {"  model_types:\n    - {name: T, classes: [A]}\n    - {name: T}\n",
     "5:27 no class \"A\"\n6:14 taken by the model type \"T\" at line 5"},
};

TEST(LibraryFile, FaultsAreNamedAtTheirPlacesAndLeaveNothing) {
    for (const auto& [text, expected] : kFaults) {
        SCOPED_TRACE(text.substr(0, 300));
        Files files;
        const QorImportResult result = files.read("format: qor.library/1\nname: L\nbusiness_process:\n" + text);
        expectDiagnostics(result.diagnostics, expected);
        EXPECT_EQ(result.library, QorNoIdentifier);
        EXPECT_EQ(files.content(), "");
    }
}

TEST(LibraryFile, BecomesClassesInBothParts) {
    // Each part refers to the other, some things before they come, and both have a class "Actor".
    Files files;
    const QorIdentifier library = files.library(R"(format: qor.library/1
name: L
texts: {simulation_mapping: "SIMOPTION"}
working_environment:
  name: Staff
  classes:
    - {name: Manager, extends: Actor, cardinalities: CARDINALITIES}
    - {name: Actor, abstract: true, hierarchy_attribute: Sub}
    - {name: Client, extends: {part: business_process, name: Actor}}
  relation_classes:
    - {name: does, from: Manager, to: Task}
business_process:
  texts: {automatic_checks: "CHECK_CARDINALITIES before-save: 1"}
  classes:
    - {name: Task, extends: Actor, attributes: [{name: Group, type: attribute profile, profile_class: Manager}]}
    - {name: Actor}
  model_types:
    - {name: All, classes: [Task, Actor, {name: Actor, part: working_environment}, Manager]}
)");
    const QorRepositoryReader& reader = files.reader();
    const QorIdentifier process = reader.libraryPart(library, QorLibraryPart::BusinessProcess);
    const QorIdentifier staff = reader.libraryPart(library, QorLibraryPart::WorkingEnvironment);
    const QorIdentifier manager = reader.findClass(staff, "Manager");
    const QorIdentifier staffActor = reader.findClass(staff, "Actor");
    const QorIdentifier actor = reader.findClass(process, "Actor");
    const QorIdentifier task = reader.findClass(process, "Task");
    EXPECT_EQ(reader.nameOf(staff), "Staff");
    EXPECT_EQ(reader.classInfo(manager).superclass, staffActor);
    EXPECT_TRUE(reader.classInfo(staffActor).isAbstract);
    EXPECT_EQ(reader.classInfo(reader.findClass(staff, "Client")).superclass, actor);
    EXPECT_EQ(reader.classInfo(task).superclass, actor);
    EXPECT_EQ(reader.relationClassInfo(reader.findRelationClass(staff, "does")).toClass, task);
    EXPECT_EQ(reader.attributesOf(task).at(0).target, manager);
    EXPECT_EQ(reader.visibleClasses(reader.findModelType(library, "All")).size(), 4U);
    EXPECT_EQ(reader.classValue(manager, QorAttributeId::WorkingEnvironmentCardinality), "CARDINALITIES");
    EXPECT_EQ(reader.classValue(staffActor, QorAttributeId::WorkingEnvironmentHierarchyAttribute), "Sub");
    EXPECT_EQ(reader.libraryValue(library, QorAttributeId::SimulationMapping), "SIMOPTION");
    EXPECT_EQ(reader.libraryValue(process, QorAttributeId::AutomaticChecks), "CHECK_CARDINALITIES before-save: 1");
}

TEST(LibraryFile, CannotTakeTheNameOfALibraryThatIsThere) {
    Files files;
    files.library(qor::test::kSmallLibrary);
    const QorImportResult again =
        files.read("format: qor.library/1\nname: Small\nbusiness_process:\n  classes: [{name: A, extends: B}]\n");
    expectDiagnostics(again.diagnostics, "2:7 \"Small\" is taken by the library\n4:32 no class \"B\"");
    EXPECT_EQ(files.content(), "Small ()");
}

TEST(LibraryFile, WarnsOfRulesThatNobodyReads) {
    Files files;
    const QorImportResult result = files.read(
        "format: qor.library/1\nname: L\nbusiness_process:\n  classes:\n"
        "    - {name: A, abstract: \"true\", cardinalities: CARDINALITIES}\n    - {name: B, cardinalities: X}\n");
    EXPECT_FALSE(result.hasErrors());
    expectDiagnostics(result.diagnostics, "5:50 abstract");
}

// Long enough to overflow the stack of a reader that follows them by calls.
TEST(LibraryFile, BoundsTheClassesAboveEachOther) {
    const auto chain = [](int classes) {
        std::string text = "format: qor.library/1\nname: L\nbusiness_process:\n  classes:\n";
        for (int i = 0; i < classes; ++i)
            text += "    - {name: C" + std::to_string(i) + ", extends: C" + std::to_string(i + 1) + "}\n";
        return text + "    - {name: C" + std::to_string(classes) + "}\n";
    };
    Files files;
    const QorIdentifier library = files.library(chain(256));
    int length = 0;
    for (QorIdentifier cls = files.reader().findClass(library, "C0"); cls != QorNoIdentifier; ++length)
        cls = files.reader().classInfo(cls).superclass;
    EXPECT_EQ(length, 257);
    expectDiagnostics(Files().read(chain(257)).diagnostics, "5:27 more than 256 classes above each other");
    EXPECT_EQ(Files().read(chain(60000)).diagnostics.size(), 60000U / 257);
}

struct Place {
    QorKexPosition inText;
    const char* expected;
};

// The text begins with a line of white space only, in one way of writing after the other.
TEST(LibraryFile, KnowsWhereKeywordTextsWereWritten) {
    const struct {
        std::string written;
        std::vector<Place> places;
    } kCases[] = {
        {"|\n        CARDINALITIES\n          max-objects: 1\n", {{{1, 1}, "6:9"}, {{2, 3}, "7:11"}, {{0, 0}, "6:9"}}},
        {"|-\n\n       \n        CARDINALITIES\n        max-objects: 1\n", {{{3, 1}, "8:9"}, {{4, 14}, "9:22"}}},
        {"|+ # why\n        CARDINALITIES\n\n\n", {{{1, 5}, "6:13"}, {{3, 1}, "8:9"}}},
        {"|2\n          A\n        B\n", {{{1, 3}, "6:11"}, {{2, 1}, "7:9"}}},
        {"\"CARDINALITIES max-objects: 1\"\n", {{{1, 1}, "5:23"}, {{1, 15}, "5:37"}}},
        {"CARDINALITIES max-objects\n", {{{1, 15}, "5:36"}}},
        {"\"CARDINALITIES\\nmax-objects: 1\"\n", {{{1, 1}, "5:22"}, {{2, 4}, "5:22"}}},
        {">\n        CARDINALITIES\n        max-objects: 1\n", {{{1, 20}, "5:22"}}},
    };
    for (const auto& [written, places] : kCases) {
        Files files;
        const QorIdentifier library = files.library(
            "format: qor.library/1\nname: L\nbusiness_process:\n  classes: [{name: A}]\nworking_environment:\n"
            "  classes: []\n");
        ASSERT_NE(library, QorNoIdentifier);
        const QorIdentifier other = files.library(
            "format: qor.library/1\nname: M\nbusiness_process:\n  classes:\n    - cardinalities: " + written +
            "      name: A\n");
        const QorIdentifier cls = files.reader().findClass(other, "A");
        for (const Place& place : places) {
            const QorFilePlace found = files.importer.placeInText(cls, QorAttributeId::Cardinality, place.inText);
            EXPECT_EQ(std::to_string(found.line) + ":" + std::to_string(found.column), place.expected) << written;
            EXPECT_EQ(found.file, "file");
        }
        EXPECT_EQ(files.importer.placeInText(cls, QorAttributeId::HierarchyAttribute, {1, 1}).file, "");
    }
}

}  // namespace
