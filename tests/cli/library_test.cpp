// SPDX-License-Identifier: Apache-2.0
#include "cli/samples.h"

namespace {

using qor::test::Call;
using qor::test::CommandRunner;
using qor::test::Outcome;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::string_view kTree = R"(format: qor.library/1
name: Tree
business_process:
  texts:
    automatic_checks: |
      CHECK_CARDINALITIES before-save: 1
  record_classes:
    - name: Cost
      attributes:
        - {name: Amount, type: floating}
  classes:
    - name: Step
      abstract: true
      attributes:
        - {name: Kind, type: enumeration, values: [manual, automatic], default: manual}
        - {name: Costs, type: record, record_class: Cost}
    - name: Other
    - name: Task
      extends: Step
      cardinalities: |
        CARDINALITIES
        max-outgoing: 1
        RELATION "gone"
        RELATION "then"
        TO_CLASS "Takk"
      attributes:
        - {name: Shape, type: text, level: class}
  relation_classes:
    - {name: then, from: Step, to: Step}
  model_types:
    - {name: Process, classes: [Task, Other]}
)";

constexpr std::string_view kParts = R"(format: qor.library/1
name: Parts
business_process:
  classes:
    - {name: Task, cardinalities: 'CARDINALITIES max-objects: "'}
working_environment:
  classes:
    - {name: Actor, cardinalities: 'CARDINALITIES RELATION "gone"'}
    - {name: Role, cardinalities: 'CARDINALITIES max-objects: 7'}
)";

/// Reads without an error, and not at all as its author meant it.
constexpr std::string_view kMisspelt = R"(format: qor.library/1
name: Misspelt
texts:
  automatic_checks: CHECK_CARDINALITIES
business_process:
  texts:
    automatic_checks: CHECK_CARDINALITIES before-save
  classes:
    - name: Task
      cardinalities: |
        CARDINALITIES
        max-outgonig: 1
        max-objects: many
  model_types:
    - {name: Process, classes: [Task]}
working_environment:
  classes:
    - {name: Actor, cardinalities: 'CARDINALITIES max-objetcs: 1'}
)";

TEST(CliLibrary, ShowsTheTreeOfClassesWithTheirAttributes) {
    CommandRunner qor;
    qor.write("tree.yaml", kTree);
    const Outcome outcome = qor.run("library tree.yaml");
    EXPECT_EQ(outcome.exit, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, StartsWith("Method library \"Tree\" (tree.yaml)\n\nBusiness-process part \""));
    EXPECT_THAT(outcome.out, HasSubstr("  has the text automatic_checks\n"
                                       "  Classes\n"
                                       "    Step, abstract\n"
                                       "        Kind: enumeration (manual, automatic), default \"manual\"\n"
                                       "        Costs: record of Cost\n"
                                       "      Task [cardinalities]\n"
                                       "          Shape: text, of the class\n"
                                       "    Other\n"
                                       "  Record classes\n"
                                       "    Cost\n"
                                       "        Amount: floating\n"
                                       "  Relation classes\n"
                                       "    then: Step -> Step\n"
                                       "  Model types\n"
                                       "    Process: Other, Task\n"));
}

using CliRules = qor::test::OnSamples;

TEST_F(CliRules, TellsDefinitionErrorsAtTheirPlaceAndThenTheRulesInForce) {
    qor.write("tree.yaml", kTree);
    qor.write("parts.yaml", kParts);
    qor.write("misspelt.yaml", kMisspelt);
    const std::vector<Call> calls = {
        {"rules tree.yaml", 1,
         "tree.yaml:23:9: error:  ... tree.yaml:25:9: error:  ... Cardinalities for Task:\nmaxObjects: "
         "65535\nmaxTotal:   65535\nmaxIn:      65535\nmaxOut:     1\n"},
        {"rules --class Task tree.yaml", 1, "Cardinalities for Task:\n"},
        {"rules --class Other tree.yaml", 0, "", "tree.yaml: there are no rules"},
        {"rules --class Tsak tree.yaml", 2, "", "no class is named \"Tsak\"; did you mean Task?"},
        {"rules parts.yaml", 1,
         "parts.yaml:5:63: error: Cardinalities of class \"Task\" ... parts.yaml:8:51: error:  ... Cardinalities for "
         "Role:\nmaxObjects: 7\n"},
        {"rules misspelt.yaml", 0, "Cardinalities for Task:\nmaxObjects: 0\n",
         "misspelt.yaml:12:9: warning: cardinalities of class \"Task\": the key \"max-outgonig\" of CARDINALITIES is "
         "not read; did you mean max-outgoing?\n ... misspelt.yaml:13:9: warning: cardinalities of class \"Task\": the "
         "value of "},
        {"rules --class Actor misspelt.yaml", 0,
         "for Actor:", "misspelt.yaml:18:51: warning: cardinalities of class \"Actor\": "},
        {"check misspelt.yaml", 0, "6 warnings",
         "misspelt.yaml:12:9: warning: cardinalities of class \"Task\": the key  ... misspelt.yaml:4:21: warning: "
         "automatic_checks: the text is not read here;  ... misspelt.yaml:7:43: warning: automatic_checks: the key "
         "\"before-save\" has no "},
        {"rules workshop.yaml", 0, "Cardinalities for Store:\n"},
        {"rules --language de tree.yaml", 1, "Cardinalities for Task:\n"},
        {"rules - < workshop.yaml", 0, "Cardinalities for Store:\n"},
        {"rules bpmn", 0, "Cardinalities for Start event:\n"},
        {"rules clean.yaml", 3, "", "clean.yaml: error: this is not a method library"},
        {"library clean.yaml", 3, "", "clean.yaml: error: this is not a method library"},
        {"library gone.yaml", 3, "", "gone.yaml: error: "},
        {"library bpmn", 0, "Start event"},
    };
    qor.expect("", calls);
    EXPECT_THAT(qor.run("rules --class Store workshop.yaml").out, Not(HasSubstr("Task")));
    EXPECT_THAT(qor.run("rules tree.yaml").out, Not(HasSubstr("\\x0A")));  // a line feed of the handler's text
    EXPECT_THAT(qor.run("rules --class Actor misspelt.yaml").err, Not(HasSubstr("Task")));
    EXPECT_NE(qor.run("rules --language de tree.yaml").out, qor.run("rules tree.yaml").out);
}

