// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/SqliteFileStore.h"

#include <algorithm>
#include <cstring>

#include "embedded/store/SqliteSchema.h"

namespace qor::embedded {

namespace {

// So much is read at a time, if single entries are not larger.
constexpr std::size_t kBytesAtOnce = std::size_t{1} << 16;

constexpr const char* kSql[] = {
    "SELECT identity FROM file_area",
    "SELECT sequence, chain, seal_key, lost_writes, key_check, mac FROM file_area",
    "SELECT id, begins FROM files WHERE name = ?",
    "SELECT begins FROM files WHERE id = ?",
    "SELECT sequence, content FROM file_entries WHERE file = ? AND sequence > ? AND kind IN (2, 3) ORDER BY sequence",
    "UPDATE file_area SET sequence = ?, chain = ?, seal_key = ?, lost_writes = ?, key_check = ?, mac = ?",
    "INSERT INTO file_entries (sequence, file, kind, content, content_hash, chain, seal) VALUES (?, ?, ?, ?, ?, ?, ?)",
    "REPLACE INTO files (id, begins, name) VALUES (?, ?, ?)",
    "UPDATE file_entries SET content = NULL WHERE file = ? AND sequence >= ? AND kind IN (2, 3)",
};

template <std::size_t Size>
std::string_view viewOf(const std::array<unsigned char, Size>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// What has another size is none: all zero.
template <std::size_t Size>
bool take(std::array<unsigned char, Size>& bytes, std::string_view stored) {
    bytes.fill(0);
    if (stored.size() != Size) return false;
    std::memcpy(bytes.data(), stored.data(), Size);
    return true;
}

// Makes ready to run again, whatever happened, so that no reading is left open.
class Run {
public:
    explicit Run(SqliteStatement& statement) : _statement(statement) {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() { _statement.reset(); }

private:
    SqliteStatement& _statement;
};

}  // namespace

SqliteStatement& SqliteFileStore::prepared(Query query, int& code) {
    static_assert(std::size(kSql) == kQueries);
    code = _statements[query].prepare(_connection, kSql[query]);
    return _statements[query];
}

// ---- Reading ----

QorRepositoryStatus SqliteFileStore::readIdentity(RepositoryIdentity& identity) {
    if (_identity) {
        identity = *_identity;
        return QorRepositoryStatus::Ok;
    }
    int code = SQLITE_OK;
    SqliteStatement& query = prepared(Identity, code);
    if (code != SQLITE_OK) return statusOf(code);
    const Run run(query);
    code = query.step();
    if (code != SQLITE_ROW && code != SQLITE_DONE) return statusOf(code);
    if (code == SQLITE_DONE || !take(identity, query.bytes(0))) return QorRepositoryStatus::Damaged;
    _identity = identity;
    return QorRepositoryStatus::Ok;
}

QorRepositoryStatus SqliteFileStore::readHead(SealHead& head) {
    head = {};
    int code = SQLITE_OK;
    SqliteStatement& query = prepared(Head, code);
    if (code != SQLITE_OK) return statusOf(code);
    const Run run(query);
    code = query.step();
    if (code != SQLITE_ROW) return code == SQLITE_DONE ? QorRepositoryStatus::Damaged : statusOf(code);
    head.isLaid = !query.bytes(4).empty();
    if (!head.isLaid) return QorRepositoryStatus::Ok;
    head.sequence = query.number(0);
    head.lostWrites = query.number(3);
    const bool isWhole = take(head.chain, query.bytes(1)) && take(head.sealKey, query.bytes(2)) &&
                         take(head.keyCheck, query.bytes(4)) && take(head.mac, query.bytes(5));
    return isWhole ? QorRepositoryStatus::Ok : QorRepositoryStatus::Damaged;
}

QorRepositoryStatus SqliteFileStore::find(std::string_view name, StoredFile& file) {
    int code = SQLITE_OK;
    SqliteStatement& query = prepared(Find, code);
    if (code == SQLITE_OK) code = query.bind(1, name);
    if (code != SQLITE_OK) return statusOf(code);
    const Run run(query);
    code = query.step();
    if (code == SQLITE_DONE) return QorRepositoryStatus::Missing;
    if (code != SQLITE_ROW) return statusOf(code);
    file = {query.number(0), query.number(1)};
    return QorRepositoryStatus::Ok;
}

QorRepositoryStatus SqliteFileStore::readMore(const StoredFile& file, std::int64_t& after, std::string& content) {
    content.clear();
    int code = SQLITE_OK;
    SqliteStatement& begins = prepared(Begins, code);
    if (code != SQLITE_OK) return statusOf(code);
    SqliteStatement& more = prepared(More, code);
    if (code != SQLITE_OK) return statusOf(code);
    {
        const Run run(begins);
        begins.bind(1, file.id);
        code = begins.step();
        if (code == SQLITE_DONE || (code == SQLITE_ROW && begins.number(0) != file.begins))
            return QorRepositoryStatus::ReadFailed;
        if (code != SQLITE_ROW) return statusOf(code);
    }
    const Run run(more);
    more.bind(1, file.id);
    more.bind(2, std::max(after, file.begins - 1));
    while (content.size() < kBytesAtOnce && (code = more.step()) == SQLITE_ROW) {
        content += more.bytes(1);
        after = more.number(0);
    }
    return statusOf(code);
}

QorRepositoryStatus SqliteFileStore::visitEntries(const std::function<bool(const FileEntry&)>& takeEntry) {
    SqliteStatement query;
    int code = query.prepare(_connection,
                             "SELECT sequence, file, kind, content, content_hash, chain, seal FROM file_entries "
                             "ORDER BY sequence");
    while ((code == SQLITE_OK || code == SQLITE_ROW) && (code = query.step()) == SQLITE_ROW) {
        FileEntry entry;
        entry.sequence = query.number(0);
        entry.file = query.number(1);
        entry.kind = static_cast<FileEntryKind>(query.number(2));
        if (!query.isNull(3)) entry.content = query.bytes(3);
        (void)take(entry.contentHash, query.bytes(4));
        (void)take(entry.chain, query.bytes(5));
        (void)take(entry.seal, query.bytes(6));
        if (!takeEntry(entry)) return QorRepositoryStatus::Ok;
    }
    return statusOf(code);
}

QorRepositoryStatus SqliteFileStore::visitFiles(
    const std::function<void(const StoredFile&, std::string_view)>& takeFile) {
    SqliteStatement query;
    int code = query.prepare(_connection, "SELECT id, begins, name FROM files ORDER BY name");
    while ((code == SQLITE_OK || code == SQLITE_ROW) && (code = query.step()) == SQLITE_ROW)
        takeFile({query.number(0), query.number(1)}, query.text(2));
    return statusOf(code);
}

// ---- Writing ----

void SqliteFileStore::note(int code) noexcept {
    if (_failure == SQLITE_OK) _failure = code;
}

SqliteStatement* SqliteFileStore::writing(Query query) {
    if (_failure != SQLITE_OK) return nullptr;
    int code = SQLITE_OK;
    SqliteStatement& statement = prepared(query, code);
    note(code);
    return code == SQLITE_OK ? &statement : nullptr;
}

void SqliteFileStore::begin() {
    // What is overwritten is not to be found in the pages either: a seal key that was used up would let its owner
    // seal another line in place of the one that it sealed.
    _failure = _readOnly ? SQLITE_READONLY : _connection.run("PRAGMA secure_delete = FAST");
    if (_failure == SQLITE_OK) _failure = _connection.run("BEGIN IMMEDIATE");
}

void SqliteFileStore::writeHead(const SealHead& head) {
    SqliteStatement* const update = writing(WriteHead);
    if (update == nullptr) return;
    update->bind(1, head.sequence);
    note(update->bindBytes(2, viewOf(head.chain)));
    note(update->bindBytes(3, viewOf(head.sealKey)));
    update->bind(4, head.lostWrites);
    note(update->bindBytes(5, viewOf(head.keyCheck)));
    note(update->bindBytes(6, viewOf(head.mac)));
    if (_failure == SQLITE_OK) note(update->finish());
}

void SqliteFileStore::add(const FileEntry& entry) {
    SqliteStatement* const insert = writing(Add);
    if (insert == nullptr) return;
    insert->bind(1, entry.sequence);
    insert->bind(2, entry.file);
    insert->bind(3, static_cast<std::int64_t>(entry.kind));
    // A null pointer would bind NULL.
    const std::string_view content = entry.content.value_or(std::string_view());
    note(insert->bindBytes(4, content.empty() ? std::string_view("", 0) : content));
    note(insert->bindBytes(5, viewOf(entry.contentHash)));
    note(insert->bindBytes(6, viewOf(entry.chain)));
    note(insert->bindBytes(7, viewOf(entry.seal)));
    if (_failure == SQLITE_OK) note(insert->finish());
}

void SqliteFileStore::putFile(const StoredFile& file, std::string_view name) {
    SqliteStatement* const replace = writing(PutFile);
    if (replace == nullptr) return;
    replace->bind(1, file.id);
    replace->bind(2, file.begins);
    note(replace->bind(3, name));
    if (_failure == SQLITE_OK) note(replace->finish());
}

void SqliteFileStore::dropContent(const StoredFile& file) {
    SqliteStatement* const update = writing(DropContent);
    if (update == nullptr) return;
    update->bind(1, file.id);
    update->bind(2, file.begins);
    note(update->finish());
}

QorRepositoryStatus SqliteFileStore::commit() {
    if (_failure == SQLITE_OK) note(_connection.run("COMMIT"));
    if (_failure != SQLITE_OK) {
        const QorRepositoryStatus status = statusOf(_failure);
        rollBack();
        if (status == QorRepositoryStatus::NoRoom && _reserve != nullptr) _reserve->drop();
        return status;
    }
    // The write-ahead log still holds the seal key that was used up. What was committed stays so when the log cannot be
    // emptied; the next commit tries again.
    (void)sqlite3_wal_checkpoint_v2(_connection.handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
    if (_reserve != nullptr) _reserve->lay();
    return QorRepositoryStatus::Ok;
}

void SqliteFileStore::rollBack() noexcept {
    for (SqliteStatement& statement : _statements)
        if (statement.isPrepared()) statement.reset();
    if (sqlite3_get_autocommit(_connection.handle()) == 0) (void)_connection.run("ROLLBACK");
}

// ---- In memory ----

namespace {

struct MemoryDatabase {
    SqliteConnection connection;
    bool isReadOnly = false;
};

class FilesInMemory final : private MemoryDatabase, public SqliteFileStore {
public:
    FilesInMemory() : SqliteFileStore(connection, MemoryDatabase::isReadOnly, nullptr) {}
    [[nodiscard]] bool open() {
        return connection.open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE) == SQLITE_OK &&
               connection.run(fileAreaTables()) == SQLITE_OK;
    }
};

}  // namespace

std::unique_ptr<FileStore> makeFilesInMemory() {
    auto files = std::make_unique<FilesInMemory>();
    if (!files->open()) return nullptr;
    return files;
}

}  // namespace qor::embedded
