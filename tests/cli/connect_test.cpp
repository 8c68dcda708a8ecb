// SPDX-License-Identifier: Apache-2.0
#include <nlohmann/json.hpp>

#include "cli/samples.h"

namespace {

using qor::test::Call;

using CliMayConnect = qor::test::OnSamples;

TEST_F(CliMayConnect, ExplainsForClassesObjectsAndNewObjects) {
    std::string limited(qor::test::kWorkshop);
    limited.replace(limited.find("min-incoming: 1"), 15, "max-incoming: 0");
    qor.write("limited.yaml", limited);
    const std::vector<Call> calls = {
        {"workshop.yaml then Task Task", 0,
         "\"then\" from class \"Task\" to class \"Task\": allowed, 1 left\n    leaves 1: max-outgoing: 1, in the text "
         "of class \"Task\" (workshop.yaml:9:9); the source has 0\n"},
        {"bpmn \"Sequence flow\" Task \"End event\"", 0, ": allowed, without limit\n"},
        {"workshop.yaml then Task Store", 1, "the library has \"then\" run from class \"Task\" to class \"Task\"\n"},
        {"limited.yaml uses Task Store", 1,
         "    refuses: max-incoming: 0 for relation \"uses\", in the text of class \"Store\" (limited.yaml:14:9); the "
         "target has 0\n        allowed with a maximum of 1\n"},
        {"--in orders.yaml --model Orders workshop.yaml then t1 Task/Pack", 1,
         "; the source has 2\n        allowed with a maximum of 3, or with 2 fewer\n"},
        {"--in orders.yaml --model Orders workshop.yaml uses Pack Store", 0,
         "from Task \"Pack\" to a new object of class \"Store\": allowed, 1 left\n"},
        {"--in orders.yaml workshop.yaml uses Pack Shelf", 2, "", "orders.yaml holds 2 models; say which one"},
        {"--in orders.yaml --model Order workshop.yaml uses Pack Shelf", 2, "", "did you mean Orders?"},
        {"--in orders.yaml --model Orders workshop.yaml uses Pack Shelv", 2, "", "did you mean Shelf?"},
        {"workshop.yaml used Task Store", 2, "", "no relation class is named \"used\"; did you mean uses?"},
        {"--in gone.yaml workshop.yaml uses Task Store", 3, "", "gone.yaml: error: "},
        {"orders.yaml uses Task Store", 3, "", "is not a method library"},
    };
    qor.expect("may-connect ", calls);
    const auto document = nlohmann::json::parse(qor.run("may-connect --json limited.yaml uses Task Store").out);
    EXPECT_EQ(document["schema"], "qor.may-connect/1");
    EXPECT_EQ(document["allowed"], false);
    EXPECT_EQ(document["slots"], 0);
    EXPECT_EQ(document["limits"].back()["place"], "target");
}

}  // namespace
