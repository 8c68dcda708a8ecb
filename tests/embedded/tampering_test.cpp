// SPDX-License-Identifier: Apache-2.0
// What somebody who can write to a repository file does to the file area is noticed, and what honest processes do is
// not taken for it. QOR_FAULT_FACTOR makes these tests so many times as long.
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>

#include "VaultDesk.h"
#include "embedded/KeyFile.h"

namespace {

using enum QorTampering;

int rounds(int count) {
    const char* const text = std::getenv("QOR_FAULT_FACTOR");
    return count * (text == nullptr ? 1 : std::atoi(text));
}

/// Somebody who opens the file with another program.
class Intruder {
public:
    explicit Intruder(const std::string& path) {
        EXPECT_EQ(sqlite3_open(path.c_str(), &_handle), SQLITE_OK);
        run("PRAGMA synchronous = OFF; ATTACH ':memory:' AS saved");
        for (const std::string table : kTables) run("CREATE TABLE saved." + table + " AS SELECT * FROM main." + table);
    }
    Intruder(const Intruder&) = delete;
    Intruder& operator=(const Intruder&) = delete;
    ~Intruder() { sqlite3_close(_handle); }

    void run(const std::string& sql) const {
        char* error = nullptr;
        EXPECT_EQ(sqlite3_exec(_handle, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK) << error << " in " << sql;
        sqlite3_free(error);
    }
    [[nodiscard]] std::string ask(const std::string& sql) const {
        sqlite3_stmt* query = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(_handle, sql.c_str(), -1, &query, nullptr), SQLITE_OK) << sql;
        EXPECT_EQ(sqlite3_step(query), SQLITE_ROW) << sql;
        const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(query, 0));
        std::string answer(bytes, static_cast<std::size_t>(sqlite3_column_bytes(query, 0)));
        sqlite3_finalize(query);
        return answer;
    }
    void restore() const {
        run("BEGIN");
        for (const std::string table : kTables)
            run("DELETE FROM main." + table + "; INSERT INTO main." + table + " SELECT * FROM saved." + table);
        run("COMMIT");
    }

private:
    static constexpr const char* kTables[] = {"file_area", "files", "file_entries"};
    sqlite3* _handle = nullptr;
};

std::string literal(std::string_view bytes) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text = "x'";
    for (const char c : bytes) {
        text += kDigits[static_cast<unsigned char>(c) >> 4];
        text += kDigits[static_cast<unsigned char>(c) & 15];
    }
    return text + "'";
}

std::string flipped(std::string bytes, std::mt19937& random) {
    char& byte = bytes[random() % bytes.size()];
    byte = static_cast<char>(byte ^ (1 << random() % 8));
    return bytes;
}

/// What an attacker sees: a log of `last` entries, `k` and the later `j` among its lines.
struct Scene {
    const Intruder& db;
    int k, j, last;
    std::mt19937& random;

    void set(int entry, const std::string& column, const std::string& value) const {
        db.run("UPDATE file_entries SET " + column + " = " + value + " WHERE sequence = " + std::to_string(entry));
    }
    [[nodiscard]] static std::string of(const std::string& column, int entry) {
        return "(SELECT " + column + " FROM saved.file_entries WHERE sequence = " + std::to_string(entry) + ")";
    }
    void flip(const std::string& column) const {
        set(k, column, literal(flipped(db.ask("SELECT " + of(column, k)), random)));
    }
    void copy(int from, int to, std::initializer_list<const char*> columns) const {
        for (const char* column : columns) set(to, column, of(column, from));
    }
    void remove(int from, int to) const {
        db.run("DELETE FROM file_entries WHERE sequence BETWEEN " + std::to_string(from) + " AND " +
               std::to_string(to));
    }
    /// Entries from that one on get another number.
    void move(int from, int by) const {
        db.run("UPDATE file_entries SET sequence = -sequence WHERE sequence >= " + std::to_string(from) +
               "; UPDATE file_entries SET sequence = -sequence + " + std::to_string(by) + " WHERE sequence < 0");
    }
    void insertCopyOf(int entry, int at) const {
        db.run("INSERT INTO file_entries SELECT " + std::to_string(at) +
               ", file, kind, content, content_hash, chain, seal "
               "FROM saved.file_entries WHERE sequence = " +
               std::to_string(entry));
    }
    /// A content with its hash, which needs no key.
    void write(int entry, const std::string& content) const {
        const auto hash = qor::embedded::Seals::hashOf(content);
        set(entry, "content", literal(content));
        set(entry, "content_hash", literal({reinterpret_cast<const char*>(hash.data()), hash.size()}));
    }
};

