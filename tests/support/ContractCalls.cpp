// SPDX-License-Identifier: Apache-2.0
#include "support/ContractCalls.h"

#include "platform/QorCoreInterReferenceHandler.h"
#include "platform/QorCoreMM_AttributeProfiles.h"
#include "platform/QorCoreModelGroupManager.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorEditingHelpers.h"
#include "platform/QorEncryption.h"
#include "platform/QorFileManager.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"

namespace {

/// Outputs that a caller may have used before.
struct Outputs {
    long number = 7;
    long other = 7;
    unsigned long index = 7;
    double floating = 7.0;
    char stale[2] = "x";
    char* text = stale;
    SV::String string = "x";
    SV::String further = "x";
    ISortedSet<long> set{7};
    ISequence<long> sequence{7};
    QorCoreAttributeType type = QorCoreAttributeType::Text;
    QorSourceInterRefContainer references;
    QorUserID user{7};
    QorUserLogonNameType kind = QorUserLogonNameType::TwoPart;
    ISortedSet<QorUserID> users{QorUserID(7)};
    ISortedSet<QorUserGroupID> groups{QorUserGroupID(7)};
    QorAccModelgroupContainer entries;
    QorGrObjPattern pattern;
    std::vector<QorGrObjPattern> patterns{{}};
    QorErrorCode code = QorErrorCode::Ok;

