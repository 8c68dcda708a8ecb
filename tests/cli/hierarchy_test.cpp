// SPDX-License-Identifier: Apache-2.0
// `qor hierarchy` and `qor rename`: what is shown, where, and how they end.
#include <nlohmann/json.hpp>

#include "cli/CommandRunner.h"

namespace {

using nlohmann::ordered_json;
using qor::test::Call;
using qor::test::CommandRunner;
using qor::test::Outcome;
using testing::HasSubstr;
using testing::Not;

std::string bpmn(const std::string& contents) {
    return "<definitions xmlns=\"http://www.omg.org/spec/BPMN/20100524/MODEL\">\n" + contents + "\n</definitions>\n";
}
std::string process(const std::string& id, const std::string& name, const std::vector<std::string>& calls) {
    std::string text = "<process id=\"" + id + "\" name=\"" + name + "\">\n";
    for (const std::string& called : calls)
        text += "<callActivity id=\"" + id + "-" + called + "\" name=\"To " + called + "\" calledElement=\"" + called +
                "\"/>\n";
    return text + "</process>";
}

/// A folder "in" with files that call each other, one of them in a folder below.
struct CliHierarchy : testing::Test {
    CliHierarchy() {
        std::filesystem::create_directory(qor.folder() / "in" / "below");
        qor.write("a.bpmn", bpmn(process("order", "Order", {"x:ship", "bill", "nobody"})));
        qor.write("below/b.bpmn", bpmn(process("ship", "Ship", {"order"}) + process("bill", "Bill", {})));
        qor.write("notes.txt", "nothing to read");
        qor.write("odd.json", "{}");
    }
    CommandRunner qor;
};

TEST_F(CliHierarchy, FollowsCallsBetweenTheFilesOfAFolder) {
    const Outcome outcome = qor.run("hierarchy .");
    EXPECT_EQ(outcome.exit, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "\"Order\" (BPMN diagram)  ./a.bpmn\n"
              "    \"Ship\" (BPMN diagram)\n"
              "        \"Order\" (BPMN diagram) stands above itself\n"
              "    \"Bill\" (BPMN diagram)\n"
              "circle: \"Order\" (BPMN diagram) -> \"Ship\" (BPMN diagram) -> \"Order\" (BPMN diagram)\n");
}

TEST_F(CliHierarchy, ShowsUsesAndWhatIsBroken) {
    const std::vector<Call> calls = {
        {"--where-used --model Bill", 0,
         "\"Bill\" (BPMN diagram) is used once\n    \"Order\" (BPMN diagram): Called process  ./a.bpmn\n"},
        {"--broken", 1,
         "./a.bpmn:5:1: error: model \"Order\": object \"To nobody\": calls \"nobody\", which is no process"},
        {"--broken", 1, "3 references in 3 models; 1 lead nowhere or to several objects\n"},
        {"--max-elements 2", 0, "\"Order\" (BPMN diagram)  ./a.bpmn and 1 not shown\n"},
        {"--xml - --model Ship", 0, "\" name=\"Ship\" type=\"BPMN diagram\">\n  <model id=\""},
        {"--svg - --model Ship", 0, ">Order (BPMN diagram)</text>"},
    };
    qor.expect("hierarchy . ", calls);
}

TEST_F(CliHierarchy, TakesTheProcessReadLastAndSaysSo) {
    qor.write("below/c.bpmn", bpmn(process("ship", "Ship anew", {})));
    const Outcome outcome = qor.run("hierarchy . --model Order");
    EXPECT_EQ(outcome.exit, 0);
    EXPECT_THAT(outcome.err,
                HasSubstr("./a.bpmn:3:1: warning: calls \"x:ship\", which 2 processes are called; the one in "
                          "./below/c.bpmn was read last"));
    EXPECT_THAT(outcome.out, HasSubstr("\"Ship anew\""));
    EXPECT_THAT(outcome.out, Not(HasSubstr("\"Ship\"")));
}

TEST_F(CliHierarchy, WritesDocuments) {
    const Outcome outcome = qor.run("hierarchy . --json --where-used --broken");
    EXPECT_EQ(outcome.exit, 1);
    const auto json = ordered_json::parse(outcome.out);
    EXPECT_EQ(json["schema"], "qor.hierarchy/1");
    EXPECT_EQ(json["models"].size(), 3U);
    EXPECT_EQ(json["trees"][0]["elements"].size(), 4U);
    EXPECT_EQ(json["trees"][0]["elements"][2]["end"], "cycle");
    EXPECT_EQ(json["circles"][0]["path"].size(), 2U);
    EXPECT_EQ(json["uses"][0]["attribute"], "Called process");
    EXPECT_EQ(json["broken"][0]["called"], "nobody");

    const auto file = qor.folder() / "in" / "tree.xml";
    EXPECT_EQ(qor.run("hierarchy . --model Bill --xml tree.xml").out, "");
    EXPECT_GT(std::filesystem::file_size(file), 40U);
    const Outcome failed = qor.run("hierarchy . --model Bill --xml nowhere/tree.xml");
    EXPECT_EQ(failed.exit, 5);
    EXPECT_THAT(failed.err, HasSubstr("nowhere/tree.xml: cannot be written: No such file or directory"));
}

TEST_F(CliHierarchy, ExplainsWrongUseAndBadInput) {
    qor.write("broken.bpmn", "<definitions");
    std::filesystem::create_directory(qor.folder() / "in" / "empty");
    const std::vector<Call> calls = {
        {"a.bpmn --model Odrer", 2, "", "no model is named \"Odrer\"; did you mean Order?"},
        {"below --xml -", 2, "", "there are 2 trees; choose one with --model"},
        {"a.bpmn --xml - --json", 2, "", "only one of these can go to standard output"},
        {"a.bpmn --max-elements 0", 2, "", "--max-elements"},
        {"nosuch.bpmn", 3, "", "nosuch.bpmn: error: there is no such file"},
        {"empty", 3, "", "empty: error: the folder holds no file with models"},
        {"odd.json", 3, "", "odd.json"},
        {"a.bpmn broken.bpmn", 3, "", "broken.bpmn:1"},
        {"--library nosuch a.bpmn", 3, "", "nosuch"},
    };
    qor.expect("hierarchy ", calls);
}

/// The lines without the names of files, which differ.
std::string withoutFiles(const std::string& text) {
    std::string kept;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find('\n', begin);
        std::string line = text.substr(begin, end - begin);
        if (const std::size_t error = line.find("error: "); error != std::string::npos) line.erase(0, error);
        kept += line.substr(0, line.find("  ./")).substr(0, line.find("  shop.qor")) + "\n";
        begin = end + 1;
    }
    return kept;
}

