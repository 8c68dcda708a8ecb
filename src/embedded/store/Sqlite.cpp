// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/Sqlite.h"

namespace qor::embedded {

int SqliteConnection::open(const std::string& path, int flags) {
    close();
    const int code = sqlite3_open_v2(path.c_str(), &_handle, flags | SQLITE_OPEN_EXRESCODE, nullptr);
    if (code == SQLITE_OK) return SQLITE_OK;
    close();
    return code;
}

void SqliteConnection::close() noexcept {
    sqlite3_close(_handle);
    _handle = nullptr;
}

int SqliteConnection::run(const char* sql) noexcept { return sqlite3_exec(_handle, sql, nullptr, nullptr, nullptr); }

int SqliteConnection::ask(const char* sql, std::int64_t& answer) noexcept {
    SqliteStatement query;
    if (const int code = query.prepare(*this, sql); code != SQLITE_OK) return code;
    const int code = query.step();
    if (code != SQLITE_ROW) return code == SQLITE_DONE ? SQLITE_CORRUPT : code;
    answer = query.number(0);
    return SQLITE_OK;
}

int SqliteStatement::prepare(const SqliteConnection& connection, std::string_view sql) noexcept {
    if (_handle != nullptr) return SQLITE_OK;
    return sqlite3_prepare_v3(connection.handle(), sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                              &_handle, nullptr);
}

int SqliteStatement::bind(int place, std::string_view text) noexcept {
    // A null pointer would bind NULL.
    return sqlite3_bind_text64(_handle, place, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                               SQLITE_UTF8);
}

int SqliteStatement::finish() noexcept {
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW) code = sqlite3_step(_handle);
    sqlite3_reset(_handle);
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

std::string_view SqliteStatement::text(int column) const noexcept {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(_handle, column));
    return text == nullptr ? std::string_view()
                           : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(_handle, column)));
}

std::string_view SqliteStatement::bytes(int column) const noexcept {
    const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(_handle, column));
    return bytes == nullptr ? std::string_view()
                            : std::string_view(bytes, static_cast<std::size_t>(sqlite3_column_bytes(_handle, column)));
}

QorRepositoryStatus statusOf(int code) noexcept {
    switch (code) {
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return QorRepositoryStatus::Ok;
        case SQLITE_BUSY_SNAPSHOT:
            return QorRepositoryStatus::ChangedByOther;
        case SQLITE_IOERR_SHMSIZE:  // the device has no room for the index of the write-ahead log
            return QorRepositoryStatus::NoRoom;
        case SQLITE_IOERR_READ:
        case SQLITE_IOERR_SHORT_READ:
            return QorRepositoryStatus::ReadFailed;
        case SQLITE_IOERR_CORRUPTFS:
            return QorRepositoryStatus::Damaged;
        case SQLITE_IOERR_NOMEM:
            return QorRepositoryStatus::NoMemory;
        default:
            break;
    }
    switch (code & 0xff) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
        case SQLITE_PROTOCOL:
            return QorRepositoryStatus::Locked;
        case SQLITE_FULL:
            return QorRepositoryStatus::NoRoom;
        case SQLITE_READONLY:
            return QorRepositoryStatus::ReadOnly;
        case SQLITE_NOTADB:
            return QorRepositoryStatus::NotARepository;
        case SQLITE_NOMEM:
            return QorRepositoryStatus::NoMemory;
        case SQLITE_PERM:
        case SQLITE_AUTH:
        case SQLITE_CANTOPEN:
            return QorRepositoryStatus::NoPermission;
        case SQLITE_IOERR:
            return QorRepositoryStatus::WriteFailed;
        // A statement that cannot be prepared, or a row that contradicts another: the file is not what was written.
        default:
            return QorRepositoryStatus::Damaged;
    }
}

}  // namespace qor::embedded
