// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "VaultDesk.h"
#include "support/SimulatedDisk.h"

namespace {

namespace fs = std::filesystem;
using enum QorFileOpenMode;
using namespace std::string_literals;
constexpr const char* kOther = "db:\\folder\\other.txt";

class FileArea : public testing::TestWithParam<Kept> {
protected:
    FileArea() {
        if (GetParam() != Kept::InFile) return;
        EXPECT_TRUE(desk.platform.createRepository(folder.file("a.qor")).ok());
    }
    TemporaryFolder folder;
    VaultDesk desk{folder.file("a.key")};
};
INSTANTIATE_TEST_SUITE_P(Kept, FileArea, testing::Values(Kept::InMemory, Kept::InFile), keptWhere);

TEST_P(FileArea, KeepsWhatIsAppendedAndReplaced) {
    EXPECT_FALSE(QorFileManager::fileExists(VaultDesk::kLog));
    EXPECT_EQ(VaultDesk::read(), "?");
    const long handle = QorFileManager::fileOpenWrite(VaultDesk::kLog, Append);
    EXPECT_EQ(QorFileManager::fileWrite(handle, "one", 3), 3);
    EXPECT_FALSE(QorFileManager::fileExists(VaultDesk::kLog)) << "all at once, at the end";
    char byte = 0;
    EXPECT_EQ(QorFileManager::fileRead(handle, &byte, 1), -1) << "open for writing";
    EXPECT_EQ(QorFileManager::fileWrite(handle, "\n", 1), 1);
    EXPECT_TRUE(QorFileManager::fileClose(handle));
    EXPECT_FALSE(QorFileManager::fileClose(handle));
    EXPECT_EQ(QorFileManager::fileWrite(handle, "x", 1), -1);

    std::string all = "one\n";
    for (int line = 0; line < 300; ++line) {
        const std::string text = std::string(static_cast<std::size_t>(line) * 7, 'x') + "\n";
        EXPECT_TRUE(VaultDesk::append(text));
        all += text;
    }
    for (const std::size_t piece : {1000U, 2048U, 70'000U}) EXPECT_TRUE(VaultDesk::read(VaultDesk::kLog, piece) == all);

    EXPECT_TRUE(VaultDesk::write(Replace, kOther, "a"));
    EXPECT_TRUE(VaultDesk::write(Replace, kOther, std::string("b\0c", 3)));
    EXPECT_TRUE(VaultDesk::append("d", kOther));
    EXPECT_EQ(VaultDesk::read(kOther, 1), std::string("b\0cd", 4));
    const long reading = QorFileManager::fileOpenRead(kOther, Read);
    EXPECT_EQ(QorFileManager::fileWrite(reading, "x", 1), -1);
    EXPECT_TRUE(VaultDesk::write(Replace, kOther, ""));
    EXPECT_EQ(QorFileManager::fileRead(reading, &byte, 1), -1) << "what it was opened for is gone";
    EXPECT_TRUE(QorFileManager::fileClose(reading));
    EXPECT_EQ(VaultDesk::read(kOther), "");
    EXPECT_TRUE(VaultDesk::append("", "db:\\empty"));
    EXPECT_TRUE(QorFileManager::fileExists("db:\\empty"));

    EXPECT_TRUE(desk.area.rename(VaultDesk::kLog, "db:\\old").ok());
    EXPECT_EQ(desk.area.rename(VaultDesk::kLog, "db:\\new").status, QorRepositoryStatus::Missing);
    EXPECT_EQ(desk.area.rename(kOther, "db:\\old").status, QorRepositoryStatus::Exists);
    EXPECT_EQ(desk.area.rename(kOther, "other").status, QorRepositoryStatus::NotARepository);
    EXPECT_EQ(desk.area.lostWrites(), 0) << "nothing was to be written";
    EXPECT_TRUE(VaultDesk::append("new\n"));
    EXPECT_EQ(VaultDesk::read(), "new\n");
    EXPECT_TRUE(VaultDesk::read("db:\\old", 4000) == all);
    const QorSealReport report = desk.area.verify(desk.area.takeVerificationKey(), "");
    EXPECT_TRUE(report.isSound()) << static_cast<int>(report.tampering) << " at " << report.sequence;
    EXPECT_EQ(report.entries, 311);
}

std::set<std::string> filesBelow(const fs::path& folder) {
    std::set<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) found.insert(entry.path().string());
    return found;
}

std::vector<std::string> parted(const std::string& list) {
    std::vector<std::string> parts;
    std::istringstream rest(list);
    for (std::string part; std::getline(rest, part, '|');) parts.push_back(part);
    return parts;
}

TEST_P(FileArea, NamesAreKeysAndNoFileAppearsAnywhere) {
    const fs::path before = fs::current_path();
    fs::create_directories(folder.path / "a" / "b");
    fs::current_path(folder.path / "a" / "b");
    EXPECT_TRUE(VaultDesk::append("x", "db:\\first"));
    const auto files = filesBelow(folder.path);
    std::vector<std::string> refused = parted(
        "db:|db:\\|db:x|db:/x|db://x|DB:\\x|Db:/x|dB:..\\x|db:\\..|db:\\.|db:\\..\\x|db:\\../x|db:\\..\\..\\x|"
        "db:\\a\\..\\x|db:\\a/../x|db:\\a\\..|db:\\x\n|db:\\x\ty|db:\\\x1b[1m|db:\\\x7f|db:\\\xc2\x85|db:\\\xff|"
        "db:\\\xc0\xaf|db:\\\xed\xa0\x80|db:\\\xe2\x82|db:\\x\0y||x\0y"s);
    for (const std::size_t length : {256U, 1'000'000U}) refused.push_back("db:\\" + std::string(length, 'x'));
    std::vector<std::string> taken = parted(
        "db:\\\\x|db:\\/etc/x|db:\\C:\\x|db:\\%2e%2e%2fx|db:\\...|db:\\~|db:\\A|db:\\a|db:\\a |db:\\\xc3\xa4|"
        "db:\\a;b'\"--|db:\\file:x?mode=rwc|db:\\\xf0\x9f\x98\x80"s);
    taken.push_back("db:\\" + std::string(255, 'x'));
    for (const std::string& name : refused) {
        SCOPED_TRACE(name.substr(0, 40));
        for (const auto mode : {Read, Append, Replace}) EXPECT_FALSE(VaultDesk::write(mode, name, "hostile"));
        EXPECT_FALSE(QorFileManager::fileExists(name));
        EXPECT_FALSE(desk.area.rename("db:\\first", name).ok());
    }
    for (const std::string& name : taken) EXPECT_TRUE(VaultDesk::append(name, name)) << name;
    for (const std::string& name : taken) EXPECT_EQ(VaultDesk::read(name), name) << "each by itself";
    auto after = filesBelow(folder.path);
    for (const char* suffix : {"-wal", "-shm", ".reserve"}) after.erase(folder.file("a.qor") + suffix);
    for (const std::string& file : files) after.erase(file);
    EXPECT_EQ(after, std::set<std::string>{});
    EXPECT_TRUE(QorFileManager::isFolder("db:\\"));
    EXPECT_FALSE(QorFileManager::isFolder("db:\\first"));
    EXPECT_TRUE(desk.area.verify("", "").isSound());
    fs::current_path(before);
}

TEST_P(FileArea, OtherNamesAreFilesOfTheSystem) {
    const std::string file = folder.file("out.csv");
    const std::string link = folder.file("link.csv");
    EXPECT_TRUE(QorFileManager::isFolder(folder.path.string()));
    EXPECT_FALSE(QorFileManager::isFolder(file));
    EXPECT_TRUE(VaultDesk::write(Replace, file, "first"));
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(file, link);
    const long handle = QorFileManager::fileOpenWrite(link, Replace);
    EXPECT_EQ(QorFileManager::fileWrite(handle, "second", 6), 6);
    EXPECT_EQ(VaultDesk::read(file), "first") << "until it is complete";
    EXPECT_TRUE(QorFileManager::fileClose(handle));
    EXPECT_TRUE(VaultDesk::append(" third", file));
    EXPECT_EQ(VaultDesk::read(file), "second third");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write) << "as before";
    const auto files = filesBelow(folder.path);
    for (const char* bad : {"/dev/null/x", "/no/such/folder/x"}) EXPECT_FALSE(VaultDesk::write(Replace, bad, "x"));
    EXPECT_FALSE(VaultDesk::write(Append, folder.path.string(), "x"));
    EXPECT_FALSE(VaultDesk::write(Replace, folder.path.string(), "x"));
    EXPECT_FALSE(VaultDesk::write(Replace, "/dev/full", std::string(100'000, 'x')));
    EXPECT_EQ(VaultDesk::read(folder.path.string()), "?");
    EXPECT_EQ(filesBelow(folder.path), files);
}

TEST(FileAreaOfAFile, IsReadAndWrittenByManyAndIsNoChangeOfModels) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.qor");
    VaultDesk first(folder.file("a.key"));
    ASSERT_TRUE(first.platform.createRepository(path).ok());
    ASSERT_TRUE(VaultDesk::append("1"));
    const auto generation = first.platform.repositoryGeneration();
    {
        VaultDesk second(folder.file("a.key"));
        ASSERT_TRUE(second.platform.openRepository(path).ok());
        ASSERT_TRUE(VaultDesk::append("2"));
        EXPECT_EQ(VaultDesk::read(), "12");
    }
    ASSERT_TRUE(VaultDesk::append("3"));
    EXPECT_TRUE(first.platform.builder().addApplicationLibrary("New", "", "").ok()) << "not changed by another";
    EXPECT_EQ(first.platform.repositoryGeneration(), generation + 1);
    EXPECT_TRUE(first.platform.verifyRepository().ok());
    ASSERT_TRUE(first.platform.closeRepository().ok());
    EXPECT_EQ(first.area.takeVerificationKey(), "") << "it was that of the file";
    ASSERT_TRUE(first.platform.openRepository(path, QorRepositoryAccess::ReadOnly).ok());
    EXPECT_FALSE(VaultDesk::append("4"));
    EXPECT_EQ(VaultDesk::read(), "123");
}

// The disk fails once at each of its calls: the line is kept as a whole or not at all, and the next one follows it.
TEST(FileAreaOfAFile, KeepsALineWholeOrNotAtAll) {
    constexpr const char* kFile = "/dev/null/a.qor";  // on the simulated disk
    const TemporaryFolder folder;
    std::map<std::string, std::string> image;
    {
        const SimulatedDisk disk;
        VaultDesk desk(folder.file("a.key"));
        ASSERT_TRUE(desk.platform.createRepository(kFile).ok());
        ASSERT_TRUE(VaultDesk::append("1\n"));
        ASSERT_TRUE(desk.platform.closeRepository().ok());
        image = disk.content();
    }
    SimulatedDisk disk;
    for (const auto fault : {SimulatedDisk::Fault::InputOutput, SimulatedDisk::Fault::Full}) {
        bool goesOn = true;
        for (long n = 1; goesOn && !HasFailure(); ++n) {
            SCOPED_TRACE(n);
            disk.assign(image);
            VaultDesk desk(folder.file("a.key"));
            ASSERT_TRUE(desk.platform.openRepository(kFile).ok());
            ASSERT_TRUE(desk.area.prepare().ok());
            disk.failCall(n, fault);
            const bool isKept = VaultDesk::append("2\n");
            goesOn = disk.hasFailed();
            disk.failNothing();
            EXPECT_TRUE(isKept || fault == SimulatedDisk::Fault::InputOutput) << "the reserve gives room for it";
            EXPECT_EQ(VaultDesk::read(), isKept ? "1\n2\n" : "1\n");
            EXPECT_EQ(desk.area.lostWrites(), isKept ? 0 : 1);
            EXPECT_TRUE(VaultDesk::append("3\n"));
            const QorSealReport report = desk.area.verify("", "");
            EXPECT_TRUE(report.isSound()) << static_cast<int>(report.tampering) << report.result.text;
            EXPECT_EQ(report.lostWrites, isKept ? 0 : 1) << "and says so";
        }
    }
}

}  // namespace
