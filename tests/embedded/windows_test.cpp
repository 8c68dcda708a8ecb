// SPDX-License-Identifier: Apache-2.0
// What the embedded platform shows, recorded or on standard error, and in which language.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/QorCoreModManUpdater.h"
#include "platform/QorErrorBox.h"
#include "platform/QorInternational.h"
#include "platform/QorMessWin.h"
#include "platform/displayErrorMessage.h"
#include "support/Workshop.h"

namespace {

std::string described(const QorShownWindow& shown) {
    return std::to_string(static_cast<int>(shown.kind)) + "/" + std::to_string(shown.style) + "/" + shown.text;
}

void showEverything() {
    const QorWaitCursor wait;
    {
        const QorWaitCursor again;
        QorMessWin progress(nullptr, "loading", 0, true);
        progress.Show();
        EXPECT_EQ(QorErrorBox(nullptr, QorBoxStyle::Error, "it\nfailed").Execute(QorErrorBoxType::Standard), 0);
    }
    displayErrorMessage("acard", 12, "odd");
    QorErrorBox::ClearShownErrorBoxesTable();
    EXPECT_EQ(QorCoreModManUpdater::UpdateAppLibList(), QorErrorCode::Ok);
    EXPECT_FALSE(Qor_InstalledHost()->windows->query(nullptr, "sure?"));
}

TEST(RecordedWindows, ShowEverythingInOrder) {
    Workshop w;
    showEverything();
    std::vector<std::string> seen;
    for (const QorShownWindow& shown : w.platform.shown()) seen.push_back(described(shown));
    EXPECT_EQ(seen, (std::vector<std::string>{"4/0/", "2/0/loading", "0/16/it\nfailed", "3/0/loading",
                                              "6/0/acard:12: odd", "9/0/", "10/0/", "1/32/sure?", "5/0/"}));
    EXPECT_FALSE(SV::Application::IsWaitCursor());
}

struct Dialogs {
    // The third is enabled by the fourth, which nothing enables.
    std::array<QorCheckBox, 4> boxes{{{"log", false, -1}, {"names", true, 0}, {"early", true, 3}, {"never", false, 4}}};
    SV::String path = "unchanged";
    QorWindows& windows = *Qor_InstalledHost()->windows;
    std::string askBoxes() {
        const bool isOk = windows.checkBoxDialog(nullptr, "Settings", boxes);
        return std::string(isOk ? "ok " : "no ") + (boxes[0].checked ? "1" : "0") + (boxes[1].checked ? "1" : "0");
    }
    std::string askPath() {
        const bool isOk = windows.saveFileDialog(nullptr, {"*.csv", "Tables"}, path);
        return (isOk ? "ok " : "no ") + path.str();
    }
};

TEST(RecordedWindows, AnswerAsTheyWereTold) {
    Workshop w;
    Dialogs dialogs;
    EXPECT_EQ(dialogs.askBoxes(), "no 01");
    EXPECT_EQ(dialogs.askPath(), "no ");
    w.platform.answers() = {{true}, {{false, false}, {true, false, true}, {}}, {"a.csv", ""}};
    EXPECT_TRUE(dialogs.windows.query(nullptr, "sure?"));
    EXPECT_FALSE(dialogs.windows.query(nullptr, "sure?")) << "used up";
    EXPECT_EQ(dialogs.askBoxes(), "ok 01") << "a box that is not enabled stays";
    EXPECT_EQ(dialogs.askBoxes(), "ok 10");
    EXPECT_EQ(dialogs.askBoxes(), "ok 10");
    EXPECT_EQ(dialogs.askPath(), "ok a.csv");
    EXPECT_EQ(dialogs.askPath(), "ok ");
}

// In a process of its own, which has a terminal for its standard input and error, and what is typed there.
std::string answeredOnATerminal(const std::string& typed) {
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    EXPECT_TRUE(master >= 0 && ::grantpt(master) == 0 && ::unlockpt(master) == 0);
    const std::string name = ::ptsname(master);
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    EXPECT_EQ(::write(master, typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    const pid_t child = ::fork();
    if (child == 0) {
        const int terminal = ::open(name.c_str(), O_RDWR | O_NOCTTY);
        ::dup2(terminal, STDIN_FILENO);
        ::dup2(terminal, STDERR_FILENO);
        ::setenv("TERM", "xterm", 1);
        const Workshop w({.language = "en", .console = true, .user = "ada"});
        Dialogs dialogs;
        std::string result = dialogs.windows.query(nullptr, "sure?") ? "yes; " : "no; ";
        result += dialogs.askBoxes() + "; ";
        result += dialogs.askPath();
        ::_exit(::write(ends[1], result.data(), result.size()) == static_cast<ssize_t>(result.size()) ? 0 : 1);
    }
    ::close(ends[1]);
    std::string result(200, '\0');
    result.resize(static_cast<std::size_t>(std::max<ssize_t>(0, ::read(ends[0], result.data(), result.size()))));
    ::close(ends[0]);
    ::waitpid(child, nullptr, 0);
    ::close(master);
    return result;
}

TEST(ConsoleDialogs, AreAskedOnATerminalAndCancelledByTheEndOfInput) {
    EXPECT_EQ(answeredOnATerminal("y\nyes\nn\nout.csv\n"), "yes; ok 10; ok out.csv");
    EXPECT_EQ(answeredOnATerminal("\n\n\n"), "no; ok 01; no ") << "what stands there stays";
    EXPECT_EQ(answeredOnATerminal("n\ny\n\x04\x04"), "no; no 01; no ");
}

class ConsoleWindows : public testing::Test {
protected:
    void TearDown() override { ::unsetenv("CLICOLOR_FORCE"); }
    static std::string shownOnStandardError(const std::function<void()>& show) {
        testing::internal::CaptureStderr();
        {
            const Workshop w({.language = "en", .console = true, .user = "ada"});
            show();
            EXPECT_TRUE(w.platform.shown().empty());
        }
        return testing::internal::GetCapturedStderr();
    }
};

TEST_F(ConsoleWindows, WriteBoxesAndErrorsAndNoProgressWithoutATerminal) {
    EXPECT_EQ(shownOnStandardError(showEverything),
              "error: it\n    failed\ninternal error: acard, line 12: odd\nsure? no\n");
}

TEST_F(ConsoleWindows, EscapeWhatCouldSteerATerminalAndColourOnlyWhenForced) {
    const auto box = [] {
        (void)QorErrorBox(nullptr, QorBoxStyle::Error, "a\x1b[2Jb\r\x7f\n").Execute(QorErrorBoxType::Standard);
    };
    EXPECT_EQ(shownOnStandardError(box), "error: a\\x1b[2Jb\\x0d\\x7f\n");
    ::setenv("CLICOLOR_FORCE", "1", 1);
    EXPECT_EQ(shownOnStandardError(box), "\x1b[31merror: \x1b[0ma\\x1b[2Jb\\x0d\\x7f\n");
}

TEST(Texts, ComeInTheChosenLanguageOrInEnglish) {
    constexpr unsigned long kLoading = QorTextResourceType + 28400;
    const auto loading = [&](const char* language) {
        const Workshop w({.language = language, .console = false, .user = "ada"});
        return std::pair(QorInternational::GetCurrentISOID().str(), SV::String(kLoading).str());
    };
    EXPECT_EQ(loading("en").first, "en");
    EXPECT_EQ(loading("de_AT").first, "de");
    EXPECT_NE(loading("de").second, loading("en").second);
    EXPECT_EQ(loading("xx"), loading("en"));
    const Workshop w;
    EXPECT_EQ(SV::String(QorTextResourceType + 1), "#1");
}

}  // namespace
