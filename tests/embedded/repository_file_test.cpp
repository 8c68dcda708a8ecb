// SPDX-License-Identifier: Apache-2.0
// Opening, making, upgrading, copying repository files, and what is answered when that cannot be.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <future>
#include <thread>

#include "embedded/Repository.h"
#include "embedded/store/SqliteStore.h"
#include "platform/QorCoreUnitsOfWork.h"
#include "support/OnStores.h"
#include "support/Picture.h"
#include "support/RandomWork.h"

namespace {

using namespace qor::embedded;
using Status = QorRepositoryStatus;
namespace fs = std::filesystem;

struct RepositoryFile : testing::Test, TemporaryFolder {
    RepositoryFile() {
        EXPECT_TRUE(platform.createRepository(path).ok());
        RandomWork::furnish(platform);
    }
    // SQL on the closed file, past the repository.
    static void tamper(const std::string& file, const char* sql) {
        SqliteConnection connection;
        ASSERT_EQ(connection.open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE), SQLITE_OK);
        ASSERT_EQ(connection.run(sql), SQLITE_OK) << sqlite3_errmsg(connection.handle());
    }
    // A copy of the file with the SQL run on it.
    std::string tampered(const char* sql) {
        const std::string copy = file("copy.qor");
        EXPECT_TRUE(platform.backUpRepository(copy).ok());
        tamper(copy, sql);
        return copy;
    }
    void write(const std::string& name, std::string_view text) const { std::ofstream(file(name)) << text; }

    const std::string path = file("a.qor");
    QorEmbeddedPlatform platform;
};

Status statusOfOpening(const std::string& path) { return QorEmbeddedPlatform().openRepository(path).status; }

TEST_F(RepositoryFile, ThatCannotBeOpenedIsAnsweredWithItsOwnStatus) {
    write("text", "library: Works\n");
    write("empty", "");
    tamper(file("other"), "CREATE TABLE t (x)");
    EXPECT_EQ(statusOfOpening(file("none.qor")), Status::Missing);
    EXPECT_EQ(statusOfOpening(file("none/a.qor")), Status::Missing);
    EXPECT_EQ(statusOfOpening(path + "/a.qor"), Status::Missing);
    for (const char* name : {"", "text", "empty", "other"})
        EXPECT_EQ(statusOfOpening(file(name)), Status::NotARepository) << name;
    EXPECT_EQ(statusOfOpening(tampered("PRAGMA user_version = 99")), Status::NewerSchema);
    EXPECT_EQ(platform.openRepository(file("b.qor")).status, Status::AlreadyOpen);
    QorEmbeddedPlatform other;
    EXPECT_EQ(other.createRepository(path).status, Status::Exists);
    EXPECT_EQ(other.createRepository(file("none/a.qor")).status, Status::Missing);
    EXPECT_EQ(other.closeRepository().status, Status::NotOpen);
    EXPECT_EQ(other.verifyRepository().status, Status::NotOpen);
    EXPECT_EQ(other.backUpRepository(path).status, Status::NotOpen);
    EXPECT_TRUE(other.createRepository(file("with # and ? and 100%.qor")).ok());
    EXPECT_FALSE(fs::exists(file("none")));
}

// Each row is damage of its own, and what is left can be read.
TEST_F(RepositoryFile, ThatIsDamagedNamesWhatIs) {
    struct Damage {
        const char* sql;
        const char* finding;
    };
    constexpr Damage kDamages[] = {
        {"UPDATE objects SET name = 'x' WHERE name = 'a'", "is not what was written"},
        {"UPDATE objects SET name = 'a' || x'00' WHERE name = 'a'", "is not what was written"},
        {"UPDATE classes SET superclass = id WHERE name = 'Task'", "is not what was written"},
        {"UPDATE objects SET model = 4294967301", "holds a number that is none of ours"},
        {"DELETE FROM objects WHERE name = 'a'", "is not complete"},
        {"DELETE FROM models", "refers to what is not there"},
        {"DELETE FROM parts", "refers to what is not there"},
        {"DELETE FROM sums", "is more than was written"},
        {"UPDATE sums SET total = total + 1", "is not complete"},
        {"UPDATE repository SET next_identifier = 0", "repository"},
        {"UPDATE repository SET hash_key = x'00'", "repository"},
        {"DELETE FROM repository", "repository"},
        {"DROP TABLE relations", "relations"},
    };
    for (const Damage& damage : kDamages) {
        SCOPED_TRACE(damage.sql);
        const std::string copy = tampered(damage.sql);
        QorEmbeddedPlatform damaged;
        const QorRepositoryResult result = damaged.openRepository(copy);
        EXPECT_EQ(result.status, Status::Damaged);
        EXPECT_TRUE(testing::Value(result.findings, testing::Contains(testing::HasSubstr(damage.finding))))
            << testing::PrintToString(result.findings);
        EXPECT_EQ(damaged.reader().applicationLibraries().size(), 1U);
        EXPECT_NE(pictureOf(damaged), "");
        EXPECT_EQ(damaged.verifyRepository().status, Status::Damaged);
        EXPECT_EQ(damaged.builder().addApplicationLibrary("New", "", "").error, QorBuildError::NotStored);
    }
}

