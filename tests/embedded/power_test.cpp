// SPDX-License-Identifier: Apache-2.0
// What was acknowledged is there after the power was cut or the process was killed, and what was not is there as a
// whole or not at all. QOR_FAULT_FACTOR makes these tests so many times as long.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "support/OnStores.h"
#include "support/Picture.h"
#include "support/RandomWork.h"
#include "support/SimulatedDisk.h"

namespace {

// On the simulated disk; on a real one nothing can be there.
constexpr const char* kFile = "/dev/null/a.qor";

unsigned factor() {
    const char* const text = std::getenv("QOR_FAULT_FACTOR");
    return text == nullptr ? 1U : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

// A repository with something in it, closed.
std::map<std::string, std::string> furnishedImage() {
    const SimulatedDisk disk;
    QorEmbeddedPlatform platform;
    EXPECT_TRUE(platform.createRepository(kFile).ok());
    RandomWork::furnish(platform);
    EXPECT_TRUE(platform.closeRepository().ok());
    return disk.content();
}

enum class Outcome { Before, After, Lost };

// Works until the power is cut at some call; tells what is there when it has come back.
Outcome afterACut(const std::map<std::string, std::string>& image, unsigned seed, bool syncsLog) {
    SimulatedDisk disk;
    disk.assign(image);
    disk.ignoresSyncsOfLog = !syncsLog;
    std::mt19937 random(seed);
    QorEmbeddedPlatform twin;
    RandomWork::furnish(twin);
    RandomWork twinsWork(seed);
    std::string before;
    {
        QorEmbeddedPlatform platform;
        if (!platform.openRepository(kFile).ok()) return Outcome::Lost;
        RandomWork work(seed);
        disk.cutPowerAt(1 + static_cast<long>(random() % 300));
        while (!disk.isCut()) {
            const QorErrorCode code = work.step(platform);
            const QorErrorCode twinsCode = twinsWork.step(twin);
            EXPECT_TRUE(code == twinsCode || code == QorRepositoryCode::NotStored);
        }
        before = pictureOf(platform);
    }
    disk.restorePower(random);
    QorEmbeddedPlatform again;
    if (!again.openRepository(kFile).ok()) return Outcome::Lost;
    const std::string found = pictureOf(again);
    if (found == before) return Outcome::Before;
    return found == pictureOf(twin) ? Outcome::After : Outcome::Lost;
}

TEST(PowerCut, LosesNothingThatWasAcknowledged) {
    const auto image = furnishedImage();
    std::map<Outcome, int> outcomes;
    for (unsigned seed = 0; seed < 5000 * factor() && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        const Outcome outcome = afterACut(image, seed, true);
        ++outcomes[outcome];
        EXPECT_NE(outcome, Outcome::Lost);
    }
    EXPECT_GT(outcomes[Outcome::Before], 0);
    RecordProperty("before", outcomes[Outcome::Before]);
    RecordProperty("after", outcomes[Outcome::After]);
}

TEST(PowerCut, WouldLoseSomethingIfTheLogWereNotSyncedAtEachCommit) {
    const auto image = furnishedImage();
    int lost = 0;
    for (unsigned seed = 0; seed < 100; ++seed) lost += afterACut(image, seed, false) == Outcome::Lost ? 1 : 0;
    EXPECT_GT(lost, 10);
}

// Works on the file and tells each operation's end through the pipe, until it is killed.
[[noreturn]] void workUntilKilled(const std::string& path, unsigned seed, int pipe) {
    QorEmbeddedPlatform platform;
    if (!platform.openRepository(path).ok()) ::_exit(1);
    RandomWork work(seed);
    for (;;) {
        (void)work.step(platform);
        if (::write(pipe, "x", 1) != 1) ::_exit(1);
    }
}

// How many operations the child told of before it was killed.
int killedAfter(const std::string& path, unsigned seed, useconds_t microseconds) {
    int ends[2];
    if (::pipe(ends) != 0) return -1;
    const pid_t child = ::fork();
    if (child == 0) workUntilKilled(path, seed, ends[1]);
    ::close(ends[1]);
    char buffer[4096];
    int told = static_cast<int>(::read(ends[0], buffer, 1));  // it has begun
    ::usleep(microseconds);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    for (ssize_t size = 0; (size = ::read(ends[0], buffer, sizeof buffer)) > 0;) told += static_cast<int>(size);
    ::close(ends[0]);
    return told;
}

TEST(Kill, LosesNothingThatWasAcknowledged) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.qor");
    const std::string original = folder.file("original.qor");
    {
        QorEmbeddedPlatform platform;
        ASSERT_TRUE(platform.createRepository(original).ok());
        RandomWork::furnish(platform);
    }
    std::mt19937 random(1);
    for (unsigned seed = 0; seed < 200 * factor() && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        for (const char* suffix : {"-wal", "-shm"}) std::filesystem::remove(path + suffix);
        std::filesystem::copy_file(original, path, std::filesystem::copy_options::overwrite_existing);
        const int told = killedAfter(path, seed, static_cast<useconds_t>(random() % 12000));
        ASSERT_GT(told, 0);
        QorEmbeddedPlatform twin;
        RandomWork::furnish(twin);
        RandomWork work(seed);
        for (int step = 0; step < told; ++step) (void)work.step(twin);
        const std::string before = pictureOf(twin);
        (void)work.step(twin);
        QorEmbeddedPlatform again;
        const QorRepositoryResult result = again.openRepository(path);
        ASSERT_TRUE(result.ok()) << result.text << testing::PrintToString(result.findings);
        const std::string found = pictureOf(again);
        EXPECT_TRUE(found == before || found == pictureOf(twin)) << "after " << told << " operations";
    }
}

}  // namespace