constexpr std::initializer_list<const char*> kContent = {"content", "content_hash"};
constexpr std::initializer_list<const char*> kAll = {"content", "content_hash", "chain", "seal"};

struct Kind {
    const char* name;
    std::function<void(const Scene&)> tamper;
    QorTampering tampering;
    int (*first)(const Scene&) = [](const Scene& s) { return s.k; };
};

// clang-format off
const Kind kKinds[] = {
    {"bit of the line", [](const Scene& s) { s.flip("content"); }, Changed},
    {"bit of its seal", [](const Scene& s) { s.flip("seal"); }, Changed},
    {"bit of its chain value", [](const Scene& s) { s.flip("chain"); }, Changed},
    {"another line with its hash", [](const Scene& s) { s.write(s.k, "innocent\n"); }, Changed},
    {"line that an earlier one is a copy of", [](const Scene& s) { s.copy(s.j, s.k, kContent); }, Changed},
    {"foreign line with all that belongs to it", [](const Scene& s) { s.write(s.k, "foreign\n"); s.flip("chain"); s.flip("seal"); }, Changed},
    {"content away", [](const Scene& s) { s.set(s.k, "content", "NULL"); }, Changed},
    {"kind", [](const Scene& s) { s.set(s.k, "kind", "3"); }, Changed},
    {"file", [](const Scene& s) { s.set(s.k, "file", "file + 1"); }, Changed},
    {"lines swapped", [](const Scene& s) { s.copy(s.j, s.k, kAll); s.copy(s.k, s.j, kAll); }, Swapped},
    {"contents swapped", [](const Scene& s) { s.copy(s.j, s.k, kContent); s.copy(s.k, s.j, kContent); }, Swapped},
    {"line away", [](const Scene& s) { s.remove(s.k, s.k); }, Removed},
    {"lines away", [](const Scene& s) { s.remove(s.k, s.j); }, Removed},
    {"line away and the others moved up", [](const Scene& s) { s.remove(s.k, s.k); s.move(s.k + 1, -1); }, Removed},
    {"copy between", [](const Scene& s) { s.move(s.k, 1); s.insertCopyOf(s.j, s.k); }, Inserted},
    {"new line between", [](const Scene& s) { s.move(s.k, 1); s.insertCopyOf(s.j, s.k); s.write(s.k, "new\n"); }, Inserted},
    {"copy behind", [](const Scene& s) { s.insertCopyOf(s.k, s.last + 1); }, Inserted, [](const Scene& s) { return s.last + 1; }},
    {"line without a seal", [](const Scene& s) { s.insertCopyOf(s.k, s.last + 1); s.set(s.last + 1, "seal", "x''"); }, NotSealed, [](const Scene& s) { return s.last + 1; }},
    {"line without a seal between", [](const Scene& s) { s.move(s.k, 1); s.insertCopyOf(s.j, s.k); s.set(s.k, "seal", "zeroblob(32)"); }, NotSealed},
    {"end cut", [](const Scene& s) { s.remove(s.k, s.last); }, Cut},
    {"end cut and the head put back", [](const Scene& s) {
         s.remove(s.k, s.last);
         s.db.run("UPDATE file_area SET sequence = " + std::to_string(s.k - 1) + ", chain = " + Scene::of("chain", s.k - 1));
     }, EndChanged},
    {"seal key of the next line", [](const Scene& s) { s.db.run("UPDATE file_area SET seal_key = " + literal(flipped(s.db.ask("SELECT seal_key FROM file_area"), s.random))); }, EndChanged, [](const Scene& s) { return s.last + 1; }},
    {"beginning of the log hidden", [](const Scene& s) { s.db.run("UPDATE files SET begins = " + std::to_string(s.k) + " WHERE name = 'db:\\log'"); }, FileList, [](const Scene&) { return 1; }},
    {"log under another name", [](const Scene& s) { s.db.run("UPDATE files SET name = 'db:\\none' WHERE name = 'db:\\log'"); }, FileList, [](const Scene&) { return 1; }},
    {"log not listed", [](const Scene& s) { s.db.run("DELETE FROM files WHERE name = 'db:\\log'"); }, FileList, [](const Scene&) { return 0; }},
};
// clang-format on

