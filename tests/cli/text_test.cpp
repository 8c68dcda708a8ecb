// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <cstdlib>

#include "cli/JsonWriter.h"
#include "cli/Nearest.h"
#include "cli/Text.h"

namespace {

using namespace qor::cli;

std::string jsonOf(std::string_view text) {
    std::string result;
    JsonWriter([&result](std::string_view piece) { result += piece; }).value(text);
    return result;
}

TEST(CliText, HostileCharactersAreWrittenOutOnATerminalAndInJson) {
    struct Row {
        std::string_view text, onTerminal, inJson;
    };
    constexpr Row rows[] = {
        {"Pr\xC3\xBC"
         "fung \xF0\x9F\x98\x80",
         "Pr\xC3\xBC"
         "fung \xF0\x9F\x98\x80",
         "\"Pr\xC3\xBC"
         "fung \xF0\x9F\x98\x80\""},
        {"\x1B[2J", "\\x1B[2J", "\"\\u001b[2J\""},
        {"a\nb\tc", "a\\x0Ab\\x09c", "\"a\\nb\\tc\""},
        {"\x7F", "\\x7F", "\"\\u007f\""},
        {"\xC2\x9B"
         "2J",
         "\\u009B2J", "\"\\u009b2J\""},  // a control sequence in one character
        {"\xE2\x80\xAE"
         "gpj",
         "\\u202Egpj", "\"\\u202egpj\""},  // turns the reading direction
        {"\xE2\x81\xA6", "\\u2066", "\"\\u2066\""},
        {"\xF3\xA0\x80\xA0", "\\uE0020", "\"\\udb40\\udc20\""},  // an invisible letter beyond 16 bits
        {"\xFF"
         "a\xC3",
         "\\xFF"
         "a\\xC3",
         "\"\xEF\xBF\xBD"
         "a\xEF\xBF\xBD\""},
        {"\xC0\x8A", "\\xC0\\x8A", "\"\xEF\xBF\xBD\xEF\xBF\xBD\""},  // a line feed in a longer form than allowed
        {"\xED\xA0\x80", "\\xED\\xA0\\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
        {"say \"no\\yes\"", "say \"no\\yes\"", "\"say \\\"no\\\\yes\\\"\""},
        {std::string_view("\0", 1), "\\x00", "\"\\u0000\""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(printable(row.text), row.onTerminal);
        EXPECT_EQ(jsonOf(row.text), row.inJson);
    }
    EXPECT_EQ(printableLines("a\n\x1B"
                             "b\n"),
              "a\n\\x1Bb\n");
}

TEST(CliText, CountsReadAsEnglish) {
    EXPECT_EQ(counted(0, "breach"), "0 breaches");
    EXPECT_EQ(counted(1, "breach"), "1 breach");
    EXPECT_EQ(counted(2, "model"), "2 models");
}

TEST(CliText, TheNearestNameIsFoundAndNothingFarOff) {
    const std::vector<std::string> names = {"check", "library", "rules"};
    struct Row {
        std::string_view word, nearest;
    };
    for (const auto& [word, expected] : {Row{"chekc", "check"}, Row{"Library", "library"}, Row{"rule", "rules"},
                                         Row{"libary", "library"}, Row{"simulate", ""}, Row{"x", ""}, Row{"", ""}})
        EXPECT_EQ(nearest(word, names), expected) << word;
    EXPECT_EQ(nearest(std::string(100000, 'a'), {std::string(100000, 'a')}), "");  // would take minutes to compare
}

TEST(CliText, JsonIsLaidOutInLinesOrInOneLine) {
    std::string text;
    JsonWriter json([&text](std::string_view piece) { text += piece; });
    json.beginObject().key("none").beginList().endList().key("ends").beginObject(JsonWriter::Layout::Line);
    json.field("a", std::int64_t{-1}).field("b", std::optional<std::string>()).key("c").beginList();
    json.value(true).value(false).endList().endObject().key("s").seconds(0.25).endObject();
    EXPECT_EQ(text,
              "{\n  \"none\": [],\n  \"ends\": {\"a\": -1, \"b\": null, \"c\": [true, false]},\n  \"s\": 0.250\n}\n");
}

struct ColourCase {
    const char* noColor;
    const char* force;
    const char* terminal;
    bool coloured;
};

TEST(CliText, ColourFollowsTheUsualVariables) {
    // A pipe is no terminal, so only force turns colour on.
    for (const ColourCase& c : {ColourCase{"", "", "xterm", false}, ColourCase{"", "1", "dumb", true},
                                ColourCase{"1", "1", "xterm", false}, ColourCase{"", "0", "xterm", false}}) {
        ::setenv("NO_COLOR", c.noColor, 1);
        ::setenv("CLICOLOR_FORCE", c.force, 1);
        ::setenv("TERM", c.terminal, 1);
        int ends[2] = {-1, -1};
        ASSERT_EQ(::pipe(ends), 0);
        EXPECT_EQ(wantsColour(ends[1]), c.coloured) << c.noColor << '|' << c.force << '|' << c.terminal;
        ::close(ends[0]);
        ::close(ends[1]);
    }
}

}  // namespace
