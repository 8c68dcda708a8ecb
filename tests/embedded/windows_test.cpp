// SPDX-License-Identifier: Apache-2.0
// What the embedded platform shows, recorded or on standard error, and in which language.
#include <gtest/gtest.h>

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
