// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <memory>

#include "embedded/store/FileStore.h"
#include "embedded/store/ReserveFile.h"
#include "embedded/store/Sqlite.h"

namespace qor::embedded {

class SqliteFileStore : public FileStore {
public:
    // Over tables that are there. What is given must outlive it; without a reserve there is none.
    SqliteFileStore(SqliteConnection& connection, const bool& isReadOnly, ReserveFile* reserve)
        : _connection(connection), _readOnly(isReadOnly), _reserve(reserve) {}

    [[nodiscard]] bool isReadOnly() const override { return _readOnly; }
    [[nodiscard]] QorRepositoryStatus readIdentity(RepositoryIdentity& identity) override;
    [[nodiscard]] QorRepositoryStatus readHead(SealHead& head) override;
    [[nodiscard]] QorRepositoryStatus find(std::string_view name, StoredFile& file) override;
    [[nodiscard]] QorRepositoryStatus readMore(const StoredFile& file, std::int64_t& after,
                                               std::string& content) override;
    [[nodiscard]] QorRepositoryStatus beginReading() override { return statusOf(_connection.run("BEGIN")); }
    void endReading() noexcept override { rollBack(); }
    [[nodiscard]] QorRepositoryStatus visitEntries(const std::function<bool(const FileEntry&)>& take) override;
    [[nodiscard]] QorRepositoryStatus visitFiles(
        const std::function<void(const StoredFile&, std::string_view)>& take) override;

    void begin() override;
    void writeHead(const SealHead& head) override;
    void add(const FileEntry& entry) override;
    void putFile(const StoredFile& file, std::string_view name) override;
    void dropContent(const StoredFile& file) override;
    [[nodiscard]] QorRepositoryStatus commit() override;
    void rollBack() noexcept override;

private:
    // One for each text of a statement.
    enum Query { Identity, Head, Find, Begins, More, WriteHead, Add, PutFile, DropContent, kQueries };

    [[nodiscard]] SqliteStatement& prepared(Query query, int& code);
    // A statement to write with; null after a failure.
    [[nodiscard]] SqliteStatement* writing(Query query);
    void note(int code) noexcept;

    SqliteConnection& _connection;
    const bool& _readOnly;
    ReserveFile* _reserve;
    std::optional<RepositoryIdentity> _identity;  // never changes
    int _failure = SQLITE_OK;                     // the transaction's first
    std::array<SqliteStatement, kQueries> _statements;
};

// A file area that nobody else sees, which goes with the object; null when there is no memory for it.
[[nodiscard]] std::unique_ptr<FileStore> makeFilesInMemory();

}  // namespace qor::embedded
