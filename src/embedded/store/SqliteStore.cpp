// SPDX-License-Identifier: Apache-2.0
// Opening, making, upgrading, copying and closing.
#include "embedded/store/SqliteStore.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "embedded/FileReplacement.h"
#include "embedded/Seals.h"

namespace qor::embedded {

namespace {

constexpr int kBusyMilliseconds = 2000;

bool exists(const std::string& path) {
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    int found = 0;
    return files->xAccess(files, path.c_str(), SQLITE_ACCESS_EXISTS, &found) == SQLITE_OK && found != 0;
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool holdsSomething(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && status.st_size > 0;
}

// The path as a URI, whatever characters it holds.
std::string uriOf(const std::string& path, const char* parameters) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string uri = path.starts_with('/') ? "file://" : "file:";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x20 && byte < 0x7f && std::strchr("%?#", c) == nullptr)
            uri += c;
        else
            (uri += '%').append({kDigits[byte >> 4], kDigits[byte & 15]});
    }
    return uri + parameters;
}

}  // namespace

std::unique_ptr<SqliteStore> SqliteStore::create(const std::string& path, QorRepositoryResult& result,
                                                 SqliteMigrations migrations) {
    if (exists(path)) {
        result = failure(QorRepositoryStatus::Exists);
        return nullptr;
    }
    std::unique_ptr<SqliteStore> store(new SqliteStore(path, migrations));
    int code = store->connect(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    const bool isMade = code == SQLITE_OK;
    if (code == SQLITE_OK) code = store->layOut();
    if (code == SQLITE_OK) {
        store->_reserve.lay();
        result = {};
        return store;
    }
    result = isMade ? failure(statusOf(code), sqlite3_errstr(code)) : store->whyNotOpened(code);
    store.reset();
    if (isMade)
        for (const char* suffix : {"", "-wal", "-shm"}) (void)::unlink((path + suffix).c_str());
    return nullptr;
}

std::unique_ptr<SqliteStore> SqliteStore::open(const std::string& path, QorRepositoryAccess access,
                                               QorRepositoryResult& result, SqliteMigrations migrations) {
    std::unique_ptr<SqliteStore> store(new SqliteStore(path, migrations));
    result = store->openAs(access);
    if (result.status == QorRepositoryStatus::NoRoom) {  // for the index of the log, which reading needs as well
        store->_reserve.drop();
        result = store->openAs(access);
    }
    if (!result.ok()) return nullptr;
    if (!store->_isReadOnly) store->_reserve.lay();
    return store;
}

SqliteStore::~SqliteStore() {
    if (_connection.handle() == nullptr) return;
    rollBack();
    _locks.releaseAll();
    // What cannot be carried over now stays in the log and is found by the next one to open.
    if (!_isReadOnly)
        (void)sqlite3_wal_checkpoint_v2(_connection.handle(), nullptr, SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
}

int SqliteStore::connect(int flags) {
    int code = _connection.open(_path, flags);
    if (code != SQLITE_OK) return code;
    sqlite3* const handle = _connection.handle();
    sqlite3_busy_timeout(handle, kBusyMilliseconds);
    (void)sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    (void)sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    (void)sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    return _connection.run("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL");
}

QorRepositoryResult SqliteStore::whyNotOpened(int code) const {
    if (isFolder(_path)) return failure(QorRepositoryStatus::NotARepository, "is a folder");
    const QorRepositoryStatus status = statusOf(code);
    if (status != QorRepositoryStatus::NoPermission || exists(_path)) return failure(status, sqlite3_errstr(code));
    const std::size_t slash = _path.rfind('/');
    if (slash != std::string::npos && slash > 0 && !isFolder(_path.substr(0, slash)))
        return failure(QorRepositoryStatus::Missing, "there is no such folder");
    return failure(QorRepositoryStatus::Missing);
}

// A file whose folder cannot be written has no place for the index of its log; without a log it needs none.
int SqliteStore::openForReading() {
    std::int64_t ignored = 0;
    int code = connect(SQLITE_OPEN_READONLY);
    if (code == SQLITE_OK) code = _connection.ask("SELECT count(*) FROM sqlite_schema", ignored);
    if ((code & 0xff) != SQLITE_CANTOPEN && (code & 0xff) != SQLITE_READONLY) return code;
    if (!exists(_path) || holdsSomething(_path + "-wal")) return code;
    const std::string path = std::exchange(_path, uriOf(_path, "?immutable=1"));
    code = connect(SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    _path = path;
    return code;
}

QorRepositoryResult SqliteStore::openAs(QorRepositoryAccess access) {
    // Who only reads may still write to the log's index, and clear it away at the end.
    int code = connect(SQLITE_OPEN_READWRITE);
    const int kind = code & 0xff;
    const bool mayNotWrite = kind == SQLITE_READONLY || (kind == SQLITE_CANTOPEN && exists(_path)) ||
                             (code == SQLITE_OK && sqlite3_db_readonly(_connection.handle(), "main") == 1);
    _isReadOnly = mayNotWrite || access != QorRepositoryAccess::ReadWrite;
    if (mayNotWrite)
        code = openForReading();
    else if (code == SQLITE_OK && _isReadOnly)
        code = _connection.run("PRAGMA query_only = ON");
    if (code != SQLITE_OK) return whyNotOpened(code);
    if (QorRepositoryResult result = identify(); !result.ok()) return result;
    return readHead(version());
}

QorRepositoryResult SqliteStore::identify() {
    std::int64_t application = 0;
    std::int64_t fileVersion = 0;
    int code = _connection.ask("PRAGMA application_id", application);
    if (code == SQLITE_OK && application != kApplicationId) return failure(QorRepositoryStatus::NotARepository);
    if (code == SQLITE_OK) code = _connection.ask("PRAGMA user_version", fileVersion);
    if (code == SQLITE_OK && fileVersion >= 1 && fileVersion < version() && !_isReadOnly) code = upgrade(fileVersion);
    if (code != SQLITE_OK) return failure(statusOf(code), sqlite3_errstr(code));
    if (fileVersion > version()) return failure(QorRepositoryStatus::NewerSchema);
    if (fileVersion < 1) return failure(QorRepositoryStatus::Damaged, "its version is unknown");
    if (fileVersion < version())
        return failure(QorRepositoryStatus::ReadOnly,
                       "it was written by an earlier version of this program and must be opened for writing once");
    return {};
}

// All steps or none.
int SqliteStore::migrate(std::int64_t from) {
    int code = SQLITE_OK;
    for (std::int64_t at = from; at < version() && code == SQLITE_OK; ++at)
        code = _connection.run(_migrations[static_cast<std::size_t>(at)]);
    if (code == SQLITE_OK) code = _connection.run(("PRAGMA user_version = " + std::to_string(version())).c_str());
    return code;
}

// Another process may have been quicker, so the version is read again where nobody else can write. Who has the file
// open as it was finds another generation and writes no more. The head tells the version, so it is written anew; one
// that is damaged stays so.
int SqliteStore::upgrade(std::int64_t& fileVersion) {
    int code = _connection.run("BEGIN IMMEDIATE");
    if (code != SQLITE_OK) return code;
    code = _connection.ask("PRAGMA user_version", fileVersion);
    if (code == SQLITE_OK && fileVersion < version()) {
        const QorRepositoryResult head = readHead(fileVersion);
        code = head.ok() ? migrate(fileVersion) : SQLITE_IOERR_READ;
        ++_head.generation;
        if (code == SQLITE_OK && _headIsSound) code = writeHead(_head);
        if (code == SQLITE_OK) code = _connection.run("COMMIT");
        if (code == SQLITE_OK) fileVersion = version();
    }
    if (sqlite3_get_autocommit(_connection.handle()) == 0) (void)_connection.run("ROLLBACK");
    return code;
}

int SqliteStore::layOut() {
    int code = _connection.run(
        ("PRAGMA application_id = " + std::to_string(kApplicationId) + "; PRAGMA journal_mode = WAL").c_str());
    if (code == SQLITE_OK) code = _connection.run("BEGIN IMMEDIATE");
    if (code == SQLITE_OK) code = migrate(0);
    if (code == SQLITE_OK) code = _connection.run("COMMIT");
    if (code != SQLITE_OK) return code;
    if (!RowHash::makeKey(_head.key)) return SQLITE_IOERR;
    _hash.setKey(_head.key);
    _head.next = 0;
    SqliteStatement insert;
    code = insert.prepare(_connection,
                          "INSERT INTO repository (id, hash_key, next_identifier, generation, hash) "
                          "VALUES (1, zeroblob(16), 0, 0, 0)");
    if (code == SQLITE_OK) code = _connection.run("BEGIN IMMEDIATE");
    if (code == SQLITE_OK) code = insert.finish();
    if (code == SQLITE_OK) code = writeHead(_head);
    if (code == SQLITE_OK) code = _connection.run("COMMIT");
    return code;
}

std::int64_t SqliteStore::hashOf(const Head& head, std::int64_t version) {
    return _hash.of({head.next, head.generation, version},
                    {reinterpret_cast<const char*>(head.key.data()), head.key.size()});
}

int SqliteStore::writeHead(const Head& head) {
    SqliteStatement update;
    int code = update.prepare(_connection,
                              "UPDATE repository SET hash_key = ?, next_identifier = ?, generation = ?, hash = ?");
    if (code != SQLITE_OK) return code;
    code = update.bindBytes(1, {reinterpret_cast<const char*>(head.key.data()), head.key.size()});
    if (code != SQLITE_OK) return code;
    update.bind(2, head.next);
    update.bind(3, head.generation);
    update.bind(4, hashOf(head, version()));
    return update.finish();
}

// With a head that is not what was written nothing can be compared, but it can be read.
QorRepositoryResult SqliteStore::readHead(std::int64_t version) {
    SqliteStatement query;
    int code = query.prepare(_connection, "SELECT hash_key, next_identifier, generation, hash FROM repository");
    if (code == SQLITE_OK) code = query.step();
    if (code != SQLITE_ROW && code != SQLITE_DONE) return failure(statusOf(code), sqlite3_errstr(code));
    _headIsSound = false;
    if (code == SQLITE_DONE) return {};
    const std::string_view key = query.bytes(0);
    if (key.size() != _head.key.size()) return {};
    std::memcpy(_head.key.data(), key.data(), key.size());
    _hash.setKey(_head.key);
    const std::int64_t next = query.number(1);
    _head.generation = query.number(2);
    if (next < 0 || next > std::int64_t{INT32_MAX}) return {};
    _head.next = static_cast<QorIdentifier>(next);
    _headIsSound = hashOf(_head, version) == query.number(3);
    return {};
}

QorRepositoryResult SqliteStore::checkStorage() {
    SqliteStatement check;
    QorRepositoryResult result;
    int code = check.prepare(_connection, "PRAGMA integrity_check(100)");
    while (code == SQLITE_OK || code == SQLITE_ROW) {
        code = check.step();
        if (code == SQLITE_ROW && check.text(0) != "ok") find(result, std::string(check.text(0)));
    }
    if (code != SQLITE_DONE && result.ok()) return failure(statusOf(code), sqlite3_errstr(code));
    const QorRepositoryStatus status = _files.visitEntries([&](const FileEntry& entry) {
        if (entry.content && !isEqual(Seals::hashOf(*entry.content), entry.contentHash))
            find(result, "file_entries " + std::to_string(entry.sequence) + " is not what was written");
        return true;
    });
    if (status != QorRepositoryStatus::Ok) find(result, "file_entries: cannot be read");
    return result;
}

// Into a file beside the target, which takes its place when all of it is on the disk.
QorRepositoryResult SqliteStore::backUp(const std::string& target) {
    const std::size_t slash = target.rfind('/');
    if (slash != std::string::npos && slash > 0 && !isFolder(target.substr(0, slash)))
        return failure(QorRepositoryStatus::Missing, "there is no such folder");
    FileReplacement replacement;
    const int made = replacement.begin(target);
    if (made < 0) return failure(QorRepositoryStatus::NoPermission, std::strerror(errno));
    ::close(made);
    SqliteConnection copy;
    int code = copy.open(replacement.path(), SQLITE_OPEN_READWRITE);
    if (code == SQLITE_OK) code = copy.run("PRAGMA synchronous = FULL");
    if (code == SQLITE_OK) {
        sqlite3_backup* const backup = sqlite3_backup_init(copy.handle(), "main", _connection.handle(), "main");
        code = backup == nullptr ? sqlite3_extended_errcode(copy.handle()) : sqlite3_backup_step(backup, -1);
        if (backup != nullptr) (void)sqlite3_backup_finish(backup);
        if (code == SQLITE_DONE) code = SqliteLocks::clearIn(copy);
    }
    copy.close();
    if (code != SQLITE_OK) {
        for (const char* suffix : {"-wal", "-shm", "-journal"}) (void)::unlink((replacement.path() + suffix).c_str());
        return failure(statusOf(code), sqlite3_errstr(code));
    }
    return replacement.finish() ? QorRepositoryResult{}
                                : failure(QorRepositoryStatus::NoPermission, std::strerror(errno));
}

}  // namespace qor::embedded
