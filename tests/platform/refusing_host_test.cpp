// SPDX-License-Identifier: Apache-2.0
// What everybody meets who calls the platform without a host, or with a host that overrides nothing: every operation
// answers with a refusal and with its outputs at "none".
#include <iterator>

#include "platform/QorCoreModManUpdater.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorErrorBox.h"
#include "platform/QorFileManager.h"
#include "platform/QorInternational.h"
#include "platform/QorMessWin.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "platform/QorSyntaxChecks.h"
#include "platform/QorTimeFunctions.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"
#include "support/ContractCalls.h"

namespace {

namespace fs = std::filesystem;

/// The operations whose defaults refuse, as the sources name them.
std::set<std::string> refusingOperations() {
    constexpr std::string_view kCall = "Qor_NotInstalled(\"";
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::path(QOR_SOURCE_DIR) / "src/platform")) {
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        for (std::size_t at = text.find(kCall); at != std::string::npos; at = text.find(kCall, at + 1)) {
            const std::size_t name = at + kCall.size();
            names.insert(text.substr(name, text.find('"', name) - name));
        }
    }
    return names;
}

TEST(RefusingHost, RefusesEveryOperationByItsNameWhateverItLeavesOut) {
    EXPECT_EQ(qor::test::operationsRefusedBy({}, true), refusingOperations());
    QorCoreModelingManager repository;
    QorUserService users;
    QorFileService files;
    QorHost host;
    host.repository = &repository;
    host.users = &users;
    host.files = &files;
    EXPECT_EQ(qor::test::operationsRefusedBy(host, true), refusingOperations());
}

TEST(RefusingHost, WithoutAHostQuestionsHaveAnswersAndRefusalsGoToStandardError) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(QorCoreModelingManager::GetGlobal()->updateFacets(), QorErrorCode::NotInstalled);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("updateFacets is not offered by the host"),
              std::string::npos);
    EXPECT_EQ(QorCoreModelingManager::GetGlobal()->bulkView(), nullptr);
    EXPECT_FALSE(QorModelTypeAttrHandler::ExistsGlobal());
    EXPECT_FALSE(QorModelTypeAttrHandler::GetGlobal()->isError());
    EXPECT_EQ(Qor_GetCoreVar(QorCoreVarType::ApplicationLibrary), -1);
    EXPECT_EQ(Qor_GetSyntaxChecksLevel(), "4.00.00");
    EXPECT_EQ(QorInternational::GetCurrentISOID(), "en");
    EXPECT_EQ(SV::String(QorTextResourceType + 28400), "#28400");
    EXPECT_EQ(SV::Application::GetTopWindow(), nullptr);
    EXPECT_FALSE(SV::Application::IsWaitCursor());
    EXPECT_EQ(QorErrorBox(nullptr, QorBoxStyle::Error, "a").Execute(QorErrorBoxType::Standard), 0);
    QorMessWin(nullptr, "a", 0, true).Show();
    EXPECT_EQ(QorCoreModManUpdater::UpdateAppLibList(), QorErrorCode::Ok);
    SV::Date date;
    SV::Time time;
    QorTimeFunctions::getLocalDateAndTime(date, time);
    EXPECT_TRUE(date.IsValid());
}

class Quiet final : public QorWindows {
public:
    void internalError(const char*, long, const char*) override {}
};

class Throwing final : public QorUserService {
public:
    QorErrorCode currentUser(QorUserID&) override { throw 1; }
};

}  // namespace

TEST(RefusingHost, InstallationsNestAndWhatAHostThrowsStopsAtTheBorder) {
    Quiet windows;
    Throwing users;
    QorHost throwing;
    throwing.users = &users;
    throwing.windows = &windows;
    const QorHostInstallation outer(throwing);
    QorUserID user;
    {
        QorHost plain;
        plain.windows = &windows;
        const QorHostInstallation inner(plain);
        EXPECT_EQ(QorUserManager::allUmansGetCurrentUserID(user), QorErrorCode::NotInstalled);
    }
    EXPECT_EQ(QorUserManager::allUmansGetCurrentUserID(user), QorErrorCode::Broken);
}