TEST_F(CliHierarchy, ShowsARepositoryAsTheFilesThatItWasMadeOf) {
    ASSERT_EQ(qor.run("repo init shop.qor").exit, 0);
    const Outcome imported = qor.run("repo import --keep shop.qor a.bpmn below/b.bpmn");
    ASSERT_EQ(imported.exit, 1) << "breaches of rules are told: " << imported.err;
    for (const std::string arguments :
         {"", " --broken", " --where-used --model Bill", " --model Ship --max-elements 2"}) {
        const Outcome files = qor.run("hierarchy ." + arguments);
        for (const std::string repository : {"shop.qor", "shop.qor#BPMN"}) {
            const Outcome outcome = qor.run("hierarchy " + repository + arguments);
            EXPECT_EQ(outcome.exit, files.exit) << outcome.err;
            EXPECT_EQ(withoutFiles(outcome.out), withoutFiles(files.out)) << repository << arguments;
        }
    }
    const Outcome other = qor.run("hierarchy shop.qor#Nothing");
    EXPECT_EQ(other.exit, 3);
    EXPECT_THAT(other.err, HasSubstr("shop.qor: error: holds no library named \"Nothing\""));
    EXPECT_EQ(qor.run("hierarchy shop.qor a.bpmn").exit, 3) << "the library is another one";
}

