// SPDX-License-Identifier: Apache-2.0
// The life of a library on the embedded platform: load, locks, handlers, discard.
#include <gtest/gtest.h>

#include "platform/QorCoreVar.h"
#include "platform/QorEventListener.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/QorLibraryHandlers.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "platform/QorUserManager.h"
#include "support/OnStores.h"

namespace {

using Code = QorErrorCode;
constexpr long kNumberBeyond32Bits = 4294967296;

std::vector<long> loadedLibraries() {
    return {Qor_GetCoreVarConst(QorCoreVarType::ApplicationLibrary),
            Qor_GetCoreVarConst(QorCoreVarType::BusinessProcessLibrary),
            Qor_GetCoreVarConst(QorCoreVarType::WorkingEnvironmentLibrary)};
}

// Writes down library events with what is loaded while they come.
class Watcher final : public QorEventListener {
public:
    struct Seen {
        long type, first, second, loaded;
        friend bool operator==(const Seen& a, const Seen& b) {
            return a.type == b.type && a.first == b.first && a.second == b.second && a.loaded == b.loaded;
        }
    };
    Watcher() {
        for (const auto type : {QorEventType::LibraryLoaded, QorEventType::LibraryLoadedCardinality,
                                QorEventType::LibraryLoadedSimMapping, QorEventType::LibraryDiscarded})
            setEventHandler(type, &Watcher::take, 1);
    }
    std::vector<Seen> seen;

private:
    void take(const QorLibraryEvent& event) {
        seen.push_back({static_cast<long>(event.type()), event.first(), event.second(), loadedLibraries()[0]});
    }
};

struct Libraries : OnStores {
    QorCoreModelingManager& repository = w.repository();
    std::vector<long> all{w.library, w.processes, w.environment};
};

TEST_P(Libraries, LoadSetsTheSettingsFirstAndThenRaisesTheEventsAndDiscardTheOtherWayRound) {
    const Watcher watcher;
    EXPECT_EQ(loadedLibraries(), std::vector<long>(3, -1));
    ASSERT_EQ(repository.LoadApplicationLibrary(w.library, false), Code::Ok);
    EXPECT_EQ(loadedLibraries(), all);
    for (const long id : all) EXPECT_TRUE(repository.IsLibraryLoaded(id));
    EXPECT_FALSE(repository.IsLibraryLoaded(w.library + kNumberBeyond32Bits));
    ASSERT_EQ(repository.discardCompleteLibrary(w.library), Code::Ok);
    EXPECT_EQ(loadedLibraries(), std::vector<long>(3, -1));
    for (const long id : all) EXPECT_FALSE(repository.IsLibraryLoaded(id));
    EXPECT_EQ(watcher.seen, (std::vector<Watcher::Seen>{{827, w.library, -1, w.library},
                                                        {828, w.processes, w.environment, w.library},
                                                        {829, w.library, -1, w.library},
                                                        {839, w.library, -1, -1}}));
}

TEST_P(Libraries, AFailedLoadLeavesNoLibraryCurrent) {
    const auto other = w.builder().addApplicationLibrary("Other", "", "").id;
    ASSERT_EQ(repository.LoadApplicationLibrary(w.library, false), Code::Ok);
    const Watcher watcher;
    for (const long unknown : {0L, -1L, static_cast<long>(w.processes), w.library + kNumberBeyond32Bits})
        EXPECT_EQ(repository.LoadApplicationLibrary(unknown, false), Code::NotFound);
    EXPECT_EQ(loadedLibraries()[0], -1);
    EXPECT_EQ(watcher.seen, (std::vector<Watcher::Seen>{{839, w.library, -1, -1}}));
    EXPECT_EQ(repository.discardCompleteLibrary(w.library), Code::NotFound);
    ASSERT_EQ(repository.LoadApplicationLibrary(w.library, false), Code::Ok);
    ASSERT_EQ(repository.LoadApplicationLibrary(other, false), Code::Ok);
    EXPECT_EQ(loadedLibraries()[0], other);
    EXPECT_EQ(repository.discardCompleteLibrary(w.library), Code::NotFound);
}

TEST_P(Libraries, AnExclusiveLoadLocksTheLibraryWithItsPartsOrNothing) {
    QorUserID ada;
    ASSERT_EQ(QorUserManager::allUmansGetCurrentUserID(ada), Code::Ok);
    w.platform.setCurrentUser("bob");
    ASSERT_EQ(repository.lockLibrary(w.environment, false, QorDBLockModeType::Exclusive), Code::Ok);

    w.platform.setCurrentUser("ada");
    QorUserID holder;
    EXPECT_EQ(repository.LoadApplicationLibrary(w.library, true), Code::LockedByOther);
    EXPECT_FALSE(repository.isLibraryLocked(w.library, holder) || repository.isLibraryLocked(w.processes, holder));
    EXPECT_TRUE(holder.isNone());
    EXPECT_EQ(repository.unlockLibrary(w.environment), Code::LockedByOther);

    w.platform.setCurrentUser("bob");
    EXPECT_EQ(repository.unlockLibrary(w.environment), Code::Ok);
    EXPECT_EQ(repository.unlockLibrary(w.environment), Code::Ok) << "nothing to release";
    w.platform.setCurrentUser("ada");
    ASSERT_EQ(repository.LoadApplicationLibrary(w.library, true), Code::Ok);
    for (const long id : all) {
        EXPECT_TRUE(repository.isLibraryLocked(id, holder));
        EXPECT_EQ(holder, ada);
        EXPECT_EQ(repository.lockLibrary(id, false, QorDBLockModeType::Exclusive), Code::Ok) << "again";
    }
    w.platform.setCurrentUser("bob");
    EXPECT_EQ(repository.lockLibrary(w.library, true, QorDBLockModeType::Exclusive), Code::LockedByOther);
    EXPECT_EQ(repository.discardCompleteLibrary(w.library), Code::Ok);
    EXPECT_TRUE(repository.isLibraryLocked(w.library, holder)) << "ada's lock is not bob's to release";
    EXPECT_EQ(holder, ada);

    w.platform.setCurrentUser("ada");
    ASSERT_EQ(repository.LoadApplicationLibrary(w.library, false), Code::Ok);
    EXPECT_EQ(repository.discardCompleteLibrary(w.library), Code::Ok);
    for (const long id : all) EXPECT_FALSE(repository.isLibraryLocked(id, holder));
    EXPECT_EQ(repository.lockLibrary(9999, false, QorDBLockModeType::Exclusive), Code::NotFound);
    EXPECT_EQ(repository.lockLibrary(w.library, false, static_cast<QorDBLockModeType>(3)), Code::OutOfRange);
}

TEST_P(Libraries, HandlersAreMadeOnceAndRenewedThroughTheirEventsUntilTheLibraryGoes) {
    auto state = QorLibraryHandlerState::InError;
    QorLibraryHandler handler;
    handler.renewedBy = QorEventType::LibraryLoadedCardinality;
    handler.state = [&] { return state; };
    handler.failure = Code::SimMappingError;
    const QorLibraryHandlerRegistration registration(handler);

    EXPECT_EQ(repository.initLibraryHandlers(true), Code::NotFound) << "nothing is loaded";
    ASSERT_EQ(repository.LoadApplicationLibrary(w.library, false), Code::Ok);
    EXPECT_FALSE(QorModelTypeAttrHandler::ExistsGlobal());
    const Watcher watcher;
    EXPECT_EQ(repository.initLibraryHandlers(true), Code::SimMappingError);
    EXPECT_TRUE(QorModelTypeAttrHandler::ExistsGlobal());
    EXPECT_EQ(watcher.seen, (std::vector<Watcher::Seen>{{828, w.processes, w.environment, w.library}}));

    const auto* const first = QorModelTypeAttrHandler::GetGlobal();
    state = QorLibraryHandlerState::Current;
    EXPECT_EQ(repository.initLibraryHandlers(true), Code::Ok);
    EXPECT_EQ(QorModelTypeAttrHandler::GetGlobal(), first);
    ASSERT_EQ(w.discard(), Code::Ok);
    EXPECT_FALSE(QorModelTypeAttrHandler::ExistsGlobal());
}

TEST_P(Libraries, ModelTypesAreNumberedWithinTheLoadedLibrary) {
    const auto other = w.builder().addApplicationLibrary("Other", "", "").id;
    const auto otherPart = w.builder().libraryPart(other, QorLibraryPart::BusinessProcess);
    const auto foreignModel = w.builder().addModel(w.builder().addModelType(otherPart, "Map", {}).id, "m", "").id;
    const auto task = w.cls("Task");
    const auto node = w.abstractClass("Node");
    w.modelType("Map", {});
    w.modelType("Process", {"Node", "Task", "Task"});
    const auto model = w.model("Process", "Order");
    const auto next = w.model("Process", "Order", "2");
    ASSERT_EQ(w.load(), Code::Ok);
    auto& types = *QorModelTypeAttrHandler::GetGlobal();

    unsigned long index = 7;
    EXPECT_EQ(types.GetModelTypeIndexOfModel(model, index), Code::Ok);
    EXPECT_EQ(index, 1U);
    EXPECT_EQ(types.GetModelTypeIndex("Map", index), Code::Ok);
    EXPECT_EQ(index, 0U);
    EXPECT_EQ(types.GetModelTypeIndexOfModel(foreignModel, index), Code::NotFound);
    EXPECT_EQ(index, ~0UL);
    ISortedSet<long> classes;
    EXPECT_EQ(types.GetModelTypeVisibleClasses(1, classes), Code::Ok);
    EXPECT_EQ(classes, (ISortedSet<long>{task, node}));
    EXPECT_EQ(types.GetModelTypeVisibleClasses(2, classes), Code::OutOfRange);
    EXPECT_TRUE(classes.isEmpty());

    long thread = -1;
    long last = -1;
    EXPECT_EQ(repository.getModelThreadIDFromModelName("Order", 1, thread), Code::Ok);
    EXPECT_EQ(repository.getLastModelVersionOfModelThread(thread, last), Code::Ok);
    EXPECT_EQ(last, next);
    ASSERT_TRUE(w.builder().removeModel(next).ok());
    EXPECT_EQ(repository.getLastModelVersionOfModelThread(thread, last), Code::Ok);
    EXPECT_EQ(last, model);
    EXPECT_EQ(repository.getModelThreadIDFromModelName("Order", 0, thread), Code::NotFound);
    EXPECT_EQ(repository.getModelThreadIDFromModelName("Order", 2, thread), Code::NotFound);
    EXPECT_EQ(thread, -1);
}

TEST_P(Libraries, PatternsAreTheClassesOfTheLoadedPartsAndAbstractOnesAreUnusable) {
    const auto task = w.cls("Task");
    const auto node = w.abstractClass("Node");
    w.environmentClass("Role");
    w.recordClass("Table");
    const QorGrObjAttrHandler handler(true, false);
    QorGrObjPattern pattern;
    EXPECT_EQ(handler.FindPattern("Task", true, pattern), Code::NotFound) << "nothing is loaded";
    ASSERT_EQ(w.load(), Code::Ok);
    EXPECT_EQ(handler.FindPattern("Task", true, pattern), Code::Ok);
    EXPECT_EQ(std::pair(pattern.cls, pattern.unusable), std::pair(static_cast<long>(task), false));
    EXPECT_EQ(handler.FindPattern("Node", true, pattern), Code::Ok);
    EXPECT_EQ(std::pair(pattern.cls, pattern.unusable), std::pair(static_cast<long>(node), true));
    EXPECT_EQ(handler.FindPattern("Role", true, pattern), Code::NotFound);
    EXPECT_EQ(pattern.cls, -1);
    EXPECT_EQ(handler.FindPattern("Role", false, pattern), Code::Ok);
    EXPECT_EQ(handler.FindPattern("Table", true, pattern), Code::NotFound);
}

TEST_P(Libraries, UsersComeIntoBeingByBeingNamed) {
    QorUserID ada;
    QorUserID bob;
    ASSERT_EQ(QorUserManager::allUmansGetCurrentUserID(ada), Code::Ok);
    w.platform.setCurrentUser("bob");
    ASSERT_EQ(QorUserManager::allUmansGetCurrentUserID(bob), Code::Ok);
    EXPECT_FALSE(ada == bob);
    w.platform.setCurrentUser("ada");
    QorUserID again;
    ASSERT_EQ(QorUserManager::allUmansGetCurrentUserID(again), Code::Ok);
    EXPECT_EQ(again, ada);

    SV::String first;
    SV::String second = "x";
    auto kind = QorUserLogonNameType::TwoPart;
    EXPECT_EQ(QorUserManager::allUmansGetUserFullDisplayNameOfUserID(bob, first, second, kind, false), Code::Ok);
    EXPECT_EQ(Qor_JoinDisplayName(first, second, kind), "bob");
    EXPECT_EQ(QorUserManager::allUmansGetUserFullDisplayNameOfUserID(QorUserID(3), first, second, kind, false),
              Code::NotFound);
    EXPECT_TRUE(first.IsEmpty());
    EXPECT_TRUE(QorUserManager::isUserAdmin(bob));
    EXPECT_FALSE(QorUserManager::isUserAdmin(QorUserID(0)) || QorUserManager::isUserSubAdmin(bob));
    ISortedSet<QorUserID> users;
    EXPECT_EQ(QorUserManager::getAllUserIDs(users), Code::Ok);
    EXPECT_EQ(users, (ISortedSet<QorUserID>{ada, bob}));
}

QOR_ON_ALL_STORES(Libraries);

}  // namespace
