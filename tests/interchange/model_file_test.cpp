// SPDX-License-Identifier: Apache-2.0
// What a file of models may say, what is said about its faults, and what it becomes.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "interchange/Files.h"

namespace {

using qor::test::expectDiagnostics;
using qor::test::Files;
using qor::test::kSmallLibrary;

/// The text stands from line 3 on, below "models:".
struct Fault {
    const char* name;
    std::string text;
    std::vector<std::string> expected;
};

class ModelFault : public testing::TestWithParam<Fault> {};

TEST_P(ModelFault, IsNamedAtItsPlaceAndLeavesNothing) {
    Files files;
    const QorIdentifier library = files.library(kSmallLibrary);
    const QorImportResult result = files.read("format: qor.model/1\nmodels:\n" + GetParam().text, library);
    expectDiagnostics(result.diagnostics, GetParam().expected);
    EXPECT_TRUE(result.models.empty());
    EXPECT_EQ(files.content(), "Small ()");
}

const Fault kModelFaults[] = {
    {"NoList", "  name: M\n", {"3:3 \"models\" must be a list, not a mapping"}},
    {"KeysMissing", "  - {}\n", {"3:5 a model needs the key \"name\"", "3:5 a model needs the key \"type\""}},
    {"UnknownType",
     "  - {name: M, type: Proces, objects: [{class: Tusk, name: a}]}\n",
     {"3:21 no model type \"Proces\"; did you mean \"Process\"?", "3:47 the library has no class \"Tusk\""}},
    {"SameModel",
     "  - {name: M, type: Notes}\n  - {name: M, type: Process}\n  - {name: M, type: Notes, objects: [{class: Nota, "
     "name: a}]}\n",
     {"5:12 already a model \"M\" of this type; give this one another version", "5:46 no class \"Nota\""}},
    {"SameVersion",
     "  - {name: M, type: Notes, version: 1}\n  - {name: M, type: Notes, version: \"1\"}\n",
     {"4:12 already a model \"M\" of this type in version \"1\""}},
    {"EmptyName", "  - {name: \"\", type: Notes}\n", {"3:12 the name is empty"}},
    {"UnknownGroup",
     "  - {name: M, type: Notes, group: [Sales, Ordrs]}\n  - {name: N, type: Notes, group: Salse}\ngroups: [[Sales, "
     "Orders]]\n",
     {"3:43 no model group \"Ordrs\" in model group \"Sales\"; did you mean \"Orders\"?",
      "4:35 no model group \"Salse\"; did you mean \"Sales\"?"}},
    {"NoGroup",
     "  - {name: M, type: Notes, group: {a: b}}\n  - {name: N, type: Notes, group: []}\ngroups: [[], [[a]], \"\", [a, "
     "\"b\\n\"]]\n",
     {"3:35 \"group\" must be a name or a list of names, not a mapping", "4:35 a list of names", "5:10 a list of names",
      "5:14 a list of names", "5:21 the name is empty", "5:29 neither line breaks"}},
    {"GroupsTooDeep",
     "groups: [[" +
         [] {
             std::string way = "a";
             for (int depth = 1; depth <= 64; ++depth) way += ", a";
             return way;
         }() +
         "]]\n",
     {"3:203 nested too deeply"}},
};

std::string objects(const std::string& text) { return "  - name: M\n    type: Process\n    objects:\n" + text; }

const Fault kObjectFaults[] = {
    {"NotAMapping", objects("      - Task\n"), {"6:9 an object must be a mapping, not a text"}},
    {"UnknownClass", objects("      - {class: Taks, name: a}\n"), {"6:17 no class \"Taks\"; did you mean \"Task\"?"}},
    {"AbstractClass", objects("      - {class: Step, name: a}\n"), {"6:17 class \"Step\" is abstract"}},
    {"RecordClass", objects("      - {class: Row, name: a}\n"), {"6:17 \"Row\" is a record class"}},
    {"ClassOutsideTheModelType",
     "  - {name: M, type: Notes, objects: [{class: Task, name: a}]}\n",
     {"3:46 hold no objects of class \"Task\""}},
    {"NameMissing", objects("      - {class: Task}\n"), {"6:9 an object needs the key \"name\""}},
    {"SameName",
     objects("      - {class: Task, name: a}\n      - {class: Event, name: a}\n      - {class: Task, name: a}\n"),
     {"8:29 an object \"a\" of this class already, at line 6"}},
    {"SameIdentifier",
     objects("      - {id: x, class: Task, name: a}\n      - {id: x, class: Task, name: b}\n"),
     {"7:14 \"x\" is taken by the object at line 6"}},
    {"Values",
     objects("      - class: Task\n        name: a\n        values:\n          Kind: none\n          Kint: manual\n    "
             "      Count: 4294967301\n"
             "          Tags: [red, red]\n          Shape: x\n          Rows: x\n          Name: {a: b}\n"),
     {"9:17 \"Kind\" does not take \"none\": it holds one of \"manual\", \"automatic\"",
      "10:11 has no attribute \"Kint\"; did you mean \"Kind\"?", "11:18 a whole number", "12:17 \"red;red\"",
      "13:18 \"Shape\"", "14:17 a list of rows, each a mapping", "15:17 must be a text"}},
    {"Rows",
     objects("      - class: Task\n        name: a\n        values:\n          Rows: [x, {Cell: a, Sell: b}, {}]\n"
             "      - {class: Task, name: b, values: {Rows: {Cell: a}}}\n"),
     {"9:18 a row must be a mapping", "9:31 record class \"Row\" has no attribute \"Sell\"; did you mean \"Cell\"?",
      "10:47 the rows of a record must be a list"}},
    {"Expressions",
     objects("      - class: Task\n        name: a\n        values:\n          Sum: |\n            1 +\n            "
             "[Count] "
             "[Kind]\n"
             "      - {class: Task, name: b, values: {Sum: \"1 +\"}}\n      - {class: Task, name: c, values: {Sum: "
             "[1]}}\n"),
     {"11:21 in the expression: an operator or the end", "12:50 in the expression: the expression ends too early",
      "13:46 must be a text"}},
};

std::string relations(const std::string& text) {
    return objects(
        "      - {id: t, class: Task, name: a}\n      - {class: Event, name: a}\n      - {class: Event, name: b}\n"
        "      - {class: Note, name: n}\n      - {class: Nope, name: lost}\n    relations:\n" +
        text);
}

// Line 10 holds an object that cannot be made; what refers to it is no second fault.
const Fault kRelationFaults[] = {
    {"KeysMissing",
     relations("      - {class: then, from: t}\n"),
     {"10:17 no class \"Nope\"", "12:9 needs the key \"to\""}},
    {"UnknownClass",
     relations("      - {class: than, from: t, to: b}\n"),
     {"10:17 \"Nope\"", "12:17 no relation class \"than\"; did you mean \"then\"?"}},
    {"UnknownObject",
     relations("      - {class: then, from: t, to: lots}\n"),
     {"10:17 \"Nope\"",
      "12:36 \"to\": the model has no object with the identifier or name \"lots\"; did you mean \"lost\"?"}},
    {"LostObject",
     relations(
         "      - {class: then, from: lost, to: b}\n      - {class: then, from: {class: Task, name: lost}, to: b}\n"),
     {"10:17 \"Nope\""}},
    {"AmbiguousName",
     relations("      - {class: then, from: a, to: b}\n"),
     {"10:17 \"Nope\"", "12:29 several objects (\"Event\" at line 7, \"Task\" at line 6)"}},
    {"UnknownByClass",
     relations("      - {class: then, from: {class: Event, name: c}, to: b}\n"),
     {"10:17 \"Nope\"", "12:29 no object \"c\" of class \"Event\""}},
    {"EndIsAList",
     relations("      - {class: then, from: [t], to: b}\n"),
     {"10:17 \"Nope\"", "12:29 must be a name, not a list"}},
    {"SourceDoesNotFit",
     relations("      - {class: then, from: n, to: b}\n"),
     {"10:17 \"Nope\"", "12:29 leave objects of class \"Step\", and \"n\" is of class \"Note\""}},
    {"TargetDoesNotFit",
     relations("      - {class: about, from: n, to: n}\n"),
     {"10:17 \"Nope\"", "12:37 arrive at objects of class \"Step\", and \"n\" is of class \"Note\""}},
    {"Value",
     relations("      - {class: then, from: t, to: b, values: {Weight: heavy, Wait: 1}}\n"),
     {"10:17 \"Nope\"", "12:56 \"Weight\" does not take \"heavy\"",
      "12:63 relation class \"then\" has no attribute \"Wait\""}},
};

std::string nameOf(const testing::TestParamInfo<Fault>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Models, ModelFault, testing::ValuesIn(kModelFaults), nameOf);
INSTANTIATE_TEST_SUITE_P(Objects, ModelFault, testing::ValuesIn(kObjectFaults), nameOf);
INSTANTIATE_TEST_SUITE_P(Relations, ModelFault, testing::ValuesIn(kRelationFaults), nameOf);

TEST(ModelFile, BecomesModelsWithObjectsAndRelations) {
    // An identifier goes before a name; names of several objects are told apart by their class.
    Files files;
    const QorIdentifier library = files.library(kSmallLibrary);
    const auto models = files.models(R"({"format": "qor.model/1", "models": [
{"name": "One", "type": "Process", "version": "2",
 "objects": [
  {"class": "Task", "name": "a", "id": "b", "values": {"Count": -7, "Kind": "automatic", "Tags": ["red", "blue"]}},
  {"class": "Event", "name": "a"},
  {"class": "Event", "name": "b"}],
 "relations": [
  {"class": "then", "from": "b", "to": {"class": "Event", "name": "a"}, "values": {"Weight": 2.50}},
  {"class": "then", "from": {"class": "Event", "name": "b"}, "to": "b"},
  {"class": "then", "from": "b", "to": "b"}]},
{"name": "Two", "type": "Notes"}]})",
                                     library);
    ASSERT_EQ(models.size(), 2U);
    const QorRepositoryReader& reader = files.reader();
    EXPECT_EQ(reader.modelInfo(models[0]).version, "2");
    const auto objects = reader.objectsOf(models[0]);
    ASSERT_EQ(objects.size(), 3U);
    const QorIdentifier task = objects[0];
    const auto relations = reader.relationsOf(models[0]);
    ASSERT_EQ(relations.size(), 3U);
    EXPECT_EQ(relations[0].from, task);
    EXPECT_EQ(relations[0].to, objects[1]);
    EXPECT_EQ(relations[1].from, objects[2]);
    EXPECT_EQ(relations[2].to, task);
    const auto value = [&](QorIdentifier thing, QorIdentifier cls, std::string_view attribute) {
        return reader.valueOf(thing, reader.findAttribute(cls, attribute));
    };
    const QorIdentifier taskClass = reader.classOfObject(task);
    EXPECT_EQ(value(task, taskClass, "Count"), "-7");
    EXPECT_EQ(value(task, taskClass, "Kind"), "automatic");
    EXPECT_EQ(value(task, taskClass, "Tags"), "red;blue");
    EXPECT_EQ(value(relations[0].id, relations[0].relationClass, "Weight"), "2.50");
    EXPECT_EQ(value(objects[1], taskClass, "Kind"), "");
}

