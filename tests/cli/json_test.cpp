// SPDX-License-Identifier: Apache-2.0
#include <nlohmann/json.hpp>

#include "cli/samples.h"

namespace {

using nlohmann::ordered_json;
using qor::test::Outcome;

struct CliJson : qor::test::OnSamples {
    /// Null when the output is no JSON.
    ordered_json json(const std::string& arguments) {
        const Outcome outcome = qor.run(arguments);
        EXPECT_EQ(outcome.err, "") << arguments;
        const ordered_json document = ordered_json::parse(outcome.out, nullptr, false);
        EXPECT_FALSE(document.is_discarded()) << outcome.out;
        return document.is_discarded() ? ordered_json() : document;
    }
};

std::string keysOf(const ordered_json& object) {
    std::string keys;
    for (const auto& entry : object.items()) keys += (keys.empty() ? "" : " ") + entry.key();
    return keys;
}

TEST_F(CliJson, ACheckIsOneDocumentWithItsKeysInOrder) {
    const ordered_json document = json("check --json orders.yaml");
    EXPECT_EQ(keysOf(document), "schema files summary");
    EXPECT_EQ(document["schema"], "qor.check/1");
    const ordered_json& file = document["files"][0];
    EXPECT_EQ(keysOf(file), "file errors warnings models");
    const ordered_json& model = file["models"][0];
    EXPECT_EQ(keysOf(model), "name type objects relations breaches");
    EXPECT_EQ(model["objects"], 4);
    ASSERT_EQ(model["breaches"].size(), 4U);  // three counts of one written limit, and one more

    const ordered_json& shelf = model["breaches"][3];
    EXPECT_EQ(keysOf(shelf), "message text subject rule found objects relations");
    EXPECT_EQ(shelf["message"], 1974);
    EXPECT_EQ(keysOf(shelf["subject"]), "id class name source_id");
    EXPECT_EQ(shelf["subject"]["name"], "Shelf");
    EXPECT_EQ(shelf["rule"].dump(), R"({"class":"Store","key":"min-incoming","relation_class":"uses",)"
                                    R"("other_class":null,"limit":1})");
    EXPECT_EQ(shelf["found"], 0);
    EXPECT_EQ(shelf["objects"][0]["line"], 10);

    const ordered_json& check = model["breaches"][0];
    EXPECT_EQ(check["subject"]["source_id"], "t1");
    EXPECT_EQ(check["relations"].size(), 2U);
    EXPECT_EQ(check["relations"][0]["from"], check["subject"]["id"]);

    const ordered_json& ofClass = file["models"][1]["breaches"][0];
    EXPECT_EQ(ofClass["subject"]["class"], "Task");
    EXPECT_TRUE(ofClass["subject"]["name"].is_null());
    EXPECT_EQ(document["summary"]["breaches"], 5);
}

TEST_F(CliJson, TheFirstBreachIsAmongTheCompleteOnes) {
    for (const char* file : {"orders.yaml", "order.bpmn"}) {
        const ordered_json all = json(std::string("check --json ") + file)["files"][0]["models"];
        const ordered_json first = json(std::string("check --json --first ") + file)["files"][0]["models"];
        ASSERT_EQ(first.size(), all.size());
        for (std::size_t i = 0; i < first.size(); ++i) {
            ASSERT_EQ(first[i]["breaches"].size(), 1U);
            const ordered_json& breaches = all[i]["breaches"];
            EXPECT_NE(std::find(breaches.begin(), breaches.end(), first[i]["breaches"][0]), breaches.end());
        }
    }
}

TEST_F(CliJson, ErrorsStandInTheDocumentAndOtherFilesAreStillChecked) {
    qor.write("bad.yaml", "format: qor.model/1\nlibrary: workshop.yaml\nmodels: [\n");
    const ordered_json document = json("check --json bad.yaml gone.yaml orders.yaml");
    EXPECT_EQ(keysOf(document["files"][0]["errors"][0]), "file line column text");
    EXPECT_EQ(document["files"][0]["errors"][0]["file"], "bad.yaml");
    EXPECT_GE(document["files"][0]["errors"][0]["line"], 3);
    EXPECT_EQ(document["files"][1]["errors"][0]["line"], 0);
    EXPECT_EQ(document["files"][2]["models"].size(), 2U);
    EXPECT_GE(document["summary"]["errors"], 2);
}

TEST_F(CliJson, ALargeDocumentComesWhole) {
    std::string model =
        "format: qor.model/1\nlibrary: workshop.yaml\nmodels:\n  - name: Hub\n    type: Process\n    objects:\n"
        "      - {id: hub, class: Task, name: Hub}\n";
    for (int i = 0; i < 20000; ++i) model += "      - {class: Task, name: T" + std::to_string(i) + "}\n";
    model += "    relations:\n";
    for (int i = 0; i < 20000; ++i) model += "      - {class: then, from: hub, to: T" + std::to_string(i) + "}\n";
    qor.write("hub.yaml", model);
    const ordered_json document = json("check --json hub.yaml");
    EXPECT_EQ(document["files"][0]["models"][0]["breaches"][2]["relations"].size(), 20000U);
}

TEST_F(CliJson, LibraryAndRulesAreDocumentsToo) {
    const ordered_json library = json("library --json workshop.yaml");
    EXPECT_EQ(library["schema"], "qor.library/1");
    const ordered_json& part = library["library"]["parts"][0];
    EXPECT_EQ(part["classes"][1]["texts"][0], "cardinalities");
    EXPECT_EQ(part["relation_classes"][1]["to"], "Store");
    EXPECT_EQ(part["model_types"][0]["classes"].size(), 2U);

    const ordered_json rules = json("rules --json workshop.yaml");
    EXPECT_EQ(rules["schema"], "qor.rules/1");
    EXPECT_EQ(rules["classes"][0]["limits"]["max_out"], 1);
    EXPECT_EQ(rules["classes"][1]["relations"][0]["limits"]["min_in"], 1);
    EXPECT_EQ(rules["definition_errors"].size(), 0U);
}

}  // namespace
