// SPDX-License-Identifier: Apache-2.0
#include "LogDesk.h"
#include "admin/QorAdminLoggerSettingsDlg.h"
#include "platform/QorUserEventKind.h"

namespace {

using enum QorErrorCode;
using Lines = std::vector<std::string>;

constexpr auto kUnknownCode = static_cast<QorErrorCode>(4711);
const std::string kStart = "2026.03.01;09:05:07;Ada;Office;";  // the name is of the kind that has two parts

class AdminLog : public LogTest {
protected:
    /// Logging, behind a header that no test looks at again.
    void start() {
        settings("LOGSETTINGS log:1 adminname:1");
        logger.StartLogging();
        logger._EnsureHeader();
        (void)newLines();
    }
    static void userChanged(long kind, QorUserID user, long value = 0, long further = 0) {
        Qor_RaiseEvent(QorUserEvent(kind, user.value(), value, further));
    }
};

TEST_F(AdminLog, TheFirstRecordComesBehindTheHeader) {
    settings("LOGSETTINGS log:1 adminname:1");
    logger.StartLogging();
    logger.StartLogging();
    userChanged(QorUserEventKind::Created, bob);
    userChanged(QorUserEventKind::Created, bob);
    const std::string record = text(kStart + "{29010};{29030}Bob;{29031}2");
    EXPECT_EQ(newLines(), (Lines{text("{29000};{29001};{29002};{29003};{29004}"), record, record}))
        << "and handlers are registered once";
    logger.SetAdminName(false);
    userChanged(QorUserEventKind::Created, bob);
    EXPECT_EQ(newLines(), Lines{text("2026.03.01;09:05:07;{29005};{29010};{29030}Bob;{29031}2")});
    EXPECT_EQ(files.content[kLog].back(), '\n');
}

struct EventCase {
    long kind;
    long value;
    long further;
    const char* expected;  ///< action and detail; null for no line
};

TEST_F(AdminLog, EachKindOfUserEventHasItsLine) {
    start();
    const long group = staff.value();
    const EventCase cases[] = {
        {2, 0, 0, "{29010};{29030}Bob;{29031}2"},
        {4, 0, 0, "{29011};{29030}Bob;{29031}2"},
        {5, 1, 0, "{29012};{29030}Bob;{29032}{29041}"},
        {6, 0, 0, "{29013};{29030}Bob;{29033}{29042}"},
        {8, 5010, 0, "{29014};{29030}Bob;{29044}"},
        {8, 5010, 3, "{29014};{29030}Bob;{29045}"},
        {8, 5011, 2, "{29014};{29030}Bob;{29046}"},
        {8, 5011, 3, "{29014};{29030}Bob;{29047}"},
        {8, 5012, 4, "{29014};{29030}Bob;{29048}5012"},
        {8, 5009, 3, "{29014};{29030}Bob;{29049}5009"},
        {10, 500, 0, "{29015};{29030}Bob;{29034}Library 500"},
        {10, 0, 0, nullptr},
        {10, -1, 0, nullptr},
        {15, 20280229, 0, "{29018};{29030}Bob;{29037}2028.02.29"},
        {15, 20270229, 0, "{29018};{29030}Bob;{29037}{29043}"},
        {15, 4294967296 + 20280229, 0, "{29018};{29030}Bob;{29037}{29043}"},
        {16, group, 0, "{29019};{29030}Bob;{29038}Staff"},
        {17, 99, 0, "{29020};{29030}Bob;{29038}"},
        {18, 1, 0, "{29021};{29030}Bob;{29039}{29041}"},
        {21, 1001, 0, "{29022};{29030}Bob;{29040}1001"},
        {22, 1002, 0, "{29023};{29030}Bob;{29040}1002"},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(std::to_string(it.kind) + " " + std::to_string(it.value));
        userChanged(it.kind, bob, it.value, it.further);
        EXPECT_EQ(newLines(), it.expected == nullptr ? Lines{} : Lines{text(kStart + it.expected)});
    }
    for (const long kind : {0, 1, 3, 7, 9, 11, 13, 19, 20, 23}) userChanged(kind, bob, 1);
    EXPECT_EQ(newLines(), Lines{});
    for (const long kind : {3, 4, 5, 6, 7}) {
        SCOPED_TRACE(kind);
        Qor_RaiseEvent(QorUserGroupEvent(kind, group, bob.value()));
        const std::string detail = text(";{29030}Bob;{29038}Staff");
        EXPECT_EQ(newLines(), kind == 4   ? Lines{kStart + text("{29024}") + detail}
                              : kind == 6 ? Lines{kStart + text("{29025}") + detail}
                                          : Lines{});
    }
}

TEST_F(AdminLog, OnlyAdministratorsAndOnlyWhileOn) {
    start();
    logger.SetLogging(false);
    userChanged(2, bob);
    Qor_RaiseEvent(QorUserGroupEvent(4, staff.value(), bob.value()));
    EXPECT_EQ(newLines(), Lines{});
    EXPECT_TRUE(logger._Log("a", "b")) << "the switch is for events";
    logger.SetLogging(true);
    desk.current = bob;
    userChanged(2, bob);
    EXPECT_FALSE(logger._Log("a", "b"));
    desk.record.fail("currentUser", kUnknownCode);
    EXPECT_FALSE(logger._Log("a", "b"));
    EXPECT_EQ(newLines().size(), 1U);
    desk.of(bob).isSubAdministrator = true;
    userChanged(2, bob);
    EXPECT_EQ(newLines().size(), 1U) << "a sub-administrator";
}

TEST_F(AdminLog, PairsOfEventsShareOneRememberedValue) {
    start();
    desk.current = bob;
    userChanged(13, bob);  // remembered although nobody is an administrator
    desk.current = ada;
    desk.of(bob).first = "Robert";
    userChanged(14, bob);
    EXPECT_EQ(newLines(), Lines{text(kStart + "{29017};{29035}Bob;{29036}Robert")});

    desk.of(bob).profile[6] = "at home";
    userChanged(11, bob);
    userChanged(12, bob);
    EXPECT_EQ(newLines(), Lines{}) << "nothing changed";
    desk.of(bob).profile[6] = "a \"b\";\r\nc";
    userChanged(12, bob);
    EXPECT_EQ(newLines(),
              Lines{text(kStart + "{29016};{29030}Robert;{29050};at home;{29051};") + "\"a \"\"b\"\";\nc\""});

    userChanged(13, bob);
    userChanged(12, bob);
    EXPECT_EQ(newLines().front().find(text("{29050};Robert;")) != std::string::npos, true) << "the later one wins";
    logger.SetLogging(false);
    desk.of(bob).profile[6] = "x";
    userChanged(11, bob);
    logger.SetLogging(true);
    userChanged(14, bob);
    EXPECT_EQ(newLines(), Lines{text(kStart + "{29017};{29035}Robert;{29036}Robert")})
        << "nothing remembered while off";
}

TEST_F(AdminLog, TextsOfOneLineStayWhatTheyAre) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},         {"a;b", "a;b"},           {"a\r\"b\r", "a\r\"b\r"},  {"a\nb", "\"a\nb\""},
        {"\n", "\"\n\""}, {"a\r\nb\r", "\"a\nb\""}, {"\"\n=x", "\"\"\"\n=x\""}};
    for (const auto& [before, after] : cases) {
        SV::String text = before;
        Logger::_HandleMultilineText(text);
        EXPECT_EQ(text.str(), after);
    }
}

