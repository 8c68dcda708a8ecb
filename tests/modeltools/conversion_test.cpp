// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ConversionDesk.h"
#include "modeltools/QorConversionHandler.h"

namespace {

constexpr int kAlways = 0;

TEST(ConversionText, IsReadInItsOrder) {
    ConversionDesk desk("CLASS \"Check\" ATTR \"Note\" from: \"Info\" ATTR \"Count\" from: \"\" CLASS \"Plain\"");
    QorConversionHandler handler(desk.idOf("Task"));
    ASSERT_EQ(handler.Init(nullptr), 0);
    ASSERT_EQ(handler.conversions().size(), 2U);
    const auto& mappings = handler.conversions()[0].mappings();
    ASSERT_EQ(mappings.size(), 2U);
    EXPECT_EQ(mappings[0].sourceName, "Info");
    EXPECT_EQ(mappings[0].target, desk.attributeOf(desk.idOf("Check"), "Note"));
    EXPECT_EQ(mappings[1].sourceName, "Count") << "an empty name is that of the target";
    EXPECT_EQ(handler.conversions()[1].targetClass(), desk.idOf("Plain"));

    const QorConversionHandler copy = handler;
    EXPECT_EQ(handler.Init(""), 0) << "an empty definition, not the stored one";
    EXPECT_TRUE(handler.conversions().empty());
    EXPECT_EQ(copy.conversions().size(), 2U);
}

TEST(ConversionText, ErrorsAreToldWithTheirPlaces) {
    const struct {
        const char* text;
        std::uint16_t message;
        const char* first;  ///< the name that is wrong, or the source's
        const char* other;  ///< its class, or the target's name
        std::uint32_t line;
        std::uint32_t column;
    } rows[] = {
        {"CLASS \"Check\"\n  OTHER \"x\"", 15701, "OTHER", "", 2, 3},
        {"ATTR \"Count\" CLASS \"Check\"", 15701, "ATTR", "", 1, 1},
        {"CLASS \"Nobody\"", 15702, "Nobody", "", 1, 1},
        {"CLASS", 15702, "", "", 1, 1},
        {"CLASS \"Thing\"", 15702, "Thing", "", 1, 1},
        {"CLASS \"Check\" ATTR \"No\" from: \"Nor\"", 15703, "Nor", "Task", 1, 15},
        {"CLASS \"Check\" ATTR \"No\" from: \"Info\"", 15703, "No", "Check", 1, 15},
        {"CLASS \"Check\"\nATTR \"Note\" from: \"Count\"", 15704, "Count", "Note", 2, 1},
        {"CLASS \"Check\"\nATTR \"Sum\" from: \"Info\"", 15704, "Info", "Sum", 2, 1},
        {"CLASS \"Check\"\nATTR \"Other table\" from: \"Table\"", 15705, "Table", "Other table", 2, 1},
        {"CLASS \"Check\"\nATTR \"Other profile\" from: \"Profile\"", 15706, "Profile", "Other profile", 2, 1},
    };
    ConversionDesk desk;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        QorConversionHandler handler(desk.idOf("Task"));
        EXPECT_NE(handler.Init(row.text), 0);
        const SV::String reason = Qor_Message(row.message, {{"%token", row.first},
                                                            {"%name", row.first},
                                                            {"%attr", row.first},
                                                            {"%class", row.other},
                                                            {"%attr1", row.first},
                                                            {"%class1", "Task"},
                                                            {"%attr2", row.other},
                                                            {"%class2", "Check"},
                                                            {"%recclass1", "Row"},
                                                            {"%recclass2", "Other row"},
                                                            {"%apclass1", "Kinds"},
                                                            {"%apclass2", "Other kinds"}});
        EXPECT_EQ(handler.GetErrorReason(), reason);
        EXPECT_EQ(handler.GetErrorPosition().line, row.line);
        EXPECT_EQ(handler.GetErrorPosition().column, row.column);
        SV::String told;
        EXPECT_FALSE(QorConversionHandler::IsCorrectConversionAttr(desk.idOf("Task"), told, row.text));
        EXPECT_EQ(told, handler.GetErrorText());
        EXPECT_NE(told.view().find("__Conversion__ (Task): line " + std::to_string(row.line)), std::string::npos);
    }
    QorConversionHandler handler(desk.idOf("Task"));
    EXPECT_NE(handler.Init("CLASS \"Check\n"), 0);
    EXPECT_FALSE(handler.GetErrorText().IsEmpty()) << "a syntax error";
    SV::String told("old");
    EXPECT_TRUE(QorConversionHandler::IsCorrectConversionAttr(desk.idOf("Task"), told, nullptr));
    EXPECT_TRUE(told.IsEmpty());
}

