// SPDX-License-Identifier: Apache-2.0
// Loading and discarding a library, watched from the platform's side: which calls come in which order, and what is
// shown.
#include <cstring>

#include "frame/QorLibLoad.h"
#include "frame/QorLibLoadManWatcher.h"
#include "frame/QorValidECode.h"
#include "frame/messages.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorCoreVar.h"
#include "platform/QorEventListener.h"
#include "platform/QorGrObjAttrHandler.h"
#include "platform/QorHost.h"
#include "platform/QorInternational.h"
#include "platform/QorModelTypeAttrHandler.h"
#include "platform/QorUserManager.h"
#include "platform/QorWindows.h"
#include "simmap/QorSimMappingHandler.h"

namespace {

namespace message = qor::frame::message;
using Calls = std::vector<std::string>;

constexpr long kLibrary = 10;
constexpr long kOtherLibrary = 20;
constexpr long kUser = 1;
constexpr long kColleague = 2;
constexpr auto kFailure = static_cast<QorErrorCode>(4711);

/// A platform that writes down what it is asked for, and answers as the test has set it up.
class Stage final : public QorCoreModelingManager,
                    public QorCoreVarService,
                    public QorUserService,
                    public QorMessageTexts,
                    public QorWindows {
public:
    Stage() {
        _host.repository = this;
        _host.coreVars = this;
        _host.users = this;
        _host.texts = this;
        _host.windows = this;
        _installation = std::make_unique<QorHostInstallation>(_host);
    }

    Calls calls;
    long loaded = -1;
    long holder = -1;
    std::map<std::string, QorErrorCode> codes;
    QorUserLogonNameType nameKind = QorUserLogonNameType::Plain;
    bool waitCursor = false;

    struct ModelTypes final : QorModelTypeAttrHandler {
        bool error = false;
        std::string text;
        bool isError() const override { return error; }
        SV::String getErrorText() const override { return text; }
    } modelTypes;
    bool hasModelTypes = false;  ///< the initialisation makes them

    void replaceCoreVars(QorCoreVarService& variables) {
        _host.coreVars = &variables;
        _installation.reset();
        _installation = std::make_unique<QorHostInstallation>(_host);
    }

    // Repository
    bool IsLibraryLoaded(long library) override { return library > 0 && library == loaded; }
    QorErrorCode getAttachedLibraries(long library, long& first, long& second) override {
        first = library + 1;
        second = library + 2;
        return answer("attached");
    }
    QorErrorCode getAppLibraryName(long, char*& name) override { return give("%s2 Works", name); }
    QorErrorCode getAppLibraryName(char*& name) override { return give("%s2 Works", name); }
    QorErrorCode LoadApplicationLibrary(long library, bool lock) override {
        const auto code = answer(lock ? "load+lock" : "load");
        if (code == QorErrorCode::Ok) loaded = library;
        return code;
    }
    QorErrorCode discardCompleteLibrary(long) override {
        loaded = -1;
        return answer("discard");
    }
    QorErrorCode updateFacets() override { return answer("facets"); }
    QorErrorCode initLibraryHandlers(bool all) override {
        hasModelTypes = true;
        return answer(all ? "init" : "init some");
    }
    bool isLibraryLocked(long, QorUserID& who) override {
        calls.emplace_back("locked?");
        who = QorUserID(holder);
        return holder != -1;
    }
    QorErrorCode lockLibrary(long, bool wait, QorDBLockModeType mode) override {
        return answer(!wait && static_cast<int>(mode) == 2 ? "lock" : "lock otherwise");
    }
    QorErrorCode unlockLibrary(long library) override { return answer("unlock " + std::to_string(library)); }
    // The library has no mapping text and no classes.
    using QorCoreModelingManager::getAttributeValue;
    QorErrorCode getAttributeValue(long, long, char*&, bool) override { return QorErrorCode::NoValue; }
    QorErrorCode getAllInstantiableClasses(long, ISortedSet<long>&, bool) override { return QorErrorCode::Ok; }
    QorModelTypeAttrHandler* modelTypeHandler() override { return hasModelTypes ? &modelTypes : nullptr; }

    // Settings, users, texts
    long coreVar(QorCoreVarType variable) override {
        return loaded < 1 ? -1 : loaded + static_cast<long>(variable) / 2 - 1;
    }
    QorErrorCode currentUser(QorUserID& user) override {
        user = QorUserID(kUser);
        return QorErrorCode::Ok;
    }
    QorErrorCode fullDisplayName(const QorUserID&, SV::String& first, SV::String& second, QorUserLogonNameType& kind,
                                 bool shortForm) override {
        first = shortForm ? "short" : "Ada";
        second = "Sales";
        kind = nameKind;
        return QorErrorCode::Ok;
    }
    const char* text(unsigned short number) const override {
        static const std::map<unsigned short, const char*> texts{
            {message::loadingLibrary, "loading %s"},
            {message::libraryNotLoaded, "not loaded %s"},
            {message::initialisingHandlers, "initialising"},
            {message::oneInitialisationError, "one in %s1: %s2"},
            {message::furtherFailure, "further"},
            {message::otherFailure, "code %c"},
            {message::updatingFacets, "facets"},
            {message::libraryLocked, "%l locked by %u"},
            {message::severalInitialisationErrors, "several in %s1: %s2"},
        };
        const auto found = texts.find(number);
        return found == texts.end() ? nullptr : found->second;
    }

    // Windows
    bool isWaitCursor() override { return waitCursor; }
    void setWaitCursor(bool on) override {
        waitCursor = on;
        calls.emplace_back(on ? "cursor on" : "cursor off");
    }
    int box(SV::Window*, unsigned long style, const SV::String& shown) override {
        calls.push_back((style == 16 ? "box: " : "odd box: ") + shown.str());
        return 0;
    }
    long openProgress(SV::Window*, const SV::String& shown) override {
        calls.push_back("open: " + shown.str());
        return 1;
    }
    void closeProgress(long) override { calls.emplace_back("close"); }
    void clearShownBoxes() override { calls.emplace_back("clear boxes"); }
    QorErrorCode refreshLibraryList() override { return answer("refresh"); }
    void internalError(const char* source, long line, const char* shown) override {
        calls.push_back(std::string(source) + ":" + std::to_string(line) + ": " + shown);
    }

private:
    QorErrorCode answer(const std::string& call) {
        calls.push_back(call);
        const auto code = codes.find(call);
        return code == codes.end() ? QorErrorCode::Ok : code->second;
    }
    QorErrorCode give(const char* text, char*& out) {
        out = new char[std::strlen(text) + 1];
        std::strcpy(out, text);
        return answer("name");
    }

    QorHost _host;
    std::unique_ptr<QorHostInstallation> _installation;
};

enum Wish : unsigned { kInit = 1, kFacets = 2, kExclusive = 4, kShown = 8 };

QorErrorCode load(long library, unsigned wishes) {
    return Qor_LoadLibrary(nullptr, library,
                           wishes & kInit ? QorLibLoad_InitHandler::Wanted : QorLibLoad_InitHandler::Declined,
                           wishes & kFacets ? QorLibLoad_UpdateFacets::Wanted : QorLibLoad_UpdateFacets::Declined,
                           wishes & kExclusive ? QorLibLoad_AccessMode::Exclusive : QorLibLoad_AccessMode::Shared,
                           wishes & kShown ? QorLibLoad_SilentMode::Shown : QorLibLoad_SilentMode::Silent);
}

/// One load: what is wished for, what the platform finds, which calls fail, and all calls in their order.
struct LoadCase {
    unsigned wishes;
    long loaded, holder;
    std::string failing;
    QorErrorCode expected;
    std::string calls;
};

void expectLoad(const LoadCase& row, Stage& stage) {
    SCOPED_TRACE(row.calls);
    stage.loaded = row.loaded;
    stage.holder = row.holder;
    std::istringstream failing(row.failing);
    for (std::string call; failing >> call;) stage.codes[call] = kFailure;
    EXPECT_EQ(load(kLibrary, row.wishes), row.expected);
    std::string calls;
    for (const auto& call : stage.calls) calls += (calls.empty() ? "" : ", ") + call;
    EXPECT_EQ(calls, row.calls);
}

constexpr auto kOk = QorErrorCode::Ok;
constexpr auto kLocked = QorErrorCode::LockedByOther;

}  // namespace

