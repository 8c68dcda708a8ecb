// SPDX-License-Identifier: Apache-2.0
// Locks of libraries between processes. QOR_FAULT_FACTOR makes the contest so many times as long.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <functional>

#include "frame/QorLibLoad.h"
#include "platform/QorUserManager.h"
#include "support/OnStores.h"
#include "support/SimulatedDisk.h"

namespace {

using Code = QorErrorCode;
using Mode = QorDBLockModeType;
using Status = QorRepositoryStatus;
namespace fs = std::filesystem;

// One user at work on a file, as the installed host.
struct Desk {
    explicit Desk(const std::string& path, const std::string& user = "ada")
        : platform({.language = "en", .console = false, .user = user}) {
        QorRepositoryResult result = platform.createRepository(path);
        if (result.status == Status::Exists) result = platform.openRepository(path);
        EXPECT_TRUE(result.ok()) << result.text;
        if (platform.reader().applicationLibraries().empty())
            (void)platform.builder().addApplicationLibrary("Works", "", "");
        library = platform.reader().applicationLibraries().front();
        installation.emplace(platform.host());
    }
    [[nodiscard]] QorCoreModelingManager& repository() const { return *platform.host().repository; }
    Code lock(Mode mode = Mode::Exclusive) const { return repository().lockLibrary(library, false, mode); }
    Code unlock() const { return repository().unlockLibrary(library); }
    Code load(QorLibLoad_SilentMode silent = QorLibLoad_SilentMode::Silent) const {
        return Qor_LoadLibrary(nullptr, library, QorLibLoad_InitHandler::Declined, QorLibLoad_UpdateFacets::Declined,
                               QorLibLoad_AccessMode::Exclusive, silent);
    }
    // The name of who holds the library, "" when nobody does.
    [[nodiscard]] std::string holder() const {
        QorUserID user;
        if (!repository().isLibraryLocked(library, user)) return {};
        SV::String first, second;
        auto kind = QorUserLogonNameType::Plain;
        EXPECT_EQ(platform.host().users->fullDisplayName(user, first, second, kind, false), Code::Ok);
        return first.str();
    }
    // How writing to the file ends.
    Status write() {
        return platform.builder().addApplicationLibrary("New" + std::to_string(++made), "", "").ok()
                   ? Status::Ok
                   : platform.lastProblem().status;
    }

    QorEmbeddedPlatform platform;
    QorIdentifier library = QorNoIdentifier;
    std::optional<QorHostInstallation> installation;
    int made = 0;
};

// Another process that does its work, says so, and then waits to be killed.
class Neighbour {
public:
    explicit Neighbour(const std::function<bool()>& work) {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        _child = ::fork();
        if (_child == 0) {
            const bool isDone = work();
            if (::write(ends[1], isDone ? "y" : "n", 1) != 1) ::_exit(1);
            for (;;) ::pause();
        }
        ::close(ends[1]);
        char answer = 0;
        EXPECT_EQ(::read(ends[0], &answer, 1), 1);
        EXPECT_EQ(answer, 'y');
        ::close(ends[0]);
    }
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour() { kill(); }
    void kill() {
        if (_child <= 0) return;
        ::kill(_child, SIGKILL);
        ::waitpid(_child, nullptr, 0);
        _child = -1;
    }

private:
    pid_t _child = -1;
};

struct Locks : testing::Test, TemporaryFolder {
    Locks() { const Desk desk(path); }
    const std::string path = file("a.qor");
};

TEST_F(Locks, OfAnotherUserAreToldByNameAndFreeWhenTheirProcessEnds) {
    Neighbour bob([&] { return (new Desk(path, "bob"))->load() == Code::Ok; });
    Desk ada(path);
    EXPECT_EQ(ada.load(QorLibLoad_SilentMode::Shown), Code::LockedByOther);
    ASSERT_FALSE(ada.platform.shown().empty());
    EXPECT_EQ(ada.platform.shown().back().text, "The library \"Works\" is locked by the user \"bob\".");
    EXPECT_EQ(ada.holder(), "bob");
    EXPECT_EQ(ada.unlock(), Code::LockedByOther);
    EXPECT_EQ(ada.lock(Mode::Shared), Code::LockedByOther);
    EXPECT_EQ(ada.write(), Status::Locked);
    EXPECT_NE(ada.platform.lastProblem().text.find("bob (process "), std::string::npos);
    ASSERT_EQ(ada.platform.libraryLocks().size(), 3U) << "the library with its parts";
    EXPECT_TRUE(ada.platform.takenOverLocks().empty());

    bob.kill();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ada.holder(), "");
    EXPECT_FALSE(ada.platform.libraryLocks().front().isAlive);
    EXPECT_EQ(ada.load(), Code::Ok);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
    const auto takenOver = ada.platform.takenOverLocks();
    ASSERT_EQ(takenOver.size(), 3U);
    EXPECT_EQ(takenOver.front().user, "bob");
    EXPECT_EQ(ada.holder(), "ada");
    EXPECT_EQ(ada.write(), Status::Ok);
    EXPECT_EQ(Qor_DiscardLibrary(), Code::Ok);
    EXPECT_TRUE(ada.platform.libraryLocks().empty());
}

