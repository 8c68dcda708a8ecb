// SPDX-License-Identifier: Apache-2.0
// `qor sim`: what is listed, where errors stand, how it ends.
#include <nlohmann/json.hpp>

#include "cli/CommandRunner.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/QorImport.h"

namespace {

using nlohmann::ordered_json;
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
    const std::pair<const char*, const char*> listings[] = {
        {"options order-handling", "1       executiontime     Execution time\n"},
        {"options --language de order-handling", "2       name              Kosten\n"},
        {"classes order-handling", "working_environment  Temporary performer\n"},
        {"actions order-handling", "Costs     Decision            On entry         any\n"},
        {"texts bpmn", "actor      Performer\n"},
        {"results bpmn", "Activity costs   Activity.Costs per run\n"},
        {"write order-handling", "\nSIMCLASSES\nbp-1: \"Start\"\n"},
        {"check bpmn", "0 definition errors, 0 things to complete in 0 models\n"},
    };
    for (const auto& [arguments, line] : listings) {
        const Outcome outcome = qor.run(std::string("sim ") + arguments);
        EXPECT_EQ(outcome.exit, 0) << arguments;
        EXPECT_EQ(outcome.err, "") << arguments;
        EXPECT_THAT(outcome.out, HasSubstr(line)) << arguments;
    }
    EXPECT_THAT(qor.run("sim write --without-classes bpmn").out, Not(HasSubstr("SIMCLASSES")));
}

TEST(CliSim, TellsEveryErrorOfTheTextsWithItsPlace) {
    const CommandRunner qor;
    qor.write("broken.yaml", kBroken);
    const Outcome outcome = qor.run("sim check broken.yaml");
    EXPECT_EQ(outcome.exit, 1);
    for (const char* place : {"broken.yaml:5:25: error: ", "broken.yaml:7:7: error: ", "broken.yaml:8:5: error: ",
                              "broken.yaml:10:5: error: ", "broken.yaml:14:7: warning: ", "broken.yaml:16:7: error: "})
        EXPECT_THAT(outcome.out, HasSubstr(place));
    EXPECT_THAT(outcome.out, HasSubstr("6 definition errors"));
    for (const char* listing : {"options", "results", "texts"})
        EXPECT_EQ(qor.run(std::string("sim ") + listing + " broken.yaml").exit, 1) << listing;
}

TEST(CliSim, FindsWhatModelsLack) {
    const CommandRunner qor;
    const Outcome outcome = qor.run("sim check order-handling " + kOrders);
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_THAT(outcome.out, HasSubstr("orders.yaml:24:9: warning: Manual activity \"Order from the maker\""));
    EXPECT_THAT(outcome.out, HasSubstr("2 things to complete in 3 models\n")) << "once for both options";

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

/// A repository file with the models for handling orders and their library.
std::string makeRepository(const CommandRunner& qor) {
    const std::string path = (qor.folder() / "in" / "orders.qor").string();
    QorEmbeddedPlatform platform;
    const QorHostInstallation installation(platform.host());
    EXPECT_TRUE(platform.createRepository(path).ok());
    QorImporter importer(platform.builder(), platform.reader());
    const auto library = importer.readFile(QOR_SOURCE_DIR "/libraries/order-handling.yaml", QorNoIdentifier).library;
    EXPECT_FALSE(importer.readFile(kOrders, library).hasErrors());
    EXPECT_TRUE(platform.closeRepository().ok());
    return path;
}

TEST(CliSim, ResetsTheResultsInARepository) {
    const CommandRunner qor;
    const std::string path = makeRepository(qor);
    EXPECT_EQ(qor.run("sim reset --model Warehuose orders.qor").exit, 2);
    EXPECT_EQ(qor.run("sim reset --model Warehouse --library Nothing orders.qor").exit, 2);
    // Another process is writing meanwhile.
    qor.write("hold.py",
              "import sqlite3, subprocess, sys\n"
              "repository = sqlite3.connect('orders.qor', isolation_level=None)\n"
              "repository.execute('BEGIN IMMEDIATE')\n"
              "sys.exit(subprocess.call(sys.argv[1:]))\n");
    EXPECT_EQ(qor.run("sim reset --model Warehouse orders.qor", "python3 hold.py").exit, 4);
    const struct {
        const char* arguments;
        const char* out;
    } steps[] = {
        {"sim reset --model Warehouse 'Take an order' orders.qor --dry-run",
         "A reset would change 15 values of 6 objects\n"},
        {"sim reset orders.qor --dry-run --model Warehouse 'Take an order'",
         "A reset would change 15 values of 6 objects\n"},
        {"sim reset --dry-run --model Warehouse orders.qor", "A reset would change 6 values of 2 objects\n"},
        {"sim reset --model Warehouse orders.qor", "The reset changed 6 values of 2 objects\n"},
        {"sim reset --model Warehouse orders.qor", "The reset changed 0 values of 0 objects\n"},
    };
    for (const auto& step : steps) {
        const Outcome outcome = qor.run(step.arguments);
        EXPECT_EQ(outcome.exit, 0) << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr(step.out));
    }
    qor.write("damaged.qor", std::string("SQLite format 3\0 and no more", 29));
    EXPECT_EQ(qor.run("sim reset --model Warehouse damaged.qor").exit, 3);

    QorEmbeddedPlatform other;
    ASSERT_TRUE(other.openRepository(path).ok());
    EXPECT_TRUE(other.verifyRepository().ok());
}

TEST(CliSim, RefusesWhatItCannotDo) {
    const CommandRunner qor;
    qor.write("broken.yaml", kBroken);
    const struct {
        std::string arguments;
        int exit;
        const char* err;
    } cases[] = {
        {"sim", 2, "qor sim"},
        {"sim optoins bpmn", 2, "did you mean options?"},
        {"sim options --jsn bpmn", 2, "Try: qor sim options --help"},
        {"sim options nowhere.yaml", 3, "nowhere.yaml"},
        {"sim check bpmn nowhere.bpmn", 3, "nowhere.bpmn"},
        {"sim check order-handling order-handling", 3, "order-handling"},
        {"sim check --option Cost order-handling", 2, "did you mean Costs?"},
        {"sim reset --model Warehouse " + kOrders, 2, "--dry-run"},
        {"sim reset --dry-run --model Warehouse", 2, "FILE is required"},
        {"sim reset --dry-run --model Warehuose " + kOrders, 2, "did you mean Warehouse?"},
    };
    for (const auto& row : cases) {
        const Outcome outcome = qor.run(row.arguments);
        EXPECT_EQ(outcome.exit, row.exit) << row.arguments;
        EXPECT_THAT(outcome.err, HasSubstr(row.err)) << row.arguments;
    }
}

}  // namespace
