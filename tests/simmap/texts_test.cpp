// SPDX-License-Identifier: Apache-2.0
// The texts with which a simulation labels its results.
#include "simmap/QorSimTextHandler.h"
#include "simmap/Shop.h"
#include "simmap/messages.h"

namespace {

namespace message = qor::simmap::message;

constexpr const char* kComplete =
    "SIMTEXT rescost: \"h\" bp: \"a \"\"b\"\"\" cycletime: \"b\nc\" activity: \"c\" number: \"d\" actor: \"\" "
    "perscost: \"f\" resource: \"g\"";

std::vector<std::string> textsOf(const QorSimTextHandler& texts) {
    return {texts.getBPText().str(),       texts.getCycleTimeText().str(), texts.getActivityText().str(),
            texts.getNumberText().str(),   texts.getActorText().str(),     texts.getPersCostText().str(),
            texts.getResourceText().str(), texts.getResCostText().str()};
}

const std::vector<std::string> kTexts = {"a \"b\"", "b\nc", "c", "d", "", "f", "g", "h"};
const std::vector<std::string> kNone(8);

TEST(SimulationTexts, AreReadFromTheLibraryAndWrittenBack) {
    Shop shop;
    shop.libraryText(shop.library, QorAttributeId::SimulationText, kComplete);
    QorSimTextHandler texts(shop.library);
    EXPECT_EQ(textsOf(texts), kNone);
    EXPECT_EQ(texts.init(), 1);
    EXPECT_EQ(textsOf(texts), kTexts);
    EXPECT_EQ(texts.isDefined(), 1);
    EXPECT_EQ(texts.getErrorText(), "");
    EXPECT_EQ(texts.getSimTextKEX(),
              "SIMTEXT\nbp:\"a \"\"b\"\"\"\ncycletime:\"b\nc\"\nactivity:\"c\"\nnumber:\"d\"\nactor:\"\"\nperscost:"
              "\"f\"\nresource:\"g\"\nrescost:\"h\"");

    QorSimTextHandler again(shop.library);
    EXPECT_EQ(again.init(texts.getSimTextKEX()), 1);
    EXPECT_EQ(textsOf(again), kTexts);
    const QorSimTextHandler copy(again);
    again = QorSimTextHandler(0);
    EXPECT_EQ(textsOf(again), kNone);
    EXPECT_EQ(textsOf(copy), kTexts) << "a copy has a text of its own";
}

// Each step reads after the ones before it, so that what a reading leaves of the flags shows.
TEST(SimulationTexts, TellWhatIsWrong) {
    Shop shop;
    const auto incomplete = [](const char* key) { return said(message::textRecordIncomplete, key); };
    const auto none = said(message::noTextsDefined);
    const SV::String own;  // the parser's own error
    const struct {
        const char* text;
        int result;
        int defined;
        SV::String error;
        std::uint32_t column;
    } steps[] = {
        {"SIMTEXT undefined", 1, 0, none, 0},
        {"", 0, 0, none, 0},
        {"SIMTEXT undefined bp: \"a\"", 1, 0, none, 0},
        {kComplete, 1, 1, own, 0},
        {" \n", 0, 1, incomplete("SIMTEXT"), 0},
        {"TEXT SIMTEXT undefined", 0, 1, incomplete("SIMTEXT"), 1},
        {kComplete, 1, 1, own, 0},
        {" SIMTEXT bp: \"a\" cycletime: \"\" activity: \"\" actor: \"\" perscost: \"\" resource: \"\"", 0, 1,
         incomplete("rescost"), 2},
        {"SIMTEXT undefined", 1, 0, none, 0},
        {kComplete, 1, 1, own, 0},
        {"SIMTEXT bp: \"", 0, 1, own, 13},
    };
    QorSimTextHandler texts(shop.library);
    for (const auto& step : steps) {
        EXPECT_EQ(texts.init(step.text), step.result) << step.text;
        EXPECT_EQ(texts.isDefined(), step.defined) << step.text;
        const bool complete = step.text == std::string_view(kComplete);
        if (step.error == own) {
            EXPECT_EQ(texts.getErrorText().IsEmpty(), complete) << step.text;
        } else {
            EXPECT_EQ(texts.getErrorText(), step.error) << step.text;
        }
        EXPECT_EQ(texts.errorPosition().column, step.column) << step.text;
        EXPECT_EQ(textsOf(texts), complete ? kTexts : kNone) << step.text;
        EXPECT_EQ(texts.getSimTextKEX() == "SIMTEXT\nundefined", !complete) << step.text;
    }
}

TEST(SimulationTexts, ReportAFailingRepositoryByItsLine) {
    const struct {
        const char* operation;
        int nth;
        int result;
        const char* shown;
    } cases[] = {
        {"getAttributeValue", 1, 0, "asimtext:335; "},
        {"getAttributeName", 1, 1, "asimtext:439; "},
        {"getAttributeValue", 2, 1, "asimtext:444; "},
    };
    for (const auto& row : cases) {
        Shop shop;
        shop.libraryText(shop.library, QorAttributeId::SimulationText, kComplete);
        QorSimTextHandler texts(shop.library);
        ASSERT_EQ(texts.init(), 1);
        shop.watched().record.fail(row.operation, QorErrorCode::NotFound, row.nth);
        EXPECT_EQ(texts.init(), row.result) << row.shown;
        EXPECT_EQ(shop.shown(), row.shown);
        EXPECT_EQ(textsOf(texts), row.result == 1 ? kTexts : kNone) << row.shown;
        EXPECT_EQ(texts.getErrorText().IsEmpty(), row.result == 1);
    }
    Shop shop;
    QorSimTextHandler nowhere(0);
    EXPECT_EQ(nowhere.init(), 0);
    EXPECT_EQ(shop.shown(), "asimtext:322; ");
    QorSimTextHandler empty(shop.library);
    EXPECT_EQ(empty.init(), 0);
    EXPECT_EQ(empty.getErrorText(), said(message::noTextsDefined)) << "a library without the text is no failure";
    EXPECT_EQ(shop.shown(), "");
}

}  // namespace
