// SPDX-License-Identifier: Apache-2.0
// Every call to the disk fails once, in every operation: it is done or it is not, memory and file agree, and what comes
// next works. QOR_FAULT_FACTOR makes the random ones so many times as long.
#include <gtest/gtest.h>

#include <functional>

#include "platform/QorAttributeIds.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "support/OnStores.h"
#include "support/Picture.h"
#include "support/RandomWork.h"
#include "support/SimulatedDisk.h"

namespace {

using Fault = SimulatedDisk::Fault;
using Status = QorRepositoryStatus;
// On the simulated disk; on a real one nothing can be there.
constexpr const char* kFile = "/dev/null/a.qor";
constexpr const char* kOther = "/dev/null/b.qor";

struct Scene {
    Scene() {
        part = platform.builder().libraryPart(library(), QorLibraryPart::BusinessProcess);
        model = reader().modelsOf(library()).front().id;
        object = reader().objectsOf(model).front();
        task = reader().findClass(library(), "Task");
        title = reader().findAttribute(task, "Title");
    }
    [[nodiscard]] const QorRepositoryReader& reader() const { return platform.reader(); }
    [[nodiscard]] QorIdentifier library() const { return reader().applicationLibraries().front(); }
    QorBuildResult inUnit(int operations) {
        QorCoreUnitsOfWork& units = *platform.host().repository->unitsOfWork();
        if (units.begin() != QorErrorCode::Ok) return {QorNoIdentifier, QorBuildError::NotStored};
        RandomWork work(7);
        while (operations-- > 0) (void)work.step(platform);
        return {1, units.commit() == QorErrorCode::Ok ? QorBuildError::None : QorBuildError::NotStored};
    }

