// SPDX-License-Identifier: Apache-2.0
#include "platform/QorKexParser.h"

using namespace std::string_literals;

namespace {

QorKexParser parsed(const std::string& text) {
    QorKexParser parser(SV::String(text), "Rules", "Task");
    EXPECT_EQ(parser.Parse(), 0) << parser.GetErrorText().str();
    return parser;
}

std::string written(QorKexPosition position) {
    return std::to_string(position.line) + ":" + std::to_string(position.column);
}

}  // namespace

TEST(KexText, WhiteSpaceAndCommentsOnlySeparate) {
    const std::string texts[] = {
        "RELATION \"then\" max-out_2: -7 undefined event: start TO_CLASS k:\"v\"",
        "RELATION\"then\"max-out_2:-7 undefined event:start TO_CLASS k:\"v\"",
        "# Prüfung\r\nRELATION# \"no\"\n\n\"then\"\r\tmax-out_2\n:\n-7#\nundefined\fevent :start\vTO_CLASS\nk: \"v\" #",
        "RELATION \"then\"#x\rmax-out_2:-7 undefined event:start TO_CLASS k:\"v\"#x: 1",
    };
    for (const std::string& text : texts) {
        QorKexParser parser = parsed(text);
        ASSERT_EQ(parser.GetElemCount(), 2U) << text;
        EXPECT_EQ(parser.GetCurElemName(), "RELATION");
        EXPECT_EQ(parser.GetStrValue(), "then");
        EXPECT_EQ(parser.GetIntValue("max-out_2"), -7);
        EXPECT_TRUE(parser.IsContained("undefined"));
        EXPECT_EQ(parser.GetModifier("event"), "start");
        EXPECT_FALSE(parser.IsContained("k"));
        ASSERT_TRUE(parser.SetCurElemIndex(1));
        EXPECT_EQ(parser.GetStrView(), std::nullopt);
        EXPECT_EQ(parser.GetStrValue("k"), "v");
        EXPECT_FALSE(parser.SetCurElemIndex(2));
        EXPECT_EQ(parser.GetCurElemName(), "TO_CLASS");
    }
}

TEST(KexText, WhatIsAbsentOrOfAnotherKindReadsAsNothing) {
    const QorKexParser parser = parsed("A bare int: 5 time: 00:000:00:00:05 str: \"5\" word: five");
    SV::String value("kept");
    EXPECT_FALSE(parser.TryGetStrValue("absent", value));
    EXPECT_EQ(value, "kept");
    EXPECT_TRUE(parser.TryGetStrValue("bare", value));
    EXPECT_EQ(value, "");
    for (const char* key : {"absent", "bare", "int", "time", "str", "word", ""}) {
        EXPECT_EQ(parser.GetStrView(key).has_value(), key == "str"s) << key;
        EXPECT_EQ(parser.GetIntValue(key), key == "int"s ? 5 : 0) << key;
        EXPECT_EQ(parser.GetValueTMM(key), key == "time"s ? 5 : 0) << key;
        EXPECT_EQ(parser.GetModifier(key), key == "word"s ? "five" : "") << key;
    }
}

TEST(KexText, ErrorsStandAtTheFirstByteOfWhatIsWrong) {
    const struct {
        std::string text;
        const char *position, *says;
    } cases[] = {
        {"k: 1", "1:1", "before any element"},
        {"\"x\"", "1:1", "a string stands only"},
        {"\xEF\xBB\xBFK", "1:1", "0xEF"},
        {"A\n  größe: 1", "2:5", "0xC3"},
        {"A k: \"x\"\0 B"s, "1:9", "zero byte"},
        {"A # a\0 B"s, "1:6", "zero byte"},
        {"A \x01", "1:3", "0x01"},
        {"A; B", "1:2", "the character ;"},
        {"A _k", "1:3", "the character _"},
        {"A: \"x\"", "1:2", "a keyword takes no colon"},
        {"A \"x\" \"y\"", "1:7", "a string stands only"},
        {"A k \"x\"", "1:5", "a string stands only"},
        {"A 5", "1:3", "a number stands only"},
        {"A k: 5 6", "1:8", "a number stands only"},
        {"A k: 5 :", "1:8", "a colon stands only"},
        {"A k: \"x\r\ny\n", "1:6", "not closed"},
        {"A k: \"x\"\"", "1:6", "not closed"},
        {"A k:\n# end\n", "3:1", "the text ends here"},
        {"A k:\r\nRELATION \"x\"", "2:1", "\"RELATION\" begins an element"},
        {"A k:\rlast: 1", "2:1", "\"last\" is the next key"},
        {"A k: ;", "1:6", "the character ;"},
        {"A one\n two one: 2", "2:6", "already has the key \"one\", in line 1, column 3"},
        {"A k: \"two\r\rlines\"\n\r\n;", "5:1", "the character ;"},
        {"A " + std::string(1000, 'k') + " " + std::string(1000, 'k'), "1:1004", "kkk...\""},
    };
    for (const auto& [text, position, says] : cases) {
        QorKexParser parser(SV::String(text), "Rules", "Task");
        EXPECT_EQ(parser.Parse(), 1) << text;
        EXPECT_EQ(written(parser.GetErrorPosition()), position) << text;
        EXPECT_NE(parser.GetErrorText().str().find(says), std::string::npos) << text << parser.GetErrorText().str();
        EXPECT_LT(parser.GetErrorText().Len(), 300U);
    }
}

