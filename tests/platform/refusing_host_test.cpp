// SPDX-License-Identifier: Apache-2.0
// What everybody meets who calls the platform without a host, or with a host that overrides nothing: every operation
// answers with a refusal and with its outputs at "none".
#include <gtest/gtest.h>

#include <string>

#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreMM_AttributeProfiles.h"
#include "platform/QorCoreModManUpdater.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorEncryption.h"
#include "platform/QorErrorBox.h"
#include "platform/QorFileManager.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/QorHost.h"
#include "platform/QorInternational.h"
#include "platform/QorMessWin.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "platform/QorSyntaxChecks.h"
#include "platform/QorTimeFunctions.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"

namespace {

constexpr auto kRefused = QorErrorCode::NotInstalled;

/// Outputs that a caller may have used before.
struct Stale {
    long number = 7;
    long other = 7;
    double floating = 7.0;
    char* text = nullptr;
    char stale[2] = "x";
    ISortedSet<long> set{7};
    ISequence<long> sequence{7};
    Stale() { text = stale; }
};

#define EXPECT_NUMBER_REFUSED(call)         \
    {                                       \
        Stale out;                          \
        EXPECT_EQ(call, kRefused) << #call; \
        EXPECT_EQ(out.number, -1) << #call; \
    }
#define EXPECT_TEXT_REFUSED(call)              \
    {                                          \
        Stale out;                             \
        EXPECT_EQ(call, kRefused) << #call;    \
        EXPECT_EQ(out.text, nullptr) << #call; \
    }
#define EXPECT_SET_REFUSED(call)                 \
    {                                            \
        Stale out;                               \
        EXPECT_EQ(call, kRefused) << #call;      \
        EXPECT_TRUE(out.set.isEmpty()) << #call; \
    }

void expectRepositoryRefuses(QorCoreModelingManager& repository) {
    EXPECT_TEXT_REFUSED(repository.getAttributeName(1, out.text));
    EXPECT_TEXT_REFUSED(repository.getClassName(1, out.text));
    EXPECT_TEXT_REFUSED(repository.getRelationClassName(1, out.text));
    EXPECT_TEXT_REFUSED(repository.getRecordClassName(1, out.text));
    EXPECT_TEXT_REFUSED(repository.getAppLibraryName(1, out.text));
    EXPECT_TEXT_REFUSED(repository.getAppLibraryName(out.text));
    EXPECT_TEXT_REFUSED(repository.getAttributeValue(1, 1, out.text, false));
    EXPECT_TEXT_REFUSED(repository.getAttributeValueAsNewChar(1, 1, out.text));
    EXPECT_SET_REFUSED(repository.getAllInstancesOfClassAndSubClassInModel(1, 1, out.set, true));
    EXPECT_SET_REFUSED(repository.getAllInstantiableClasses(1, out.set, false));
    EXPECT_SET_REFUSED(repository.getAllFromRelationsRecursive(1, out.set));
    EXPECT_SET_REFUSED(repository.getAllToRelationsRecursive(1, out.set));
    EXPECT_SET_REFUSED(repository.getAllSubClasses(1, out.set));
    EXPECT_SET_REFUSED(repository.getAllInstancesInModel(1, out.set));
    EXPECT_SET_REFUSED(repository.getFromRelationInstances(1, out.set));
    EXPECT_SET_REFUSED(repository.getToRelationInstances(1, out.set));
    EXPECT_NUMBER_REFUSED(repository.classOf(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.getClassIDFromClassName(1, "a", out.number));
    EXPECT_NUMBER_REFUSED(repository.getRelationIDFromRelationName(1, "a", out.number));
    EXPECT_NUMBER_REFUSED(repository.getLibraryOfClass(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.getAttributeIDFromAttributeName(1, "a", out.number));
    EXPECT_NUMBER_REFUSED(repository.getRecordClassIDFromAttributeID(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.getModelClass(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.GetClassOfInstance(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.getInstanceIDFromInstanceName(1, 1, "a", out.number));
    EXPECT_NUMBER_REFUSED(repository.createInstance(1, 1, "a", out.number));
    EXPECT_NUMBER_REFUSED(repository.getModelThreadIDFromModelName("a", 1, out.number));
    EXPECT_NUMBER_REFUSED(repository.getLastModelVersionOfModelThread(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.relationOf(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.getToInstanceViaRelnInstance(1, out.number));
    EXPECT_NUMBER_REFUSED(repository.getAttributeValue(1, 1, out.number, false));
    EXPECT_NUMBER_REFUSED(repository.createRecordInstance(1, 1, 1, out.number, -1));

    Stale out;
    EXPECT_EQ(repository.getAttachedLibraries(1, out.number, out.other), kRefused);
    EXPECT_EQ(std::pair(out.number, out.other), std::pair(-1L, -1L));
    EXPECT_EQ(repository.getEndpointsOfRelationInstance(1, out.number, out.other), kRefused);
    EXPECT_EQ(repository.getAttributeIDFromAttrProfAttributeName(1, "a", "b", out.number, out.other), kRefused);
    EXPECT_EQ(repository.getRecordInstances(1, 1, out.sequence), kRefused);
    EXPECT_TRUE(out.sequence.isEmpty());
    EXPECT_EQ(repository.getAttributeValue(1, 1, out.floating, false), kRefused);
    EXPECT_EQ(out.floating, 0.0);

    QorCoreAttributeType type = QorCoreAttributeType::Text;
    EXPECT_EQ(repository.getAttributeType(1, type), kRefused);
    EXPECT_EQ(repository.getUIAttributeType(1, type), kRefused);
    EXPECT_EQ(type, QorCoreAttributeType::None);
    QorSourceInterRefContainer references;
    EXPECT_EQ(repository.getInterRefsOfSourceModel(1, references), kRefused);
    QorUserID holder(7);
    EXPECT_FALSE(repository.isLibraryLocked(1, holder));
    EXPECT_TRUE(holder.isNone());

    EXPECT_EQ(repository.LoadApplicationLibrary(1, true), kRefused);
    EXPECT_EQ(repository.discardCompleteLibrary(1), kRefused);
    EXPECT_EQ(repository.updateFacets(), kRefused);
    EXPECT_EQ(repository.initLibraryHandlers(true), kRefused);
    EXPECT_EQ(repository.lockLibrary(1, false, QorDBLockModeType::Exclusive), kRefused);
    EXPECT_EQ(repository.unlockLibrary(1), kRefused);
    EXPECT_EQ(repository.RenameInstance(1, 1, "a", true), kRefused);
    EXPECT_EQ(repository.deleteInstance(1, 1), kRefused);
    EXPECT_EQ(repository.moveFromEndpoint(1, 1), kRefused);
    EXPECT_EQ(repository.moveToEndpoint(1, 1), kRefused);
    EXPECT_EQ(repository.setAttributeValue(1, 1, 1, "a", false), kRefused);
    EXPECT_EQ(repository.setAttributeValue(1, 1, 1, 1L, false), kRefused);
    EXPECT_EQ(repository.setAttributeValue(1, 1, 1, 1.0, false), kRefused);
    EXPECT_EQ(repository.setAttributeValueAsString(1, 1, 1, "a", false), kRefused);
    EXPECT_EQ(repository.deleteRecordInstance(1, 1, 1, 1), kRefused);
    EXPECT_FALSE(repository.IsLibraryLoaded(1));
    EXPECT_FALSE(repository.isClass(1) || repository.isRelationClass(1) || repository.isRelationInstance(1));
    EXPECT_FALSE(repository.isModelVersion(1));
    EXPECT_EQ(repository.bulkView(), nullptr);
}

void expectServicesRefuse() {
    const QorUserID user(1);
    const QorUserGroupID group(1);
    QorUserID someone(7);
    EXPECT_EQ(QorUserManager::allUmansGetCurrentUserID(someone), kRefused);
    EXPECT_TRUE(someone.isNone());
    SV::String first = "a";
    SV::String second = "b";
    auto kind = QorUserLogonNameType::TwoPart;
    EXPECT_EQ(QorUserManager::allUmansGetUserFullDisplayNameOfUserID(user, first, second, kind, false), kRefused);
    EXPECT_EQ(Qor_JoinDisplayName(first, second, kind), "");
    EXPECT_EQ(QorUserManager::allUmansGetUserGroupName(group, first), kRefused);
    EXPECT_EQ(QorUserManager::getUserProfile(user, 6, first), kRefused);
    EXPECT_FALSE(QorUserManager::isUserAdmin(user) || QorUserManager::isUserSubAdmin(user));
    EXPECT_EQ(QorUserManager::push(QorUserManagerNumber::Ordinary), kRefused);
    EXPECT_EQ(QorUserManager::pop(), kRefused);
    ISortedSet<QorUserID> users{user};
    EXPECT_EQ(QorUserManager::getAllUserIDs(users), kRefused);
    EXPECT_TRUE(users.isEmpty());
    EXPECT_NUMBER_REFUSED(QorUserManager::allUmansGetAllowedApplicationLibrary(user, out.number));
    EXPECT_NUMBER_REFUSED(QorDataSourceDB::Instance().getSingleSignOnMode(out.number));
    QorAccModelgroupContainer entries;
    EXPECT_EQ(QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(group, entries), kRefused);
    ISortedSet<QorUserGroupID> groups{group};
    EXPECT_EQ(QorDBAdministration::getUsergroups(user, groups), kRefused);
    EXPECT_EQ(QorDBAdministration::getSysUsergroups(user, groups), kRefused);
    EXPECT_TRUE(groups.isEmpty());

    EXPECT_SET_REFUSED(QorCoreModelGroupManager::GetAllSubGroupsOfModelGroup(1, out.set, true));
    EXPECT_EQ(QorCoreModelGroupManager::SetUserGroupPermission(1, group, 2), kRefused);
    EXPECT_NUMBER_REFUSED(QorCoreMM_AttributeProfiles::Instance().getAllowedAttrProfClassOfAttribute(1, out.number));
    EXPECT_NUMBER_REFUSED(QorAttrProfRefDomainContainer::GetReferencedClassOfAttribute(1, out.number));

    EXPECT_FALSE(QorFileManager::fileExists("db:\\a") || QorFileManager::isFolder("/"));
    EXPECT_EQ(QorFileManager::fileOpenRead("db:\\a", QorFileOpenMode::Read), -1);
    EXPECT_EQ(QorFileManager::fileOpenWrite("db:\\a", QorFileOpenMode::Append), -1);
    char byte = 0;
    EXPECT_EQ(QorFileManager::fileRead(0, &byte, 1), -1);
    EXPECT_EQ(QorFileManager::fileWrite(0, &byte, 1), -1);
    EXPECT_FALSE(QorFileManager::fileClose(0));
    EXPECT_TEXT_REFUSED(QorEncryption::Instance().Encrypt(QorEncryption::kStandardMode, "a", out.text, -1));
    EXPECT_TEXT_REFUSED(QorEncryption::Instance().Decrypt(QorEncryption::kStandardMode, "a", out.text));

    QorCoreInterReferenceHandler references(1, 1, 1);
    EXPECT_EQ(references.initHandler(), kRefused);
    auto code = QorErrorCode::Ok;
    EXPECT_FALSE(references.initHandler("", code));
    EXPECT_EQ(code, kRefused);
    references.MarkAllAdded();
    EXPECT_EQ(references._Save(1, 1, false), kRefused);
    EXPECT_EQ(QorCoreCopyManager::Instance().getSourceInstNameOfPastedInst(1, 1, first), kRefused);
    EXPECT_EQ(QorCoreExpressionManager::GetExprHandler(1, 1, 1).GetResultText(first), kRefused);
    EXPECT_FALSE(QorBasicNotebookAttrHandler(1).GetAttr(0, first));
    { const QorCoreAutoExManStopStart stopped; }

    QorGrObjPattern pattern;
    EXPECT_EQ(QorGrObjAttrHandler(true, false).FindPattern("a", true, pattern), kRefused);
    std::vector<QorGrObjPattern> patterns(1);
    EXPECT_EQ(QorGrObjAttrHandler(true, false).GetPatterns(true, patterns), kRefused);
    EXPECT_TRUE(patterns.empty());
    EXPECT_FALSE(QorModelTypeAttrHandler::ExistsGlobal());
    auto* modelTypes = QorModelTypeAttrHandler::GetGlobal();
    unsigned long modelType = 7;
    EXPECT_EQ(modelTypes->GetModelTypeIndexOfModel(1, modelType), kRefused);
    EXPECT_EQ(modelType, ~0ul);
    EXPECT_EQ(modelTypes->GetModelTypeIndex("a", modelType), kRefused);
    EXPECT_SET_REFUSED(modelTypes->GetModelTypeVisibleClasses(0, out.set));
    EXPECT_FALSE(modelTypes->isError());

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
    void internalError(const char*, long, const char* text) override { lines.emplace_back(text); }
    std::vector<std::string> lines;
};

}  // namespace

TEST(RefusingHost, WithoutAHostEverythingRefusesOnStandardError) {
    testing::internal::CaptureStderr();
    expectRepositoryRefuses(*QorCoreModelingManager::GetGlobal());
    expectServicesRefuse();
    const auto lines = testing::internal::GetCapturedStderr();
    EXPECT_NE(lines.find("QorCoreMM_Enhanced::classOf is not offered by the host"), std::string::npos);
}

TEST(RefusingHost, AHostThatOverridesNothingRefusesAndNamesEachOperation) {
    Quiet windows;
    QorCoreModelingManager repository;
    QorUserService users;
    QorFileService files;
    QorHost host;
    host.repository = &repository;
    host.users = &users;
    host.files = &files;
    host.windows = &windows;
    const QorHostInstallation installation(host);
    ASSERT_EQ(QorCoreModelingManager::GetGlobal(), &repository);
    expectRepositoryRefuses(repository);
    expectServicesRefuse();
    EXPECT_NE(std::find(windows.lines.begin(), windows.lines.end(), "QorFileService::open is not offered by the host"),
              windows.lines.end());
}

namespace {

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
        EXPECT_EQ(QorUserManager::allUmansGetCurrentUserID(user), kRefused);
    }
    EXPECT_EQ(QorUserManager::allUmansGetCurrentUserID(user), QorErrorCode::Broken);
}
