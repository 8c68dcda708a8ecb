// SPDX-License-Identifier: Apache-2.0
// qor repo, and repository files where other commands take text files.
#include "cli/samples.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorCoreModelingManager.h"

namespace {

using qor::test::Call;
using qor::test::kClean;
using qor::test::kWorkshop;
using qor::test::Outcome;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

struct CliRepo : qor::test::OnSamples {
    CliRepo() { EXPECT_EQ(qor.run("repo init shop.qor").exit, 0); }
    [[nodiscard]] std::string info() const { return qor.run("repo info shop.qor").out; }
};

TEST_F(CliRepo, TakesInTextFilesAndGivesTheSameTextsBack) {
    const std::vector<Call> calls = {
        // The shipped library wants checks.
        {"import --keep shop.qor orders.yaml clean.yaml order.bpmn", 1, "orders.yaml: 2 models",
         "order.bpmn:7:5: warning: model \"Order\": Too few"},
        {"info shop.qor", 0, "library \"Workshop\": 2 classes, 3 models, 5 objects, 2 relations"},
        {"verify shop.qor", 0, "everything"},
        {"export shop.qor first", 0, "first"},
        {"init again.qor", 0, "again.qor"},
        {"import --keep again.qor first/Workshop.yaml first/*.models.yaml", 1, "", "warning: "},
        {"export again.qor second", 0, "second"},
    };
    qor.expect("repo ", calls);
    for (const char* file : {"Workshop.yaml", "Workshop.models.yaml", "BPMN.yaml", "BPMN.models.yaml"})
        EXPECT_EQ(qor.content(std::string("first/") + file), qor.content(std::string("second/") + file)) << file;
    EXPECT_FALSE(std::filesystem::exists(qor.folder() / "in" / "shop.qor-wal")) << "reading leaves nothing behind";
}

TEST_F(CliRepo, TakesAllOfAFileOrNothing) {
    qor.write("broken.yaml", std::string(kClean) + "      - {class: Takk, name: Lost}\n");
    const std::vector<Call> calls = {
        {"import shop.qor workshop.yaml broken.yaml workshop.yaml", 3, "",
         "broken.yaml:8: ... workshop.yaml:2:7: error:"},
        {"info shop.qor", 0, "2 classes, 0 models"},
        {"import shop.qor clean.yaml missing.yaml", 3, "", "missing.yaml"},
        {"info shop.qor", 0, "1 model,"},
    };
    qor.expect("repo ", calls);
}

TEST_F(CliRepo, ChecksModelsBeforeTheyAreSavedWhenTheLibraryWantsThat) {
    std::string strict(kWorkshop);
    strict.replace(strict.find("  classes:"), 0,
                   "  texts:\n    automatic_checks: 'CHECK_CARDINALITIES before-save: 1'\n");
    qor.write("workshop.yaml", strict);
    const std::vector<Call> calls = {
        {"import shop.qor orders.yaml clean.yaml", 1, "",
         "orders.yaml:7:9: error: model \"Orders\": Too many relations"},
        {"info shop.qor", 0, "1 model,"},  // the clean one
        {"import --keep shop.qor orders.yaml", 1, "", "warning: model \"Orders\""},
        {"info shop.qor", 0, "3 models,"},
    };
    qor.expect("repo ", calls);
}

TEST_F(CliRepo, IsReadByEveryOtherCommand) {
    const Outcome import = qor.run("repo import --keep shop.qor .");
    ASSERT_EQ(import.exit, 1);
    EXPECT_TRUE(import.out.starts_with("./workshop.yaml: library \"Workshop\"\n"))
        << "which the others name: " << import.out;
    const std::vector<Call> calls = {
        {"check --library Workshop shop.qor", 1, "\"Check\""},
        {"check 'shop.qor#BPMN'", 1, "Lost"},
        {"library 'shop.qor#Workshop'", 0, "Task"},
        {"rules 'shop.qor#Workshop'", 0, "maxOut:     1"},
        {"check --library 'shop.qor#BPMN' order.bpmn", 1, "Lost"},  // text models, a kept library
        {"library shop.qor", 3, "", "shop.qor: error: holds "},
        {"check shop.qor", 3, "", "shop.qor: error: holds "},
        {"rules 'shop.qor#None'", 3, "", "shop.qor: error: holds "},
    };
    qor.expect("", calls);
}

TEST_F(CliRepo, TellsWhatIsWrongWithAFileByItsExitCode) {
    qor.write("text.qor", "no repository");
    std::filesystem::create_directory(qor.folder() / "in" / "notes");
    qor.write("notes/notes.yaml", "to: do");
    const std::vector<Call> calls = {
        {"init shop.qor", 5, "", "shop.qor: error: there is a file of that name already"},
        {"info none.qor", 3, "", "there is no such file"},
        {"info none/a.qor", 3, "", "there is no such folder"},
        {"info .", 3, "", "is a folder"},
        {"info text.qor", 3, "", "is not a repository"},
        {"backup shop.qor none/b.qor", 5, "", "there is no such folder"},
        {"export shop.qor text.qor/x", 5, "", "cannot be made"},
        {"export --library None shop.qor out", 2, "", "holds no library named"},
        {"import shop.qor order.txt", 3, "", "order.txt"},
        {"import shop.qor notes", 3, "", "notes: error: the folder holds nothing to take in"},
        {"import --library None shop.qor clean.yaml", 2, "", "holds no library named"},
        {"verfy shop.qor", 2, "", "did you mean verify?"},
        {"import shop.qor", 2, "", "required"},
    };
    qor.expect("repo ", calls);
}

TEST_F(CliRepo, NamesWhatIsDamagedAndReadsTheRest) {
    ASSERT_EQ(qor.run("repo import shop.qor orders.yaml").exit, 0);
    ASSERT_EQ(qor.run("repo backup shop.qor copy.qor").exit, 0);
    std::string bytes = qor.content("shop.qor");
    for (std::size_t at = bytes.find("Shelf"); at != std::string::npos; at = bytes.find("Shelf", at)) bytes[at] = 'X';
    qor.write("shop.qor", bytes);
    const Outcome verify = qor.run("repo verify shop.qor");
    EXPECT_EQ(verify.exit, 3);
    EXPECT_THAT(verify.err, HasSubstr("is not what was written"));
    EXPECT_THAT(verify.out, Not(HasSubstr("everything")));
    EXPECT_EQ(qor.run("repo import shop.qor clean.yaml").exit, 5) << "nothing is written to it";
    EXPECT_EQ(qor.run("check shop.qor").exit, 3);
    EXPECT_THAT(qor.run("check shop.qor").out, HasSubstr("\"Check\"")) << "the rest is checked";
    EXPECT_EQ(qor.run("check copy.qor").exit, 1);
}

TEST_F(CliRepo, WritesDocumentsForPrograms) {
    qor.expect(
        "repo import --json ",
        {{"shop.qor orders.yaml missing.yaml", 3,
          "\"schema\": \"qor.repo.import/1\" ... \"models\": [\"Orders\", \"Idle\"] ... \"file\": \"missing.yaml\""}});
    for (const char* verb : {"info", "verify", "backup", "export", "init"}) {
        const std::string name = verb;
        const std::string target = name == "backup" ? " b.qor" : name == "export" ? " out" : "";
        qor.expect("repo ", {{name + " --json shop.qor" + target, name == "init" ? 5 : 0,
                              "\"schema\": \"qor.repo." + name + "/1\""}});
    }
}

TEST_F(CliRepo, IsNotWrittenWhileAnotherUserHasItsLibraryLockedUntilAnAdministratorBreaksThat) {
    ASSERT_EQ(qor.run("repo import --keep shop.qor orders.yaml").exit, 0);
    QorEmbeddedPlatform bob({.language = "en", .console = false, .user = "bob"});
    ASSERT_TRUE(bob.openRepository((qor.folder() / "in" / "shop.qor").string()).ok());
    const QorIdentifier library = bob.reader().applicationLibraries().front();
    ASSERT_EQ(bob.host().repository->lockLibrary(library, false, QorDBLockModeType::Exclusive), QorErrorCode::Ok);
    for (const char* command :
         {"repo import shop.qor clean.yaml", "rename shop.qor", "sim reset shop.qor --model Orders",
          "convert shop.qor --model Orders Check --to Store"}) {
        const Outcome refused = qor.run(command);
        EXPECT_EQ(refused.exit, 4) << command << refused.err;
        EXPECT_THAT(refused.err, HasSubstr("the library \"Workshop\" is locked by bob (process ")) << command;
    }
    EXPECT_EQ(qor.run("check shop.qor").exit, 1) << "reading goes on";
    EXPECT_THAT(info(), HasSubstr("library \"Workshop\": locked by bob (process "));
    EXPECT_EQ(qor.run("repo unlock shop.qor Warkshop").exit, 2);
    EXPECT_THAT(qor.run("repo unlock shop.qor Workshop").out,
                HasSubstr("library \"Workshop\": the lock of bob (process "));
    EXPECT_EQ(qor.run("repo unlock shop.qor").out, "nothing was locked\n");
    EXPECT_EQ(qor.run("repo import --keep shop.qor clean.yaml").exit, 0);
    EXPECT_FALSE(bob.builder().addApplicationLibrary("New", "", "").ok());

    ASSERT_EQ(qor.run("user add shop.qor ada").exit, 0);
    EXPECT_EQ(qor.run("repo unlock shop.qor --user bob").exit, 2) << "ada is the administrator now";
    EXPECT_EQ(qor.run("repo unlock shop.qor --user ada").exit, 0);
}

// Models "One" to "Four", each with a step that leads to the next one or nowhere.
struct CliRepoReferences : CliRepo {
    CliRepoReferences() {
        qor.write("steps.yaml",
                  "format: qor.library/1\nname: Steps\nbusiness_process:\n  classes:\n    - name: Step\n"
                  "      attributes:\n        - {name: Next, type: reference, refers_to: models}\n"
                  "  model_types:\n    - {name: Process, classes: [Step]}\n");
        EXPECT_EQ(qor.run("repo import shop.qor steps.yaml").exit, 0);
        model("One", "Two");
        model("Two", "One");
        model("Three", "Four");
        model("Four", "Nowhere");
    }
    void model(const std::string& name, const std::string& next) const {
        qor.write(name + ".yaml", "format: qor.model/1\nlibrary: steps.yaml\nmodels:\n  - name: " + name +
                                      "\n    type: Process\n    objects:\n      - class: Step\n        name: go\n"
                                      "        values: {Next: 'MODEL \"" +
                                      next + "\" type: \"Process\"'}\n");
    }
};

TEST_F(CliRepoReferences, MayLeadToFilesThatComeLaterButNotNowhere) {
    // With a library of its own, which goes when it is not taken in.
    qor.write("bad.yaml", std::string(kClean) + "      - {class: Takk, name: Lost}\n");
    const Outcome import = qor.run("repo import shop.qor One.yaml bad.yaml Three.yaml Two.yaml Four.yaml");
    EXPECT_EQ(import.exit, 3) << import.err;
    EXPECT_EQ(import.out, "One.yaml: 1 model\nTwo.yaml: 1 model\n") << "Three leads to Four, which is refused";
    EXPECT_THAT(import.err, HasSubstr("Four.yaml:7:9: error: \"go\": \"Next\" names the model \"Nowhere\" of type "
                                      "\"Process\", which does not exist"));
    EXPECT_THAT(import.err, HasSubstr("Three.yaml:7:9: error: \"go\": \"Next\" names the model \"Four\" of type "
                                      "\"Process\" of Four.yaml, which was not taken in"));
    EXPECT_THAT(info(), AllOf(HasSubstr("library \"Steps\": 1 class, 2 models"), Not(HasSubstr("Workshop"))));
    const Outcome kept = qor.run("repo import --keep shop.qor Four.yaml Three.yaml");
    EXPECT_EQ(kept.exit, 1) << kept.err;
    EXPECT_THAT(kept.err, HasSubstr("Four.yaml:7:9: warning: "));
    EXPECT_THAT(kept.err, Not(HasSubstr("Three.yaml"))) << "Four is there now";
    EXPECT_THAT(info(), HasSubstr("4 models"));
}

TEST_F(CliRepo, KeepsModelGroupsWithoutModels) {
    qor.write("groups.yaml", "format: qor.model/1\nlibrary: workshop.yaml\ngroups:\n  - [Sales]\n  - [Sales, Late]\n");
    EXPECT_EQ(qor.run("repo import shop.qor groups.yaml").out, "groups.yaml: 2 model groups\n");
    EXPECT_EQ(qor.run("repo export shop.qor first").exit, 0);
    EXPECT_THAT(qor.content("first/Workshop.models.yaml"), HasSubstr("  - [Sales, Late]\n"));
}

}  // namespace