TEST_F(CliHierarchy, NamesTheObjectThatHoldsABrokenReferenceInARow) {
    qor.write("rows.yaml", R"(format: qor.library/1
name: Rows
business_process:
  record_classes:
    - name: Source
      attributes: [{name: See, type: reference, refers_to: models}]
    - name: Line
      attributes: [{name: Sources, type: record, record_class: Source}]
  classes:
    - name: Thing
      attributes: [{name: Lines, type: record, record_class: Line}]
    - {name: Order, extends: Thing}
  model_types: [{name: Day, classes: [Order]}]
)");
    qor.write("day.yaml", R"(format: qor.model/1
library: rows.yaml
models:
  - name: Monday
    type: Day
    objects:
      - {class: Order, name: Empty}
      - class: Order
        name: Full
        values: {Lines: [{Sources: [{See: 'MODEL "Sunday" type: "Day"'}]}]}
)");
    const Outcome outcome = qor.run("hierarchy --broken day.yaml");
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_THAT(outcome.out,
                HasSubstr("day.yaml:8:9: error: model \"Monday\": object \"Full\": See: there is no model"));
}

constexpr std::string_view kLibrary = R"(format: qor.library/1
name: Shop
business_process:
  classes:
    - name: Order
      attributes:
        - {name: Title, type: text}
        - {name: See, type: reference}
        - {name: __NameGeneration__, type: long text}
      values:
        __NameGeneration__: 'NAMEGEN srcattr: "Title"'
  model_types:
    - {name: Day, classes: [Order]}
)";

constexpr std::string_view kModels = R"(format: qor.model/1
library: shop.yaml
models:
  - name: Monday
    type: Day
    objects:
      - {class: Order, name: Alpha-1, values: {Title: Beta}}
      - {class: Order, name: Order-7, values: {Title: Alpha}}
)";

TEST(CliRename, ShowsNewNamesAndWhatIsInTheWay) {
    const CommandRunner qor;
    qor.write("shop.yaml", kLibrary);
    qor.write("day.yaml", kModels);
    const Outcome outcome = qor.run("rename --dry-run .");
    EXPECT_EQ(outcome.exit, 0) << outcome.err;
    EXPECT_EQ(outcome.out,
              "./day.yaml:8:9: \"Order-7\" -> \"Alpha-2\"  was never named\n"
              "    1 lower number is taken, the first by \"Alpha-1\"\n"
              "1 new name in 1 model; 0 up to date, 1 named by hand\n");
    const auto json = ordered_json::parse(qor.run("rename --dry-run --json day.yaml").out);
    EXPECT_EQ(json["changes"][0]["new"], "Alpha-2");
    EXPECT_EQ(json["changes"][0]["reason"], "default_name");
    const Outcome refused = qor.run("rename day.yaml");
    EXPECT_EQ(refused.exit, 2);
    EXPECT_THAT(refused.err, HasSubstr("--dry-run shows the new names of others"));
}

TEST(CliRename, TellsWhereARuleIsWrong) {
    const CommandRunner qor;
    std::string library(kLibrary);
    library.replace(library.find("\"Title\"'"), 7, "\"Titel\"");
    qor.write("shop.yaml", library);
    qor.write("day.yaml", kModels);
    const Outcome outcome = qor.run("rename --dry-run day.yaml");
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_THAT(outcome.out,
                HasSubstr("shop.yaml:11:38: error: class \"Order\": its objects are not named: The class"));
}

/// A second model, whose reference carries the name of an object that is to be renamed.
constexpr std::string_view kTuesday = R"(  - name: Tuesday
    type: Day
    objects:
      - {class: Order, name: Order-1, values: {Title: Gamma, See: 'OBJECT "Order-7" class: "Order" model: "Monday" type: "Day"'}}
)";

/// A folder with the repository file "shop.qor".
void makeRepository(const CommandRunner& qor, std::string_view library) {
    qor.write("shop.yaml", library);
    qor.write("day.yaml", std::string(kModels) + std::string(kTuesday));
    ASSERT_EQ(qor.run("repo init shop.qor").exit, 0);
    const Outcome imported = qor.run("repo import shop.qor shop.yaml day.yaml");
    ASSERT_EQ(imported.exit, 0) << imported.err;
}