TEST_F(RepositoryFile, ThatAnotherProcessWritesIsNotWrittenOver) {
    SqliteConnection other;
    ASSERT_EQ(other.open(path, SQLITE_OPEN_READWRITE), SQLITE_OK);
    ASSERT_EQ(other.run("BEGIN IMMEDIATE"), SQLITE_OK);
    const std::string before = pictureOf(platform);
    EXPECT_FALSE(platform.builder().addApplicationLibrary("New", "", "").ok());
    EXPECT_EQ(platform.lastProblem().status, Status::Locked);
    EXPECT_EQ(statusOfOpening(path), Status::Ok) << "reading needs no lock";
    ASSERT_EQ(other.run("ROLLBACK"), SQLITE_OK);
    QorEmbeddedPlatform second;
    ASSERT_TRUE(second.openRepository(path).ok());
    ASSERT_TRUE(second.builder().addApplicationLibrary("Other", "", "").ok());
    EXPECT_FALSE(platform.builder().addApplicationLibrary("New", "", "").ok());
    EXPECT_EQ(platform.lastProblem().status, Status::ChangedByOther);
    EXPECT_EQ(pictureOf(platform), before);
}

TEST_F(RepositoryFile, ThatMayNotBeWrittenIsOpenedForReading) {
    ASSERT_TRUE(platform.closeRepository().ok());
    const bool isRoot = ::geteuid() == 0;
    const auto withoutRights = [&](mode_t ofFile, mode_t ofFolder) {
        ASSERT_EQ(::chmod(path.c_str(), ofFile), 0);
        ASSERT_EQ(::chmod(TemporaryFolder::path.c_str(), ofFolder), 0);
        ASSERT_EQ(isRoot ? ::seteuid(65534) : 0, 0);
        QorEmbeddedPlatform reading;
        const QorRepositoryResult result = reading.openRepository(path);
        EXPECT_EQ(result.status, ofFile == 0 ? Status::NoPermission : Status::Ok) << result.text;
        EXPECT_EQ(reading.isRepositoryReadOnly(), result.ok());
        EXPECT_EQ(reading.reader().applicationLibraries().size(), result.ok() ? 1U : 0U);
        if (result.ok()) {
            EXPECT_FALSE(reading.builder().addApplicationLibrary("New", "", "").ok());
            EXPECT_EQ(reading.lastProblem().status, Status::ReadOnly);
            EXPECT_FALSE(QorUnitOfWork().isOpen());
        }
        ASSERT_EQ(isRoot ? ::seteuid(0) : 0, 0);
    };
    withoutRights(0444, 0755);
    withoutRights(0444, 0555);
    withoutRights(0, 0755);
    ASSERT_EQ(::chmod(TemporaryFolder::path.c_str(), 0755), 0);
}