TEST(LibraryLoad, AnIdentifierBelowOneDoesNothing) {
    Stage stage;
    stage.loaded = kLibrary;
    for (const long library : {0L, -1L})
        EXPECT_EQ(load(library, kInit | kFacets | kExclusive | kShown), QorErrorCode::Ok);
    EXPECT_EQ(stage.calls, Calls{});
}

TEST(LibraryLoad, GivesUpTheCurrentLibraryShowsEachStepAndLeavesNothingOpenAfterAFailure) {
    const std::string givingUp = "discard, refresh, clear boxes, ";
    const std::string facets = "cursor on, open: facets, facets, close, cursor off, ";
    const std::string name = "attached, name, open: loading %s2 Works, ";
    const std::string loading = "cursor on, " + name + "load, close, cursor off";
    const std::string locking = "locked?, cursor on, " + name + "load+lock, close, cursor off";
    const std::string initialising = ", open: initialising, init, close";
    const LoadCase cases[] = {
        {kInit | kFacets | kExclusive | kShown, kOtherLibrary, -1, "", kOk, givingUp + facets + locking + initialising},
        {kInit | kFacets, kOtherLibrary, -1, "discard facets load", kFailure, "discard, facets, attached, load"},
        {kInit | kShown, -1, -1, "init", kFailure, loading + initialising + ", name, box: one in %s2 Works: code 4711"},
        {kFacets | kShown, -1, -1, "facets", kOk, facets + loading},
        {kExclusive, kLibrary, -1, "lock", kFailure, "attached, locked?, lock"},
        {kExclusive, -1, kColleague, "", kLocked, "locked?"},
        {kInit | kExclusive | kShown, kOtherLibrary, kColleague, "", kLocked,
         givingUp + "locked?, name, box: %s2 Works locked by Ada"},
    };
    for (const auto& row : cases) {
        Stage stage;
        expectLoad(row, stage);
    }
}