    struct Opened {
        QorEmbeddedPlatform platform;
        Opened() { EXPECT_TRUE(platform.openRepository(kFile).ok()); }
    } opened;
    QorEmbeddedPlatform& platform = opened.platform;
    QorIdentifier part, model, object, task, title;
};

struct Scenario {
    const char* name;
    std::function<QorBuildResult(Scene&)> run;
};

// clang-format off
const Scenario kScenarios[] = {
    {"library", [](Scene& s) { return s.platform.builder().addApplicationLibrary("New", "", ""); }},
    {"class", [](Scene& s) { return s.platform.builder().addClass(s.part, "New", s.task, false); }},
    {"class value", [](Scene& s) { return s.platform.builder().setClassValue(s.task, QorAttributeId::Cardinality, std::string(9000, 'x')); }},
    {"model type", [](Scene& s) { return s.platform.builder().addModelType(s.part, "New", std::span(&s.task, 1)); }},
    {"model", [](Scene& s) { return s.platform.builder().addModel(s.reader().modelInfo(s.model).modelType, "New", ""); }},
    {"object", [](Scene& s) { return s.platform.builder().addObject(s.model, s.task, "new"); }},
    {"value", [](Scene& s) { return s.platform.builder().setValue(s.object, s.title, "new"); }},
    {"name", [](Scene& s) { return s.platform.builder().setValue(s.object, QorAttributeId::Name, "new"); }},
    {"model away", [](Scene& s) { return s.platform.builder().removeModel(s.model); }},
    {"small unit", [](Scene& s) { return s.inUnit(8); }},
    {"great unit", [](Scene& s) { return s.inUnit(400); }},
    {"relation", [](Scene& s) { return s.platform.builder().addRelation(s.reader().findRelationClass(s.library(), "then"), s.object, s.object); }},
};
// clang-format on

std::map<std::string, std::string> furnishedImage() {
    const SimulatedDisk disk;
    QorEmbeddedPlatform platform;
    EXPECT_TRUE(platform.createRepository(kFile).ok());
    RandomWork::furnish(platform);
    EXPECT_TRUE(platform.closeRepository().ok());
    return disk.content();
}

std::string pictureOfFile(const char* file = kFile) {
    QorEmbeddedPlatform platform;
    const QorRepositoryResult result = platform.openRepository(file);
    EXPECT_TRUE(result.ok()) << result.text << testing::PrintToString(result.findings);
    return pictureOf(platform);
}

class EveryCallFails : public testing::TestWithParam<Fault> {
protected:
    const std::map<std::string, std::string> image = furnishedImage();
};

// False when there was no n-th call.
bool failsCall(const Scenario& scenario, SimulatedDisk& disk, long n, Fault fault) {
    bool hasFailed = false;
    std::string shown;
    {
        Scene scene;
        const std::string before = pictureOf(scene.platform);
        disk.failCall(n, fault);
        const QorBuildResult result = scenario.run(scene);
        hasFailed = disk.hasFailed();
        disk.failNothing();
        EXPECT_TRUE(hasFailed || result.ok());
        EXPECT_EQ(pictureOf(scene.platform) != before, result.ok());
        EXPECT_EQ(result.error, result.ok() ? QorBuildError::None : QorBuildError::NotStored);
        EXPECT_EQ(scene.platform.lastProblem().ok(), result.ok());
        EXPECT_TRUE(scene.platform.builder().addApplicationLibrary("Next", "", "").ok());
        EXPECT_TRUE(scene.platform.verifyRepository().ok());
        shown = pictureOf(scene.platform);
    }
    EXPECT_TRUE(pictureOfFile() == shown);
    return hasFailed;
}

TEST_P(EveryCallFails, InAnOperationWhichIsThenDoneOrNot) {
    for (const Scenario& scenario : kScenarios) {
        SCOPED_TRACE(scenario.name);
        SimulatedDisk disk;
        long n = 1;
        for (bool goesOn = true; goesOn && !HasFailure(); ++n) {
            SCOPED_TRACE(n);
            disk.assign(image);
            goesOn = failsCall(scenario, disk, n, GetParam());
        }
        EXPECT_GT(n, 2) << "nothing was called";
    }
}

struct FileScenario {
    const char* name;
    std::function<QorRepositoryResult(QorEmbeddedPlatform&)> run;
};
const FileScenario kFileScenarios[] = {
    {"open", [](auto& platform) { return platform.openRepository(kFile); }},
    {"open for reading", [](auto& platform) { return platform.openRepository(kFile, QorRepositoryAccess::ReadOnly); }},
    {"create", [](auto& platform) { return platform.createRepository(kOther); }},
    {"close",
     [](auto& platform) {
         const auto result = platform.openRepository(kFile);
         return result.ok() ? platform.closeRepository() : result;
     }},
    {"verify",
     [](auto& platform) {
         const auto result = platform.openRepository(kFile);
         return result.ok() ? platform.verifyRepository() : result;
     }},
};

// The repository is afterwards what it was.
TEST_P(EveryCallFails, InAnOperationOnTheFileWhichIsThenAsItWas) {
    SimulatedDisk disk;
    disk.assign(image);
    const std::string before = pictureOfFile();
    for (const FileScenario& scenario : kFileScenarios) {
        SCOPED_TRACE(scenario.name);
        bool goesOn = true;
        for (long n = 1; goesOn && !HasFailure(); ++n) {
            SCOPED_TRACE(n);
            disk.assign(image);
            {
                QorEmbeddedPlatform platform;
                disk.failCall(n, GetParam());
                const QorRepositoryResult result = scenario.run(platform);
                goesOn = disk.hasFailed();
                disk.failNothing();
                EXPECT_TRUE(goesOn || result.ok());
                // A page that cannot be read is named like one that is damaged.
                EXPECT_TRUE(result.status != Status::Damaged || scenario.name == std::string_view("verify"));
            }
            EXPECT_TRUE(pictureOfFile() == before);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(By, EveryCallFails, testing::Values(Fault::InputOutput, Fault::Full, Fault::ShortWrite));

// A damaged file is told to be one, and what can be read of it is as it was written; nothing is written to it.
TEST(DamagedFile, IsNoticedWhicheverBitChanged) {
    const auto image = furnishedImage();
    SimulatedDisk disk;
    disk.assign(image);
    const std::string before = pictureOfFile();
    std::mt19937 random(3);
    std::map<Status, int> statuses;
    const char* const factor = std::getenv("QOR_FAULT_FACTOR");
    for (int round = 2000 * (factor == nullptr ? 1 : std::atoi(factor)); round > 0 && !HasFailure(); --round) {
        auto flipped = image;
        std::string& bytes = flipped[kFile];
        const std::size_t at = random() % bytes.size();
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << random() % 8));
        disk.assign(flipped);
        QorEmbeddedPlatform platform;
        const QorRepositoryResult result = platform.openRepository(kFile);
        SCOPED_TRACE("byte " + std::to_string(at) + ": " + result.text);
        ++statuses[result.status];
        const std::string found = pictureOf(platform);
        EXPECT_TRUE(!result.ok() || found == before);
        if (result.status != Status::Damaged || !platform.hasRepository()) continue;
        EXPECT_FALSE(result.findings.empty());
        EXPECT_TRUE(platform.isRepositoryReadOnly());
        EXPECT_EQ(platform.builder().addApplicationLibrary("New", "", "").error, QorBuildError::NotStored);
    }
    EXPECT_GT(statuses[Status::Damaged], 100);
}

}  // namespace
