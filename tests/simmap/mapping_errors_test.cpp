// SPDX-License-Identifier: Apache-2.0
// Broken mapping texts and a repository that fails: which code, which message, and that the defaults are in force.
#include "simmap/QorSimMappingHandler.h"
#include "simmap/Shop.h"
#include "simmap/messages.h"

namespace {

namespace message = qor::simmap::message;

const std::string kOption = "SIMOPTION name: \"A\" activity: \"Task\" ";

/// The operations that take over one record at a time, for those who derive from the handler.
struct OpenMapping : QorSimMappingHandler {
    using QorSimMappingHandler::decryptKex;
    using QorSimMappingHandler::decryptSimClasses;
    using QorSimMappingHandler::QorSimMappingHandler;
};

struct Broken {
    std::string text;
    int code;           ///< in the mode that ends at the first error
    std::string error;  ///< number of the message and what it speaks of
    std::uint32_t column;
};

std::string errorText(const std::string& error) {
    const auto blank = error.find(' ');
    const auto number = static_cast<std::uint16_t>(std::stoi(error));
    return said(number, blank == std::string::npos ? "" : error.substr(blank + 1)).str();
}

TEST(BrokenMapping, GivesItsCodeAndMessageAndLeavesTheDefaults) {
    const std::string& option = kOption;
    const auto behind = [](const std::string& text) { return static_cast<std::uint32_t>(text.size()) + 1; };
    const Broken cases[] = {
        {"SIMOPTION activity: \"Task\"", 5, "1818 name", 1},
        {"SIMOPTION name: \"A\"", 5, "1818 activity", 1},
        {"SIMOPTION name: \"A\" activity: \"Nobody\"", 1, "1817 Nobody", 21},
        {"SIMOPTION name: \"A\" activity: task", 1, "1817 ", 21},
        {"SIMOPTION name: \"A\" activity", 1, "1817 ", 21},
        {"SIMOPTION name: \"A\" activity: \"then\"", 1, "1817 then", 21},
        {option + "executiontime: \"Soul\"", 1, "1817 Soul", behind(option)},
        {option + "waitingtime: \"Wait\" restingtime", 1, "1817 ", behind(option) + 20},
        {option + "processcall: \"Person\"", 1, "1817 Person", behind(option)},
        {option + "processcall: \"Call\" subperformerattr: \"Work\"", 1, "1817 Work", behind(option) + 20},
        {option + "userattribute-1: \"Soul\"", 1, "1817 Soul", behind(option)},
        {"ACTION class: \"Task\" attribute: \"On event\"", 4, "1816", 1},
        {"SIMOPTION invalid ACTION class: \"Task\" attribute: \"On event\"", 4, "1816", 19},
        {option + "ACTION attribute: \"On event\"", 5, "1818 class", behind(option)},
        {option + "ACTION class: \"Task\"", 5, "1818 attribute", behind(option)},
        {option + "ACTION class: \"Nobody\"", 1, "1817 class:\"Nobody\"", behind(option) + 7},
        {option + "ACTION class: \"Task\" attribute: \"Soul\"", 1, "1817 attribute:\"Soul\"", behind(option) + 21},
        {option + "ACTION class: \"Task\" attribute: \"Work\"", 1, "1817 attribute:\"Work\"", behind(option) + 21},
        {option + "ACTION class: \"Task\" attribute: \"On event\" event: later", 4, "1817 event:later",
         behind(option) + 43},
        {option + "ACTION class: \"Task\" attribute: \"On event\" event: \"start\"", 4,
         "1817 event:", behind(option) + 43},
        {"SIMCLASSES we-none", 5, "1818 SIMCLASSES bp-[all | none | 1..n]", 1},
        {"SIMCLASSES bp-none", 5, "1818 SIMCLASSES we-[all | none | 1..n]", 1},
        {"SIMCLASSES bp-2: \"Task\" we-none", 5, "1818 SIMCLASSES bp-[all | none | 1..n]", 1},
        {"SIMCLASSES bp-1: \"Person\" we-none", 1, "1817 Person", 12},
        {"SIMCLASSES bp-none we-1: \"Task\"", 1, "1817 Task", 20},
        {"SIMOPTIONS name: \"A\"", 4, "1817 SIMOPTIONS", 1},
    };
    for (const auto& row : cases) {
        for (const bool goOn : {false, true}) {
            MappedShop shop(row.text);
            EXPECT_EQ(shop.handler.init(goOn), goOn ? QorSimCode::FinishedWithErrors : row.code) << row.text;
            EXPECT_EQ(shop.handler.readingCode(), goOn ? QorSimCode::FinishedWithErrors : row.code);
            EXPECT_EQ(shop.handler.GetErrorText(), std::string_view(errorText(row.error))) << row.text;
            ASSERT_EQ(shop.handler.definitionErrors().size(), 1U) << row.text;
            EXPECT_EQ(shop.handler.definitionErrors()[0].position.column, row.column) << row.text;
            EXPECT_EQ(shop.handler.definitionErrors()[0].code, row.code) << row.text;

            EXPECT_EQ(shop.handler.init(goOn), 0) << "only the first reading tells";
            EXPECT_FALSE(shop.handler.isDefined());
            ASSERT_EQ(shop.handler.getSimOptionCount(), 1);
            EXPECT_EQ(shop.handler.option(0)->complete, 0);
            ISortedSet<long> classes;
            shop.handler.getSimableWEClasses(classes);
            EXPECT_EQ(classes.numberOfElements(), 2U) << row.text;
        }
    }
}

TEST(BrokenMapping, ReportsASyntaxErrorWithItsPlace) {
    MappedShop shop("SIMOPTION\nname: \"A\nSIMCLASSES");
    ISortedSet<long> classes;
    EXPECT_EQ(shop.handler.getSimableBPClasses(classes), QorSimCode::BadText) << "a query tells its reading's code";
    EXPECT_EQ(shop.handler.getSimableBPClasses(classes), 0);
    ASSERT_EQ(shop.handler.definitionErrors().size(), 1U);
    EXPECT_EQ(shop.handler.definitionErrors()[0].position.line, 2U);
    EXPECT_EQ(shop.handler.GetErrorText(), shop.handler.definitionErrors()[0].text);
}

TEST(BrokenMapping, GoesOnBehindEachErrorWhenAskedTo) {
    Mapped<OpenMapping> shop(
        "SIMOPTION activity: \"Task\" executiontime: \"Soul\" processcall: \"Nobody\" userattribute-1: \"X\"\n"
        "userattribute-2: \"Info\"\nACTION event: later class: \"Task\" attribute: \"On event\"\n"
        "SIMCLASSES bp-1: \"Y\" bp-2: \"Task\"\nFOO\nSIMOPTION name: \"Good\" activity: \"Start\"");
    // The records by themselves: what is right in them is taken over.
    EXPECT_EQ(shop.handler.decryptKex(SV::String(shop.reader().libraryValue(shop.library, 109)), 1), 7);
    ASSERT_EQ(shop.handler.getSimOptionCount(), 2);
    EXPECT_EQ(shop.handler.option(0)->userAttributes, (ISequence<long>{0, shop.at("Task", "Info")}));
    EXPECT_EQ(shop.handler.option(0)->standardAttributes, (ISequence<long>{0, 0, 0, 0}));
    EXPECT_FALSE(shop.handler.hasAnyActions(0)) << "an action with a wrong event is none";
    EXPECT_TRUE(shop.handler.isDefined());

    QorSimMappingHandler handler(shop.library);
    EXPECT_EQ(handler.init(true), 7);
    SV::String all;
    for (const char* error : {"1818 name", "1817 Soul", "1817 Nobody", "1817 X", "1817 event:later", "1817 Y",
                              "1818 SIMCLASSES we-[all | none | 1..n]", "1817 FOO"})
        all += errorText(error);
    EXPECT_EQ(handler.GetErrorText(), all) << "one behind the other";
    EXPECT_FALSE(handler.isDefined()) << "the defaults are in force all the same";
}

// A record that has been misread before must not be seen by the next reading.
TEST(BrokenMapping, LeavesNothingHalfReadBehind) {
    Mapped<OpenMapping> shop("SIMOPTION name: \"B\" activity: \"Start\"");
    EXPECT_EQ(shop.handler.decryptKex(kOption + "executiontime: \"Soul\"", 0), 1);
    EXPECT_TRUE(shop.handler.isDefined());
    ASSERT_EQ(shop.handler.getSimOptionCount(), 1);
    EXPECT_EQ(shop.handler.option(0)->name, "B");
}

TEST(FailingRepositoryOfAMapping, IsReportedByItsLine) {
    const std::string text =
        kOption + "ACTION class: \"Task\" attribute: \"On event\" SIMCLASSES bp-1: \"Task\" we-1: \"Person\"";
    const struct {
        const char* operation;
        int nth;
        int code;
        int codeAtEnd;  ///< when reading goes on behind errors
        const char* shown;
    } cases[] = {
        {"getAttributeName", 1, 1, 1, "asimmap:609; "},    {"getAttributeValue", 2, 1, 1, "asimmap:618; "},
        {"getUIAttributeType", 1, 0, 0, "asimmap:1091; "}, {"getAllInstantiableClasses", 1, 1, 7, "asimmap:1149; "},
        {"getAllSubClasses", 1, 1, 7, "asimmap:1202; "},   {"getAllInstantiableClasses", 2, 1, 7, "asimmap:1230; "},
        {"getAllSubClasses", 2, 1, 7, "asimmap:1282; "},
    };
    for (const auto& row : cases) {
        for (const bool goOn : {false, true}) {
            MappedShop shop(text);
            auto& calls = shop.watched().record;
            calls.fail(row.operation, QorErrorCode::NotFound, row.nth);
            EXPECT_EQ(shop.handler.init(goOn), goOn ? row.codeAtEnd : row.code) << row.shown;
            EXPECT_EQ(shop.shown(), row.shown);
            EXPECT_EQ(shop.handler.isDefined(), row.code == 0) << row.shown;
            EXPECT_EQ(shop.handler.hasAnyActions(0), row.code == 0) << "an action of unknown type is taken";
        }
    }
}

TEST(FailingRepositoryOfAMapping, IsAskedAgainWhenTheTextCannotBeFetched) {
    MappedShop shop(kOption);
    auto& calls = shop.watched().record;
    calls.fail("getAttributeValue", QorErrorCode::NotFound);
    bool simable = false;
    EXPECT_EQ(shop.handler.isSimableClass(shop.idOf("Task"), simable), 1);
    EXPECT_EQ(shop.handler.getSimOptionCount(), 0) << "no defaults";
    EXPECT_EQ(shop.handler.isSimableClass(shop.idOf("Task"), simable), 0);
    EXPECT_TRUE(simable);
    EXPECT_TRUE(shop.handler.isDefined());
    EXPECT_EQ(shop.handler.readingCode(), 0);
}

TEST(FailingRepositoryOfAMapping, FailsTheDefaultsAndTheWriter) {
    MappedShop shop("");
    auto& calls = shop.watched().record;
    calls.fail("getAllInstantiableClasses", QorErrorCode::NotFound, 2);
    EXPECT_EQ(shop.handler.init(false), 1);
    EXPECT_EQ(shop.handler.GetErrorText(),
              std::string_view(said(message::noOptionDefined).str() + said(message::repositoryFailed).str()));
    EXPECT_EQ(shop.handler.getSimOptionCount(), 1);

    SV::String text("kept");
    calls.fail("getAttributeValue", QorErrorCode::NotFound, 3);
    EXPECT_EQ(shop.handler.getSimMappingKEX(text, 1), 0);
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(shop.handler.GetErrorText(), said(message::repositoryFailed));
    EXPECT_EQ(shop.handler.getSimMappingKEX(text, 0), 1) << "names of classes only";
}

}  // namespace
