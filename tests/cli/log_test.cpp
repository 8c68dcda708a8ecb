// SPDX-License-Identifier: Apache-2.0
// qor log, on a log that this process writes as a host would.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "admin/QorAdminLogger.h"
#include "cli/CommandRunner.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "embedded/QorUserAdministration.h"
#include "platform/QorUserEventKind.h"

namespace {

using qor::test::CommandRunner;
using qor::test::Outcome;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct CliLog : testing::Test {
    CliLog() { EXPECT_EQ(qor.run("repo init shop.qor").exit, 0); }

    Outcome log(const std::string& arguments, const std::string& key = "a.key") const {
        return qor.run("log " + arguments, "QOR_KEY_FILE=" + key);
    }
    [[nodiscard]] std::string path(const char* file) const { return (qor.folder() / "in" / file).string(); }
    /// Users come and go.
    void work() const {
        QorEmbeddedPlatform platform({.language = "en", .console = false, .user = "ada", .keyFile = path("a.key")});
        ASSERT_TRUE(platform.openRepository(path("shop.qor")).ok());
        const QorHostInstallation installation(platform.host());
        QorAdminLogger::Instance().StartLogging();
        auto& users = platform.userAdministration();
        ASSERT_TRUE(users.addUser("ada").ok());
        const auto bob = users.addUser("=bob;\"x\"").id;
        ASSERT_TRUE(users.removeUser(bob).ok());
        EXPECT_EQ(platform.fileArea().lostWrites(), 0);
    }
    void sql(const std::string& statement) const {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(path("shop.qor").c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << statement;
        sqlite3_close(database);
    }
    static std::string behind(const std::string& text, const std::string& label) {
        const auto at = text.find(label) + label.size();
        return text.substr(at, text.find('\n', at) - at);
    }

    CommandRunner qor;
};

TEST_F(CliLog, IsStartedShownExportedPutAsideAndStopped) {
    EXPECT_THAT(log("show shop.qor").err, HasSubstr("nothing was logged yet"));
    EXPECT_EQ(log("rotate shop.qor").exit, 3);
    EXPECT_THAT(log("export --raw --json shop.qor log.csv").out, HasSubstr("\"lines\": 0"));
    const Outcome started = log("start shop.qor");
    EXPECT_EQ(started.exit, 0) << started.err;
    EXPECT_THAT(started.out,
                StartsWith("logging: on\nnames of administrators: yes\nkey file: a.key\nverification key: "));
    EXPECT_THAT(log("start shop.qor").out, Not(HasSubstr("verification key"))) << "once";
    work();

    const Outcome shown = log("show shop.qor");
    EXPECT_EQ(shown.exit, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("ada  User created  User: =bob;\"x\";"));
    EXPECT_EQ(std::count(shown.out.begin(), shown.out.end(), '\n'), 4);
    EXPECT_EQ(log("show --to 2020 shop.qor").out, "");
    EXPECT_EQ(log("show --from 2020-01-01T09:05 --by ada shop.qor").out, shown.out);
    EXPECT_EQ(log("show --by eve shop.qor").out, "");
    const Outcome removed = log("show --json --action 'User deleted' shop.qor");
    EXPECT_THAT(removed.out, HasSubstr(R"("action": "User deleted", "detail": "User: =bob)"));
    EXPECT_THAT(removed.out, Not(HasSubstr("User created")));
    for (const char* time : {"March", "2026-13", "2026-03-01T24"})
        EXPECT_EQ(log(std::string("show shop.qor --from ") + time).exit, 2) << time;

    EXPECT_EQ(log("export shop.qor log.csv").out, "log.csv: 4 lines\n");
    EXPECT_THAT(qor.content("log.csv"), HasSubstr("\"ada\";\"User created\";\"User: =bob;\"\"x\"\";"));
    EXPECT_THAT(qor.content("log.csv"), StartsWith("\"Date\";\"Time\";"));
    EXPECT_THAT(log("export --raw shop.qor -").out, HasSubstr(";ada;User created;User: =bob;\"x\";"));
    const std::string lines = log("export --json-lines shop.qor -").out;
    EXPECT_THAT(lines, StartsWith("{\"line\": 2, \"readable\": true, \"date\": \""));
    EXPECT_THAT(lines, Not(HasSubstr("\n\n")));
    EXPECT_EQ(log("export --raw --by ada shop.qor -").exit, 2);
    EXPECT_EQ(log("export --json shop.qor -").exit, 2);
    EXPECT_EQ(log("export shop.qor none/log.csv").exit, 5);

    EXPECT_EQ(log("rotate --user ada shop.qor").exit, 0);
    EXPECT_THAT(log("show shop.qor").err, HasSubstr("nothing was logged yet"));
    EXPECT_EQ(log("show --number 1 shop.qor").out, shown.out);
    EXPECT_EQ(log("show --number 2 shop.qor").exit, 2);
    EXPECT_EQ(log("stop --user eve shop.qor").exit, 2) << "no administrator";
    EXPECT_THAT(log("settings --names no --user ada shop.qor").out,
                StartsWith("logging: on\nnames of administrators: no\n"));
    EXPECT_THAT(log("stop --user ada --json shop.qor").out, HasSubstr("\"logging\": false"));
    EXPECT_THAT(log("verify shop.qor").out, HasSubstr("nothing was changed")) << "rotation keeps the chain";
}

TEST_F(CliLog, HasWhatCommandsChangeOfUsersWhichNeedItsKey) {
    const auto run = [&](const std::string& arguments, const char* key) {
        return qor.run(arguments, std::string("QOR_KEY_FILE=") + key);
    };
    EXPECT_EQ(run("user add shop.qor ada", "none.key").exit, 0) << "no log is kept";
    ASSERT_EQ(log("start --user ada shop.qor").exit, 0);
    for (const char* change :
         {"group add shop.qor --user ada Staff", "user add shop.qor --user ada bob --group Staff",
          "user set shop.qor --user ada bob --remark new", "user rename shop.qor --user ada bob rob"})
        EXPECT_EQ(run(change, "a.key").exit, 0) << change;
    const std::string shown = log("show shop.qor").out;
    for (const char* line : {"ada  User created  User: bob;", "Added to user group  User: bob;User group: Staff\n",
                             "Remark changed  User: bob;", ";new\n", "User renamed  Before: bob;After: rob\n"})
        EXPECT_THAT(shown, HasSubstr(line));
    const Outcome refused = run("user remove shop.qor --user ada rob", "none.key");
    EXPECT_EQ(refused.exit, 3);
    EXPECT_THAT(refused.err, HasSubstr("there is no key file none.key; the change could not be written into the log"));
    EXPECT_THAT(run("user list shop.qor", "none.key").out, HasSubstr("rob"));
}

TEST_F(CliLog, IsNotSwitchedOffByWhoeverSpoilsItsSettings) {
    ASSERT_EQ(log("start shop.qor").exit, 0);
    std::filesystem::copy_file(path("shop.qor"), path("good.qor"));
    for (const char* spoil : {"UPDATE file_entries SET content = x'41410a' WHERE sequence = 2", "DELETE FROM files"}) {
        SCOPED_TRACE(spoil);
        std::filesystem::copy_file(path("good.qor"), path("shop.qor"),
                                   std::filesystem::copy_options::overwrite_existing);
        sql(spoil);
        for (const char* command : {"user add shop.qor ada", "log settings shop.qor", "log start shop.qor"}) {
            const Outcome refused = qor.run(command, "QOR_KEY_FILE=a.key");
            EXPECT_EQ(refused.exit, 3) << command;
            EXPECT_THAT(refused.err, HasSubstr("the log's settings cannot be read; qor log verify tells why"));
        }
        EXPECT_EQ(log("verify shop.qor").exit, 1);
    }
}

TEST_F(CliLog, TellsWhoTamperedAndShowsGaps) {
    const std::string key = behind(log("start shop.qor").out, "verification key: ");
    work();
    const std::string head = behind(log("head shop.qor").out, "");
    const std::string check = "verify --verification-key - --head " + head + " shop.qor";
    const auto verified = [&](const std::string& arguments) {
        return qor.run("log " + arguments, "echo " + key + " | QOR_KEY_FILE=a.key");
    };
    EXPECT_EQ(verified(check).exit, 0) << verified(check).out;
    std::filesystem::copy_file(path("shop.qor"), path("older.qor"));
    sql("UPDATE file_entries SET content = x'41410a' WHERE sequence = 5");
    const Outcome found = verified(check);
    EXPECT_EQ(found.exit, 1);
    EXPECT_THAT(found.out, HasSubstr("line 2 of db:\\qor_admin_log.dat (entry 5) was changed"));
    EXPECT_THAT(verified("verify --json shop.qor").out, HasSubstr(R"("tampering": "changed",
  "entry": 5,
  "file": "db:\\qor_admin_log.dat",
  "line": 2)"));
    const Outcome shown = log("show shop.qor");
    EXPECT_EQ(shown.exit, 1);
    EXPECT_THAT(shown.out, HasSubstr("[line 2 cannot be deciphered]\n"));
    EXPECT_THAT(shown.out, HasSubstr("User deleted"));
    EXPECT_EQ(log("export --raw shop.qor log.csv").exit, 1);

    std::filesystem::copy_file(path("older.qor"), path("shop.qor"), std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(verified(check).exit, 0);
    ASSERT_EQ(log("stop --user ada shop.qor").exit, 0);
    const std::string later = behind(log("head shop.qor").out, "");
    std::filesystem::copy_file(path("older.qor"), path("shop.qor"), std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(log("verify shop.qor").exit, 0);
    EXPECT_EQ(log("verify --head " + later + " shop.qor").exit, 1) << "rolled back";
    EXPECT_EQ(log("verify --head x shop.qor").exit, 3);
}

TEST_F(CliLog, NeedsItsKeyAndAFileThatCanBeWritten) {
    ASSERT_EQ(log("start shop.qor").exit, 0);
    work();
    for (const char* arguments : {"show shop.qor", "export shop.qor log.csv", "verify shop.qor", "head shop.qor",
                                  "settings shop.qor", "stop --user ada shop.qor"}) {
        SCOPED_TRACE(arguments);
        const Outcome outcome = log(arguments, "b.key");
        EXPECT_EQ(outcome.exit, 3);
        EXPECT_THAT(outcome.err, HasSubstr("there is no key file b.key"));
    }
    EXPECT_FALSE(std::filesystem::exists(path("b.key")) || std::filesystem::exists(path("log.csv")));
    EXPECT_EQ(log("show none.qor").exit, 3);
    EXPECT_EQ(log("sohw shop.qor").exit, 2);
}

}  // namespace