TEST(ConversionText, BelongsToAClassOfTheLoadedLibrary) {
    ConversionDesk desk;
    for (const long cls : {0L, -1L, 4294967296L + desk.idOf("Task"), static_cast<long>(desk.shop)}) {
        QorConversionHandler handler(cls);
        EXPECT_EQ(handler.Init(nullptr), 106);
        EXPECT_TRUE(handler.GetPatternList().empty());
    }
    EXPECT_EQ(desk.shown(), "ahaconv:61; ahaconv:61; ahaconv:61; ahaconv:61; ");
    EXPECT_EQ(QorConversionHandler(desk.idOf("Task")).GetPatternList().size(), 6U);
    (void)desk.discard();
    EXPECT_EQ(QorConversionHandler(desk.idOf("Task")).Init(nullptr), 106);
}

class Converting : public testing::Test {
protected:
    ConversionDesk desk;

    QorErrorCode convert(long object, std::string_view into = "Check") {
        return QorConversionHandler(desk.idOf("Task")).Convert(desk.shop, object, desk.idOf(into), made);
    }
    long made = 5;
};

TEST_F(Converting, CarriesEverythingOver) {
    const QorIdentifier task = desk.object("Task", "Look");
    const QorIdentifier other = desk.object("Plain", "Other");
    const struct {
        const char* from;
        const char* value;
        const char* into;
    } values[] = {
        {"Count", "7", "Count"},
        {"Cost", "2.5", "Cost"},
        {"Info", "text \"quoted\"", "Note"},
        {"Kind", "b", "Kind"},
        {"Calls", "MODEL \"Monday\" type: \"Shop\"", "Calls"},
        {"Sum", "[Count] * 2", "Sum"},
        {"Position", "NODE x:1cm", "Position"},
        {"__Variants__", "some", "__Variants__"},
    };
    for (const auto& row : values) desk.value(task, row.from, row.value);
    desk.row(task, "nail", "3");
    desk.row(task, "board", "1");
    const QorIdentifier out = desk.connect(task, "and", other);
    const QorIdentifier twin = desk.connect(task, "and", other);
    const QorIdentifier in = desk.connect(other, "and", task);
    const QorIdentifier loop = desk.connect(task, "and", task);
    const QorIdentifier unmoved = desk.connect(task, "at", other);

    ASSERT_EQ(convert(task), QorErrorCode::Ok);
    EXPECT_FALSE(desk.isThere(task));
    EXPECT_EQ(desk.reader().classOfObject(static_cast<QorIdentifier>(made)), desk.idOf("Check"));
    EXPECT_EQ(desk.textAt(made, QorAttributeId::Name), "Look");
    for (const auto& row : values) EXPECT_EQ(desk.valueOf(made, row.into), row.value) << row.into;
    EXPECT_EQ(desk.valueOf(made, "Result"), "14");
    EXPECT_EQ(desk.rowsOf(made), "nail/3/;board/1/;") << "what a notebook does not show is not carried over";
    const std::string self = std::to_string(made);
    const std::string its = std::to_string(other);
    for (const QorIdentifier each : {out, twin}) EXPECT_EQ(desk.ends(each), self + ">" + its);
    EXPECT_EQ(desk.ends(in), its + ">" + self);
    EXPECT_EQ(desk.ends(loop), self + ">" + self);
    EXPECT_EQ(desk.ends(unmoved), "-1>-1") << "went with the old object";
    EXPECT_EQ(desk.shown(), "");
}

TEST_F(Converting, ShowsRefusedValuesAndGoesOn) {
    const QorIdentifier task = desk.object("Task", "Look");
    desk.value(task, "Kind", "c");
    desk.value(task, "Sum", "\"no number\"");
    desk.value(task, "Count", "7");
    ASSERT_EQ(convert(task), QorErrorCode::Ok);
    EXPECT_EQ(desk.valueOf(made, "Count"), "7");
    EXPECT_EQ(desk.valueOf(made, "Kind"), "");
    EXPECT_EQ(desk.valueOf(made, "Result"), "");
    const auto text = [](std::uint16_t number, std::string_view from, std::string_view to) {
        return Qor_Message(number, {{"%attr1", from}, {"%class1", "Task"}, {"%attr2", to}, {"%class2", "Check"}}).str();
    };
    EXPECT_EQ(desk.shown(), text(15707, "Kind", "Kind") + "; " + text(15708, "Sum", "Result") + "; ");
}

