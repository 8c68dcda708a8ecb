// SPDX-License-Identifier: Apache-2.0
#include "cli/Text.h"
#include "cli/JsonWriter.h"
#include "cli/Nearest.h"

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
        {"Prüfung 😀", "Prüfung 😀", "\"Prüfung 😀\""},
        {"\x1B[2J", "\\x1B[2J", "\"\\u001b[2J\""},
        {"a\nb\tc", "a\\x0Ab\\x09c", "\"a\\nb\\tc\""},
        {"\x7F", "\\x7F", "\"\\u007f\""},
        {"\xC2\x9BJ", "\\u009BJ", "\"\\u009bJ\""},            // a control sequence in one character
        {"\xE2\x80\xAEgpj", "\\u202Egpj", "\"\\u202egpj\""},  // turns the reading direction
        {"\xE2\x81\xA6", "\\u2066", "\"\\u2066\""},
        {"\xF3\xA0\x80\xA0", "\\uE0020", "\"\\udb40\\udc20\""},  // an invisible letter beyond 16 bits
        {"\xFFx\xC3", "\\xFFx\\xC3", "\"\xEF\xBF\xBDx\xEF\xBF\xBD\""},
        {"\xC0\x8A", "\\xC0\\x8A", "\"\xEF\xBF\xBD\xEF\xBF\xBD\""},  // a line feed in a longer form than allowed
        {"\xED\xA0\x80", "\\xED\\xA0\\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
        {"say \"no\\yes\"", "say \"no\\yes\"", "\"say \\\"no\\\\yes\\\"\""},
        {std::string_view("\0", 1), "\\x00", "\"\\u0000\""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(printable(row.text), row.onTerminal);
        EXPECT_EQ(jsonOf(row.text), row.inJson);
    }
    EXPECT_EQ(printableLines("a\n\x1Bx\n"), "a\n\\x1Bx\n");
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

}  // namespace