struct SettingsCase {
    const char* text;  ///< null: no file
    bool logging;
    bool adminName;
};

TEST_F(AdminLog, SettingsAreReadAndFallBackToOffWithTheName) {
    const SettingsCase cases[] = {
        // from on, without the name
        {nullptr, false, true},
        {"LOGSETTINGS log:1 adminname:0", true, false},
        {"LOGSETTINGS log:0 adminname:1", false, true},
        {"LOGSETTINGS log:2 adminname:2", false, true},
        {"LOGSETTINGS log:-1 adminname:-1", false, true},
        {"LOGSETTINGS log:\"1\" adminname", false, false},
        {"LOGSETTINGS adminname:1", true, true},
        {"LOGSETTINGS log:0 OTHER adminname:1 LOGSETTINGS adminname:5", false, true},
        {"OTHER log:0 adminname:1", true, false},
        {"", false, true},
        {"LOGSETTINGS log:", false, true},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.text == nullptr ? "no file" : it.text);
        files.content.clear();
        if (it.text != nullptr) settings(it.text);
        logger.SetLogging(true);
        logger.SetAdminName(false);
        logger._GetSettings();
        EXPECT_EQ(logger.HasLogging(), it.logging);
        EXPECT_EQ(logger.HasAdminName(), it.adminName);
    }
    for (const char* failing : {"open", "read", "decrypt"}) {
        SCOPED_TRACE(failing);
        settings("LOGSETTINGS log:1 adminname:0");
        logger._GetSettings();
        EXPECT_TRUE(logger.HasLogging());
        desk.record.fail(failing, kUnknownCode);
        logger._GetSettings();
        EXPECT_TRUE(!logger.HasLogging() && logger.HasAdminName());
    }
    EXPECT_EQ(files.openHandles(), 0U);
}