TEST_F(CliRules, FaultsOfTheFileHideNoneInItsRules) {
    const std::string good =
        "format: qor.library/1\nname: L\nbusiness_process:\n  classes:\n    - name: A\n      cardinalities: |\n"
        "        CARDINALITIES\n        max-objects: 1\n        max-objects: 2\n    - name: B\n"
        "      cardinalities: |\n        CARDINALITIES\n        RELATION \"gone\" max-incoming: 1\n";
    const std::string inRules =
        ":9:9: error: Cardinalities of class \"A\": the element \"CARDINALITIES\" already has the key \"max-objects\", "
        "in "
        "line 8, column 9\nL.yaml:13:9: error: Cardinalities of class \"B\": \"gone\" stands";
    qor.write("L.yaml", good);
    qor.write("m.yaml", "format: qor.model/1\nlibrary: L.yaml\nmodels: []\n");
    const Outcome rules = qor.run("rules L.yaml");
    EXPECT_EQ(rules.exit, 1) << "the errors are what was asked for";
    EXPECT_THAT(rules.out, HasSubstr(inRules));
    const Outcome check = qor.run("check m.yaml");
    EXPECT_EQ(check.exit, 3) << "the models cannot be judged by what was written";
    EXPECT_THAT(check.err, HasSubstr(inRules));

    // The second "B" has no name of its own and is read all the same; its rules have one place in the file for all.
    qor.write("L.yaml", good +
                            "    - {name: B, extends: Gone, cardinalities: \"CARDINALITIES\\nRELATION "
                            "\\\"no\\\"\\nRELATION \\\"nor\\\"\"}\n");
    const Outcome faulty = qor.run("rules L.yaml");
    EXPECT_EQ(faulty.exit, 3);
    EXPECT_THAT(faulty.err, HasSubstr(inRules));
    EXPECT_THAT(faulty.err, HasSubstr("L.yaml:14:14: error: the name \"B\" is taken"));
    EXPECT_THAT(faulty.err, HasSubstr("L.yaml:14:26: error: the class to extend: there is no class \"Gone\""));
    for (const char* const name : {"no", "nor"})
        EXPECT_THAT(faulty.err, HasSubstr("error: Cardinalities of class \"B\": \"" + std::string(name) + "\" stands"));
    EXPECT_EQ(std::count(faulty.err.begin(), faulty.err.end(), '\n'), 6) << "each once\n" << faulty.err;
    EXPECT_EQ(qor.run("check m.yaml").exit, 3);
}

TEST(CliUsage, WrongUseIsToldWithTheNearestName) {
    const CommandRunner qor;
    const std::vector<Call> calls = {
        {"", 2, "", "Usage: qor"},
        {"--help", 0, "Exit codes: 0 clean"},
        {"--version", 0, "qor "},
        {"check --help", 0, "qor check --json *.bpmn"},
        {"chekc a.yaml", 2, "", "there is no command \"chekc\"; did you mean check?"},
        {"check --modle X a.yaml", 2, "", "there is no option \"--modle\"; did you mean --model?"},
        {"check --libary=x a.yaml", 2, "", "there is no option \"--libary\"; did you mean --library?"},
        {"check", 2, "", "Try: qor check --help"},
        {"check --language fr a.yaml", 2, "", "fr"},
        {"check --model", 2, "", "--model"},
        {"library a b", 2, "", "one FILE is enough"},
        {"rules \"$(printf 'a\\033b')\" b c", 2, "", "one FILE is enough"},
        {"--help >/dev/full", 5, "", "No space left on device"},
    };
    qor.expect("", calls);
}

}  // namespace
