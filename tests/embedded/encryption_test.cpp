// SPDX-License-Identifier: Apache-2.0
// Ciphering, and the file that holds the key.
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "VaultDesk.h"

namespace {

namespace fs = std::filesystem;
using enum QorErrorCode;
using Status = QorRepositoryStatus;

struct Vaults : testing::Test {
    TemporaryFolder folder;
    const std::string path = folder.file("a.qor");
    const std::string key = folder.file("keys/of/a.key");
};

TEST_F(Vaults, TextsComeBackFromOneLineThatNobodyElseReads) {
    const std::string texts[] = {"", "a", "2026.03.01;09:05:07;Ada;\"x\ny\"", std::string(100'000, 'z'),
                                 "\xc3\xa4\xff"};
    VaultDesk inFile(key);
    ASSERT_TRUE(inFile.platform.createRepository(path).ok());
    std::string foreign;
    for (VaultDesk* const desk : {static_cast<VaultDesk*>(nullptr), &inFile}) {
        std::optional<VaultDesk> inMemory;
        if (desk == nullptr) inMemory.emplace("");
        for (const std::string& text : texts) {
            const std::string line = VaultDesk::enciphered(text);
            EXPECT_EQ(VaultDesk::deciphered(line), text);
            EXPECT_NE(VaultDesk::enciphered(text), line);
            EXPECT_TRUE(std::all_of(line.begin(), line.end(), [](char c) { return c > ' ' && c < 0x7f; }));
        }
        EXPECT_EQ(VaultDesk::deciphered(foreign), "?") << "of another repository";
        foreign = VaultDesk::enciphered("foreign");
    }
    const std::string line = VaultDesk::enciphered("changed");
    for (std::size_t at = 0; at < line.size(); ++at) {
        std::string changed = line;
        changed[at] = changed[at] == 'A' ? 'B' : 'A';
        EXPECT_EQ(VaultDesk::deciphered(changed), "?") << at;
        EXPECT_EQ(VaultDesk::deciphered(line.substr(0, at)), "?") << at;
    }
    auto& cipher = QorEncryption::Instance();
    QorOwnedText result;
    EXPECT_EQ(cipher.Encrypt(1, "a", result.out(), -1), OutOfRange);
    EXPECT_EQ(cipher.Encrypt(2, "a", result.out(), -2), OutOfRange);
    EXPECT_EQ(cipher.Encrypt(2, nullptr, result.out(), -1), OutOfRange);
    EXPECT_EQ(cipher.Decrypt(3, line.c_str(), result.out()), OutOfRange);
    EXPECT_EQ(cipher.Encrypt(2, "abc", result.out(), 2), Ok);
    EXPECT_EQ(VaultDesk::deciphered(std::string(result.view())), "ab");
}

TEST_F(Vaults, EachLineDeciphersByItselfInAnyOrder) {
    VaultDesk desk(key);
    ASSERT_TRUE(desk.platform.createRepository(path).ok());
    std::vector<std::pair<int, std::string>> lines;
    for (int line = 0; line < 10'000; ++line)
        lines.emplace_back(line, VaultDesk::enciphered("line " + std::to_string(line)));
    std::shuffle(lines.begin(), lines.end(), std::mt19937(1));
    for (const auto& [line, text] : lines) ASSERT_EQ(VaultDesk::deciphered(text), "line " + std::to_string(line));
}

TEST_F(Vaults, TheKeyIsMadeOnFirstUseAndTellsItsVerificationKeyOnce) {
    VaultDesk desk(key);
    ASSERT_TRUE(desk.platform.createRepository(path).ok());
    EXPECT_EQ(VaultDesk::deciphered("AAAA"), "?");
    EXPECT_FALSE(fs::exists(key)) << "there was nothing to read";
    EXPECT_EQ(desk.area.takeVerificationKey(), "");
    const std::string line = VaultDesk::enciphered("a");
    EXPECT_EQ(desk.area.keyFile(), key);
    EXPECT_EQ(desk.area.takeVerificationKey().size(), 64U);
    EXPECT_EQ(desk.area.takeVerificationKey(), "");
    struct stat status {};
    ASSERT_EQ(::stat(key.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    ASSERT_EQ(::stat(folder.file("keys").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.file("keys/of")), {}), 1) << "nothing unfinished";
    ASSERT_TRUE(desk.platform.closeRepository().ok());
    ASSERT_TRUE(desk.platform.openRepository(path, QorRepositoryAccess::ReadOnly).ok());
    EXPECT_EQ(VaultDesk::deciphered(line), "a");
    EXPECT_EQ(desk.area.takeVerificationKey(), "");
}

TEST_F(Vaults, TheKeyLiesInTheFolderForSettingsUnlessAnotherPlaceIsNamed) {
    VaultDesk desk("");
    ASSERT_TRUE(desk.platform.createRepository(path).ok());
    const std::string saved[] = {std::getenv("HOME") == nullptr ? "" : std::getenv("HOME")};
    ::setenv("HOME", "/home/ada", 1);
    ::unsetenv("QOR_KEY_FILE");
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_TRUE(desk.area.keyFile().starts_with("/home/ada/.config/qor/keys/"));
    ::setenv("XDG_CONFIG_HOME", "/settings", 1);
    const std::string usual = desk.area.keyFile();
    EXPECT_TRUE(usual.starts_with("/settings/qor/keys/") && usual.ends_with(".key")) << usual;
    ::setenv("QOR_KEY_FILE", "/else/where", 1);
    EXPECT_EQ(desk.area.keyFile(), "/else/where");
    ::unsetenv("QOR_KEY_FILE");
    ::unsetenv("XDG_CONFIG_HOME");
    ::unsetenv("HOME");
    EXPECT_EQ(VaultDesk::enciphered("a"), "?");
    EXPECT_EQ(desk.area.lastProblem().status, Status::NoKey);
    ::setenv("HOME", saved[0].c_str(), 1);
}

struct BadKey {
    const char* why;  ///< what the message must hold
    void (*spoil)(const std::string& key);
};

void writeFile(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST_F(Vaults, AKeyThatIsNotSafeOrNotTheRightOneIsRefused) {
    std::string line;
    {
        VaultDesk desk(key);
        ASSERT_TRUE(desk.platform.createRepository(path).ok());
        line = VaultDesk::enciphered("a");
        ASSERT_TRUE(VaultDesk::append("line\n"));
    }
    const std::string good = contentOf(key);
    const BadKey cases[] = {
        {"there is no key file", [](const std::string& file) { fs::remove(file); }},
        {"read or written by others", [](const std::string& file) { ::chmod(file.c_str(), 0640); }},
        {"read or written by others", [](const std::string& file) { ::chmod(file.c_str(), 0602); }},
        {"wrong size", [](const std::string& file) { writeFile(file, ""); }},
        {"wrong size", [](const std::string& file) { writeFile(file, contentOf(file) + "\n"); }},
        {"is not a key file", [](const std::string& file) { writeFile(file, std::string(54, 'x')); }},
        {"of another repository",
         [](const std::string& file) {
             std::string text = contentOf(file);
             text[20] = text[20] == 'A' ? 'B' : 'A';
             writeFile(file, text);
         }},
        {"symbolic link",
         [](const std::string& file) {
             fs::rename(file, file + ".real");
             fs::create_symlink(file + ".real", file);
         }},
        {"not a regular file",
         [](const std::string& file) {
             fs::remove(file);
             fs::create_directory(file);
         }},
        {"not a regular file",
         [](const std::string& file) {
             fs::remove(file);
             ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
         }},
    };
    for (const BadKey& it : cases) {
        SCOPED_TRACE(it.why);
        fs::remove_all(key);
        writeFile(key, good);
        ::chmod(key.c_str(), 0600);
        it.spoil(key);
        VaultDesk desk(key);
        ASSERT_TRUE(desk.platform.openRepository(path).ok());
        for (const std::string& result : {VaultDesk::enciphered("a"), VaultDesk::deciphered(line)}) {
            EXPECT_EQ(result, "?");
            EXPECT_EQ(desk.area.lastProblem().status, Status::NoKey);
            EXPECT_NE(desk.area.lastProblem().text.find(it.why), std::string::npos) << desk.area.lastProblem().text;
        }
        EXPECT_FALSE(VaultDesk::append("more\n"));
        EXPECT_FALSE(desk.area.verify("", "").result.ok());
        EXPECT_EQ(VaultDesk::read(), "line\n") << "content needs no key";
    }
    VaultDesk desk("/dev/null/key");
    ASSERT_TRUE(desk.platform.createRepository(folder.file("b.qor")).ok());
    EXPECT_FALSE(desk.area.prepare().ok()) << "cannot be made";
}

}  // namespace