TEST(CliRename, NamesTheObjectsOfARepositoryOnce) {
    const CommandRunner qor;
    makeRepository(qor, kLibrary);
    const Outcome planned = qor.run("rename --dry-run --model Monday shop.qor");
    EXPECT_THAT(planned.out, HasSubstr("becomes \"Alpha-2\""));
    const Outcome named = qor.run("rename --model Monday shop.qor");
    EXPECT_EQ(named.exit, 0) << named.err;
    EXPECT_EQ(named.out,
              "shop.qor: model \"Monday\": \"Order-7\" -> \"Alpha-2\"  was never named\n"
              "    1 lower number is taken, the first by \"Alpha-1\"\n"
              "shop.qor: warning: model \"Tuesday\": See: refers to \"Order-7\", which is now called \"Alpha-2\"\n"
              "1 new name given in 1 model; 0 up to date, 1 named by hand\n");
    EXPECT_EQ(qor.run("hierarchy --broken shop.qor").exit, 1);

    const auto json = ordered_json::parse(qor.run("rename --json shop.qor").out);
    EXPECT_EQ(json["carried_out"], true);
    ASSERT_EQ(json["changes"].size(), 1U) << "only what was left out before";
    EXPECT_EQ(json["changes"][0]["new"], "Gamma-1");
    EXPECT_EQ(qor.run("rename shop.qor").out, "0 new names given in 2 models; 2 up to date, 1 named by hand\n");
    EXPECT_EQ(qor.run("repo verify shop.qor").exit, 0);
}

TEST(CliRename, ChangesNothingWhenSomethingIsInTheWay) {
    const CommandRunner qor;
    makeRepository(qor, kLibrary);
    qor.write("damaged.qor", std::string("SQLite format 3\0 and no more", 29));
    const std::pair<Outcome, int> outcomes[] = {{qor.runWhileHeld("rename shop.qor", "shop.qor"), 4},
                                                {qor.run("rename --model Mnoday shop.qor"), 2},
                                                {qor.run("rename shop.qor day.yaml"), 2},
                                                {qor.run("rename --library Other shop.qor"), 3},
                                                {qor.run("rename damaged.qor"), 3}};
    for (const auto& [outcome, exit] : outcomes) {
        EXPECT_EQ(outcome.exit, exit) << outcome.err;
        EXPECT_EQ(outcome.out, "") << outcome.err;
        EXPECT_NE(outcome.err, "");
    }
    EXPECT_THAT(qor.run("rename --dry-run shop.qor").out, HasSubstr("2 new names in 2 models"));
}

TEST(CliRename, LeavesARepositoryWithAWrongRuleAsItIs) {
    const CommandRunner qor;
    std::string library(kLibrary);
    library.replace(library.find("\"Title\"'"), 7, "\"Titel\"");
    // A second class has objects that could be named.
    library.insert(library.find("  model_types"),
                   "    - name: Bill\n      attributes:\n        - {name: __NameGeneration__, type: long text}\n"
                   "        - {name: Sum, type: text}\n      values:\n"
                   "        __NameGeneration__: 'NAMEGEN srcattr: \"Sum\"'\n");
    library.replace(library.find("[Order]"), 7, "[Order, Bill]");
    makeRepository(qor, library);
    qor.write("bill.yaml",
              "format: qor.model/1\nlibrary: shop.yaml\nmodels:\n  - name: Bills\n    type: Day\n    objects:\n"
              "      - {class: Bill, name: Bill-1, values: {Sum: High}}\n");
    ASSERT_EQ(qor.run("repo import shop.qor bill.yaml").exit, 0);
    const Outcome outcome = qor.run("rename shop.qor");
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_THAT(outcome.out, HasSubstr("shop.qor: error: class \"Order\": its objects are not named: The class"));
    EXPECT_THAT(outcome.out, HasSubstr("1 new name in 3 models"));
    EXPECT_THAT(outcome.err, HasSubstr("shop.qor: nothing was renamed because of the errors"));
    EXPECT_EQ(qor.run("rename shop.qor").out, outcome.out) << "the name is still to be given";
}

}  // namespace