TEST_F(Locks, OfTheSameUserElsewherePassTheCheckButOnlyOneProcessWrites) {
    Neighbour first([&] { return (new Desk(path))->load() == Code::Ok; });
    Desk second(path);
    EXPECT_EQ(second.load(), Code::Ok);
    EXPECT_EQ(second.holder(), "ada");
    EXPECT_EQ(second.write(), Status::Locked);
    EXPECT_EQ(Qor_DiscardLibrary(), Code::Ok);
    EXPECT_EQ(second.holder(), "ada") << "the other process has it still";
    first.kill();
    EXPECT_EQ(second.write(), Status::Ok);
}

TEST_F(Locks, SharedOnesKeepExclusiveOnesAndWritersOut) {
    Desk bob(path, "bob");
    Desk ada(path);
    ASSERT_EQ(bob.lock(Mode::Shared), Code::Ok);
    EXPECT_EQ(ada.lock(Mode::Shared), Code::Ok);
    EXPECT_EQ(ada.holder(), "bob") << "who is in the way";
    EXPECT_EQ(ada.lock(), Code::LockedByOther);
    EXPECT_EQ(ada.write(), Status::Locked);
    EXPECT_EQ(bob.unlock(), Code::Ok);
    EXPECT_EQ(ada.holder(), "") << "a shared lock of one's own is none";
    EXPECT_EQ(ada.lock(), Code::Ok) << "it becomes an exclusive one";
    EXPECT_EQ(bob.lock(Mode::Shared), Code::LockedByOther);
    EXPECT_EQ(bob.holder(), "ada");
    EXPECT_EQ(bob.lock(static_cast<Mode>(3)), Code::OutOfRange);
    EXPECT_EQ(ada.platform.closeRepository().status, Status::Ok);
    EXPECT_EQ(bob.lock(), Code::Ok) << "closing frees";
    EXPECT_TRUE(bob.platform.takenOverLocks().empty()) << "and leaves no row";
}

TEST_F(Locks, AreNotTakenOnWhatAnotherHasChangedSince) {
    Desk bob(path, "bob");
    Desk ada(path);
    ASSERT_EQ(bob.write(), Status::Ok);
    EXPECT_EQ(ada.lock(), QorRepositoryCode::NotStored);
    EXPECT_EQ(ada.platform.lastProblem().status, Status::ChangedByOther);
    EXPECT_EQ(bob.lock(), Code::Ok) << "nothing of it was left behind";
    QorEmbeddedPlatform reader;
    ASSERT_TRUE(reader.openRepository(path, QorRepositoryAccess::ReadOnly).ok()) << "reading goes on";
    EXPECT_EQ(reader.host().repository->lockLibrary(bob.library, false, Mode::Exclusive), QorRepositoryCode::NotStored);
    EXPECT_EQ(reader.lastProblem().status, Status::ReadOnly);
}

