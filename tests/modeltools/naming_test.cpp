// SPDX-License-Identifier: Apache-2.0
// Which objects a run names, and how.
#include "modeltools/NamingDesk.h"

namespace {

using Names = std::vector<std::string>;

struct Order {
    std::string name;
    std::string title;
    std::string last;
    const char* cls = "Order";
};

struct NamingCase {
    const char* what;
    std::vector<Order> orders;
    Names names;
    int changes;
};

const std::string kLong(300, 'x');

const NamingCase kCases[] = {
    {"nothing to name", {}, {}, 0},
    {"a default name", {{"Order-7", "Alpha", {}}}, {"Alpha-1"}, 1},
    {"a number that is taken", {{"Order-7", "Alpha", {}}, {"Alpha-1", "Beta", {}}}, {"Alpha-2", "Alpha-1"}, 1},
    {"a name typed by hand",
     {{"Mine", "Alpha", {}}, {"Order", "Alpha", {}}, {"Order-", "Alpha", {}}},
     {"Mine", "Order", "Order-"},
     0},
    {"a name that is up to date", {{"Alpha-3", "Alpha", "Alpha-3"}}, {"Alpha-3"}, 0},
    {"another title", {{"Alpha-3", "Beta", "Alpha-3"}}, {"Beta-1"}, 1},
    {"another title, but the name typed", {{"Alpha-3", "Beta", "Alpha-2"}}, {"Alpha-3"}, 0},
    {"no number behind the base", {{"Alpha-x", "Alpha", "Alpha-x"}}, {"Alpha-1"}, 1},
    {"a base that ends in a number",
     {{"Order-1", "Alpha-1", {}}, {"Order-2", "Alpha", {}}},
     {"Alpha-1-1", "Alpha-1"},
     2},
    {"an empty title, the class's name", {{"Order-7", "", {}}}, {"untitled-1"}, 1},
    {"line ends only", {{"Order-7", "\r\n", {}}}, {"Order-1"}, 1},
    {"the class's name that has the lowest number", {{"Order-1", "\n", {}}}, {"Order-1"}, 0},
    {"line ends inside", {{"Order-7", "a\r\nb\nc", {}}}, {"abc-1"}, 1},
    {"quotes", {{"Order-7", "say \"hi\"", {}}}, {"say \"hi\"-1"}, 1},
    {"a base that is too long", {{"Order-7", kLong, {}}}, {kLong.substr(0, 240) + "-1"}, 1},
    {"a base cut within a letter",
     {{"Order-7", kLong.substr(0, 239) + "\u00e4", {}}},
     {kLong.substr(0, 239) + "\xc3-1"},
     1},
    {"a number that becomes free on the way",
     {{"Beta-1", "Alpha", "Beta-1"}, {"Order-1", "Beta", {}}, {"Order-2", "Beta", {}}},
     {"Alpha-1", "Beta-1", "Beta-2"},
     3},
    {"subclasses share the numbers",
     {{"Alpha-1", "Alpha", "Alpha-1"}, {"Order-1", "Alpha", {}, "Rush"}, {"Order-2", "Alpha", {}}},
     {"Alpha-1", "Alpha-2", "Alpha-3"},
     2},
    {"the default name is the named class's", {{"Rush-1", "Alpha", {}, "Rush"}}, {"Rush-1"}, 0},
    {"an unreadable memory is none", {{"Alpha-3", "Beta", "\"Alpha-3\""}}, {"Alpha-3"}, 0},
};

void fill(NamingDesk& desk, const std::vector<Order>& orders) {
    for (const Order& order : orders) {
        const QorIdentifier id = desk.order(order.name, order.title, order.cls);
        const bool plain = order.last.find('"') == std::string::npos;
        if (!order.last.empty())
            desk.value(id, "__NameGeneration__", plain ? "NAMEGEN last:\"" + order.last + "\"" : order.last);
    }
}

TEST(Naming, GivesNamesToThoseThatHaveNoneOfTheirOwn) {
    for (const NamingCase& row : kCases) {
        SCOPED_TRACE(row.what);
        NamingDesk desk;
        fill(desk, row.orders);
        QorNamePlan plan(desk.shop);
        ASSERT_TRUE(plan.make());
        EXPECT_EQ(plan.changes().size(), static_cast<std::size_t>(row.changes));
        EXPECT_EQ(desk.run(), row.changes);
        EXPECT_EQ(desk.names(), row.names);
        for (const QorNameChange& change : plan.changes()) EXPECT_EQ(desk.nameOf(change.object), change.newName.str());
        EXPECT_EQ(desk.run(), 0) << "a second time";
        EXPECT_EQ(desk.names(), row.names);
        EXPECT_EQ(desk.shown(), "");
    }
}

// A subclass with a rule of its own is named by both, its superclass's first.
TEST(Naming, AsksEachVisibleClassInItsOrder) {
    NamingDesk desk(NamingDesk::kByTitle, "NAMEGEN srcattr: \"Name\"");
    const QorIdentifier rush = desk.order("Order-1", "Alpha", "Rush");
    const QorIdentifier other = desk.order("Rush-1", "Alpha", "Rush");
    QorNamePlan plan(desk.shop);
    ASSERT_TRUE(plan.make());
    EXPECT_EQ(desk.run(), 3);
    EXPECT_EQ(desk.nameOf(rush), "Alpha-1-1") << "the second rule finds a name that was generated";
    EXPECT_EQ(desk.nameOf(other), "Rush-1-1");
    ASSERT_EQ(plan.changes().size(), 3U);
    EXPECT_EQ(plan.changes()[1].newName, "Alpha-1-1");
    EXPECT_EQ(plan.changes()[1].oldName, "Alpha-1");
}

TEST(Naming, WritesReferencesInTheirFormat) {
    const std::string model = "MODEL \"Bikes\" type: \"Shop\"";
    const std::string object = "OBJECT \"Anna\" class: \"Plain\" model: \"Bikes\" type: \"Shop\"";
    const struct {
        const char* attribute;
        const char* format;
        std::string value;
        const char* name;
    } rows[] = {
        {"Models", "", model, "Bikes (Shop)-1"},
        {"Models", "", model + model, "Bikes (Shop)Bikes (Shop)-1"},
        {"Models", "%t/%m/%m/%o", model, "Shop/Bikes/%m/%o-1"},
        {"Models", "%m %m", "MODEL \"%t\" type: \"Shop\"", "Shop %m-1"},
        {"Models", "none", "", "Order-1"},
        {"Objects", "", object, "Anna (Plain) - Bikes (Shop)-1"},
        {"Objects", "", object + object, "Anna (Plain) - Bikes (Shop)Anna (Plain) - Bikes (Shop)-1"},
        {"Objects", "%o%c", object, "AnnaPlain-1"},
        {"Objects", "plain", object, "plain-1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        NamingDesk desk("NAMEGEN srcattr: \"" + std::string(row.attribute) + "\" format: \"" + row.format + "\"");
        desk.value(desk.order("Order-7"), row.attribute, row.value);
        desk.run();
        EXPECT_EQ(desk.names(), Names{row.name});
    }
}

TEST(Naming, TakesValuesFromProfiles) {
    const struct {
        const char* rule;
        const char* profile;
        const char* name;
        const char* shown;
    } rows[] = {
        {"NAMEGEN srcattr: \"Profile\"", "Gold", "Gold-1", ""},
        {"NAMEGEN srcattr: \"Profile\" attrprofattr: \"Label\"", "Gold", "shiny-1", ""},
        {"NAMEGEN srcattr: \"Profile\" attrprofattr: \"Label\"", "", "of no kind-1", ""},
        {"NAMEGEN srcattr: \"Profile\" attrprofattr: \"Colour\"", "Gold", "Order-7", "anamegen:227; "},
        {"NAMEGEN srcattr: \"Profile\" attrprofattr: \"Colour\"", "", "Order-7", "anamegen:243; anamegen:243; "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rule + std::string(row.profile));
        NamingDesk desk(row.rule);
        const QorIdentifier order = desk.order("Order-7");
        const QorIdentifier other = desk.order("Order-8");
        for (const QorIdentifier each : {order, other}) desk.value(each, "Profile", row.profile);
        desk.value(desk.object("Kind", "Gold"), "Label", "shiny");
        desk.run();
        EXPECT_EQ(desk.nameOf(order), row.name);
        EXPECT_EQ(desk.shown(), row.shown);
    }
}

TEST(Naming, LeavesAClassOutWhoseRuleIsWrong) {
    const std::string unknown = "The class \"Order\" has no attribute \"Nothing\" to make names from.";
    const struct {
        const char* rule;
        std::string shown;
        std::string error;
        std::uint32_t column = 1;
    } rows[] = {
        {"", "", ""},
        {NamingDesk::kByTitle, "", ""},
        {"NAMEGEN srcattr: \"Ti", "__NameGeneration__ (Order): line 1, column 18: ", "line 1, column 18: ", 18},
        {"A srcattr: \"Title\" B", "anamegen:116; ", "aParser.GetElemCount() != 1"},
        {" ", "anamegen:116; ", "aParser.GetElemCount() != 1", 0},
        {" NAMEGEN", "anamegen:125; ", "!aSrcAttrName.Len()", 2},
        {"NAMEGEN srcattr: \"\" format: \"%m\"", "anamegen:125; ", "!aSrcAttrName.Len()"},
        {"NAMEGEN srcattr: \"Nothing\"", unknown + "; ", unknown, 9},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rule);
        NamingDesk desk(row.rule, "NAMEGEN srcattr: \"Title\"");
        desk.order("Order-7", "Alpha");
        desk.order("Rush-7", "Beta", "Rush");
        QorNamePlan plan(desk.shop);
        ASSERT_TRUE(plan.make());
        ASSERT_EQ(plan.problems().size(), row.error.empty() ? 0U : 1U);
        for (const auto& problem : plan.problems()) {
            EXPECT_EQ(problem.cls, desk.idOf("Order"));
            EXPECT_EQ(problem.position.column, row.column);
        }
        desk.run();
        EXPECT_EQ(desk.names().back(), "Beta-1") << "the other class is named";
        EXPECT_EQ(desk.shown().substr(0, row.shown.size()), row.shown);

        const QorIdentifier cls = desk.idOf("Order");
        SV::String error("as before");
        EXPECT_EQ(QorNameGenerator::IsCorrectNameGenAttr(row.rule, cls, 0, error), row.error.empty());
        EXPECT_EQ(error.str().substr(0, row.error.size()), row.error.empty() ? "" : row.error);
        EXPECT_EQ(error == "as before", row.error.empty());
    }
}