TEST_F(AdminLog, TheDialogChangesAndSavesSettingsOnOkOnly) {
    logger.SetLogging(true);
    logger.DoSettings();
    EXPECT_EQ(windows.shownCheckBoxes, (std::vector<std::pair<bool, int>>{{true, -1}, {true, 0}}));
    EXPECT_TRUE(logger.HasLogging() && files.content.empty()) << "cancelled";
    windows.checks = {true, false};
    logger.DoSettings();
    EXPECT_EQ(files.content[kSettings], BracketCipher::enciphered("LOGSETTINGS log:1 adminname:0"));
    EXPECT_FALSE(logger.HasAdminName());
    windows.checks = {false, true};
    logger.DoSettings();
    EXPECT_EQ(files.content[kSettings], BracketCipher::enciphered("LOGSETTINGS log:0 adminname:1"));

    QorAdminLoggerSettingsDlg dialog(nullptr);
    EXPECT_FALSE(dialog.IsAdminNameEnabled());
    windows.checks = {true, true};
    EXPECT_TRUE(dialog.Execute() && dialog.IsAdminNameEnabled() && dialog.GetAdminName());
    dialog.SetLogging(false);
    EXPECT_TRUE(!dialog.IsAdminNameEnabled() && dialog.GetAdminName());
}

TEST_F(AdminLog, WriteFailuresAreSilentAndLeaveTheFileClosed) {
    start();
    const std::string before = files.content[kLog];
    for (const char* failing : {"open", "write", "encrypt"}) {
        desk.record.fail(failing, kUnknownCode);
        EXPECT_TRUE(logger._Log("a", "b")) << failing;
        EXPECT_EQ(files.content[kLog], before) << failing;
        EXPECT_EQ(files.openHandles(), 0U) << failing;
    }
    files.room = 3;
    EXPECT_TRUE(logger._Log("a", "b"));
    EXPECT_EQ(files.content[kLog], before + "<20") << "half a line is not ended";
    EXPECT_EQ(files.openHandles(), 0U);
}

struct ExportCase {
    const char* name;
    std::optional<std::string> path;
    const char* failing;
    std::uint16_t message;  ///< 0: no box
    const char* written;    ///< the file that then holds the log
};