struct Tampering : testing::Test {
    Tampering() {
        EXPECT_TRUE(desk.platform.createRepository(path).ok());
        for (int line = 0; line < kLines; ++line) {
            EXPECT_TRUE(VaultDesk::append(VaultDesk::enciphered("line " + std::to_string(line)) + "\n"));
            EXPECT_TRUE(line % 10 != 5 || VaultDesk::write(QorFileOpenMode::Replace, "db:\\settings", "on"));
        }
        verificationKey = desk.area.takeVerificationKey();
        const QorSealReport report = desk.area.verify(verificationKey, "");
        EXPECT_TRUE(report.isSound());
        last = static_cast<int>(report.entries);
        head = report.head;
    }
    static constexpr int kLines = 30;
    TemporaryFolder folder;
    const std::string path = folder.file("a.qor");
    VaultDesk desk{folder.file("a.key")};
    std::string verificationKey, head;
    int last = 0;
};

TEST_F(Tampering, IsNoticedAndTheFirstBadLineNamed) {
    const Intruder db(path);
    std::mt19937 random(1);
    std::vector<int> lines;  // entries that are lines of the log
    for (int entry = 1; entry <= last; ++entry)
        if (db.ask("SELECT CAST(file * 10 + kind AS TEXT) FROM file_entries WHERE sequence = " +
                   std::to_string(entry)) == "12")
            lines.push_back(entry);
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(kLines));
    for (const Kind& kind : kKinds) {
        for (int round = rounds(50); round > 0 && !HasFailure(); --round) {
            const auto at = random() % (lines.size() - 2);
            const auto further = at + 1 + random() % (lines.size() - 2 - at);
            const Scene scene{db, lines[at], lines[further], last, random};
            kind.tamper(scene);
            for (const std::string& key : {std::string(), verificationKey}) {
                const QorSealReport report = desk.area.verify(key, head);
                SCOPED_TRACE(testing::Message() << kind.name << " at " << scene.k << " with " << scene.j);
                ASSERT_TRUE(report.result.ok()) << report.result.text;
                EXPECT_EQ(static_cast<int>(report.tampering), static_cast<int>(kind.tampering));
                EXPECT_EQ(report.sequence, kind.first(scene));
                EXPECT_TRUE(report.file != VaultDesk::kLog || report.line == 0 ||
                            report.line == static_cast<int>(at) + 1 || report.sequence > last);
                EXPECT_TRUE(report.tampering != Swapped || report.other == scene.j);
                EXPECT_EQ(report.head, "");
            }
            db.restore();
        }
    }
    EXPECT_TRUE(desk.area.verify(verificationKey, head).isSound());
}

TEST_F(Tampering, ByOneWhoHasTheKeyIsNoticedWithTheVerificationKey) {
    using namespace qor::embedded;
    const Intruder db(path);
    SecretKey key;
    ASSERT_TRUE(KeyFile(folder.file("a.key")).read(key).ok());
    RepositoryIdentity identity{};
    db.ask("SELECT identity FROM file_area").copy(reinterpret_cast<char*>(identity.data()), identity.size());
    const Seals seals(key, identity);
    const auto digest = [&](const std::string& sql) {
        SealDigest found{};
        db.ask(sql).copy(reinterpret_cast<char*>(found.data()), found.size());
        return found;
    };
    const auto bytes = [](const SealDigest& it) {
        return literal({reinterpret_cast<const char*>(it.data()), it.size()});
    };
    // Changes a line and makes the whole chain behind it anew, with the seals that are there.
    std::mt19937 random(1);
    const Scene scene{db, 7, 8, last, random};
    scene.write(7, "innocent\n");
    SealDigest chain = digest("SELECT " + Scene::of("chain", 6));
    for (int at = 7; at <= last; ++at) {
        const std::string where = " FROM file_entries WHERE sequence = " + std::to_string(at);
        FileEntry entry{at, std::stol(db.ask("SELECT CAST(file AS TEXT)" + where)), FileEntryKind::Made, {}, {}, {},
                        {}};
        entry.kind = static_cast<FileEntryKind>(std::stoi(db.ask("SELECT CAST(kind AS TEXT)" + where)));
        entry.contentHash = digest("SELECT content_hash" + where);
        entry.seal = digest("SELECT seal" + where);
        chain = seals.chain(entry, chain);
        scene.set(at, "chain", bytes(chain));
    }
    SealHead sealed;
    sealed.sequence = last;
    sealed.chain = chain;
    sealed.sealKey = digest("SELECT seal_key FROM file_area");
    db.run("UPDATE file_area SET chain = " + bytes(chain) + ", mac = " + bytes(seals.macOf(sealed)));

    EXPECT_TRUE(desk.area.verify("", "").isSound()) << "all that the key tells is right";
    const QorSealReport report = desk.area.verify(verificationKey, "");
    EXPECT_EQ(static_cast<int>(report.tampering), static_cast<int>(Resealed));
    EXPECT_EQ(report.sequence, 7);
    EXPECT_EQ(static_cast<int>(desk.area.verify("", head).tampering), static_cast<int>(RolledBack));
}

