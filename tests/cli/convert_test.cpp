// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <fstream>

#include "cli/CommandRunner.h"

namespace {

constexpr std::string_view kLibrary = R"(format: qor.library/1
name: Shop
business_process:
  classes:
    - name: Thing
      abstract: true
      attributes:
        - {name: Costs, type: floating}
        - {name: Info, type: text}
    - name: Task
      extends: Thing
      attributes:
        - {name: Doubled, type: expression, default: "[Costs] * 2"}
        - {name: __Conversion__, type: long text}
      values:
        __Conversion__: |
          CLASS "Decision"
          ATTR "Costs"
          ATTR "Sum" from: "Doubled"
    - name: Decision
      extends: Thing
      attributes:
        - {name: Sum, type: floating}
      cardinalities: |
        CARDINALITIES
        max-objects: 1
  relation_classes:
    - {name: then, from: Thing, to: Thing}
    - {name: only, from: Task, to: Task}
  model_types:
    - {name: Process, classes: [Task, Decision]}
)";

constexpr std::string_view kModel = R"(format: qor.model/1
library: library.yaml
models:
  - name: Monday
    type: Process
    objects:
      - {class: Task, name: Look, values: {Costs: 2.5, Info: seen}}
      - {class: Task, name: Listen, values: {Costs: 4}}
      - {class: Task, name: Feel}
    relations:
      - {class: then, from: Look, to: Listen}
      - {class: only, from: Listen, to: Feel}
)";

class OnRepository : public testing::Test {
protected:
    OnRepository() {
        runner.write("library.yaml", kLibrary);
        runner.write("model.yaml", kModel);
        EXPECT_EQ(runner.run("repo init shop.qor").exit, 0);
        const auto imported = runner.run("repo import shop.qor library.yaml model.yaml");
        EXPECT_EQ(imported.exit, 0) << imported.out << imported.err;
    }
    [[nodiscard]] std::string exported() const {
        EXPECT_EQ(runner.run("repo export shop.qor out").exit, 0);
        const auto text = runner.run("--version > /dev/null; cat out/*", "");
        (void)runner.run("--version > /dev/null; rm -r out");
        return text.out;
    }
    qor::test::CommandRunner runner;
};

TEST_F(OnRepository, ConvertsAsPlanned) {
    const std::string before = exported();
    const auto dry = runner.run("convert shop.qor Look --to Decision --dry-run");
    EXPECT_EQ(dry.exit, 0) << dry.out << dry.err;
    EXPECT_NE(dry.out.find("\"Costs\" -> \"Costs\" carried, 1 value"), std::string::npos) << dry.out;
    EXPECT_NE(dry.out.find("\"Doubled\" -> \"Sum\" cast, 1 value"), std::string::npos) << dry.out;
    EXPECT_NE(dry.out.find("\"Info\" dropped, 1 value"), std::string::npos) << dry.out;
    EXPECT_EQ(exported(), before);

    EXPECT_EQ(runner.run("convert shop.qor Look --to Decision").exit, 0);
    const std::string after = exported();
    EXPECT_NE(after.find("class: Decision"), std::string::npos) << after;
    EXPECT_NE(after.find("Sum: \"5\""), std::string::npos) << after;
    EXPECT_NE(runner.run("convert shop.qor Look --to Task").out.find("__Conversion__"), std::string::npos);
}

TEST_F(OnRepository, ConvertsAllOrNothing) {
    const std::string before = exported();
    const struct {
        const char* arguments;
        int exit;
        const char* says;
    } rows[] = {
        {"shop.qor Look Listen --to Decision", 1, "\"only\""},
        {"shop.qor Look --to Task", 1, "do not name the target class"},
        {"shop.qor Look Nobody --to Decision", 2, "there is no object \"Nobody\""},
        {"shop.qor Look --to Nothing", 2, "there is no class \"Nothing\""},
        {"shop.qor Look --to Decision --model Tuesday", 2, "there is no model \"Tuesday\""},
        {"none.qor Look --to Decision", 3, "none.qor"},
        {"model.yaml Look --to Decision", 3, "model.yaml"},
        {"shop.qor Look", 2, "--to"},
    };
    for (const auto& row : rows) {
        const auto outcome = runner.run(std::string("convert ") + row.arguments);
        EXPECT_EQ(outcome.exit, row.exit) << row.arguments << outcome.out << outcome.err;
        EXPECT_NE((outcome.out + outcome.err).find(row.says), std::string::npos) << outcome.out << outcome.err;
    }
    EXPECT_EQ(exported(), before);
}

