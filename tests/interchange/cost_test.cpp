// SPDX-License-Identifier: Apache-2.0
// What reading costs: time grows with the size of the file, whatever its shape, and so does memory.
#include <malloc.h>

#include <ctime>

#include "interchange/Document.h"
#include "interchange/Files.h"
#include "interchange/Findings.h"

namespace {

using qor::test::Files;

/// A file of n parts, and n further ones; "@" stands for a part's number, "^" for that of the next one. In what stands
/// behind all parts "@" is n.
struct Shape {
    const char* name;
    std::string before, part, between = {}, further = {}, after = {};

    std::string text(int n) const {
        std::string text = before;
        for (int i = 0; i < n; ++i) append(text, part, i);
        text += between;
        for (int i = 0; i < n; ++i) append(text, further, i);
        append(text, after, n);
        return text;
    }

private:
    static void append(std::string& text, std::string_view pattern, int number) {
        for (const char c : pattern)
            if (c == '@' || c == '^')
                text += std::to_string(c == '^' ? number + 1 : number);
            else
                text += c;
    }
};

const std::string kModel = "format: qor.model/1\nmodels:\n  - name: M\n    type: Process\n    objects:\n";
const std::string kTask = "      - {class: Task, name: t@}\n";
const std::string kLibrary = "format: qor.library/1\nname: X\nbusiness_process:\n  classes:\n";
const std::string kAttributes = "    - name: A\n      attributes:\n";
const std::string kAttribute = "        - {name: a@, type: text}\n";

const Shape kShapes[] = {
    {"JsonOnOneLine", R"({"format": "qor.model/1", "models": [{"name": "M", "type": "Notes", "objects": [)",
     R"({"class": "Note", "name": "@"},)", "", "", R"({"class": "Note", "name": "@"}]}]})"},
    {"YamlOnOneLine", "format: qor.model/1\nmodels: [", "\xC3\xA4: {@}, ", "", "", "]\n"},
    {"RelationsByName", kModel, kTask, "    relations:\n", "      - {class: then, from: t@, to: t0}\n"},
    {"UnknownEnds", kModel, kTask, "    relations:\n", "      - {class: then, from: x@, to: y}\n"},
    {"SameNameAndIdentifier", kModel, "      - {id: x, class: Task, name: a}\n"},
    {"UnknownClasses", kModel, "      - {class: C@, name: a}\n"},
    {"UnknownAttributes", kModel + "      - class: Task\n        name: a\n        values:\n", "          v@: x\n"},
    {"SameKeys", "format: qor.model/1\n", "k@: x\nk@: x\n"},
    {"EmptyItems", "format: qor.model/1\nmodels:\n", "-\n"},
    {"LinesOfText", "format: qor.model/1\nlibrary: |\n", "  a \xE2\x82\xAC\n\n"},
    {"FoldedText", "format: qor.model/1\nlibrary: \"", "  a\n\n", "", "", "\""},
    {"Comments", "format: qor.model/1\n", "# a\n\n"},
    {"UnknownSuperclasses", kLibrary, "    - {name: A@, extends: B@}\n"},
    {"BackwardChain", kLibrary, "    - {name: A@, extends: A^}\n"},
    {"Circle", kLibrary, "    - {name: A@, extends: A^}\n", "", "", "    - {name: A@, extends: A0}\n"},
    {"AttributesOfOneClass", kLibrary + kAttributes, kAttribute, "", "", "        - {}\n"},
    {"SubclassesAndAttributes", kLibrary, "    - {name: A@, extends: A}\n", kAttributes, kAttribute},
    {"EnumerationValues", kLibrary + kAttributes + "        - {name: a, type: enumeration, values: [", "@,", "", "",
     "]}\n"},
};

class Cost : public testing::TestWithParam<Shape> {};

double secondsFor(const std::string& text) {
    Files files;
    const QorIdentifier library = files.library(qor::test::kSmallLibrary);
    const std::clock_t begin = std::clock();
    (void)files.read(text, library);
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

TEST_P(Cost, GrowsWithTheSize) {
    constexpr int kSmall = 1000;
    constexpr int kFactor = 16;
    double small = 0;
    for (int i = 0; i < 3; ++i) small += secondsFor(GetParam().text(kSmall)) / 3;
    // A reader that goes over everything again for every part would take 256 times as long.
    const double large = secondsFor(GetParam().text(kSmall * kFactor));
    EXPECT_LT(large, (small + 0.002) * kFactor * 4);
}

INSTANTIATE_TEST_SUITE_P(Reading, Cost, testing::ValuesIn(kShapes),
                         [](const auto& shape) { return std::string(shape.param.name); });

// The tree of a document, which is what reading takes memory for beside the repository itself.
TEST(Cost, OfMemoryIsBounded) {
    const struct {
        std::string before, part, after;
    } kCases[] = {
        {"{\"a\":[", "1,", "1]}"}, {"{\"a\":[", "[],", "1]}"},     {"{\"a\":[", "{},\n", "1]}"},
        {"a: [", "a,", "]"},       {"a: [", "{a},", "]"},          {"a: [", "a\n,", "]"},
        {"a:\n", "-\n", ""},       {"a: [", "? ,", "]"},           {"a: \"", "\\L", "\""},
        {"a: |\n", "\n", ""},      {"a: [", "''\n,\n\n\n", "'']"},
    };
    for (const auto& [before, part, after] : kCases) {
        std::string text = before;
        while (text.size() < 1000000) text += part;
        text += after;
        const auto used = [] {
            const struct mallinfo2 info = ::mallinfo2();
            return info.uordblks + info.hblkhd;
        };
        const std::size_t atFirst = used();
        qor::interchange::Places places;
        qor::interchange::Findings findings("file", places);
        qor::interchange::Tree tree;
        (void)qor::interchange::readDocument(text, tree, findings);
        EXPECT_LT(used() - atFirst, 19 * text.size()) << part;
    }
}

}  // namespace
