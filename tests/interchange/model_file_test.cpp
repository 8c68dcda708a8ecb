// SPDX-License-Identifier: Apache-2.0
// What a file of models may say, what is said about its faults, and what it becomes.
#include "interchange/Files.h"

namespace {

using qor::test::expectDiagnostics;
using qor::test::Fault;
using qor::test::Files;
using qor::test::kSmallLibrary;

std::string objects(const std::string& text) { return "  - name: M\n    type: Process\n    objects:\n" + text; }

std::string deepWay() {
    std::string way = "a";
    for (int depth = 1; depth <= 64; ++depth) way += ", a";
    return way;
}

/// In line 12, behind an object that cannot be made; what refers to that one is no second fault.
Fault relation(const std::string& keys, const std::string& expected) {
    return {objects("      - {id: t, class: Task, name: a}\n      - {class: Event, name: a}\n"
                    "      - {class: Event, name: b}\n      - {class: Note, name: n}\n"
                    "      - {class: Nope, name: lost}\n    relations:\n      - {" +
                    keys + "}\n"),
            "10:17 no class \"Nope\"\n" + expected};
}

// The texts stand from line 3 on, below "models:".
const Fault kFaults[] = {
    {"  - {name: \"ä€\", type: Nope}\n", "3:27 no model type"},  // columns count bytes
    {"  name: M\n", "3:3 \"models\" must be a list, not a mapping"},
    {"  - {}\n", "3:5 a model needs the key \"name\"\n3:5 a model needs the key \"type\""},
    {"  - {name: M, type: Proces, objects: [{class: Tusk, name: a}]}\n",
     "3:21 no model type \"Proces\"; did you mean \"Process\"?\n3:47 the library has no class \"Tusk\""},
    {"  - {name: M, type: Notes}\n  - {name: M, type: Process}\n  - {name: M, type: Notes, objects: [{class: Nota, "
     "name: a}]}\n",
     "5:12 already a model \"M\" of this type; give this one another version\n5:46 no class \"Nota\""},
    {"  - {name: M, type: Notes, version: 1}\n  - {name: M, type: Notes, version: \"1\"}\n",
     "4:12 already a model \"M\" of this type in version \"1\""},
    {"  - {name: \"\", type: Notes}\n", "3:12 the name is empty"},
    {"  - {name: M, type: Notes, group: [Sales, Ordrs]}\n  - {name: N, type: Notes, group: Salse}\ngroups: [[Sales, "
     "Orders]]\n",
     "3:43 no model group \"Ordrs\" in model group \"Sales\"; did you mean \"Orders\"?\n4:35 no model group \"Salse\"; "
     "did you mean \"Sales\"?"},
    {"  - {name: M, type: Notes, group: {a: b}}\n  - {name: N, type: Notes, group: []}\ngroups: [[], [[a]], \"\", [a, "
     "\"b\\n\"]]\n",
     "3:35 \"group\" must be a name or a list of names, not a mapping\n4:35 a list of names\n5:10 a list of "
     "names\n5:14 a list of names\n5:21 the name is empty\n5:29 neither line breaks"},
    {"groups: [[" + deepWay() + "]]\n", "3:203 nested too deeply"},
    {objects("      - Task\n"), "6:9 an object must be a mapping, not a text"},
    {objects("      - {class: Taks, name: a}\n"), "6:17 no class \"Taks\"; did you mean \"Task\"?"},
    {objects("      - {class: Step, name: a}\n"), "6:17 class \"Step\" is abstract"},
    {objects("      - {class: Row, name: a}\n"), "6:17 \"Row\" is a record class"},
    {"  - {name: M, type: Notes, objects: [{class: Task, name: a}]}\n", "3:46 hold no objects of class \"Task\""},
    {objects("      - {class: Task}\n"), "6:9 an object needs the key \"name\""},
    {objects("      - {class: Task, name: a}\n      - {class: Event, name: a}\n      - {class: Task, name: a}\n"),
     "8:29 an object \"a\" of this class already, at line 6"},
    {objects("      - {id: x, class: Task, name: a}\n      - {id: x, class: Task, name: b}\n"),
     "7:14 \"x\" is taken by the object at line 6"},
    {objects("      - class: Task\n        name: a\n        values:\n          Kind: none\n          Kint: manual\n    "
             "      Count: 4294967301\n          Tags: [red, red]\n          Shape: x\n          Rows: x\n          "
             "Name: {a: b}\n"),
     "9:17 \"Kind\" does not take \"none\": it holds one of \"manual\", \"automatic\"\n10:11 has no attribute "
     "\"Kint\"; did you mean \"Kind\"?\n11:18 a whole number\n12:17 \"red;red\"\n13:18 \"Shape\"\n14:17 a list of "
     "rows, each a mapping\n15:17 must be a text"},
    {objects("      - class: Task\n        name: a\n        values:\n          Rows: [x, {Cell: a, Sell: b}, {}]\n     "
             " - {class: Task, name: b, values: {Rows: {Cell: a}}}\n"),
     "9:18 a row must be a mapping\n9:31 record class \"Row\" has no attribute \"Sell\"; did you mean \"Cell\"?\n10:47 "
     "the rows of a record must be a list"},
    {objects("      - class: Task\n        name: a\n        values:\n          Sum: |\n            1 +\n            "
             "[Count] [Kind]\n      - {class: Task, name: b, values: {Sum: \"1 +\"}}\n      - {class: Task, name: c, "
             "values: {Sum: [1]}}\n"),
     "11:21 in the expression: an operator or the end\n12:50 in the expression: the expression ends too early\n13:46 "
     "must be a text"},
    relation("class: then, from: t", "12:9 needs the key \"to\""),
    relation("class: than, from: t, to: b", "12:17 no relation class \"than\"; did you mean \"then\"?"),
    relation("class: then, from: t, to: lots",
             "12:36 \"to\": the model has no object with the identifier or name \"lots\"; did you mean "
             "\"lost\"?"),
    relation("class: then, from: lost, to: b}\n      - {class: then, from: {class: Task, name: lost}, to: b", ""),
    relation("class: then, from: a, to: b", "12:29 several objects (\"Event\" at line 7, \"Task\" at line 6)"),
    relation("class: then, from: {class: Event, name: c}, to: b", "12:29 no object \"c\" of class \"Event\""),
    relation("class: then, from: [t], to: b", "12:29 must be a name, not a list"),
    relation("class: then, from: n, to: b", "12:29 leave objects of class \"Step\", and \"n\" is of class \"Note\""),
    relation("class: about, from: n, to: n",
             "12:37 arrive at objects of class \"Step\", and \"n\" is of class \"Note\""),
    relation("class: then, from: t, to: b, values: {Weight: heavy, Wait: 1}",
             "12:56 \"Weight\" does not take \"heavy\"\n12:63 relation class \"then\" has no attribute "
             "\"Wait\""),
};

TEST(ModelFile, FaultsAreNamedAtTheirPlacesAndLeaveNothing) {
    for (const auto& [text, expected] : kFaults) {
        SCOPED_TRACE(text);
        Files files;
        const QorIdentifier library = files.library(kSmallLibrary);
        const QorImportResult result = files.read("format: qor.model/1\nmodels:\n" + text, library);
        expectDiagnostics(result.diagnostics, expected);
        EXPECT_TRUE(result.models.empty());
        EXPECT_EQ(files.content(), "Small ()");
    }
}

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
                      "6:57 in the expression: class \"Task\" has no attribute \"Cuont\"; did you mean \"Count\"?");
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

}  // namespace
