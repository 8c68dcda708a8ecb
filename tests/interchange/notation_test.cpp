// SPDX-License-Identifier: Apache-2.0
// What YAML and JSON may hold at all, and where a fault in them is said to be.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "interchange/Files.h"

namespace {

using namespace std::string_literals;
using qor::test::expectDiagnostics;
using qor::test::Files;

struct Fault {
    const char* name;
    std::string text;
    std::vector<std::string> expected;
};

std::string nested(std::size_t depth, char open) { return "a: " + std::string(depth, open); }

class Notation : public testing::TestWithParam<Fault> {};

TEST_P(Notation, NamesTheFaultAtItsPlaceAndLeavesNothing) {
    Files files;
    const QorImportResult result = files.read(GetParam().text);
    expectDiagnostics(result.diagnostics, GetParam().expected);
    EXPECT_EQ(files.content(), "");
}

const Fault kYaml[] = {
    {"Empty", "", {"0:0 the file is empty"}},
    {"Blank", " \n\n", {"0:0 nothing but blanks"}},
    {"Comment", "# format: qor.library/1\n", {"1:1 nothing but comments"}},
    {"OnlyAText", "hello world\n", {"1:1 no library and no model file"}},
    {"AList", "- a\n", {"1:1 no library and no model file"}},
    {"NoFormat", "name: x\n", {"1:1 the key \"format\" is missing"}},
    {"OtherFormat", "format: qor.library/2\n", {"1:9 unknown format \"qor.library/2\""}},
    {"Anchor", "format: &a qor.library/1\nname: x\n", {"1:9 anchors are not accepted"}},
    {"Alias", "format: qor.library/1\nname: x\nbusiness_process: *a\n", {"3:19 aliases are not accepted"}},
    {"Tag", "format: !!str qor.library/1\nname: x\n", {"1:9 tags are not accepted"}},
    {"OwnTag", "format: !mine qor.library/1\nname: x\n", {"1:9 tags are not accepted"}},
    {"SecondDocument", "format: qor.library/1\nname: x\n---\na: b\n", {"3:1 a second document"}},
    {"SameKey", "format: qor.library/1\nname: x\nname: y\n", {"3:1 \"name\" stands here twice, first at line 2"}},
    {"ManySameKeys",
     "format: qor.library/1\nname: x\na: 1\nb: 1\nc: 1\nd: 1\ne: 1\nf: 1\ng: 1\ng: 1\ng: 1\n",
     {"3:1 no key \"a\"", "4:1 no key \"b\"", "5:1 no key \"c\"", "6:1 no key \"d\"", "7:1 no key \"e\"",
      "8:1 no key \"f\"", "9:1 no key \"g\"", "10:1 first at line 9", "10:1 no key \"g\"", "11:1 first at line 9",
      "11:1 no key \"g\""}},
    {"KeyOfALibraryInAMap", "format: qor.library/1\nname: x\n[a]: y\n", {"3:1 a key must be a text"}},
    {"EmptyKey", "format: qor.library/1\nname: x\n\"\": y\n", {"3:1 a key is missing"}},
    {"TabIndents", "format: qor.library/1\nbusiness_process:\n\tname: x\n", {"3:1 a tab cannot indent"}},
    {"Unclosed", "format: \"qor\nname: x\n", {"3:1 the file ends before the closing quote"}},
    {"BadIndentation", "format: qor.library/1\n  name: x\n", {"2:7 a colon cannot stand here"}},
    {"MissingColon", "format: qor.library/1\nname\n", {"3:1 a colon is missing"}},
    {"ColonInText", "format: qor.library/1\nname: a: b\n", {"2:8 a colon cannot stand here"}},
    {"UnclosedList",
     "format: qor.library/1\nname: [a, b\nx: y\n",
     {"3:2 a comma or \"]\" is missing (while parsing a flow sequence begun at line 2)"}},
    {"UnknownEscape", "format: \"\\q\"\n", {"1:10 unknown escape"}},
    {"LoneSurrogateEscape", "format: \"\\uD800\"\n", {"1:12 the escape stands for no character"}},
    {"ZeroByteEscape", "format: qor.library/1\nname: \"a\\0b\"\n", {"2:7 zero byte"}},
    {"ZeroByte", "format: qor.library/1\nname: a\0b\n"s, {"2:8 a zero byte"}},
    {"Latin1",
     "format: qor.library/1\nname: Gr\xFC\xDF"
     "e\n",
     {"2:9 the byte 0xfc is not UTF-8"}},
    {"Overlong", "format: \xC0\xAF\n", {"1:9 the byte 0xc0 is not UTF-8"}},
    {"Surrogate", "format: \xED\xA0\x80\n", {"1:9 the byte 0xed is not UTF-8"}},
    {"CutCharacter", "format: a\xE2\x82", {"1:10 the byte 0xe2 is not UTF-8"}},
    {"Utf16",
     "\xFF\xFE"
     "f\0o\0"s,
     {"1:1 UTF-16"}},
    {"LineSeparator",
     "format: a\xE2\x80\xA8"
     "b\n",
     {"1:10 U+2028"}},
    {"Escape", "format: a\x1B[31m\n", {"1:10 the character U+001B"}},
    {"LoneReturn", "format: a\rname: b\n", {"1:10 a carriage return"}},
    {"ByteOrderMarkInside", "format: a\xEF\xBB\xBF\n", {"1:10 the character U+FEFF"}},
    {"LongLine",
     "format: qor.library/1\nname: " + std::string(17 << 20, 'x') + "\n",
     {"2:1 a line of more than 16 MiB"}},
    {"Depth65", nested(64, '['), {"1:67 nested deeper than 64 levels"}},
    {"Depth10000", nested(10000, '{'), {"1:5 a key must be a text", "1:67 nested deeper than 64 levels"}},
    {"DepthOfBlocks",
     [] {
         std::string text;
         for (int i = 0; i < 10000; ++i) text += "- ";
         return text;
     }(),
     {"1:129 nested deeper than 64 levels"}},
};

// What was found before the text broke off is told as well, but not that something is missing: it may stand behind.
const Fault kBrokenOff[] = {
    {"Library",
     "format: qor.library/1\nname: L\nbusiness_process:\n  unmoved_relation_class: later\n  classes:\n"
     "    - {name: A, extends: Later}\n    - {name: A, abstract: perhaps}\n    - name: B\n      values: {Later: 1}\n"
     "      cardinalities: |\n        CARDINALITIES\n        max-objects: 1\n        max-objects: 2\n"
     "  model_types:\n    - classes: [Later]\n        name: M\n",
     {"7:14 \"A\" is taken", "7:27 true or false", "13:9 already has the key \"max-objects\", in line 12, column 9",
      "16:9 a key is expected here"}},
    {"Cut",
     "format: qor.library/1\nname: L\nbusiness_process: {classes: [{name: A, attributes: [{name: X, type: enumeration, "
     "values: [",
     {"3:1 a value is missing"}},
    {"Json",
     R"({"format": "qor.library/1", "name": "L", "business_process": {"classes": [{"nam": "A"}, {"name": 1 2)",
     {"1:75 needs the key \"name\"", "1:76 no key \"nam\"", "1:100 unexpected number literal"}},
    {"BeforeItsKind", "name: L\nbusines: x\na: b: c\n", {"3:5 a colon cannot stand here"}},
};

const Fault kJson[] = {
    {"NoFormat", "{}", {"1:1 the key \"format\" is missing"}},
    {"SameKey",
     "{\"format\": \"qor.library/1\",\n \"name\": \"x\",\n \"name\": \"y\"}",
     {"3:2 stands here twice, first at line 2"}},
    {"MissingComma", "{\"format\": \"qor.library/1\"\n \"name\": \"x\"}", {"2:2 unexpected string literal"}},
    {"TrailingComma", "{\"format\": \"x\",\n}", {"2:1 unexpected '}'; expected string literal"}},
    {"Comment", "{ // no\n}", {"1:3 invalid literal"}},
    {"TextBehind", "{}\nx", {"2:1 invalid literal"}},
    {"UnclosedText", "{\"format\": \"qor", {"1:16 missing closing quote"}},
    {"Unclosed", "{\"format\":\n[1, 2", {"2:6 unexpected end of input"}},
    {"LoneSurrogate", "{\"format\": \"\\uD800\"}", {"1:19 surrogate U+D800"}},
    {"ZeroByteEscape", "{\"format\": \"qor.library/1\", \"name\": \"\\u0000\"}", {"1:37 zero byte"}},
    {"ZeroByte", "{\"format\": \"qor.library/1\"}\0{"s, {"1:28 a zero byte"}},
    {"NotUtf8", "{\"form\xFF\"}", {"1:7 0xff is not UTF-8"}},
    {"ControlCharacter", "{\"format\": \"a\tb\"}", {"1:14 control character"}},
    {"TooLargeNumber", "{\"format\": 1e400}", {"1:16 number overflow"}},
    {"Depth65", "{\"a\":" + std::string(64, '['), {"1:69 nested deeper than 64 levels"}},
    {"DepthMillion", "{\"a\":" + std::string(1000000, '['), {"1:69 nested deeper than 64 levels"}},
    {"ByteOrderMark", "\xEF\xBB\xBF{}", {"1:1 the key \"format\" is missing"}},
    {"PlacesBehindNumbers",
     "{\"format\": \"qor.library/1\", \"name\": -0.5e3 ,\n  \"business_process\": {\"name\": true,\n \"a\":null}, "
     "\"b\": 1}",
     {"3:2 no key \"a\"", "3:13 no key \"b\""}},
};

std::string nameOf(const testing::TestParamInfo<Fault>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Yaml, Notation, testing::ValuesIn(kYaml), nameOf);
INSTANTIATE_TEST_SUITE_P(BrokenOff, Notation, testing::ValuesIn(kBrokenOff), nameOf);
INSTANTIATE_TEST_SUITE_P(Json, Notation, testing::ValuesIn(kJson), nameOf);

TEST(Notation, BeginsToEndWithoutLosingTexts) {
    // Whatever looks like a number or a truth value is the text that was written.
    const std::string yaml =
        "\xEF\xBB\xBF"
        R"(%YAML 1.1
---
format: qor.library/1
name: 012
business_process:
  classes:
    - {name: no}
    - {name: 1:30}
    - {name: ~}
    - {name: "a\u0042b\u00e9\"\\"}
    - {name: 'it''s'}
    - name: >-
        folded
        text
    - name: plain text
        goes on
)";
    const std::string json =
        "\xEF\xBB\xBF"
        R"({"format": "qor.library/1", "name": 012e0,
"business_process": {"classes": [{"name": "no"}, {"name": "1:30"}, {"name": "~"}, {"name": "a\u0042b\u00e9\"\\"},
{"name": "it's"}, {"name": "folded text"}, {"name": "plain text goes on"}]}})";
    const std::vector<std::string> expected = {
        "no", "1:30", "~", "aBb\xC3\xA9\"\\", "it's", "folded text", "plain text goes on"};
    for (std::string text : {yaml, json, [&] {
                                 std::string windows;
                                 for (const char c : yaml) windows += c == '\n' ? "\r\n"s : std::string(1, c);
                                 return windows;
                             }()}) {
        if (const auto leadingZero = text.find("012e0"); leadingZero != std::string::npos) text.erase(leadingZero, 1);
        Files files;
        const QorIdentifier library = files.library(text);
        std::vector<std::string> names;
        const auto part = files.reader().libraryPart(library, QorLibraryPart::BusinessProcess);
        for (const QorClassInfo& cls : files.reader().classesOf(part)) names.emplace_back(cls.name);
        EXPECT_EQ(names, expected);
        EXPECT_EQ(files.reader().nameOf(library), text[3] == '{' ? "12e0" : "012");
    }
}

TEST(Notation, EndsAfterTooManyErrors) {
    std::string text = "format: qor.library/1\nname: x\n";
    for (int i = 0; i < 3000; ++i) text += "k" + std::to_string(i) + ": &a x\n";
    Files files;
    const QorImportResult result = files.read(text);
    ASSERT_EQ(result.diagnostics.size(), 1001U);
    EXPECT_NE(result.diagnostics.back().text.find("too many errors"), std::string::npos);

    std::string unknown = "format: qor.library/1\nname: x\n";
    for (int i = 0; i < 3000; ++i) unknown += "k" + std::to_string(i) + ": x\n";
    const QorImportResult counted = files.read(unknown);
    ASSERT_EQ(counted.diagnostics.size(), 1001U);
    EXPECT_EQ(counted.diagnostics.back().text, "\xE2\x80\xA6 and 2000 more errors");
}

}  // namespace
