// SPDX-License-Identifier: Apache-2.0
// qor user, qor group, qor permission, qor access: a repository's users as people and programs see them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CommandRunner.h"
#include "cli/samples.h"

namespace {

using qor::test::CommandRunner;
using qor::test::kWorkshop;
using qor::test::Outcome;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

struct Step {
    const char* arguments;
    int exit;
    const char* said;  // on standard output after success, else on standard error
};

struct CliUsers : testing::Test {
    CliUsers() {
        qor.write("workshop.yaml", kWorkshop);
        qor.write("groups.yaml",
                  "format: qor.model/1\nlibrary: workshop.yaml\ngroups:\n  - [Sales, Orders, Late]\n  - [Archive, "
                  "Late]\n  - [Archive, A/B]\n  - [A/B, A/B]\n"
                  "models: []\n");
        EXPECT_EQ(qor.run("repo init shop.qor").exit, 0);
        EXPECT_EQ(qor.run("repo import shop.qor workshop.yaml groups.yaml").exit, 0);
    }
    void furnish() {
        run({{"user add shop.qor ada bob cyd", 0, ""},
             {"group add shop.qor --user ada Staff Bosses", 0, ""},
             {"group join shop.qor --user ada Bosses Staff", 0, ""},
             {"user join shop.qor --user ada bob Staff", 0, ""},
             {"user join shop.qor --user ada cyd Bosses", 0, ""},
             {"permission grant shop.qor --user ada Staff write Sales/Orders/Late", 0, ""}});
    }
    void run(const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            const Outcome outcome = qor.run(step.arguments);
            EXPECT_EQ(outcome.exit, step.exit) << step.arguments << '\n' << outcome.err;
            EXPECT_THAT(step.exit == 0 ? outcome.out : outcome.err, HasSubstr(step.said)) << step.arguments;
        }
    }

    CommandRunner qor;
};

TEST_F(CliUsers, ComeAndGoByThoseWhoMay) {
    run({{"user add shop.qor ada --display 'Ada L' --organisation Firm", 0, "the first one and so an administrator"},
         {"user add shop.qor --user nobody bob", 2, "only an administrator may change that; you are \"nobody\""},
         {"user add shop.qor --user ada bob --remark 'one;two' --profile 7=Engineer", 0, "added"},
         {"user list shop.qor", 0, "\"ada\" (Ada L;Firm), administrator, library \"Workshop\""},
         {"user list shop.qor bob", 0, "remark: one;two\n    profile 7: Engineer"},
         {"user grant shop.qor --user ada bob sub-administrator", 0, "now sub-administrator"},
         {"user add shop.qor --user bob cyd", 0, "\"cyd\" added"},
         {"user rename shop.qor --user bob cyd eve", 0, "now \"eve\""},
         {"user remove shop.qor --user bob ada", 2, "only an administrator"},
         {"user revoke shop.qor --user ada ada administrator", 2, "nobody else is an administrator"},
         {"user set shop.qor --user ada eve --no-library --no-manager 1000", 0, "no library"},
         {"user sign-on shop.qor --user ada 668", 0, "mode 668"},
         {"user remove shop.qor --user ada bob eve", 0, "removed"},
         {"repo verify shop.qor", 0, "as it was written"},
         {"user remove shop.qor --user ada ada", 0, "everybody is an administrator again"}});
}

