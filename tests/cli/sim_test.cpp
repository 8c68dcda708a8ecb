// SPDX-License-Identifier: Apache-2.0
// `qor sim`: what is listed, where errors stand, how it ends.
#include <nlohmann/json.hpp>

#include "cli/CommandRunner.h"

namespace {

using nlohmann::ordered_json;
using qor::test::Call;
using qor::test::CommandRunner;
using qor::test::Outcome;
using testing::HasSubstr;
using testing::Not;

constexpr std::string_view kBroken = R"(format: qor.library/1
name: Broken
texts:
  simulation_mapping: |
    SIMOPTION name: "A" activity: "Nobody"
    SIMOPTION name: "B" activity: "Task"
      executiontime: "Soul"
    OPTION
  simulation_text: |
    SIMTEXT bp: "Process"
business_process:
  texts:
    simulation_result: |
      REMARK
      ACTIVITY "Task"
      fixednumber: "Soul"
  classes:
    - {name: Task, attributes: [{name: Time, type: time}]}
)";

const std::string kOrders = QOR_SOURCE_DIR "/examples/simulation/orders.yaml";

TEST(CliSim, ListsWhatTheShippedLibrariesSay) {
    const CommandRunner qor;
    const std::vector<Call> calls = {
        {"options order-handling", 0, "1       executiontime     Execution time\n"},
        {"options --language de order-handling", 0, "2       name              Kosten\n"},
        {"classes order-handling", 0, "working_environment  Temporary performer\n"},
        {"actions order-handling", 0, "Costs     Decision            On entry         any\n"},
        {"texts bpmn", 0, "actor      Performer\n"},
        {"results bpmn", 0, "Activity costs   Activity.Costs per run\n"},
        {"write order-handling", 0, "\nSIMCLASSES\nbp-1: \"Start\"\n"},
        {"check bpmn", 0, "0 definition errors, 0 things to complete in 0 models\n"},
    };
    qor.expect("sim ", calls);
    EXPECT_THAT(qor.run("sim write --without-classes bpmn").out, Not(HasSubstr("SIMCLASSES")));
}

TEST(CliSim, TellsEveryErrorOfTheTextsWithItsPlace) {
    const CommandRunner qor;
    qor.write("broken.yaml", kBroken);
    const char* const errors =
        "broken.yaml:5:25: error:  ... broken.yaml:7:7: error:  ... broken.yaml:8:5: error:  ... "
        "broken.yaml:10:5: error:  ... broken.yaml:14:7: warning:  ... broken.yaml:16:7: error:  ... 6 definition "
        "errors";
    qor.expect("sim check ", {{"broken.yaml", 1, errors}});
    for (const char* listing : {"options", "results", "texts"})
        EXPECT_EQ(qor.run(std::string("sim ") + listing + " broken.yaml").exit, 1) << listing;
}

TEST(CliSim, FindsWhatModelsLack) {
    const CommandRunner qor;
    const char* const found =
        "orders.yaml:24:9: warning: Manual activity \"Order from the maker\" ... 2 things to complete in 3 models\n";
    qor.expect("sim check order-handling ", {{kOrders, 1, found}});  // once for both options
    const Outcome json = qor.run("sim check --json --option Costs order-handling " + kOrders);
    const auto document = ordered_json::parse(json.out, nullptr, false);
    ASSERT_FALSE(document.is_discarded()) << json.out;
    EXPECT_EQ(document["schema"], "qor.sim.check/1");
    ASSERT_EQ(document["findings"].size(), 2U);
    EXPECT_EQ(document["findings"][0]["issue"], "no_execution_time");
    EXPECT_EQ(document["findings"][0]["object"], "Order from the maker");
    EXPECT_EQ(document["findings"][1]["issue"], "has_no_calendar");
    EXPECT_EQ(document["uses"][0]["key"], "activity");
}

TEST(CliSim, ShowsWhatAResetWouldTakeAway) {
    const CommandRunner qor;
    const Outcome outcome = qor.run("sim reset --dry-run --json --model Warehouse " + kOrders);
    EXPECT_EQ(outcome.exit, 0);
    const auto document = ordered_json::parse(outcome.out, nullptr, false);
    ASSERT_FALSE(document.is_discarded()) << outcome.out;
    ASSERT_EQ(document["changes"].size(), 6U) << "three attributes of two performers";
    EXPECT_EQ(document["changes"][0]["now"], "0.75");
    EXPECT_EQ(document["changes"][0]["after"], "0");
}

TEST(CliSim, ResetsTheResultsInARepository) {
    const CommandRunner qor;
    ASSERT_EQ(qor.run("repo init orders.qor").exit, 0);
    ASSERT_EQ(qor.run("repo import orders.qor " QOR_SOURCE_DIR "/libraries/order-handling.yaml " + kOrders).exit, 0);
    EXPECT_EQ(qor.run("sim reset --model Warehuose orders.qor").exit, 2);
    EXPECT_EQ(qor.run("sim reset --model Warehouse --library Nothing orders.qor").exit, 2);
    EXPECT_EQ(qor.runWhileHeld("sim reset --model Warehouse orders.qor", "orders.qor").exit, 4);
    const std::vector<Call> calls = {
        {"--model Warehouse 'Take an order' orders.qor --dry-run", 0, "A reset would change 15 values of 6 objects\n"},
        {"orders.qor --dry-run --model Warehouse 'Take an order'", 0, "A reset would change 15 values of 6 objects\n"},
        {"--dry-run --model Warehouse orders.qor", 0, "A reset would change 6 values of 2 objects\n"},
        {"--model Warehouse orders.qor", 0, "The reset changed 6 values of 2 objects\n"},
        {"--model Warehouse orders.qor", 0, "The reset changed 0 values of 0 objects\n"},
    };
    qor.expect("sim reset ", calls);
    qor.write("damaged.qor", std::string("SQLite format 3\0 and no more", 29));
    EXPECT_EQ(qor.run("sim reset --model Warehouse damaged.qor").exit, 3);

    EXPECT_EQ(qor.run("repo verify orders.qor").exit, 0);
}

TEST(CliSim, RefusesWhatItCannotDo) {
    const CommandRunner qor;
    qor.write("broken.yaml", kBroken);
    const std::vector<Call> calls = {
        {"sim", 2, "", "qor sim"},
        {"sim optoins bpmn", 2, "", "did you mean options?"},
        {"sim options --jsn bpmn", 2, "", "Try: qor sim options --help"},
        {"sim options nowhere.yaml", 3, "", "nowhere.yaml"},
        {"sim check bpmn nowhere.bpmn", 3, "", "nowhere.bpmn"},
        {"sim check order-handling order-handling", 3, "", "order-handling"},
        {"sim check --option Cost order-handling", 2, "", "did you mean Costs?"},
        {"sim reset --model Warehouse " + kOrders, 2, "", "--dry-run"},
        {"sim reset --dry-run --model Warehouse", 2, "", "FILE is required"},
        {"sim reset --dry-run --model Warehuose " + kOrders, 2, "", "did you mean Warehouse?"},
    };
    qor.expect("", calls);
}

}  // namespace
