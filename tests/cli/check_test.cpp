// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include "cli/samples.h"

namespace {

using qor::test::Call;
using qor::test::Outcome;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using CliCheck = qor::test::OnSamples;

int occurrences(std::string_view text, std::string_view part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

TEST_F(CliCheck, NamesModelObjectPlaceRuleAndCountAndEndsWithASummary) {
    const Outcome outcome = qor.run("check orders.yaml clean.yaml");
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_THAT(outcome.err, IsEmpty());
    for (const char* part : {
             "orders.yaml: model \"Orders\" (Process): 4 objects, 2 relations\n",
             "orders.yaml:7:9: Task \"Check\" (id t1)\n",
             "    The object \"Check\" has too many outgoing relations: at most 1 is allowed.\n"
             "    rule max-outgoing: 1, in the text of class \"Task\" (workshop.yaml:9:9); found 2, in 3 counts\n",
             "orders.yaml:10:9: Store \"Shelf\"\n",
             "rule min-incoming: 1 for relation \"uses\", in the text of class \"Store\" (workshop.yaml:14:9); found "
             "0\n",
             "orders.yaml: model \"Idle\" (Process): 0 objects, 0 relations\norders.yaml: class \"Task\"\n",
             "rule min-objects: 1, in the text of class \"Task\" (workshop.yaml:8:9); found 0\n",
             "clean.yaml: model \"Clean\" (Process): 1 object, 0 relations, no breaches\n",
             "\n2 files, 3 models, 5 objects, 2 relations: 5 breaches (shown as 3) in ",
         })
        EXPECT_THAT(outcome.out, HasSubstr(part));
    EXPECT_EQ(occurrences(outcome.out, "rule max-outgoing: 1"), 1) << "of one object and one written key";
    EXPECT_EQ(occurrences(outcome.out, "\"Check\" (id t1)"), 1);
}

TEST_F(CliCheck, LooksForModelsInFoldersAndPassesOverWhatElseIsThere) {
    for (const char* folder : {"below", "none", "bent"})
        std::filesystem::create_directory(qor.folder() / "in" / folder);
    qor.write("below/flow.bpmn", qor::test::kBpmn);
    qor.write("none/notes.yaml", "to: do");
    qor.write("bent/flow.bpmn", "<x/>");
    qor.write("qor-check.yaml", "format: qor.check-settings/1\n");
    qor.expect("check ", {{"--quiet none", 3, "", "none: error: the folder holds no file with models"},
                          {"bent", 3, "1 file, ", "bent/flow.bpmn:1:1: error: "},
                          {"none clean.yaml", 3, "\n2 files, 1 model, ", "none: error: "}});
    std::filesystem::remove_all(qor.folder() / "in" / "bent");
    const Outcome outcome = qor.run("check .");
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("./below/flow.bpmn:"));
}

TEST_F(CliCheck, FirstShowsOneBreachPerModel) {
    qor.expect("check ", {{"--first orders.yaml", 1, "(workshop.yaml:9:9); found 2\n ... : 2 breaches in "}});
    EXPECT_THAT(qor.run("check --first orders.yaml").out, Not(HasSubstr("Shelf")));
}

TEST_F(CliCheck, EachWayOfCallingEndsWithItsCode) {
    qor.write("bent.yaml",
              "format: qor.library/1\nname: Bent\nbusiness_process:\n  classes:\n    - name: Task\n"
              "      cardinalities: |\n        CARDINALITIES\n        RELATION \"gone\"\n"
              "  model_types:\n    - {name: Process, classes: [Task]}\n");
    qor.write("bare.yaml", "format: qor.model/1\nmodels: []\n");
    const std::vector<Call> calls = {
        {"check clean.yaml", 0, "no breaches"},
        {"check --quiet clean.yaml", 0},
        {"check --quiet orders.yaml", 1, "Shelf"},
        {"check --model Clean orders.yaml clean.yaml", 0, "2 files, 1 model,"},
        {"check --model Claen clean.yaml orders.yaml", 2, "", "no model is named \"Claen\"; did you mean Clean?"},
        {"check --library workshop.yaml clean.yaml", 0, "no breaches"},
        {"check --library gone.yaml clean.yaml orders.yaml", 3, "",
         "orders.yaml: error: not checked because of the errors in its library \"gone.yaml\", told with "
         "\"clean.yaml\""},
        {"check --library gone.yaml orders.yaml", 3, "",
         "gone.yaml: error: there is no such file\norders.yaml: error: not checked because of the errors in its "
         "library \"gone.yaml\"\n"},
        {"check ''", 3, "", "the name is empty"},
        {"check --library clean.yaml clean.yaml", 3, "", "clean.yaml: error: this is not a method library"},
        {"check workshop.yaml", 0, "1 file, 0 models", "workshop.yaml: warning: holds a method library and no models"},
        {"check --quiet workshop.yaml", 0},
        {"check --library bent.yaml clean.yaml", 3, "model \"Clean\"", "bent.yaml:8:9: error: "},
        {"check bent.yaml", 3, "", "bent.yaml:8:9: error: "},
        {"check gone.yaml orders.yaml", 3, "Shelf", "gone.yaml: error: "},
        {"check -", 0, "-: model \"Clean\"", "", "cat clean.yaml |"},
        {"check - -", 1, "-:7:5: End event \"Lost\" (id lost)", "", "cat order.bpmn |"},
        {"check order.bpmn", 1, "order.bpmn:7:5: End event \"Lost\" (id lost)"},
        {"check --language de order.bpmn", 1, "Lost"},
        {"check order.bpmn", 3, "", "set QOR_LIBRARIES to the folder that holds bpmn.yaml", "QOR_LIBRARIES=/nowhere"},
        {"check --library bpmn order.bpmn", 1, "Lost"},
        {"check clean.yaml >/dev/full", 5, "", "No space left on device"},
        {"check --json clean.yaml >/dev/full", 5, "", "No space left on device"},
    };
    qor.expect("", calls);
}

TEST_F(CliCheck, LibrariesOfTheSameNameInTwoFilesDoNotMeet) {
    std::string strict(qor::test::kWorkshop);
    strict.replace(strict.find("min-objects: 1"), 14, "min-objects: 9");
    qor.write("strict.yaml", strict);
    std::string model(qor::test::kClean);
    model.replace(model.find("workshop.yaml"), 13, "strict.yaml");
    qor.write("strictly.yaml", model);
    const Outcome outcome = qor.run("check clean.yaml strictly.yaml clean.yaml");
    EXPECT_EQ(outcome.exit, 1);
    EXPECT_THAT(outcome.out, HasSubstr("rule min-objects: 9"));
    EXPECT_EQ(occurrences(outcome.out, "clean.yaml: model \"Clean\" (Process): 1 object, 0 relations, no breaches"), 2);
}

TEST_F(CliCheck, HostileNamesDoNotReachTheTerminal) {
    qor.write("evil.yaml",
              "format: qor.model/1\nlibrary: workshop.yaml\nmodels:\n  - name: \"\\e[2J\\u202Eevil\"\n"
              "    type: Process\n    objects:\n      - {class: Store, name: \"\\e]0;owned\\a\"}\n");
    for (const char* arguments :
         {"check evil.yaml", "check --json evil.yaml", "check evil.yaml \"$(printf 'a\\033[2J')\""}) {
        const Outcome outcome = qor.run(arguments);
        EXPECT_THAT(outcome.out + outcome.err, AllOf(HasSubstr("evil"), Not(HasSubstr("\x1B")), Not(HasSubstr("\a")),
                                                     Not(HasSubstr("\xE2\x80\xAE"))))
            << arguments;
    }
}

TEST_F(CliCheck, ColourComesOnlyWhenItIsForced) {
    for (const char* plain : {"", "CLICOLOR_FORCE=1 NO_COLOR=1", "CLICOLOR_FORCE=0 TERM=xterm"})
        EXPECT_THAT(qor.run("check orders.yaml", plain).out, Not(HasSubstr("\x1B"))) << plain;
    for (const char* coloured : {"CLICOLOR_FORCE=1", "CLICOLOR_FORCE=1 TERM=dumb"})
        EXPECT_THAT(qor.run("check orders.yaml", coloured).out, HasSubstr("\x1B[1m")) << coloured;
}

TEST_F(CliCheck, AReaderThatGoesAwayIsNoReasonToComplain) {
    const Outcome outcome = qor.run("check orders.yaml orders.yaml | true");
    EXPECT_THAT(outcome.err, IsEmpty());
}

}  // namespace
