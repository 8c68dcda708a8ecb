// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include "cli/CommandRunner.h"

namespace {

using qor::test::Outcome;
using testing::AllOf;
using testing::HasSubstr;

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
        const std::string text = runner.content("out/Shop.yaml") + runner.content("out/Shop.models.yaml");
        std::filesystem::remove_all(runner.folder() / "in" / "out");
        return text;
    }
    qor::test::CommandRunner runner;
};

TEST_F(OnRepository, ConvertsAsPlanned) {
    const std::string before = exported();
    const char* const plan =
        "\"Costs\" -> \"Costs\" carried, 1 value ... \"Doubled\" -> \"Sum\" cast, 1 value ... \"Info\" dropped, 1 "
        "value";
    runner.expect("convert ", {{"shop.qor Look --to Decision --dry-run", 0, plan}});
    EXPECT_EQ(exported(), before);

    EXPECT_EQ(runner.run("convert shop.qor Look --to Decision").exit, 0);
    const std::string after = exported();
    EXPECT_THAT(after, AllOf(HasSubstr("class: Decision"), HasSubstr("Sum: \"5\"")));
    EXPECT_THAT(runner.run("convert shop.qor Look --to Task").out, HasSubstr("__Conversion__"));
}

TEST_F(OnRepository, ConvertsAllOrNothing) {
    const std::string before = exported();
    const std::vector<qor::test::Call> calls = {
        {"shop.qor Look Listen --to Decision", 1, "\"only\""},
        {"shop.qor Look --to Task", 1, "do not name the target class"},
        {"shop.qor Look Nobody --to Decision", 2, "", "there is no object \"Nobody\""},
        {"shop.qor Look --to Nothing", 2, "", "there is no class \"Nothing\""},
        {"shop.qor Look --to Nothing --json", 2, "\"converted\": false ... there is no class \\\"Nothing\\\""},
        {"shop.qor Look --to Decision --model Tuesday", 2, "", "there is no model \"Tuesday\""},
        {"none.qor Look --to Decision", 3, "", "none.qor"},
        {"model.yaml Look --to Decision", 3, "", "model.yaml"},
        {"shop.qor Look", 2, "", "--to"},
    };
    runner.expect("convert ", calls);
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
    const std::vector<qor::test::Call> calls = {
        {"", 1, "max-objects ... nothing changed"},
        {" --keep --json", 0, "\"converted\": true"},
    };
    runner.expect("convert shop.qor --model Tuesday One Two --to Decision", calls);
}

TEST_F(OnRepository, TransfersAttributes) {
    const std::string before = exported();
    const std::vector<qor::test::Call> calls = {
        {"Look --to Listen Feel --attributes Costs,Info --dry-run", 0, "4 values to be changed, nothing written"},
        {"Look --to Look --to Feel --attributes Info --all", 1},
        {"Look --to Feel --attributes Price", 2, "", "no attribute \"Price\""},
        {"Look --to Feel --attributes Price --json", 2, "\"entries\": [] ... no attribute \\\"Price\\\""},
        {"Look --to Look --to Feel --attributes Info --json --dry-run", 1, "\"outcome\": \"source\""},
    };
    runner.expect("transfer shop.qor --from ", calls);
    EXPECT_EQ(exported(), before);
    EXPECT_EQ(runner.run("transfer shop.qor --from Look --to Look --to Feel --attributes Info,size").exit, 1);
    const std::string after = exported();
    EXPECT_NE(after.find("Info: seen", after.find("name: Feel")), std::string::npos) << after;
}

TEST_F(OnRepository, LeavesARepositoryThatTakesNoChangeAsItIs) {
    const std::string before = runner.content("shop.qor");
    const auto expectRefusals = [&](int exit, const char* says, const std::function<Outcome(std::string)>& run) {
        for (const char* command :
             {"convert shop.qor Look --to Decision", "transfer shop.qor --from Look --to Feel --attributes Info"}) {
            const Outcome outcome = run(command);
            EXPECT_EQ(outcome.exit, exit) << command << outcome.out << outcome.err;
            EXPECT_THAT(outcome.err, HasSubstr(says)) << command;
            EXPECT_EQ(runner.content("shop.qor"), before) << command;
        }
    };
    expectRefusals(4, "", [&](const std::string& command) { return runner.runWhileHeld(command, "shop.qor"); });
    using std::filesystem::perms;
    for (const auto& folder : {runner.folder(), runner.folder() / "in"})
        std::filesystem::permissions(folder, perms::all);
    std::filesystem::permissions(runner.folder() / "in/shop.qor",
                                 perms::owner_read | perms::group_read | perms::others_read);
    // Nothing is read-only for the superuser.
    const char* const reader = geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
    expectRefusals(5, "can only be read", [&](const std::string& command) { return runner.run(command, reader); });
}

TEST_F(OnRepository, LibraryCheckTellsErrorsAtTheirPlaces) {
    std::string wrong(kLibrary);
    wrong.replace(wrong.find("ATTR \"Costs\""), 12, "ATTR \"Price\"");
    runner.write("wrong.yaml", wrong);
    EXPECT_THAT(runner.run("library check wrong.yaml").out,
                HasSubstr("wrong.yaml:18:11: error: class \"Task\", __Conversion__: "));
    for (const auto& [arguments, exit] : {std::pair("check library.yaml", 0),
                                          {"check wrong.yaml", 1},
                                          {"check none.yaml", 3},
                                          {"", 2},
                                          {"library.yaml", 0}})
        EXPECT_EQ(runner.run(std::string("library ") + arguments).exit, exit) << arguments;
}

}  // namespace
