// SPDX-License-Identifier: Apache-2.0
// What YAML and JSON may hold at all, and where a fault in them is said to be.
#include "interchange/Files.h"

namespace {

using namespace std::string_literals;
using qor::test::expectDiagnostics;
using qor::test::Fault;
using qor::test::Files;
using qor::test::repeated;

std::string nested(std::size_t depth, char open) { return "a: " + std::string(depth, open); }

const Fault kFaults[] = {
    {"", "0:0 the file is empty"},
    {" \n\n", "0:0 nothing but blanks"},
    {"# format: qor.library/1\n", "1:1 nothing but comments"},
    {"hello world\n", "1:1 no library and no model file"},
    {"- a\n", "1:1 no library and no model file"},
    {"name: x\n", "1:1 the key \"format\" is missing"},
    {"format: qor.library/2\n", "1:9 unknown format \"qor.library/2\""},
    {"format: &a qor.library/1\nname: x\n", "1:9 anchors are not accepted"},
    {"format: qor.library/1\nname: x\nbusiness_process: *a\n", "3:19 aliases are not accepted"},
    {"format: !!str qor.library/1\nname: x\n", "1:9 tags are not accepted"},
    {"format: !mine qor.library/1\nname: x\n", "1:9 tags are not accepted"},
    {"format: qor.library/1\nname: x\n---\na: b\n", "3:1 a second document"},
    {"format: qor.library/1\nname: x\nname: y\n", "3:1 \"name\" stands here twice, first at line 2"},
    {"format: qor.library/1\nname: x\na: 1\nb: 1\nc: 1\nd: 1\ne: 1\nf: 1\ng: 1\ng: 1\ng: 1\n",
     "3:1 no key \"a\"\n4:1 no key \"b\"\n5:1 no key \"c\"\n6:1 no key \"d\"\n7:1 no key \"e\"\n8:1 no key \"f\"\n9:1 "
     "no key \"g\"\n10:1 first at line 9\n10:1 no key \"g\"\n11:1 first at line 9\n11:1 no key \"g\""},
    {"format: qor.library/1\nname: x\n[a]: y\n", "3:1 a key must be a text"},
    {"format: qor.library/1\nname: x\n\"\": y\n", "3:1 a key is missing"},
    {"format: qor.library/1\nbusiness_process:\n\tname: x\n", "3:1 a tab cannot indent"},
    {"format: \"qor\nname: x\n", "3:1 the file ends before the closing quote"},
    {"format: qor.library/1\n  name: x\n", "2:7 a colon cannot stand here"},
    {"format: qor.library/1\nname\n", "3:1 a colon is missing"},
    {"format: qor.library/1\nname: a: b\n", "2:8 a colon cannot stand here"},
    {"format: qor.library/1\nname: [a, b\nx: y\n",
     "3:2 a comma or \"]\" is missing (while parsing a flow sequence begun at line 2)"},
    {"format: \"\\q\"\n", "1:10 unknown escape"},
    {"format: \"\\uD800\"\n", "1:12 the escape stands for no character"},
    {"format: qor.library/1\nname: \"a\\0b\"\n", "2:7 zero byte"},
    {"format: qor.library/1\nname: a\0b\n"s, "2:8 a zero byte"},
    {"format: qor.library/1\nname: Gr\xFC\xDF"
     "e\n",
     "2:9 the byte 0xfc is not UTF-8"},
    {"format: \xC0\xAF\n", "1:9 the byte 0xc0 is not UTF-8"},
    {"format: \xED\xA0\x80\n", "1:9 the byte 0xed is not UTF-8"},
    {"format: a\xE2\x82", "1:10 the byte 0xe2 is not UTF-8"},
    {"\xFF\xFE"
     "f\0o\0"s,
     "1:1 UTF-16"},
    {"format: a\xE2\x80\xA8"
     "b\n",
     "1:10 U+2028"},
    {"format: a\x1B[31m\n", "1:10 the character U+001B"},
    {"format: a\rname: b\n", "1:10 a carriage return"},
    {"format: a\xEF\xBB\xBF\n", "1:10 the character U+FEFF"},
    {"format: qor.library/1\nname: " + std::string(17 << 20, 'x') + "\n", "2:1 a line of more than 16 MiB"},
    {nested(64, '['), "1:67 nested deeper than 64 levels"},
    {nested(10000, '{'), "1:5 a key must be a text\n1:67 nested deeper than 64 levels"},
    {repeated("- ", 10000), "1:129 nested deeper than 64 levels"},
    // What was found before the text broke off is told as well, but not that something is missing: it may stand behind.
    {"format: qor.library/1\nname: L\nbusiness_process:\n  unmoved_relation_class: later\n  classes:\n    - {name: A, "
     "extends: Later}\n    - {name: A, abstract: perhaps}\n    - name: B\n      values: {Later: 1}\n      "
     "cardinalities: |\n        CARDINALITIES\n        max-objects: 1\n        max-objects: 2\n  model_types:\n    - "
     "classes: [Later]\n        name: M\n",
     "7:14 \"A\" is taken\n7:27 true or false\n13:9 already has the key \"max-objects\", in line 12, column 9\n16:9 a "
     "key is expected here"},
    {"format: qor.library/1\nname: L\nbusiness_process: {classes: [{name: A, attributes: [{name: X, type: enumeration, "
     "values: [",
     "3:1 a value is missing"},
    {R"({"format": "qor.library/1", "name": "L", "business_process": {"classes": [{"nam": "A"}, {"name": 1 2)",
     "1:75 needs the key \"name\"\n1:76 no key \"nam\"\n1:100 unexpected number literal"},
    {"name: L\nbusines: x\na: b: c\n", "3:5 a colon cannot stand here"},
    {"{}", "1:1 the key \"format\" is missing"},
    {"{\"format\": \"qor.library/1\",\n \"name\": \"x\",\n \"name\": \"y\"}", "3:2 stands here twice, first at line 2"},
    {"{\"format\": \"qor.library/1\"\n \"name\": \"x\"}", "2:2 unexpected string literal"},
    {"{\"format\": \"x\",\n}", "2:1 unexpected '}'; expected string literal"},
    {"{ // no\n}", "1:3 invalid literal"},
    {"{}\nx", "2:1 invalid literal"},
    {"{\"format\": \"qor", "1:16 missing closing quote"},
    {"{\"format\":\n[1, 2", "2:6 unexpected end of input"},
    {"{\"format\": \"\\uD800\"}", "1:19 surrogate U+D800"},
    {"{\"format\": \"qor.library/1\", \"name\": \"\\u0000\"}", "1:37 zero byte"},
    {"{\"format\": \"qor.library/1\"}\0{"s, "1:28 a zero byte"},
    {"{\"form\xFF\"}", "1:7 0xff is not UTF-8"},
    {"{\"format\": \"a\tb\"}", "1:14 control character"},
    {"{\"format\": 1e400}", "1:16 number overflow"},
    {"{\"a\":" + std::string(64, '['), "1:69 nested deeper than 64 levels"},
    {"{\"a\":" + std::string(1000000, '['), "1:69 nested deeper than 64 levels"},
    {"\xEF\xBB\xBF{}", "1:1 the key \"format\" is missing"},
    {"{\"format\": \"qor.library/1\", \"name\": -0.5e3 ,\n  \"business_process\": {\"name\": true,\n \"a\":null}, "
     "\"b\": 1}",
     "3:2 no key \"a\"\n3:13 no key \"b\""},
};

TEST(Notation, FaultsAreNamedAtTheirPlacesAndLeaveNothing) {
    for (const auto& [text, expected] : kFaults) {
        SCOPED_TRACE(text.substr(0, 300));
        Files files;
        const QorImportResult result = files.read(text);
        expectDiagnostics(result.diagnostics, expected);
        EXPECT_EQ(files.content(), "");
    }
}

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
    for (const auto& [value, last] :
         {std::pair("&a x", "too many errors"), {"x", "\xE2\x80\xA6 and 2000 more errors"}}) {
        std::string text = "format: qor.library/1\nname: x\n";
        for (int i = 0; i < 3000; ++i) text += "k" + std::to_string(i) + ": " + value + "\n";
        const QorImportResult result = Files().read(text);
        ASSERT_EQ(result.diagnostics.size(), 1001U);
        EXPECT_THAT(result.diagnostics.back().text, testing::HasSubstr(last));
    }
}

}  // namespace