TEST_F(Tampering, ARollbackIsNoticedAgainstTheHeadThatWasNoted) {
    std::string later;
    {
        const Intruder db(path);
        ASSERT_TRUE(VaultDesk::append("one more\n"));
        ASSERT_TRUE(desk.area.readHead(later).ok());
        EXPECT_TRUE(desk.area.verify(verificationKey, head).isSound()) << "it has grown";
        db.restore();
    }
    EXPECT_TRUE(desk.area.verify(verificationKey, head).isSound()) << "an older true copy";
    QorSealReport report = desk.area.verify("", later);
    EXPECT_EQ(static_cast<int>(report.tampering), static_cast<int>(RolledBack));
    EXPECT_EQ(report.sequence, last + 1);
    ASSERT_TRUE(VaultDesk::append("something else\n"));
    report = desk.area.verify("", later);
    EXPECT_EQ(static_cast<int>(report.tampering), static_cast<int>(RolledBack));
    EXPECT_EQ(report.sequence, last + 1);
    for (const char* bad : {"1", "-", "x-y", "1-AAAA", "1-AAAAg"})
        EXPECT_EQ(desk.area.verify("", bad).result.status, QorRepositoryStatus::NoKey) << bad;
    EXPECT_EQ(desk.area.verify("AAAA", "").result.status, QorRepositoryStatus::NoKey);
    const std::string wrongKey =
        verificationKey.substr(0, 10) + (verificationKey[10] == '0' ? "1" : "0") + verificationKey.substr(11);
    EXPECT_EQ(static_cast<int>(desk.area.verify(wrongKey, "").tampering), static_cast<int>(Resealed));
}

TEST_F(Tampering, NothingIsAddedBehindAForgedEnd) {
    const Intruder db(path);
    db.run("UPDATE file_area SET sequence = sequence - 1; DELETE FROM file_entries WHERE sequence = " +
           std::to_string(last));
    EXPECT_FALSE(VaultDesk::append("a\n"));
    EXPECT_EQ(desk.area.lastProblem().status, QorRepositoryStatus::Damaged);
    EXPECT_EQ(desk.area.lostWrites(), 1);
}

/// No seal key that was used up is left in the files, where it could be found.
TEST_F(Tampering, FindsNoEarlierSealKeyInTheFiles) {
    for (int line = 0; line < 20; ++line) {
        std::string key;
        {
            const Intruder db(path);
            key = db.ask("SELECT seal_key FROM file_area");
        }
        ASSERT_TRUE(VaultDesk::append("line\n"));
        for (const char* suffix : {"", "-wal"})
            EXPECT_EQ(VaultDesk::read(path + suffix, 1 << 20).find(key), std::string::npos) << suffix;
    }
}

[[noreturn]] void logUntilKilled(const std::string& path, const std::string& key, int pipe) {
    VaultDesk desk(key);
    if (!desk.platform.openRepository(path).ok()) ::_exit(1);
    for (int line = 0;; ++line) {
        if (!VaultDesk::append("line " + std::to_string(line) + "\n")) ::_exit(2);
        if (line % 3 == 0 && !VaultDesk::write(QorFileOpenMode::Replace, "db:\\settings", "on")) ::_exit(3);
        if (::write(pipe, "x", 1) != 1) ::_exit(4);
    }
}

TEST_F(Tampering, IsNotSeenInWhatAKilledProcessLeft) {
    ASSERT_TRUE(desk.platform.closeRepository().ok());
    std::mt19937 random(1);
    std::string before = head;
    for (int round = rounds(100); round > 0 && !HasFailure(); --round) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0) logUntilKilled(path, folder.file("a.key"), ends[1]);
        ::close(ends[1]);
        char byte = 0;
        EXPECT_EQ(::read(ends[0], &byte, 1), 1);
        ::usleep(static_cast<useconds_t>(random() % 3000));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ::close(ends[0]);
        EXPECT_TRUE(WIFSIGNALED(status)) << WEXITSTATUS(status);
        ASSERT_TRUE(desk.platform.openRepository(path).ok());
        const QorSealReport report = desk.area.verify(verificationKey, before);
        EXPECT_TRUE(report.isSound()) << static_cast<int>(report.tampering) << " at " << report.sequence;
        EXPECT_EQ(VaultDesk::read().back(), '\n');
        before = report.head;
        ASSERT_TRUE(desk.platform.closeRepository().ok());
    }
}

}  // namespace