TEST_F(Converting, LeavesRelationsThatDoNotFitAtTheOldObject) {
    const QorIdentifier task = desk.object("Task", "Look");
    const QorIdentifier other = desk.object("Task", "Other");
    const QorIdentifier stays = desk.connect(task, "then", other);
    const QorIdentifier moves = desk.connect(other, "and", task);
    EXPECT_NE(convert(task), QorErrorCode::Ok);
    EXPECT_EQ(made, -1);
    EXPECT_TRUE(desk.isThere(task));
    EXPECT_EQ(desk.ends(stays), std::to_string(task) + ">" + std::to_string(other));
    EXPECT_NE(desk.ends(moves), std::to_string(other) + ">" + std::to_string(task));
}

TEST_F(Converting, IntoAClassThatTheTextDoesNotNameCarriesNoMappedValue) {
    const QorIdentifier task = desk.object("Task", "Look");
    desk.value(task, "Count", "7");
    desk.value(task, "Position", "NODE x:1cm");
    ASSERT_EQ(convert(task, "Plain"), QorErrorCode::Ok);
    EXPECT_EQ(desk.valueOf(made, "Position"), "NODE x:1cm");
}

TEST_F(Converting, ChangesNothingWhenItCannotBegin) {
    const QorIdentifier task = desk.object("Task", "Look");
    (void)desk.object("Check", "Taken");
    const QorIdentifier named = desk.object("Task", "Taken");
    EXPECT_EQ(convert(named), QorErrorCode::ValueRefused) << "the name";
    EXPECT_NE(convert(task, "Thing"), QorErrorCode::Ok);
    EXPECT_NE(convert(4294967296L + task), QorErrorCode::Ok);
    EXPECT_NE(convert(-1), QorErrorCode::Ok);
    EXPECT_EQ(desk.shown(), "");
    desk.text("CLASS");
    EXPECT_NE(convert(task), QorErrorCode::Ok);
    EXPECT_NE(desk.shown().find(Qor_Message(15702, {{"%name", ""}}).str()), std::string::npos);
    EXPECT_EQ(made, -1);
    EXPECT_EQ(desk.reader().objectsOf(desk.shop).size(), 3U);

    // A class without conversions has nothing to convert, which is no failure.
    const QorIdentifier check = desk.reader().objectsOf(desk.shop)[1];
    QorConversionHandler handler(desk.idOf("Check"));
    EXPECT_EQ(handler.Convert(desk.shop, check, desk.idOf("Plain"), made), QorErrorCode::Ok);
    EXPECT_EQ(made, -1);
    EXPECT_TRUE(handler.isWithoutConversion());
    EXPECT_TRUE(desk.isThere(check));
    EXPECT_EQ(desk.shown(), "");
}

TEST(ConversionFailures, KeepTheOldObject) {
    const struct {
        const char* operation;
        int nth;
        bool isMade;
        const char* shown;
    } rows[] = {
        {"getLibraryOfClass", kAlways, false, "ahaconv:61; "},
        {"getAttributeIDFromAttributeName", 1, false, "ahaconv:74; "},
        {"getAttributeValue", 2, false, "ahaconv:83; "},
        {"getAttributeType", 1, false, "ahaconv:142; "},
        {"getModelClass", 1, false, ""},
        {"getAttributeValue", 3, false, ""},
        {"createInstance", 1, false, ""},
        {"getFromRelationInstances", 1, true, ""},
        {"getToRelationInstances", 1, true, ""},
        {"relationOf", 1, true, ""},
        {"moveFromEndpoint", 1, true, ""},
        {"moveToEndpoint", 1, true, ""},
        {"deleteInstance", 1, true, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.operation + std::to_string(row.nth));
        ConversionDesk desk("CLASS \"Check\" ATTR \"Count\"");
        const QorIdentifier task = desk.object("Task", "Look");
        desk.connect(task, "and", task);
        desk.watched().record.fail(row.operation, static_cast<QorErrorCode>(77), row.nth);
        long made = 5;
        const auto code = QorConversionHandler(desk.idOf("Task")).Convert(desk.shop, task, desk.idOf("Check"), made);
        EXPECT_NE(code, QorErrorCode::Ok);
        EXPECT_EQ(made, -1);
        EXPECT_TRUE(desk.isThere(task));
        EXPECT_EQ(desk.reader().objectsOf(desk.shop).size(), row.isMade ? 2U : 1U);
        EXPECT_EQ(desk.shown(), row.shown);
    }
}

}  // namespace