TEST(LibraryLoad, JoinsBothPartsOfALockersName) {
    Stage stage;
    stage.nameKind = QorUserLogonNameType::TwoPart;
    expectLoad({kExclusive | kShown, -1, kColleague, "", kLocked, "locked?, name, box: %s2 Works locked by Ada;Sales"},
               stage);
}

// The parts are unlocked only when they are loaded.
TEST(LibraryLoad, AFailedExclusiveLoadLeavesNoLockAndRestoresTheCursor) {
    Stage stage;
    stage.waitCursor = true;
    expectLoad(
        {kInit | kExclusive | kShown, -1, -1, "load+lock", kFailure,
         "locked?, attached, name, open: loading %s2 Works, load+lock, unlock 10, close, box: not loaded %s2 Works"},
        stage);
    EXPECT_TRUE(stage.waitCursor);
}

TEST(LibraryLoad, AFailedExclusiveLoadUnlocksPartsThatAreLoadedAllTheSame) {
    class HalfLoaded final : public QorCoreVarService {
    public:
        long coreVar(QorCoreVarType variable) override {
            return variable == QorCoreVarType::ApplicationLibrary ? -1 : 10 * static_cast<long>(variable);
        }
    };
    Stage stage;
    HalfLoaded variables;
    stage.replaceCoreVars(variables);
    expectLoad({kExclusive, 40, -1, "load+lock", kFailure, "locked?, attached, load+lock, unlock 10, unlock 40"},
               stage);
}

/// The simulation mapping handler while it lives; of a library without options, so that it has an error text and is in
/// order.
struct MappingHandler {
    MappingHandler() { EXPECT_TRUE(QorSimMappingHandler::CreateGlobal(kLibrary)); }
    ~MappingHandler() { QorSimMappingHandler::FreeGlobal(); }
};

TEST(LibraryLoad, ReloadingTheLoadedLibraryOnlyInitialisesAndLocks) {
    const LoadCase cases[] = {
        {kInit | kFacets, kLibrary, -1, "", kOk, "attached"},  // current handlers are left alone
        {0, kLibrary, -1, "attached", kFailure, "attached"},   // the query's code is the result ...
        {kInit, kLibrary, -1, "attached", kOk, "attached"},    // ... which the initialisation's replaces
        {kExclusive, kLibrary, -1, "", kOk, "attached, locked?, lock"},
        {kExclusive, kLibrary, kUser, "attached", kFailure, "attached, locked?"},  // an own lock is kept
        {kExclusive, kLibrary, kColleague, "", kLocked, "attached, locked?"},
    };
    for (const auto& row : cases) {
        Stage stage;
        const MappingHandler mapping;
        stage.hasModelTypes = true;
        expectLoad(row, stage);
    }
}

TEST(HandlerInitialisation, RunsUnlessEveryHandlerExists) {
    for (const bool hasModelTypes : {false, true}) {
        for (const bool hasMapping : {false, true}) {
            Stage stage;
            stage.loaded = kLibrary;
            stage.hasModelTypes = hasModelTypes;
            const auto mapping = hasMapping ? std::make_unique<MappingHandler>() : nullptr;
            EXPECT_EQ(load(kLibrary, kInit), QorErrorCode::Ok);
            EXPECT_EQ(stage.calls, hasModelTypes && hasMapping ? Calls{"attached"} : (Calls{"attached", "init"}));
        }
    }
}