TEST_F(Locks, AreBrokenAlsoWhenTheirHolderLivesWhoThenWritesNoMore) {
    Desk bob(path, "bob");
    ASSERT_EQ(bob.load(), Code::Ok);
    Desk ada(path);
    ASSERT_TRUE(ada.platform.breakLibraryLocks(ada.library).ok());
    EXPECT_EQ(ada.platform.breakLibraryLocks(ada.library + 1).status, Status::Missing) << "a part of it";
    EXPECT_EQ(bob.write(), Status::Locked);
    EXPECT_NE(bob.platform.lastProblem().text.find("broken"), std::string::npos);
    EXPECT_EQ(ada.lock(), Code::Ok);
    EXPECT_TRUE(ada.platform.takenOverLocks().empty()) << "it was no dead one";
    EXPECT_EQ(bob.holder(), "ada");
    EXPECT_EQ(bob.unlock(), Code::LockedByOther);
    EXPECT_EQ(ada.unlock(), Code::Ok);
    EXPECT_EQ(bob.lock(), Code::Ok) << "the old byte is in nobody's way";
    EXPECT_EQ(bob.repository().discardCompleteLibrary(bob.library), Code::Ok);
    EXPECT_EQ(bob.write(), Status::Ok) << "the broken locks were given up";
    const std::string copy = file("copy.qor");
    ASSERT_TRUE(bob.platform.backUpRepository(copy).ok());
    QorEmbeddedPlatform copied;
    ASSERT_TRUE(copied.openRepository(copy).ok());
    EXPECT_TRUE(copied.libraryLocks().empty());
}

// The disk has room when the reserve is given up, or none at all.
TEST_F(Locks, AreFreedOnAFullDisk) {
    for (const bool isRoomInReserve : {true, false}) {
        SimulatedDisk disk;
        const std::string full = file("full.qor");
        const std::string reserve = full + ".reserve";
        auto ada = std::make_unique<Desk>(full);
        ASSERT_EQ(ada->load(), Code::Ok);
        ASSERT_TRUE(fs::exists(reserve));
        disk.isFull = [&] { return !isRoomInReserve || fs::exists(reserve); };
        EXPECT_EQ(Qor_DiscardLibrary(), Code::Ok);
        EXPECT_FALSE(fs::exists(reserve));
        ada.reset();
        Desk bob(full, "bob");
        EXPECT_EQ(bob.holder(), "");
        EXPECT_EQ(bob.platform.libraryLocks().size(), isRoomInReserve ? 0U : 3U);
        EXPECT_EQ(bob.load(), QorRepositoryCode::NotStored) << "the reserve is for giving back";
        disk.isFull = nullptr;
        EXPECT_EQ(bob.load(), Code::Ok);
        EXPECT_EQ(Qor_DiscardLibrary(), Code::Ok);
    }
}

// Two processes that want the same library all the time. What both can see tells whether both ever had it.
struct Contest {
    std::atomic<int> inside{0};
    std::atomic<long> taken{0}, refused{0}, doubled{0};
};

void contend(const std::string& path, const char* user, long attempts, Contest& contest) {
    const Desk desk(path, user);
    for (long attempt = 0; attempt < attempts; ++attempt) {
        const Code code = desk.lock();
        if (code != Code::Ok) {
            if (code != Code::LockedByOther) ++contest.doubled;
            ++contest.refused;
            continue;
        }
        if (++contest.inside != 1) ++contest.doubled;
        ++contest.taken;
        --contest.inside;
        if (desk.unlock() != Code::Ok) ++contest.doubled;
    }
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long kAttempts = 1000;
#else
constexpr long kAttempts = 10000;
#endif

TEST_F(Locks, AreNeverHeldByTwo) {
    const char* const factor = std::getenv("QOR_FAULT_FACTOR");
    const long attempts = kAttempts / 2 * (factor == nullptr ? 1 : std::atol(factor));
    void* const shared = ::mmap(nullptr, sizeof(Contest), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    Contest& contest = *new (shared) Contest;
    std::vector<pid_t> children;
    for (const char* user : {"ada", "bob"}) {
        const pid_t child = ::fork();
        if (child == 0) {
            contend(path, user, attempts, contest);
            ::_exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    EXPECT_EQ(contest.doubled, 0);
    EXPECT_EQ(contest.taken + contest.refused, 2 * attempts);
    EXPECT_GT(contest.taken, attempts / 10);
    EXPECT_GT(contest.refused, 0);
    RecordProperty("taken", std::to_string(contest.taken));
    RecordProperty("refused", std::to_string(contest.refused));
    ::munmap(shared, sizeof(Contest));
}

}  // namespace