TEST_F(RepositoryFile, OfAnEarlierVersionIsUpgradedAsAWholeOrNotAtAll) {
    ASSERT_TRUE(platform.closeRepository().ok());
    const std::vector<const char*> now(repositoryMigrations().begin(), repositoryMigrations().end());
    std::vector<const char*> next = now;
    next.push_back("CREATE TABLE later (id INTEGER PRIMARY KEY) STRICT; INSERT INTO later VALUES (1)");
    std::vector<const char*> broken = next;
    broken.push_back("INSERT INTO nowhere VALUES (1)");
    QorRepositoryResult result;
    EXPECT_EQ(SqliteStore::open(path, QorRepositoryAccess::ReadWrite, result, broken), nullptr);
    EXPECT_EQ(SqliteStore::open(path, QorRepositoryAccess::ReadOnly, result, next), nullptr);
    EXPECT_EQ(result.status, Status::ReadOnly);
    EXPECT_EQ(statusOfOpening(path), Status::Ok) << "it is as it was";
    QorEmbeddedPlatform earlier;
    ASSERT_TRUE(earlier.openRepository(path).ok());
    SqliteConnection other;
    ASSERT_EQ(other.open(path, SQLITE_OPEN_READWRITE), SQLITE_OK);
    ASSERT_EQ(other.run("BEGIN IMMEDIATE"), SQLITE_OK);
    const auto upgrade = [&] {
        QorRepositoryResult its;
        (void)SqliteStore::open(path, QorRepositoryAccess::ReadWrite, its, next);
        return its.status;
    };
    auto first = std::async(std::launch::async, upgrade);
    auto second = std::async(std::launch::async, upgrade);
    std::this_thread::sleep_for(std::chrono::milliseconds(100));  // both have read the version, and wait
    ASSERT_EQ(other.run("ROLLBACK"), SQLITE_OK);
    EXPECT_EQ(first.get(), Status::Ok);
    EXPECT_EQ(second.get(), Status::Ok);
    EXPECT_FALSE(earlier.builder().addApplicationLibrary("Late", "", "").ok());
    EXPECT_EQ(earlier.lastProblem().status, Status::ChangedByOther);
    EXPECT_EQ(statusOfOpening(path), Status::NewerSchema);
    EXPECT_NE(SqliteStore::open(path, QorRepositoryAccess::ReadWrite, result, next), nullptr);
    EXPECT_TRUE(result.ok()) << "it is upgraded once";
    Repository upgraded;
    EXPECT_TRUE(upgraded.attach(SqliteStore::open(path, QorRepositoryAccess::ReadWrite, result, next)).ok());
}

TEST_F(RepositoryFile, IsCopiedWhileItIsInUse) {
    const std::string copy = file("copy.qor");
    write("copy.qor", "an older copy");
    QorUnitOfWork unit;
    ASSERT_TRUE(platform.backUpRepository(copy).ok());
    QorEmbeddedPlatform copied;
    ASSERT_TRUE(copied.openRepository(copy).ok());
    EXPECT_EQ(pictureOf(copied), pictureOf(platform));
    EXPECT_TRUE(copied.verifyRepository().ok());
    EXPECT_EQ(platform.backUpRepository(file("none/copy.qor")).status, Status::Missing);
    EXPECT_EQ(platform.backUpRepository(file("")).status, Status::NoPermission) << "a folder";
    for (const auto& entry : fs::directory_iterator(TemporaryFolder::path))
        EXPECT_EQ(entry.path().string().find("unfinished"), std::string::npos) << entry.path();
}

TEST_F(RepositoryFile, HandsOutNoIdentifierTwice) {
    const auto library = platform.builder().addApplicationLibrary("Gone", "", "").id;
    ASSERT_TRUE(platform.builder().removeApplicationLibrary(library).ok());
    ASSERT_TRUE(platform.closeRepository().ok());
    EXPECT_TRUE(platform.reader().applicationLibraries().empty()) << "closed is empty";
    ASSERT_TRUE(platform.openRepository(path).ok());
    EXPECT_EQ(platform.builder().addApplicationLibrary("New", "", "").id, library + 3);
    const QorHostInstallation installed(platform.host());
    ASSERT_EQ(platform.host().repository->LoadApplicationLibrary(library + 3, false), QorErrorCode::Ok);
    EXPECT_EQ(platform.closeRepository().status, Status::AlreadyOpen) << "it is loaded";
}

TEST_F(RepositoryFile, KeepsRoomInReserveAndWritesOnlyWhatChanged) {
    const std::string reserve = path + ".reserve";
    EXPECT_EQ(fs::file_size(reserve), ReserveFile::kBytes);
    const auto before = platform.repositoryGeneration();
    const auto size = fs::file_size(path + "-wal");
    const auto model = platform.reader().modelsOf(platform.reader().applicationLibraries().front()).front().id;
    const auto object = platform.reader().objectsOf(model).front();
    ASSERT_TRUE(platform.builder().setValue(object, 9, "another name").ok());
    EXPECT_EQ(platform.repositoryGeneration(), before + 1);
    EXPECT_LE(fs::file_size(path + "-wal") - size, 5 * 4200U) << "a few pages";
    EXPECT_FALSE(platform.builder().setValue(object, 9, "").ok());
    EXPECT_EQ(platform.repositoryGeneration(), before + 1) << "nothing to write";

    ReserveFile file(path);
    file.lay();
    EXPECT_TRUE(file.isLaid());
    file.drop();
    EXPECT_FALSE(fs::exists(reserve));
    ASSERT_TRUE(platform.closeRepository().ok());
    ASSERT_TRUE(platform.openRepository(path).ok());
    EXPECT_TRUE(fs::exists(reserve)) << "laid again";
    EXPECT_FALSE(fs::exists(path + "-journal"));
}

}  // namespace