TEST(HandlerInitialisation, ReportsByCodeAndFramesOneOrSeveralErrors) {
    const struct {
        QorErrorCode platform;
        bool modelTypeError;
        const char* modelTypeText;
        QorErrorCode result;
        std::string shown;
    } cases[] = {
        {QorErrorCode::NotAllHandlersSetUp, false, "", QorErrorCode::Ok, ""},
        {QorErrorCode::Ok, false, "", QorErrorCode::Ok, ""},
        {QorErrorCode::NotAllHandlersSetUp, true, "[a] x", QorErrorCode::Ok, "box: one in %s2 Works: [a] x"},
        {QorErrorCode::Ok, true, "[a] x [b] y", QorErrorCode::Ok, "box: several in %s2 Works: [a] x [b] y"},
        {QorErrorCode::ModelTypeHandlerError, true, "none", QorErrorCode::ModelTypeHandlerError,
         "box: one in %s2 Works: none"},
        {QorErrorCode::HandlerInitialisationFailed, true, "[a] [b]", QorErrorCode::HandlerInitialisationFailed,
         "box: one in %s2 Works: further"},
        {kFailure, false, "", kFailure, "box: one in %s2 Works: code 4711"},
        {QorErrorCode::SimMappingError, false, "", QorErrorCode::SimMappingError, "box: one in %s2 Works: #1819"},
    };
    for (const auto& row : cases) {
        for (const unsigned shown : {0U, +kShown}) {
            Stage stage;
            const MappingHandler mapping;
            stage.loaded = kLibrary;
            stage.codes = {{"init", row.platform}};
            stage.modelTypes.error = row.modelTypeError;
            stage.modelTypes.text = row.modelTypeText;
            EXPECT_EQ(load(kLibrary, kInit | shown), row.result) << row.shown;
            const bool box = !stage.calls.empty() && stage.calls.back().starts_with("box");
            EXPECT_EQ(box ? stage.calls.back() : "", shown != 0 ? row.shown : "");
        }
    }
}

TEST(LibraryDiscard, TellsThePlatformThenRefreshesTheApplication) {
    Stage stage;
    EXPECT_EQ(Qor_DiscardLibrary(), QorErrorCode::Ok);
    EXPECT_EQ(stage.calls, Calls{}) << "no library, no call";

    stage.loaded = kLibrary;
    stage.codes = {{"refresh", kFailure}};
    EXPECT_EQ(Qor_DiscardLibrary(), kFailure);
    EXPECT_EQ(stage.calls, (Calls{"discard", "refresh", "clear boxes"}));

    stage.loaded = kLibrary;
    stage.calls.clear();
    stage.codes = {{"discard", QorErrorCode::NotFound}};
    EXPECT_EQ(Qor_DiscardLibrary(), QorErrorCode::NotFound);
    EXPECT_EQ(stage.calls, Calls{"discard"});
}

// The process has one watcher already, which subscribed first; it makes the handler, and takes away only its own.
TEST(LibraryWatcher, GivesEachLoadedLibraryAGraphicHandlerUnlessThereIsOne) {
    const Stage stage;
    const auto loaded = [] { Qor_RaiseEvent(QorLibraryEvent(QorEventType::LibraryLoaded, kLibrary)); };
    const auto discarded = [] { Qor_RaiseEvent(QorLibraryEvent(QorEventType::LibraryDiscarded, kLibrary)); };

    loaded();
    auto* made = QorGrObjAttrHandler::GetGlobal();
    ASSERT_NE(made, nullptr);
    loaded();
    EXPECT_EQ(QorGrObjAttrHandler::GetGlobal(), made);
    discarded();
    EXPECT_EQ(QorGrObjAttrHandler::GetGlobal(), nullptr);

    QorGrObjAttrHandler foreign(true, true);
    QorGrObjAttrHandler::SetGlobal(&foreign);
    loaded();
    discarded();
    EXPECT_EQ(QorGrObjAttrHandler::GetGlobal(), &foreign);
    QorGrObjAttrHandler::SetGlobal(nullptr);

    QorGrObjAttrHandler::SetToolkitMode(true);
    loaded();
    EXPECT_EQ(QorGrObjAttrHandler::GetGlobal(), nullptr);
    QorGrObjAttrHandler::SetToolkitMode(false);
}

TEST(ValidECode, ReportsTheSourceAndGoesOn) {
    Stage stage;
    EXPECT_TRUE(QOR_VALID_ECODE(QorErrorCode::Ok));
    EXPECT_EQ(stage.calls, Calls{});
    EXPECT_FALSE(Qor_AssertValidECode(QorErrorCode::NoValue, "src/frame/some.thing.cpp", 12));
    EXPECT_EQ(stage.calls, Calls{"some.thing:12: QOR_VALID_ECODE (eCode)"});
}
