// SPDX-License-Identifier: Apache-2.0
#include <regex>

#include "cli/samples.h"

namespace {

using qor::test::Outcome;
using testing::HasSubstr;

// A sanitizer's shadow memory needs more room than any limit leaves.
#ifdef __SANITIZE_ADDRESS__
constexpr const char* kBoundedMemory = "";
#else
constexpr const char* kBoundedMemory = "ulimit -v 1000000;";
#endif

std::string repeated(std::string_view part, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) text += part;
    return text;
}

using CliBadInput = qor::test::OnSamples;

// One of each way of reading; the places of all faults are held where the files are read.
TEST_F(CliBadInput, EachFaultIsToldWithItsPlaceAndTheOtherFilesAreStillChecked) {
    const struct {
        std::string name, content;
        std::string place;  ///< pattern of what stands between the name and ": error:"
    } kFiles[] = {
        {"broken.yaml", "format: qor.model/1\nlibrary: workshop.yaml\nmodels:\n  - name: [\n", ":[45]:\\d+"},
        {"deep.yaml", "format: qor.model/1\nmodels: " + repeated("[", 10000) + "\n", ":2:\\d+"},
        {"deep.json", "{\"format\": \"qor.model/1\", \"models\": " + repeated("[", 10000), ":1:\\d+"},
        {"nolibrary.yaml", "format: qor.model/1\nmodels:\n  - {name: A, type: Process}\n", ".*"},
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
    for (const auto& file : kFiles) {
        qor.write(file.name, file.content);
        const Outcome outcome = qor.run("check " + file.name + " orders.yaml", kBoundedMemory);
        EXPECT_EQ(outcome.exit, 3) << file.name;
        EXPECT_TRUE(std::regex_search(outcome.err, std::regex("(^|\n)" + file.name + file.place + ": error: [^\n]{8}")))
            << file.name << ": " << outcome.err.substr(0, 300);
        EXPECT_THAT(outcome.out, HasSubstr("Shelf")) << file.name;
    }
}

TEST_F(CliBadInput, WhatIsNoFileIsToldSo) {
    for (const char* name : {"gone.yaml", "/proc/self/mem", "''"}) {
        const Outcome outcome = qor.run(std::string("check ") + name);
        EXPECT_EQ(outcome.exit, 3) << name;
        EXPECT_THAT(outcome.err, HasSubstr(": error: ")) << name;
    }
    EXPECT_EQ(qor.run("check - <&-").exit, 3);
}

}  // namespace
