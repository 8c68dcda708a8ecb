// SPDX-License-Identifier: Apache-2.0
#include <regex>

#include "cli/CommandRunner.h"
#include "cli/samples.h"

namespace {

using qor::test::CommandRunner;
using qor::test::Outcome;
using testing::HasSubstr;

constexpr std::string_view kModelHead = "format: qor.model/1\nlibrary: workshop.yaml\nmodels:\n";

// A sanitizer's shadow memory needs more room than any limit leaves.
#ifdef __SANITIZE_ADDRESS__
constexpr const char* kBoundedMemory = "";
#else
constexpr const char* kBoundedMemory = "ulimit -v 1000000;";
#endif

std::string model(const std::string& rest) { return std::string(kModelHead) + rest; }

std::string repeated(std::string_view part, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += part;
    return text;
}

struct BadFile {
    std::string name;
    std::string content;
    std::string place;  ///< pattern of what stands between the name and ": error:"
};

const std::vector<BadFile>& badFiles() {
    static const std::vector<BadFile> files = {
        {"empty.yaml", "", ""},
        {"unknown.txt", "just words\n", "(:1:1)?"},
        {"broken.yaml", model("  - name: [\n"), ":[45]:\\d+"},
        {"bytes.yaml", model("  - name: a\xFF\n"), ":4:12"},
        {"twice.yaml", model("  - {name: A, type: Process}\n  - {name: A, type: Process}\n"), ":5:\\d+"},
        {"key.yaml", model("  - {name: A, name: B, type: Process}\n"), ":4:15"},
        {"class.yaml", model("  - {name: A, type: Process, objects: [{class: Tsak, name: x}]}\n"), ":4:\\d+"},
        {"ends.yaml",
         model("  - name: A\n    type: Process\n    objects:\n      - {class: Task, name: t}\n"
               "      - {class: Store, name: s}\n    relations:\n      - {class: then, from: t, to: s}\n"
               "      - {class: then, from: t, to: nobody}\n"),
         ":1[01]:\\d+"},
        {"deep.yaml", "format: qor.model/1\nmodels: " + repeated("[", 10000) + "\n", ":2:\\d+"},
        {"deep.json", "{\"format\": \"qor.model/1\", \"models\": " + repeated("[", 10000), ":1:\\d+"},
        {"alias.yaml", model("  - &a {name: A}\n"), ":4:\\d+"},
        {"nolibrary.yaml", "format: qor.model/1\nmodels:\n  - {name: A, type: Process}\n", ".*"},
        {"library.yaml", "format: qor.library/1\nname: L\nbusiness_process:\n  classes: [{name: A}, {name: A}]\n",
         ":4:\\d+"},
        {"rule.yaml",
         "format: qor.library/1\nname: L\nbusiness_process:\n  classes:\n    - name: A\n      cardinalities: |\n"
         "        CARDINALITIES\n        max-objects: \"x\n",
         ":8:\\d+"},
        {"broken.bpmn",
         "<?xml version=\"1.0\"?>\n<definitions xmlns=\"http://www.omg.org/spec/BPMN/20100524/MODEL\">\n<process>\n",
         ":[34]:\\d+"},
        {"bomb.bpmn",
         "<?xml version=\"1.0\"?>\n<!DOCTYPE x [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;\">]>\n"
         "<definitions xmlns=\"http://www.omg.org/spec/BPMN/20100524/MODEL\">&b;</definitions>\n",
         ":2:\\d+"},
        {"deep.bpmn",
         "<definitions xmlns=\"http://www.omg.org/spec/BPMN/20100524/MODEL\">\n" + repeated("<process>", 10000),
         ":2:\\d+"},
    };
    return files;
}

TEST(CliBadInput, EachFaultIsToldWithItsPlaceAndTheOtherFilesAreStillChecked) {
    CommandRunner qor;
    qor.write("workshop.yaml", qor::test::kWorkshop);
    qor.write("orders.yaml", qor::test::kOrders);
    for (const BadFile& file : badFiles()) {
        qor.write(file.name, file.content);
        const Outcome outcome = qor.run("check " + file.name + " orders.yaml", kBoundedMemory);
        EXPECT_EQ(outcome.exit, 3) << file.name;
        EXPECT_TRUE(std::regex_search(outcome.err, std::regex("(^|\n)" + file.name + file.place + ": error: [^\n]{8}")))
            << file.name << ": " << outcome.err.substr(0, 300);
        EXPECT_THAT(outcome.out, HasSubstr("Shelf")) << file.name;
    }
}

TEST(CliBadInput, WhatIsNoFileIsToldSo) {
    CommandRunner qor;
    for (const char* name : {"gone.yaml", ".", "/proc/self/mem", "''"}) {
        const Outcome outcome = qor.run(std::string("check ") + name);
        EXPECT_EQ(outcome.exit, 3) << name;
        EXPECT_THAT(outcome.err, HasSubstr(": error: ")) << name;
    }
    EXPECT_EQ(qor.run("check - <&-").exit, 3);
}

}  // namespace
