// SPDX-License-Identifier: Apache-2.0
// A repository in a SQLite file: write-ahead log, each commit synced, one writer at a time.
#pragma once
#include <array>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "embedded/store/RepositoryStore.h"
#include "embedded/store/ReserveFile.h"
#include "embedded/store/RowHash.h"
#include "embedded/store/Sqlite.h"
#include "embedded/store/SqliteFileStore.h"
#include "embedded/store/SqliteLocks.h"
#include "embedded/store/SqliteSchema.h"

namespace qor::embedded {

class SqliteStore final : public RepositoryStore {
public:
    // Both give the store, or null and why not. A file that must not be written is opened for reading.
    static std::unique_ptr<SqliteStore> create(const std::string& path, QorRepositoryResult& result,
                                               SqliteMigrations migrations = repositoryMigrations());
    static std::unique_ptr<SqliteStore> open(const std::string& path, QorRepositoryAccess access,
                                             QorRepositoryResult& result,
                                             SqliteMigrations migrations = repositoryMigrations());
    ~SqliteStore() override;

    [[nodiscard]] bool isReadOnly() const override { return _isReadOnly; }
    void refuseWriting() noexcept override { _isReadOnly = true; }
    QorRepositoryResult load(StoredRowSink& sink) override;
    void begin() override;
    void put(const StoredRow& row, QorIdentifier scope, bool isNew) override;
    void remove(const StoredRow& key, QorIdentifier scope) override;
    QorRepositoryResult commit(QorIdentifier next) override;
    void rollBack() noexcept override;
    QorRepositoryResult checkStorage() override;
    QorRepositoryResult backUp(const std::string& target) override;
    [[nodiscard]] LockStore& locks() override { return _locks; }
    [[nodiscard]] std::int64_t generation() const override { return _head.generation; }
    [[nodiscard]] FileStore& files() override { return _files; }

private:
    struct Head {
        RowHash::Key key{};
        QorIdentifier next = 0;
        std::int64_t generation = 0;
    };
    static constexpr std::size_t kRowStatements = static_cast<std::size_t>(RowStatement::Remove) + 1;

    SqliteStore(const std::string& path, SqliteMigrations migrations)
        : _path(path), _migrations(migrations), _reserve(path) {}

    [[nodiscard]] std::int64_t version() const { return static_cast<std::int64_t>(_migrations.size()); }
    [[nodiscard]] int connect(int flags);
    [[nodiscard]] QorRepositoryResult openAs(QorRepositoryAccess access);
    [[nodiscard]] int openForReading();
    [[nodiscard]] QorRepositoryResult whyNotOpened(int code) const;
    [[nodiscard]] QorRepositoryResult identify();
    [[nodiscard]] int migrate(std::int64_t from);
    [[nodiscard]] int upgrade(std::int64_t& fileVersion);
    [[nodiscard]] int layOut();
    [[nodiscard]] int writeHead(const Head& head);
    [[nodiscard]] QorRepositoryResult readHead(std::int64_t version);
    [[nodiscard]] std::int64_t hashOf(const Head& head, std::int64_t version);

    [[nodiscard]] int loadTable(StoredTable table, StoredRowSink& sink, QorRepositoryResult& result);
    void loadRow(StoredTable table, SqliteStatement& row, StoredRowSink& sink, QorRepositoryResult& result);
    [[nodiscard]] int compareSums(QorRepositoryResult& result);
    void find(QorRepositoryResult& result, std::string finding) const;
    [[nodiscard]] std::string described(StoredTable table, const SqliteStatement& row) const;

    SqliteStatement& statement(StoredTable table, RowStatement kind);
    void bindRow(SqliteStatement& statement, const StoredRow& row, std::int64_t hash);
    void bindKey(SqliteStatement& statement, const StoredRow& row) const;
    // The hash of the row that is stored under the key. A missing row is a failure.
    [[nodiscard]] bool takeStoredHash(const StoredRow& key, RowSum& sum);
    [[nodiscard]] int writeSum(QorIdentifier scope, const RowSum& change);
    void note(int code) noexcept;

    std::string _path;
    SqliteMigrations _migrations;
    ReserveFile _reserve;
    SqliteConnection _connection;
    RowHash _hash;
    Head _head;
    SqliteLocks _locks{_path, _connection, _reserve, _head.generation};
    bool _isReadOnly = false;
    SqliteFileStore _files{_connection, _isReadOnly, &_reserve};
    bool _headIsSound = true;
    int _failure = SQLITE_OK;  // the transaction's first
    std::string _refusal;      // what it comes from, when locks are in the way
    std::map<QorIdentifier, RowSum> _changes;
    std::unordered_map<QorIdentifier, RowSum> _sums;  // while loading
    QorIdentifier _lastScope = QorNoIdentifier;       // rows of one scope mostly come together
    RowSum* _lastSum = nullptr;
    std::array<std::array<SqliteStatement, kRowStatements>, kStoredTables> _statements;
};

}  // namespace qor::embedded
