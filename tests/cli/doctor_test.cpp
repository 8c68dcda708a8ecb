// SPDX-License-Identifier: Apache-2.0
#include <nlohmann/json.hpp>

#include "cli/samples.h"

namespace {

using qor::test::Call;
using qor::test::Outcome;

struct CliDoctor : qor::test::OnSamples {
    CliDoctor() {
        std::string changed(qor::test::kWorkshop);
        changed.replace(changed.find("max-outgoing: 1"), 15, "max-outgoing: 0\n        min-outgoing: 1");
        changed.replace(changed.find("min-objects: 1"), 14, "min-objects: 0");
        qor.write("changed.yaml", changed);
        std::string slip(qor::test::kWorkshop);
        slip.replace(slip.find("min-objects: 1"), 14, "min-object: 1");
        qor.write("slip.yaml", slip);
    }
};

TEST_F(CliDoctor, TellsContradictionsIdleRulesAndTheImpactOfAChange) {
    const std::vector<Call> calls = {
        {"workshop.yaml", 0, "The rules contradict neither each other nor the library.\n"},
        {"changed.yaml", 1,
         "changed.yaml:10:9: error: min-outgoing: 1 in the text of class \"Task\" cannot be kept together with "
         "max-outgoing: 0 in the text of class \"Task\"\n",
         ""},
        {"bpmn", 0, "contradict neither"},
        {"slip.yaml", 0, "slip.yaml:8:9: warning: "},
        {"order-handling", 0, "contradict neither"},
        {"changed.yaml --models orders.yaml --against workshop.yaml", 1,
         "class \"Task\": max-outgoing 1 to 0: nothing changes\nclass \"Task\": min-objects 1 to 0: no longer 1 model, "
         "1 object\nclass \"Task\": min-outgoing none to 1: 1 model, 2 objects\n",
         ""},
        {"workshop.yaml --models orders.yaml gone.yaml", 3, "", "gone.yaml: error: "},
        {"workshop.yaml --models workshop.yaml", 3, "", "workshop.yaml: error: holds a method library and no models"},
        {"orders.yaml", 3, "", "orders.yaml: error: this is not a method library"},
        {"workshop.yaml --models orders.yaml --against orders.yaml", 3, "", "orders.yaml: error: this is not a method"},
        {"workshop.yaml --against changed.yaml", 2, "", "--against requires --models"},
        {"workshop.yaml --class Task", 2, "", "--doctor"},
    };
    qor.expect("rules --doctor ", calls);
}

TEST_F(CliDoctor, IsADocument) {
    qor.write("free.yaml", "format: qor.model/1\nlibrary: workshop.yaml\nmodels:\n  - name: F\n    type: Process\n");
    const Outcome outcome = qor.run("rules --doctor --json changed.yaml --models free.yaml --against workshop.yaml");
    EXPECT_EQ(outcome.exit, 1);
    const auto document = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(document["schema"], "qor.rules.doctor/1");
    EXPECT_EQ(document["diagnoses"][0]["fault"], "minimum_above_maximum");
    EXPECT_EQ(document["diagnoses"][0]["rule"]["line"], 10);
    EXPECT_EQ(document["unapplied"].size(), 3U) << "the model has no objects";
    EXPECT_EQ(document["impact"][1]["mended"]["models"], 1);
}

}  // namespace
