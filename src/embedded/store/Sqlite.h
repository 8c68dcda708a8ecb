// SPDX-License-Identifier: Apache-2.0
// SQLite's connections and statements, owned. Codes are SQLite's, extended ones.
#pragma once
#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/QorRepositoryFile.h"

namespace qor::embedded {

class SqliteConnection {
public:
    SqliteConnection() = default;
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;
    ~SqliteConnection() { close(); }

    // Closes what was open before. To be used by one thread only.
    [[nodiscard]] int open(const std::string& path, int flags);
    void close() noexcept;
    [[nodiscard]] int run(const char* sql) noexcept;
    // The first number that a query gives.
    [[nodiscard]] int ask(const char* sql, std::int64_t& answer) noexcept;
    [[nodiscard]] sqlite3* handle() const noexcept { return _handle; }

private:
    sqlite3* _handle = nullptr;
};

class SqliteStatement {
public:
    SqliteStatement() = default;
    SqliteStatement(SqliteStatement&& other) noexcept : _handle(other._handle) { other._handle = nullptr; }
    SqliteStatement& operator=(const SqliteStatement&) = delete;
    ~SqliteStatement() { sqlite3_finalize(_handle); }

    // Prepares unless it is prepared already.
    [[nodiscard]] int prepare(const SqliteConnection& connection, std::string_view sql) noexcept;
    [[nodiscard]] bool isPrepared() const noexcept { return _handle != nullptr; }
    void bind(int place, std::int64_t number) noexcept { sqlite3_bind_int64(_handle, place, number); }
    void bindNull(int place) noexcept { sqlite3_bind_null(_handle, place); }
    // The text must live until the statement has run.
    [[nodiscard]] int bind(int place, std::string_view text) noexcept;
    [[nodiscard]] int step() noexcept { return sqlite3_step(_handle); }
    [[nodiscard]] int bindBytes(int place, std::string_view bytes) noexcept {
        return sqlite3_bind_blob64(_handle, place, bytes.data(), bytes.size(), SQLITE_STATIC);
    }
    // Runs to the end and makes ready to be run again; SQLITE_DONE becomes SQLITE_OK.
    [[nodiscard]] int finish() noexcept;
    void reset() noexcept { sqlite3_reset(_handle); }

    [[nodiscard]] std::int64_t number(int column) const noexcept { return sqlite3_column_int64(_handle, column); }
    [[nodiscard]] bool isNull(int column) const noexcept { return sqlite3_column_type(_handle, column) == SQLITE_NULL; }
    // Holds until the next step.
    [[nodiscard]] std::string_view text(int column) const noexcept;
    [[nodiscard]] std::string_view bytes(int column) const noexcept;

private:
    sqlite3_stmt* _handle = nullptr;
};

[[nodiscard]] QorRepositoryStatus statusOf(int sqliteCode) noexcept;

}  // namespace qor::embedded
