// SPDX-License-Identifier: Apache-2.0
// Locks in a repository file: a row tells who has one, a byte of the file beside it whether that process still lives.
#pragma once
#include <map>

#include "embedded/store/LockStore.h"
#include "embedded/store/ProcessLock.h"
#include "embedded/store/ReserveFile.h"
#include "embedded/store/Sqlite.h"

namespace qor::embedded {

class SqliteLocks final : public LockStore {
public:
    // The connection belongs to the repository, which was read as of `generation`.
    SqliteLocks(const std::string& path, SqliteConnection& connection, ReserveFile& reserve,
                const std::int64_t& generation)
        : _connection(connection), _reserve(reserve), _generation(generation), _bytes(path) {}
    ~SqliteLocks() override;

    LockOutcome take(std::span<const QorIdentifier> libraries, bool isExclusive, std::string_view user) override;
    void release(std::span<const QorIdentifier> libraries) noexcept override;
    [[nodiscard]] bool holds(QorIdentifier library) override;
    [[nodiscard]] std::vector<QorLibraryLock> livingLocks(QorIdentifier library) override;
    [[nodiscard]] std::vector<QorLibraryLock> allLocks() override;
    QorRepositoryResult breakLocks(std::span<const QorIdentifier> libraries) override;
    [[nodiscard]] std::vector<QorLibraryLock> takenOver() noexcept override;
    [[nodiscard]] const QorRepositoryResult& problem() const override { return _problem; }

    // Whether this process may write, asked within the writing transaction: whoever holds a lock is not overtaken, and
    // a holder whose lock was broken is told. Gives SQLite's code; SQLITE_BUSY with the reason in words.
    [[nodiscard]] int mayWrite(std::string& reason);
    // Frees all before the connection is closed.
    void releaseAll() noexcept;
    // Of a copy: nobody holds it.
    [[nodiscard]] static int clearIn(SqliteConnection& copy) noexcept;

private:
    struct Held {
        std::int64_t row = 0;
        std::int64_t place = 0;
        bool isExclusive = true;
    };
    struct Row {
        std::int64_t id = 0;
        QorLibraryLock lock;
    };
    class Taking;

    [[nodiscard]] int placeOf(QorIdentifier library, std::int64_t& place);
    // Of one library, or of all.
    [[nodiscard]] int readRows(QorIdentifier library, std::vector<Row>& rows);
    [[nodiscard]] bool isAlive(const Row& row);
    [[nodiscard]] bool isMine(const Row& row) const;
    // Overtaken: somebody broke one meanwhile. Failed: `_problem` tells why.
    enum class Attempt { Taken, HeldByOther, Overtaken, Failed };
    [[nodiscard]] Attempt tryToTake(Taking& taking, std::span<const QorIdentifier> libraries, std::string_view user);
    [[nodiscard]] Attempt failed(int code);
    [[nodiscard]] int lookForBreaks(const Taking& taking, bool& isOvertaken);
    [[nodiscard]] int writeRows(Taking& taking, std::string_view user);
    [[nodiscard]] int writeRow(QorIdentifier library, Held& held, std::string_view user);
    [[nodiscard]] int putAsideDead(QorIdentifier library, const Held& held);
    [[nodiscard]] int deleteRow(std::int64_t id) noexcept;
    [[nodiscard]] int deleteRows(std::span<const QorIdentifier> libraries) noexcept;
    [[nodiscard]] int breakOf(QorIdentifier library) noexcept;
    // Runs the steps as one transaction.
    template <class Steps>
    [[nodiscard]] int inTransaction(Steps steps);
    // Frees room: with the reserve given up, what finds the disk full finds room.
    template <class Steps>
    [[nodiscard]] int inTransactionWithReserve(Steps steps);

    SqliteConnection& _connection;
    ReserveFile& _reserve;
    const std::int64_t& _generation;
    ProcessLock _bytes;
    std::map<QorIdentifier, Held> _held;
    std::vector<QorLibraryLock> _dead;  // seen by the transaction under way
    std::vector<QorLibraryLock> _takenOver;
    QorRepositoryResult _problem;
};

}  // namespace qor::embedded