TEST_F(AdminLog, AnExportTellsItsOutcome) {
    using namespace std::string_literals;
    const ExportCase cases[] = {
        {"cancelled", std::nullopt, "", 0, nullptr},
        {"empty", "", "", 29061, nullptr},
        {"a folder", "/out/", "", 29061, nullptr},
        {"no such folder", "/in/log.csv", "", 29062, nullptr},
        {"good", "/out/log.csv", "", 29064, "/out/log.csv"},
        {"another extension", "/out/my.log.txt", "", 29064, "/out/my.log.csv"},
        {"none", "/out/log", "", 29064, "/out/log.csv"},
        {"hidden", "/out/.log", "", 29064, "/out/.log.csv"},
        {"dot at the end", "log.", "", 29064, "log.csv"},
        {"in the root", "/log.csv", "", 29064, "/log.csv"},
        {"log cannot be opened", "/out/log.csv", "open", 29063, nullptr},
        {"log cannot be read", "/out/log.csv", "read", 29063, nullptr},
        {"cannot be written", "/out/log.csv", "write", 29065, nullptr},
        {"cannot be kept", "/out/log.csv", "close 2", 29065, nullptr},
    };
    const std::string log = BracketCipher::enciphered("one") + "\n" + BracketCipher::enciphered("two\nlines") + "\n";
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        files.content = {{kLog, log}};
        windows.boxes.clear();
        windows.path = it.path;
        desk.record.fail(std::string_view(it.failing).substr(0, 5), kUnknownCode, it.failing == "close 2"s ? 2 : 1);
        logger.ExportLog();
        desk.record.failNothing();
        ASSERT_EQ(windows.boxes.size(), it.message == 0 ? 0U : 1U);
        if (it.message != 0) {
            EXPECT_EQ(windows.boxes[0].first, it.message == 29064 ? QorBoxStyle::Information : QorBoxStyle::Error);
            const std::string file = it.written != nullptr ? it.written : it.path->ends_with("csv") ? *it.path : ""s;
            EXPECT_EQ(windows.boxes[0].second, Qor_Message(it.message, {{"%f", file}}).str());
        }
        if (it.written != nullptr) {
            EXPECT_EQ(files.content[it.written], "one\ntwo\nlines\n");
        }
        EXPECT_EQ(files.content[kLog], log);
        EXPECT_EQ(files.openHandles(), 0U);
    }
    EXPECT_EQ(windows.shownFilter, "*.csv");
}

TEST_F(AdminLog, LogsOfAllLengthsAreReadToTheirEnd) {
    for (const std::size_t size : {1U, 2046U, 2047U, 2048U, 2049U, 4095U, 4096U, 4097U, 6144U}) {
        SCOPED_TRACE(size);
        const std::string plain(size, 'q');
        files.content[kLog] = BracketCipher::enciphered(plain.substr(0, size - 1));  // the size and one more
        for (int lineFeeds = 0; lineFeeds < 3; ++lineFeeds) {
            desk.record.forget();
            files.content["/out/log.csv"].clear();
            windows.path = "/out/log.csv";
            logger.ExportLog();
            EXPECT_EQ(files.content["/out/log.csv"], plain.substr(0, size - 1) + "\n") << lineFeeds;
            EXPECT_EQ(desk.record.count("read"), static_cast<int>(files.content[kLog].size() / 2048 + 1));
            files.content[kLog] += "\n";
        }
    }
}

TEST_F(AdminLog, MissingEmptyAndDamagedLogs) {
    windows.path = "/out/log.csv";
    const auto exported = [&](std::string log) {
        files.content = {{kLog, std::move(log)}};
        logger.ExportLog();
        return files.content["/out/log.csv"];
    };
    EXPECT_FALSE(logger._ReadLogFromDB());
    EXPECT_EQ(exported(""), "");
    EXPECT_TRUE(files.content.contains("/out/log.csv")) << "an empty log is a log";
    const auto gap = [](const char* line) { return Qor_Message(29006, {{"%n", line}}).str() + "\n"; };
    EXPECT_EQ(exported("<bar>\n\nforeign\n<gjb>\n<cut"), "one\n" + gap("3") + "two\n" + gap("5"));
    EXPECT_EQ(exported(std::string("<bar>\0x\n", 8)), gap("1"));
}

}  // namespace