TEST_F(CliUsers, AreRefusedWithAReasonAndNothingIsDoneByHalves) {
    furnish();
    const std::string users = qor.run("user list shop.qor --json").out;
    const std::string groups = qor.run("group list shop.qor --json").out;
    run({{"user add shop.qor --user ada new ada", 2, "user \"ada\": the name is taken"},
         {"user add shop.qor --user ada new 'a\033b'", 2, "control character"},
         {"user add shop.qor --user ada 'a\xff'", 2, "not UTF-8"},
         {"user add shop.qor --user ada new --profile x=1", 2, "no ENTRY=TEXT"},
         {"user add shop.qor --user ada new --library Works", 2, "Works"},
         {"user join shop.qor --user ada bob Bosses Staf", 2, "no user group \"Staf\"; did you mean Staff?"},
         {"user grant shop.qor --user ada bob king", 2, "king not in {administrator,sub-administrator}"},
         {"group join shop.qor --user ada Staff Bosses", 2, "would lie in itself"},
         {"group add shop.qor --user ada new Staff --system", 2, "the name is taken"},
         {"permission grant shop.qor --user ada Staff read Sales Late", 2, "2 model groups are called \"Late\""},
         {"permission grant shop.qor --user ada Staff all Sales", 2, "all not in {read,write,none}"},
         {"permission set shop.qor --user ada Sales --to Staff read", 2, "--sub-groups adapted"},
         {"permission set shop.qor --user bob Sales --to Staff read --sub-groups all", 2, "only an administrator"},
         {"permission set shop.qor --user ada Sales --to Staff read --sub-groups adapted </dev/null", 2, "--yes"},
         {"access shop.qor dan", 2, "no user \"dan\""},
         {"access shop.qor", 2, "USER or --who"},
         {"permission grant shop.qor --user ada Staff read 'A/B'", 2, "as in \"A\\/B\""},
         {"user list nowhere.qor", 3, "no such"}});
    // A document is always the verb's own.
    for (const auto& [arguments, key] : {std::pair("user list shop.qor --json dan", "\"users\": []"),
                                         {"group list none.qor --json", "\"groups\": []"},
                                         {"permission list shop.qor --json dan", "\"permissions\": []"},
                                         {"access shop.qor --json dan", "\"rights\": []"},
                                         {"access shop.qor --json --who dan", "\"users\": []"},
                                         {"permission set shop.qor --user ada Sales --to Staff read --sub-groups all "
                                          "--json",
                                          "\"carried_out\": false"}})
        EXPECT_THAT(qor.run(arguments).out, HasSubstr(key)) << arguments;
    EXPECT_EQ(qor.run("user list shop.qor --json").out, users);
    EXPECT_EQ(qor.run("group list shop.qor --json").out, groups);
}

TEST_F(CliUsers, ReachWhatTheirGroupsMayAndAreToldWhy) {
    furnish();
    run({{"access shop.qor cyd --why", 0,
          "write  \"Sales/Orders/Late\"\n       through \"Staff\" by \"Bosses\" (write)\n"},
         {"permission set shop.qor Sales --to Staff Bosses read --sub-groups adapted --dry-run", 0,
          "\"Staff\" on \"Sales/Orders/Late\": write -> read\n"},
         {"access shop.qor --who Orders/Late", 2, "no model group"},
         {"permission set shop.qor --user ada Sales read --to Staff --sub-groups adapted --yes", 0,
          "    user \"cyd\" on \"Sales/Orders\": none -> read\n"},
         {"access shop.qor --who Sales/Orders/Late --why", 0,
          "read   \"bob\"\n       through \"Staff\" (read)\nread   \"cyd\"\n       through \"Staff\" by \"Bosses\" "
          "(read)\n"},
         {"permission revoke shop.qor --user ada Staff Sales 'Archive/A\\/B'", 0, "none on \"Sales\""},
         {"permission list shop.qor Staff", 0,
          "\"Staff\": read on \"Sales/Orders\" of library \"Workshop\"\n\"Staff\": read on \"Sales/Orders/Late\""},
         {"access shop.qor --json --who Sales/Orders", 0,
          R"({"user": "cyd", "permission": "read", "sources": [{"user_group": "Staff", "permission": "read", "by": ["Bosses"]}]})"},
         {"user set shop.qor --user ada bob --no-library", 0, ""},
         {"group remove shop.qor --user ada Staff", 0, "with 2 memberships and 2 permissions"}});
    EXPECT_THAT(qor.run("access shop.qor bob").err, HasSubstr("is allowed no library"));
    EXPECT_THAT(qor.run("access shop.qor cyd").err, HasSubstr("groups without permissions"));
}

TEST_F(CliUsers, AreWrittenIntoTheLogOnlyWhenTheyAreKept) {
    const std::string key = " --key-file " + (qor.folder() / "key").string();
    ASSERT_EQ(qor.run("log start shop.qor" + key).exit, 0);
    EXPECT_EQ(qor.run("user add shop.qor ada bob" + key).exit, 0);
    EXPECT_EQ(qor.run("user add shop.qor --user ada cyd bob" + key).exit, 2);
    const std::string log = qor.run("log show shop.qor" + key).out;
    EXPECT_THAT(log, AllOf(HasSubstr("User: ada"), HasSubstr("ada  User created  User: bob")));
    EXPECT_THAT(log, Not(HasSubstr("cyd")));
    EXPECT_EQ(qor.run("log verify shop.qor" + key).exit, 0);
}

}  // namespace