TEST(Naming, IsDefinedForModelsThatShowAClassWithTheAttribute) {
    NamingDesk desk("");
    const QorIdentifier other = desk.model("Other", "Tuesday");
    desk.object("Plain", "Plain-1");
    EXPECT_TRUE(QorNameGenerator(desk.shop).IsNameGenDefined()) << "also when its text is empty";
    for (const long model : {long{other}, 0L, -1L, 4294967296L + desk.shop}) {
        QorNameGenerator generator(desk.shop);
        generator = QorNameGenerator(model);
        EXPECT_FALSE(generator.IsNameGenDefined()) << model;
        generator.Execute();
        EXPECT_EQ(generator.GetChangesCount(), 0) << model;
    }
    EXPECT_STREQ(QorNameGenerator::GetNameGenAttrName(), "__NameGeneration__");
}

TEST(NamePlan, TellsWhyAndWhatIsInTheWay) {
    NamingDesk desk;
    desk.order("Alpha-2", "Beta");
    const QorIdentifier first = desk.order("Alpha-1", "Beta");
    desk.order("Order-1", "Alpha");
    fill(desk, {{"Gamma-1", kLong, "Gamma-1"}, {"Delta-4", "Delta", "Delta-4"}});
    QorNamePlan plan(desk.shop);
    ASSERT_TRUE(plan.make());
    ASSERT_EQ(plan.changes().size(), 2U);
    const QorNameChange& order = plan.changes()[0];
    EXPECT_EQ(order.oldName, "Order-1");
    EXPECT_EQ(order.newName, "Alpha-3");
    EXPECT_EQ(order.reason, QorNameReason::DefaultName);
    EXPECT_EQ(order.takenNumbers, 2);
    EXPECT_EQ(order.takenBy, first);
    EXPECT_FALSE(order.cut);
    EXPECT_EQ(plan.changes()[1].reason, QorNameReason::SourceChanged);
    EXPECT_TRUE(plan.changes()[1].cut);
    EXPECT_EQ(plan.keptCount(QorNameKept::GivenByHand), 2U);
    EXPECT_EQ(plan.keptCount(QorNameKept::UpToDate), 1U);
    EXPECT_EQ(desk.names()[2], "Order-1") << "nothing is changed";
}

}  // namespace