TEST(ModelFile, PutsModelsIntoGroupsAndRowsIntoRecords) {
    Files files;
    const QorIdentifier library = files.library(kSmallLibrary);
    const char* const text = R"(format: qor.model/1
groups: [Archive, [Sales, Orders]]
models:
  - name: M
    type: Process
    version: "1"
    group: Archive
    objects:
      - {class: Task, name: a, values: {Rows: [{Cell: first}, {}, {Cell: third}]}}
  - {name: M, type: Process, version: "2", group: [Sales, Orders]}
)";
    const auto models = files.models(text, library);
    ASSERT_EQ(models.size(), 2U);
    const QorRepositoryReader& reader = files.reader();
    EXPECT_EQ(reader.nameOf(reader.groupOfModel(models[0])), "Orders") << "all versions lie in one group";
    EXPECT_EQ(reader.modelGroupsOf(library).size(), 3U);
    const QorIdentifier task = files.object(models[0], "a");
    const auto rows = reader.recordRows(task, reader.findAttribute(reader.classOfObject(task), "Rows"));
    ASSERT_EQ(rows.size(), 3U);
    const QorIdentifier cell = reader.findAttribute(reader.findClass(library, "Row"), "Cell");
    EXPECT_EQ(reader.valueOf(rows[2], cell), "third");
    EXPECT_FALSE(reader.hasValue(rows[1], cell));
    files.models("format: qor.model/1\nmodels:\n  - {name: N, type: Notes, group: [Sales, Orders]}\n", library);
}

