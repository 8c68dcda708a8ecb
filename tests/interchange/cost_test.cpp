// SPDX-License-Identifier: Apache-2.0
// What reading costs: time grows with the size of the file, whatever its shape, and so does memory.
#include <gtest/gtest.h>
#include <malloc.h>

#include <ctime>
#include <functional>
#include <string>

#include "interchange/Document.h"
#include "interchange/Files.h"
#include "interchange/Findings.h"

namespace {

using qor::test::Files;

struct Shape {
    const char* name;
    std::function<std::string(int)> text;
};

std::string repeated(const std::string& before, int count, const std::function<std::string(int)>& one,
                     const std::string& after = {}) {
    std::string text = before;
    for (int i = 0; i < count; ++i) text += one(i);
    return text + after;
}

std::function<std::string(int)> always(std::string text) {
    return [text = std::move(text)](int) { return text; };
}

std::string number(int i) { return std::to_string(i); }

const std::string kModel = "format: qor.model/1\nmodels:\n  - name: M\n    type: Process\n    objects:\n";
const std::string kLibrary = "format: qor.library/1\nname: X\nbusiness_process:\n  classes:\n";

const Shape kShapes[] = {
    {"JsonOnOneLine",
     [](int n) {
         return repeated(
             R"({"format": "qor.model/1", "models": [{"name": "M", "type": "Notes", "objects": [)", n,
             [](int i) { return (i == 0 ? "" : ",") + (R"({"class": "Note", "name": ")" + number(i) + "\"}"); },
             "]}]}");
     }},
    {"YamlOnOneLine",
     [](int n) {
         return repeated(
             "format: qor.model/1\nmodels: [", n, [](int i) { return "\xC3\xA4: {" + number(i) + "}, "; }, "]\n");
     }},
    {"RelationsByName",
     [](int n) {
         return repeated(kModel, n, [](int i) { return "      - {class: Task, name: t" + number(i) + "}\n"; }) +
                repeated("    relations:\n", n,
                         [](int i) { return "      - {class: then, from: t" + number(i) + ", to: t0}\n"; });
     }},
    {"UnknownEnds",
     [](int n) {
         return repeated(kModel, n, [](int i) { return "      - {class: Task, name: t" + number(i) + "}\n"; }) +
                repeated("    relations:\n", n,
                         [](int i) { return "      - {class: then, from: x" + number(i) + ", to: y}\n"; });
     }},
    {"SameNameAndIdentifier",
     [](int n) { return repeated(kModel, n, always("      - {id: x, class: Task, name: a}\n")); }},
    {"UnknownClasses",
     [](int n) { return repeated(kModel, n, [](int i) { return "      - {class: C" + number(i) + ", name: a}\n"; }); }},
    {"UnknownAttributes",
     [](int n) {
         return repeated(kModel + "      - class: Task\n        name: a\n        values:\n", n,
                         [](int i) { return "          v" + number(i) + ": x\n"; });
     }},
    {"SameKeys",
     [](int n) { return repeated("format: qor.model/1\n", n, [](int i) { return "k" + number(i / 2) + ": x\n"; }); }},
    {"EmptyItems", [](int n) { return repeated("format: qor.model/1\nmodels:\n", n, always("-\n")); }},
    {"LinesOfText",
     [](int n) { return repeated("format: qor.model/1\nlibrary: |\n", n, always("  a \xE2\x82\xAC\n\n")); }},
    {"FoldedText", [](int n) { return repeated("format: qor.model/1\nlibrary: \"", n, always("  a\n\n"), "\""); }},
    {"Comments", [](int n) { return repeated("format: qor.model/1\n", n, always("# a\n\n")); }},
    {"UnknownSuperclasses",
     [](int n) {
         return repeated(kLibrary, n,
                         [](int i) { return "    - {name: A" + number(i) + ", extends: B" + number(i) + "}\n"; });
     }},
    {"BackwardChain",
     [](int n) {
         return repeated(kLibrary, n,
                         [](int i) { return "    - {name: A" + number(i) + ", extends: A" + number(i + 1) + "}\n"; });
     }},
    {"Circle",
     [](int n) {
         return repeated(kLibrary, n, [n](int i) {
             return "    - {name: A" + number(i) + ", extends: A" + number((i + 1) % n) + "}\n";
         });
     }},
    {"AttributesOfOneClass",
     [](int n) {
         return repeated(
             kLibrary + "    - name: A\n      attributes:\n", n,
             [](int i) { return "        - {name: a" + number(i) + ", type: text}\n"; }, "        - {}\n");
     }},
    {"SubclassesAndAttributes",
     [](int n) {
         return repeated(kLibrary, n, [](int i) { return "    - {name: A" + number(i) + ", extends: A}\n"; }) +
                repeated("    - name: A\n      attributes:\n", n,
                         [](int i) { return "        - {name: a" + number(i) + ", type: text}\n"; });
     }},
    {"EnumerationValues",
     [](int n) {
         return repeated(
             kLibrary + "    - name: A\n      attributes:\n        - {name: a, type: enumeration, values: [", n,
             [](int i) { return number(i) + ","; }, "]}\n");
     }},
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