TEST(KexText, AFailureKeepsTheNumberOfElementsAndSuccessClearsTheError) {
    QorKexParser parser = parsed("A B C");
    SV::String report("> ");
    parser.SetCurElemIndex(1);
    parser.MakeErrorText(report);
    EXPECT_EQ(report, "> Rules (Task): line 1, column 3");

    parser.SetText("A\n;");
    EXPECT_EQ(parser.GetElemCount(), 3U);
    EXPECT_FALSE(parser.SetCurElemIndex(0));
    EXPECT_EQ(parser.Parse(), 1);
    EXPECT_EQ(parser.GetElemCount(), 3U);
    EXPECT_EQ(parser.GetCurElemName(), "");
    report.Clear();
    parser.MakeErrorText(report);
    EXPECT_EQ(report, "Rules (Task): line 2, column 1: the character ; has no meaning outside strings and comments");

    parser.SetText("");
    EXPECT_EQ(parser.Parse(), 0);
    EXPECT_EQ(parser.GetElemCount(), 0U);
    EXPECT_TRUE(parser.GetErrorText().IsEmpty());
    report.Clear();
    parser.MakeErrorText(report);
    EXPECT_EQ(report, "Rules (Task)");
}

TEST(KexText, ACopyReadsItsOwnText) {
    // Shorter than what a string stores in itself, so that the bytes move with the object.
    auto original = std::make_unique<QorKexParser>(parsed("A k:\"a\"\"b\""));
    QorKexParser copy(*original);
    QorKexParser assigned("", "");
    assigned = *original;
    original->SetText("B");
    original.reset();
    for (const QorKexParser* parser : {&copy, &assigned}) {
        EXPECT_EQ(parser->GetStrValue("k"), "a\"b");
        EXPECT_EQ(parser->GetCurElemNameView(), "A");
    }
}

TEST(KexText, KeysOfLargeElementsAreFoundAndTheirDoublesToo) {
    std::string text = "OTHER k0 k1";
    for (int count = 0; count < 300; ++count) {
        if (count % 100 == 0) text += "\nBIG";
        text += "\nk" + std::to_string(count % 100) + ": " + std::to_string(count);
    }
    QorKexParser parser = parsed(text);
    for (unsigned long element = 1; element <= 3; ++element) {
        ASSERT_TRUE(parser.SetCurElemIndex(element));
        EXPECT_EQ(written(parser.GetCurElemPosition()), std::to_string(element * 101 - 99) + ":1");
        EXPECT_FALSE(parser.IsContained("k100"));
        for (int key = 0; key < 100; ++key)
            ASSERT_EQ(parser.GetIntValue("k" + std::to_string(key)), static_cast<long>(element - 1) * 100 + key);
    }
    EXPECT_EQ(written(parser.GetKeyPosition("k99")), "304:1");
    parser.SetText(SV::String(text + " k7"));
    EXPECT_EQ(parser.Parse(), 1);
    EXPECT_NE(parser.GetErrorText().str().find("\"k7\", in line 212, column 1"), std::string::npos);
}

TEST(KexText, HugeTextsAreParsedAndTheirPositionsFound) {
    std::string text;
    for (std::size_t i = 0; i < 1'000'000; ++i) text += "A\n";
    text += std::string(1'000'000, 'Z') + "\n" + std::string(1'000'000, 'z') + ": \"" + std::string(20'000'000, '\n') +
            "\"\nend";
    QorKexParser parser = parsed(text);
    ASSERT_EQ(parser.GetElemCount(), 1'000'001U);
    for (const unsigned long element : {999'999UL, 2'047UL, 2'048UL, 0UL}) {
        ASSERT_TRUE(parser.SetCurElemIndex(element));
        EXPECT_EQ(written(parser.GetCurElemPosition()), std::to_string(element + 1) + ":1");
    }
    ASSERT_TRUE(parser.SetCurElemIndex(1'000'000));
    EXPECT_EQ(parser.GetStrView(std::string(1'000'000, 'z'))->size(), 20'000'000U);
    EXPECT_EQ(written(parser.GetKeyPosition("end")), "21000003:1");
}