    ~Outputs() {
        if (text != stale) delete[] text;
    }
};

bool isNone(long output) { return output == -1; }
bool isNone(unsigned long output) { return output == ~0UL; }
bool isNone(double output) { return output == 0.0; }
bool isNone(char* output) { return output == nullptr; }
bool isNone(const SV::String& output) { return output.IsEmpty(); }
bool isNone(QorCoreAttributeType output) { return output == QorCoreAttributeType::None; }
bool isNone(const QorUserID& output) { return output.isNone(); }
bool isNone(const QorSourceInterRefContainer& output) { return output.numberOfElements() == 0; }
bool isNone(const QorAccModelgroupContainer& output) { return output.numberOfElements() == 0; }
template <class Element>
bool isNone(const ISortedSet<Element>& output) {
    return output.isEmpty();
}
bool isNone(const ISequence<long>& output) { return output.isEmpty(); }
bool isNone(const std::vector<QorGrObjPattern>& output) { return output.empty(); }

bool isRefusal(QorErrorCode answer) { return answer == QorErrorCode::NotInstalled; }
bool isRefusal(bool answer) { return !answer; }
bool isRefusal(long answer) { return answer == -1; }

#define CALL(call)                                   \
    {                                                \
        Outputs out;                                 \
        const auto answer = call;                    \
        if (mustRefuse) {                            \
            EXPECT_TRUE(isRefusal(answer)) << #call; \
        }                                            \
    }
#define CALL_FOR(output, call)                                             \
    {                                                                      \
        Outputs out;                                                       \
        const auto answer = call;                                          \
        if (mustRefuse) {                                                  \
            EXPECT_TRUE(isRefusal(answer) && isNone(out.output)) << #call; \
        }                                                                  \
    }

void callRepository(bool mustRefuse) {
    QorCoreModelingManager& repository = *QorCoreModelingManager::GetGlobal();
    CALL_FOR(text, repository.getAttributeName(1, out.text));
    CALL_FOR(text, repository.getClassName(1, out.text));
    CALL_FOR(text, repository.getRelationClassName(1, out.text));
    CALL_FOR(text, repository.getRecordClassName(1, out.text));
    CALL_FOR(text, repository.getAppLibraryName(1, out.text));
    CALL_FOR(text, repository.getAppLibraryName(out.text));
    CALL_FOR(text, repository.getAttributeValue(1, 1, out.text, false));
    CALL_FOR(text, repository.getAttributeValueAsNewChar(1, 1, out.text));
    CALL_FOR(set, repository.getAllInstancesOfClassAndSubClassInModel(1, 1, out.set, true));
    CALL_FOR(set, repository.getAllInstantiableClasses(1, out.set, false));
    CALL_FOR(set, repository.getAllFromRelationsRecursive(1, out.set));
    CALL_FOR(set, repository.getAllToRelationsRecursive(1, out.set));
    CALL_FOR(set, repository.getAllSubClasses(1, out.set));
    CALL_FOR(set, repository.getAllInstancesInModel(1, out.set));
    CALL_FOR(set, repository.getFromRelationInstances(1, out.set));
    CALL_FOR(set, repository.getToRelationInstances(1, out.set));
    CALL_FOR(number, repository.classOf(1, out.number));
    CALL_FOR(number, repository.getClassIDFromClassName(1, "a", out.number));
    CALL_FOR(number, repository.getRelationIDFromRelationName(1, "a", out.number));
    CALL_FOR(number, repository.getLibraryOfClass(1, out.number));
    CALL_FOR(number, repository.getAttributeIDFromAttributeName(1, "a", out.number));
    CALL_FOR(number, repository.getRecordClassIDFromAttributeID(1, out.number));
    CALL_FOR(number, repository.getModelClass(1, out.number));
    CALL_FOR(number, repository.GetClassOfInstance(1, out.number));
    CALL_FOR(number, repository.getInstanceIDFromInstanceName(1, 1, "a", out.number));
    CALL_FOR(number, repository.createInstance(1, 1, "a", out.number));
    CALL_FOR(number, repository.getModelThreadIDFromModelName("a", 1, out.number));
    CALL_FOR(number, repository.getLastModelVersionOfModelThread(1, out.number));
    CALL_FOR(number, repository.relationOf(1, out.number));
    CALL_FOR(number, repository.getToInstanceViaRelnInstance(1, out.number));
    CALL_FOR(number, repository.getAttributeValue(1, 1, out.number, false));
    CALL_FOR(number, repository.createRecordInstance(1, 1, 1, out.number, -1));
    CALL_FOR(number, repository.getAttachedLibraries(1, out.number, out.other));
    CALL_FOR(other, repository.getAttachedLibraries(1, out.number, out.other));
    CALL_FOR(other, repository.getEndpointsOfRelationInstance(1, out.number, out.other));
    CALL_FOR(other, repository.getAttributeIDFromAttrProfAttributeName(1, "a", "b", out.number, out.other));
    CALL_FOR(sequence, repository.getRecordInstances(1, 1, out.sequence));
    CALL_FOR(floating, repository.getAttributeValue(1, 1, out.floating, false));
    CALL_FOR(type, repository.getAttributeType(1, out.type));
    CALL_FOR(type, repository.getUIAttributeType(1, out.type));
    CALL_FOR(references, repository.getInterRefsOfSourceModel(1, out.references));
    CALL_FOR(user, repository.isLibraryLocked(1, out.user));
    CALL(repository.LoadApplicationLibrary(1, true));
    CALL(repository.discardCompleteLibrary(1));
    CALL(repository.updateFacets());
    CALL(repository.initLibraryHandlers(true));
    CALL(repository.lockLibrary(1, false, QorDBLockModeType::Exclusive));
    CALL(repository.unlockLibrary(1));
    CALL(repository.RenameInstance(1, 1, "a", true));
    CALL(repository.deleteInstance(1, 1));
    CALL(repository.moveFromEndpoint(1, 1));
    CALL(repository.moveToEndpoint(1, 1));
    CALL(repository.setAttributeValue(1, 1, 1, "a", false));
    CALL(repository.setAttributeValue(1, 1, 1, 1L, false));
    CALL(repository.setAttributeValue(1, 1, 1, 1.0, false));
    CALL(repository.setAttributeValueAsString(1, 1, 1, "a", false));
    CALL(repository.deleteRecordInstance(1, 1, 1, 1));
    CALL(repository.IsLibraryLoaded(1));
    CALL(repository.isClass(1));
    CALL(repository.isRelationClass(1));
    CALL(repository.isRelationInstance(1));
    CALL(repository.isModelVersion(1));
}

void callUserManagement(bool mustRefuse) {
    const QorUserID user(1);
    const QorUserGroupID group(1);
    CALL_FOR(user, QorUserManager::allUmansGetCurrentUserID(out.user));
    CALL_FOR(string,
             QorUserManager::allUmansGetUserFullDisplayNameOfUserID(user, out.string, out.further, out.kind, false));
    CALL_FOR(string, QorUserManager::allUmansGetUserGroupName(group, out.string));
    CALL_FOR(string, QorUserManager::getUserProfile(user, 6, out.string));
    CALL(QorUserManager::isUserAdmin(user));
    CALL(QorUserManager::isUserSubAdmin(user));
    CALL(QorUserManager::push(QorUserManagerNumber::Ordinary));
    CALL(QorUserManager::pop());
    CALL_FOR(users, QorUserManager::getAllUserIDs(out.users));
    CALL_FOR(groups, QorUserManager::allUmansGetAllUserGroups(out.groups));
    CALL_FOR(number, QorUserManager::allUmansGetAllowedApplicationLibrary(user, out.number));
    CALL_FOR(number, QorDataSourceDB::Instance().getSingleSignOnMode(out.number));
    CALL_FOR(entries, QorUserManager::allUmansGetModelGroupsAccessibleByUserGroup(group, out.entries));
    CALL_FOR(groups, QorDBAdministration::getUsergroups(user, out.groups));
    CALL_FOR(groups, QorDBAdministration::getSysUsergroups(user, out.groups));
    CALL_FOR(set, QorCoreModelGroupManager::GetAllSubGroupsOfModelGroup(1, out.set, true));
    CALL_FOR(string, QorCoreModelGroupManager::GetModelGroupInfo(1, out.string, out.number));
    CALL_FOR(number, QorCoreModelGroupManager::GetModelGroupInfo(1, out.string, out.number));
    CALL(QorCoreModelGroupManager::SetUserGroupPermission(1, group, QorModelGroupPermission::Read));
}

void callFilesAndCiphers(bool mustRefuse) {
    char byte = 0;
    CALL(QorFileManager::fileExists("db:\\a"));
    CALL(QorFileManager::isFolder("/"));
    CALL(QorFileManager::fileOpenRead("db:\\a", QorFileOpenMode::Read));
    CALL(QorFileManager::fileOpenWrite("db:\\a", QorFileOpenMode::Append));
    CALL(QorFileManager::fileRead(0, &byte, 1));
    CALL(QorFileManager::fileWrite(0, &byte, 1));
    CALL(QorFileManager::fileClose(0));
    CALL_FOR(text, QorEncryption::Instance().Encrypt(QorEncryption::kStandardMode, "a", out.text, -1));
    CALL_FOR(text, QorEncryption::Instance().Decrypt(QorEncryption::kStandardMode, "a", out.text));
}

void callEditing(bool mustRefuse) {
    CALL_FOR(number, QorCoreMM_AttributeProfiles::Instance().getAllowedAttrProfClassOfAttribute(1, out.number));
    CALL_FOR(number, QorAttrProfRefDomainContainer::GetReferencedClassOfAttribute(1, out.number));
    QorCoreInterReferenceHandler references(1, 1, 1);
    CALL(references.initHandler());
    CALL(references.initHandler("", out.code));
    references.MarkAllAdded();
    CALL(references._Save(1, 1, false));
    CALL_FOR(string, QorCoreCopyManager::Instance().getSourceInstNameOfPastedInst(1, 1, out.string));
    CALL_FOR(string, QorCoreExpressionManager::GetExprHandler(1, 1, 1).GetResultText(out.string));
    CALL_FOR(string, QorBasicNotebookAttrHandler(1).GetAttr(0, out.string));
    { const QorCoreAutoExManStopStart stopped; }
    CALL(QorGrObjAttrHandler(true, false).FindPattern("a", true, out.pattern));
    CALL_FOR(patterns, QorGrObjAttrHandler(true, false).GetPatterns(true, out.patterns));
    QorModelTypeAttrHandler& modelTypes = *QorModelTypeAttrHandler::GetGlobal();
    CALL_FOR(index, modelTypes.GetModelTypeIndexOfModel(1, out.index));
    CALL_FOR(index, modelTypes.GetModelTypeIndex("a", out.index));
    CALL_FOR(set, modelTypes.GetModelTypeVisibleClasses(0, out.set));
}

class Listening final : public QorWindows {
public:
    void internalError(const char*, long, const char* text) override {
        constexpr std::string_view kBehindName = " is not offered by the host";
        const std::string_view line = text;
        if (line.ends_with(kBehindName)) refused.emplace(line.substr(0, line.size() - kBehindName.size()));
    }
    std::set<std::string> refused;
};

}  // namespace

namespace qor::test {

std::set<std::string> operationsRefusedBy(QorHost host, bool mustRefuse) {
    Listening windows;
    host.windows = &windows;
    const QorHostInstallation installation(host);
    callUserManagement(mustRefuse);
    callFilesAndCiphers(mustRefuse);
    callEditing(mustRefuse);
    callRepository(mustRefuse);
    return windows.refused;
}

}  // namespace qor::test