TEST_F(OnRepository, KeepsCardinalityRulesUnlessToldOtherwise) {
    EXPECT_EQ(runner.run("convert shop.qor Look --to Decision").exit, 0);
    runner.write("second.yaml", R"(format: qor.model/1
library: library.yaml
models:
  - name: Tuesday
    type: Process
    objects:
      - {class: Task, name: One}
      - {class: Task, name: Two}
)");
    ASSERT_EQ(runner.run("repo import shop.qor --library Shop second.yaml").exit, 0);
    const auto refused = runner.run("convert shop.qor --model Tuesday One Two --to Decision");
    EXPECT_EQ(refused.exit, 1);
    EXPECT_NE(refused.out.find("max-objects"), std::string::npos) << refused.out;
    EXPECT_NE(refused.out.find("nothing changed"), std::string::npos) << refused.out;
    const auto kept = runner.run("convert shop.qor --model Tuesday One Two --to Decision --keep --json");
    EXPECT_EQ(kept.exit, 0);
    EXPECT_NE(kept.out.find("\"converted\": true"), std::string::npos) << kept.out;
}

TEST_F(OnRepository, TransfersAttributes) {
    const std::string before = exported();
    const auto dry = runner.run("transfer shop.qor --from Look --to Listen Feel --attributes Costs,Info --dry-run");
    EXPECT_EQ(dry.exit, 0) << dry.out << dry.err;
    EXPECT_NE(dry.out.find("4 values to be changed, nothing written"), std::string::npos) << dry.out;
    EXPECT_EQ(exported(), before);
    EXPECT_EQ(runner.run("transfer shop.qor --from Look --to Look --to Feel --attributes Info --all").exit, 1);
    EXPECT_EQ(exported(), before);
    const auto unknown = runner.run("transfer shop.qor --from Look --to Feel --attributes Price");
    EXPECT_EQ(unknown.exit, 2);
    EXPECT_NE(unknown.err.find("no attribute \"Price\""), std::string::npos) << unknown.err;
    EXPECT_EQ(runner.run("transfer shop.qor --from Look --to Look --to Feel --attributes Info,size").exit, 1);
    const std::string after = exported();
    EXPECT_NE(after.find("Info: seen", after.find("name: Feel")), std::string::npos) << after;
}

TEST_F(OnRepository, LeavesARepositoryThatTakesNoChangeAsItIs) {
    const auto path = runner.folder() / "in" / "shop.qor";
    const auto content = [&] {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    runner.write("hold.py",
                 "import sqlite3, subprocess, sys\n"
                 "repository = sqlite3.connect('shop.qor', isolation_level=None)\n"
                 "repository.execute('BEGIN IMMEDIATE')\n"
                 "sys.exit(subprocess.call(sys.argv[1:]))\n");
    const std::string before = content();
    for (const std::string command :
         {"convert shop.qor Look --to Decision", "transfer shop.qor --from Look --to Feel --attributes Info"}) {
        const auto locked = runner.run(command, "python3 hold.py");
        EXPECT_EQ(locked.exit, 4) << command << locked.out << locked.err;
        EXPECT_EQ(content(), before) << command;
    }
    using std::filesystem::perms;
    for (const auto& folder : {runner.folder(), runner.folder() / "in"})
        std::filesystem::permissions(folder, perms::all);
    std::filesystem::permissions(path, perms::owner_read | perms::group_read | perms::others_read);
    // Nothing is read-only for the superuser.
    const std::string reader = geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
    for (const std::string command :
         {"convert shop.qor Look --to Decision", "transfer shop.qor --from Look --to Feel --attributes Info"}) {
        const auto refused = runner.run(command, reader);
        EXPECT_EQ(refused.exit, 5) << command << refused.out << refused.err;
        EXPECT_NE(refused.err.find("can only be read"), std::string::npos) << refused.err;
        EXPECT_EQ(content(), before) << command;
    }
}

TEST_F(OnRepository, LibraryCheckTellsErrorsAtTheirPlaces) {
    EXPECT_EQ(runner.run("library check library.yaml").exit, 0);
    std::string wrong(kLibrary);
    wrong.replace(wrong.find("ATTR \"Costs\""), 12, "ATTR \"Price\"");
    runner.write("wrong.yaml", wrong);
    const auto outcome = runner.run("library check wrong.yaml");
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_NE(outcome.out.find("wrong.yaml:18:11: error: class \"Task\", __Conversion__: "), std::string::npos)
        << outcome.out;
    EXPECT_EQ(runner.run("library check none.yaml").exit, 3);
    EXPECT_EQ(runner.run("library").exit, 2);
    EXPECT_EQ(runner.run("library library.yaml").exit, 0);
}

}  // namespace
