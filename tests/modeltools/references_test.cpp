// SPDX-License-Identifier: Apache-2.0
// References in both directions, those that lead nowhere, circles, and what a change would break.
#include <random>

#include "modeltools/EscapedText.h"
#include "modeltools/HierarchyDesk.h"
#include "modeltools/QorHierarchyTree.h"
#include "modeltools/QorReferenceIndex.h"

namespace {

using Ids = std::vector<long>;

ISortedSet<long> setOf(const std::vector<QorIdentifier>& models) {
    ISortedSet<long> set;
    for (const QorIdentifier model : models) set.add(model);
    return set;
}

Ids sourcesOf(std::span<const QorModelReference> references) {
    Ids sources;
    for (const QorModelReference& reference : references) sources.push_back(reference.source);
    return sources;
}

TEST(ReferenceIndex, AnswersInBothDirections) {
    HierarchyDesk desk;
    const auto models = desk.models(4);
    desk.callTo(models[2], {"M0", "M1", "M0"});
    const QorIdentifier called = desk.callTo(models[1], {"M0"});
    desk.refer(models[3], "Call", "Mentions", HierarchyDesk::to("M0"));
    desk.refer(models[3], "Call", "Uses",
               HierarchyDesk::toObject(std::string(desk.reader().nameOf(called)), "Call", "M1"));
    FailingRepository& watched = desk.watched();
    QorReferenceIndex index;
    ASSERT_TRUE(index.build(setOf(models)));
    EXPECT_EQ(watched.record.count("getInterRefsOfSourceModel"), 4);
    EXPECT_EQ(index.numberOfReferences(), 6U);
    EXPECT_EQ(sourcesOf(index.usesOf(models[0])), (Ids{models[1], models[2], models[2], models[3]}));
    EXPECT_FALSE(index.usesOf(models[0])[3].hierarchy);
    ASSERT_EQ(index.usesOf(models[1]).size(), 2U);
    EXPECT_EQ(index.usesOf(models[1])[1].object, called);
    EXPECT_EQ(index.usesOf(models[1])[0].attribute, desk.attributeOf(desk.call, "Calls"));
    EXPECT_EQ(index.referencesOf(models[2]).size(), 3U);
    EXPECT_TRUE(index.referencesOf(models[0]).empty());
    const auto children = index.childrenOf(models[2]);
    EXPECT_EQ(Ids(children.begin(), children.end()), (Ids{models[0], models[1]}));
    EXPECT_TRUE(index.childrenOf(models[3]).empty()) << "a mention is no child";
    EXPECT_EQ(index.roots(), (Ids{models[2], models[3]}));
    EXPECT_TRUE(index.usesOf(-1).empty());
    EXPECT_TRUE(index.badReferences().empty());
    EXPECT_EQ(sourcesOf(index.ifObjectLost(called).broken), Ids{models[3]});
    EXPECT_TRUE(index.ifObjectLost(-1).broken.empty());
}

TEST(ReferenceIndex, TellsWhichReferencesAreBrokenOrAmbiguous) {
    HierarchyDesk desk;
    const auto models = desk.models(2);
    const auto object = [](const char* name, const char* cls) { return HierarchyDesk::toObject(name, cls, "M1"); };
    desk.refer(models[1], "Link", "Note", "");
    const std::string there(desk.reader().nameOf(desk.callTo(models[1], {})));
    const struct {
        const char* attribute;
        std::string value;
        QorReferenceState state;
    } rows[] = {
        {"Calls", HierarchyDesk::to("M1"), QorReferenceState::Good},
        {"Calls", HierarchyDesk::to("M1", "None"), QorReferenceState::UnknownModelType},
        {"Calls", HierarchyDesk::to("M9"), QorReferenceState::UnknownModel},
        {"Uses", object(there.c_str(), "Call"), QorReferenceState::Good},
        {"Uses", object(there.c_str(), "None"), QorReferenceState::UnknownClass},
        {"Uses", object(there.c_str(), "Link"), QorReferenceState::UnknownObject},
        {"Uses", object("nobody", "Call"), QorReferenceState::UnknownObject},
        {"Uses", HierarchyDesk::toObject("o", "Call", "M9"), QorReferenceState::UnknownModel},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        const QorIdentifier from = desk.refer(models[0], "Call", row.attribute, row.value);
        QorReferenceIndex index;
        ASSERT_TRUE(index.build(setOf(models)));
        ASSERT_EQ(index.numberOfReferences(), 1U);
        const QorModelReference& reference = index.referencesOf(models[0])[0];
        EXPECT_EQ(reference.state, row.state);
        EXPECT_EQ(index.badReferences().size(), row.state == QorReferenceState::Good ? 0U : 1U);
        if (!index.badReferences().empty()) {
            const QorInterModRefTarget& target = index.badReferences()[0].target;
            EXPECT_NE(row.value.find("\"" + target.modelName.str() + "\""), std::string::npos);
            EXPECT_EQ(index.badReferences()[0].reference.source, models[0]);
        }
        ASSERT_EQ(desk.repository().deleteInstance(models[0], from), QorErrorCode::Ok);
    }
}

// Both parts of a library may have a class of the same name.
TEST(ReferenceIndex, TellsWhenAReferenceMeansTwoObjects) {
    HierarchyDesk desk;
    const std::vector<QorIdentifier> classes{desk.call, desk.environmentClass("Call")};
    const QorIdentifier type = desk.builder().addModelType(desk.processes, "Both", classes).id;
    const QorIdentifier both = desk.builder().addModel(type, "B", {}).id;
    const QorIdentifier first = desk.builder().addObject(both, classes[0], "x").id;
    const auto models = desk.models(1);
    desk.refer(models[0], "Call", "Uses", "OBJECT \"x\" class: \"Call\" model: \"B\" type: \"Both\"");
    QorReferenceIndex index;
    for (const auto state : {QorReferenceState::Good, QorReferenceState::SeveralObjects}) {
        ASSERT_TRUE(index.build({both, models[0]}));
        EXPECT_EQ(index.referencesOf(models[0])[0].state, state);
        EXPECT_EQ(index.referencesOf(models[0])[0].object, first);
        (void)desk.builder().addObject(both, classes[1], "x");
    }
}

TEST(ReferenceIndex, KnowsWhatAChangeWouldBreak) {
    HierarchyDesk desk;
    const auto models = desk.models(3);
    const QorIdentifier house = desk.model("House", "Old");
    desk.callTo(models[0], {"M1", "M2", "Wanted"});
    desk.callTo(models[1], {"M1"});
    desk.refer(models[2], "Call", "Calls", HierarchyDesk::to("Wanted", "House"));
    const QorIdentifier newer = desk.process("M2", "2");
    auto all = setOf(models);
    for (const QorIdentifier further : {house, newer}) all.add(further);
    QorReferenceIndex index;
    ASSERT_TRUE(index.build(all));

    const auto deleted = index.ifModelDeleted(models[1]);
    EXPECT_EQ(sourcesOf(deleted.broken), Ids{models[0]}) << "its own reference goes with it";
    EXPECT_EQ(deleted.leadsTo, -1);
    const auto newest = index.ifModelDeleted(newer);
    EXPECT_EQ(sourcesOf(newest.redirected), Ids{models[0]});
    EXPECT_EQ(newest.leadsTo, models[2]);
    EXPECT_TRUE(index.ifModelDeleted(models[2]).broken.empty()) << "nothing leads to an old version";

    const auto renamed = index.ifModelRenamed(models[1], "Wanted");
    EXPECT_EQ(sourcesOf(renamed.broken), (Ids{models[0], models[1]}));
    ASSERT_EQ(renamed.mended.size(), 1U) << "only references to a model of that type";
    EXPECT_EQ(renamed.mended[0].reference.source, models[0]);
    EXPECT_EQ(renamed.leadsTo, -1);
    EXPECT_EQ(index.ifModelRenamed(models[1], "M0").leadsTo, models[0]) << "has that name";
    EXPECT_TRUE(index.ifModelRenamed(models[1], "M1").broken.empty()) << "keeps its name";
}

TEST(ReferenceIndex, NamesCircles) {
    HierarchyDesk desk;
    const auto models = desk.models(9);
    desk.callTo(models[0], {"M1"});
    desk.callTo(models[1], {"M2", "M4"});  // a short way back and a long one
    desk.callTo(models[2], {"M3"});
    desk.callTo(models[3], {"M1"});
    desk.callTo(models[4], {"M1"});
    desk.callTo(models[5], {"M5", "M6"});
    desk.callTo(models[7], {"M8"});
    desk.refer(models[8], "Call", "Mentions", HierarchyDesk::to("M7"));
    QorReferenceIndex index;
    ASSERT_TRUE(index.build(setOf(models)));
    const auto cycles = index.cycles();
    ASSERT_EQ(cycles.size(), 2U);
    EXPECT_EQ(cycles[0].path, (Ids{models[1], models[4]}));
    EXPECT_EQ(cycles[0].numberOfModels, 4U);
    EXPECT_EQ(cycles[1].path, Ids{models[5]});
}

TEST(ReferenceIndex, GoesOnWithoutModelsThatCannotBeRead) {
    HierarchyDesk desk;
    const auto models = desk.models(3);
    desk.callTo(models[0], {"M2"});
    desk.callTo(models[1], {"M2"});
    desk.watched().record.fail("getInterRefsOfSourceModel", static_cast<QorErrorCode>(77));
    auto all = setOf(models);
    all.add(4294967296L);
    QorReferenceIndex index;
    ASSERT_TRUE(index.build(all));
    EXPECT_EQ(index.unreadModels(), (Ids{models[0], 4294967296L}));
    EXPECT_EQ(sourcesOf(index.usesOf(models[2])), Ids{models[1]});
}

std::string xmlOf(const QorReferenceIndex& index, long root, std::size_t limit) {
    QorHierarchyTree tree;
    SV::String text;
    EXPECT_EQ(tree.build(index, root, limit), QorErrorCode::Ok);
    EXPECT_EQ(tree.asXml(text), QorErrorCode::Ok);
    EXPECT_EQ(tree.isComplete(), text.view().find("omitted") == std::string_view::npos);
    EXPECT_LE(tree.elements().size(), std::max<std::size_t>(limit, 1));
    return text.str();
}

// Random references, circles included: the tree is the one that the manager writes.
TEST(HierarchyTree, IsTheManagersWhenItIsWhole) {
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        HierarchyDesk desk;
        const auto models = desk.models(6);
        for (int call = 0; call < 8; ++call) desk.callTo(models[random() % 6], {"M" + std::to_string(random() % 6)});
        QorReferenceIndex index;
        ASSERT_TRUE(index.build(setOf(models)));
        QorHierarchyManager manager;
        for (const QorIdentifier model : models) {
            SV::String text;
            ASSERT_EQ(manager.GetHierarchyAsXML(model, text), QorErrorCode::Ok);
            ASSERT_EQ(xmlOf(index, model, 100'000), text.str()) << round;
        }
    }
}

TEST(HierarchyTree, LeavesOutTheLowestLayers) {
    HierarchyDesk desk;
    const auto models = desk.models(41);
    desk.callTo(models[0], {"M1", "M2"});
    for (std::size_t layer = 1; layer < 39; layer += 2)
        for (const std::size_t side : {layer, layer + 1})
            desk.callTo(models[side], {"M" + std::to_string(layer + 2), "M" + std::to_string(layer + 3)});
    QorReferenceIndex index;
    ASSERT_TRUE(index.build(setOf(models)));
    const auto element = [&](std::size_t number) { return "<model id=\"" + std::to_string(models[number]) + "\""; };
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + element(0);
    EXPECT_EQ(xmlOf(index, models[0], 0), head + " omitted=\"2\" />\n");
    EXPECT_EQ(xmlOf(index, models[0], 4), head + ">\n  " + element(1) + " omitted=\"1\">\n    " + element(3) +
                                              " omitted=\"2\" />\n  </model>\n  " + element(2) +
                                              " omitted=\"2\" />\n</model>\n");
    QorHierarchyTree tree;
    ASSERT_EQ(tree.build(index, models[0], 10'000), QorErrorCode::Ok);
    EXPECT_EQ(tree.elements().size(), 10'000U);
    EXPECT_EQ(tree.build(index, desk.call, 10), QorErrorCode::NotAModelVersion);
    EXPECT_TRUE(tree.elements().empty());
}

TEST(HierarchyTree, IsWrittenForPeopleAndPrograms) {
    HierarchyDesk desk;
    const QorIdentifier first = desk.process("a <\"b\"> & \xff");
    const QorIdentifier second = desk.process("b");
    desk.callTo(first, {"b"});
    desk.callTo(second, {"b"});
    QorReferenceIndex index;
    ASSERT_TRUE(index.build({first, second}));
    QorHierarchyTree tree;
    ASSERT_EQ(tree.build(index, first, 10), QorErrorCode::Ok);
    SV::String text;
    ASSERT_EQ(tree.asJson(text), QorErrorCode::Ok);
    const auto element = [](int depth, QorIdentifier model, const char* name, const char* end) {
        return "    {\"depth\": " + std::to_string(depth) + ", \"id\": " + std::to_string(model) + ", \"name\": \"" +
               name + "\", \"type\": \"Process\", \"end\": \"" + end + "\", \"omitted\": 0}";
    };
    EXPECT_EQ(text.str(), "{\n  \"schema\": \"qor.hierarchy.tree/1\",\n  \"complete\": true,\n  \"elements\": [\n" +
                              element(0, first, "a <\\\"b\\\"> & \uFFFD", "inner") + ",\n" +
                              element(1, second, "b", "inner") + ",\n" + element(2, second, "b", "cycle") +
                              "\n  ]\n}\n");
    ASSERT_EQ(tree.asSvg(text), QorErrorCode::Ok);
    EXPECT_NE(text.view().find(">a &lt;&quot;b&quot;&gt; &amp; \uFFFD (Process)</text>"), std::string::npos);
    EXPECT_NE(text.view().find("<g class=\"cycle\">"), std::string::npos);
}

TEST(EscapedText, IsUtf8WhateverTheBytesAre) {
    const struct {
        std::string text;
        const char* markup;
        std::size_t characters;
    } rows[] = {
        {"", "", 0},
        {"\u00e4\u20ac\U0001F600", "\u00e4\u20ac\U0001F600", 3},
        {"\xc3", "\uFFFD", 1},
        {"\xe2\x82", "\uFFFD\uFFFD", 2},
        {"\xc0\x80", "\uFFFD\uFFFD", 2},                      // a longer form than needed
        {"\xed\xa0\x80", "\uFFFD\uFFFD\uFFFD", 3},            // half a pair
        {"\xf4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD", 4},  // beyond the last character
        {"\xef\xbf\xbf", "\uFFFD\uFFFD\uFFFD", 3},
        {"\x01\t", "\uFFFD&#9;", 2},
    };
    for (const auto& row : rows) {
        std::string markup;
        qor::modeltools::appendMarkup(markup, row.text);
        EXPECT_EQ(markup, row.markup);
        EXPECT_EQ(qor::modeltools::characters(row.text), row.characters);
    }
    std::string json;
    qor::modeltools::appendJson(json, std::string("\\\"\n\x1b\x7f\xff", 6));
    EXPECT_EQ(json, "\"\\\\\\\"\\n\\u001b\\u007f\uFFFD\"");
}

}  // namespace