TEST(ModelFile, WarnsOfAttributesThatAnExpressionNamesInVain) {
    Files files;
    const QorIdentifier library = files.library(kSmallLibrary);
    const QorImportResult result = files.read(
        "format: qor.model/1\nmodels:\n  - name: M\n    type: Process\n    objects:\n"
        "      - {class: Task, name: a, values: {Sum: \"[Count] + [Cuont]\"}}\n",
        library);
    expectDiagnostics(result.diagnostics,
                      {"6:57 in the expression: class \"Task\" has no attribute \"Cuont\"; did you mean \"Count\"?"});
    EXPECT_EQ(result.models.size(), 1U);
}

TEST(ModelFile, RemembersWhereThingsWereWritten) {
    Files files;
    const QorIdentifier library = files.library(kSmallLibrary);
    const char* const text = R"(format: qor.model/1
models:
  - name: M
    type: Process
    objects:
      - {id: "t\u00e4sk 1", class: Task, name: "Stra\u00dfe"}
      - class: Event
        name: e
    relations: [{class: then, from: e, to: e}, {class: then, from: e, to: e}]
)";
    const auto first = files.models(text, library);
    // The same file again does not fit in; what it forgets are its own places only.
    EXPECT_TRUE(files.read(text, library).hasErrors());
    const auto placed = [&](QorIdentifier thing) {
        const QorFilePlace place = files.importer.placeOf(thing);
        return place.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column);
    };
    const auto objects = files.reader().objectsOf(first[0]);
    const auto relations = files.reader().relationsOf(first[0]);
    EXPECT_EQ(placed(objects[0]), "file:6:9");
    EXPECT_EQ(placed(objects[1]), "file:7:9");
    EXPECT_EQ(placed(relations[0].id), "file:9:17");
    EXPECT_EQ(placed(relations[1].id), "file:9:48");
    EXPECT_EQ(files.importer.sourceIdOf(objects[0]), "t\xC3\xA4sk 1");
    EXPECT_EQ(files.importer.sourceIdOf(objects[1]), "");
    EXPECT_EQ(placed(relations[1].id + 1), ":0:0");
    EXPECT_EQ(placed(QorNoIdentifier), ":0:0");
}

TEST(ModelFile, CountsColumnsInBytes) {
    Files files;
    const QorIdentifier library = files.library(kSmallLibrary);
    expectDiagnostics(
        files.read("format: qor.model/1\nmodels: [{name: \"\xC3\xA4\xE2\x82\xAC\", type: Nope}]\n", library)
            .diagnostics,
        {"2:32 no model type"});
}

}  // namespace
