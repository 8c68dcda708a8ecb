// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/SqliteLocks.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <utility>

#include "embedded/store/RepositoryStore.h"

namespace qor::embedded {

namespace {

// Breaking a library's locks moves the byte, so that the one that is still held means nothing any more.
constexpr int kBitsOfLibrary = 32;
constexpr int kTries = 3;
constexpr useconds_t kWaitMicroseconds = 1000;
constexpr int kWaits = 50;

std::string hostName() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

std::string now() {
    const std::time_t seconds = std::time(nullptr);
    std::tm parts{};
    std::array<char, 32> text{};
    if (::gmtime_r(&seconds, &parts) == nullptr) return {};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts)};
}

}  // namespace

// Bytes that are given back, or become what they were, unless their rows were written.
class SqliteLocks::Taking {
public:
    Taking(SqliteLocks& locks, bool isExclusive) : _locks(locks), _isExclusive(isExclusive) {}
    Taking(const Taking&) = delete;
    Taking& operator=(const Taking&) = delete;
    ~Taking() {
        for (const auto& [library, its] : taken) giveBack(library, its.place);
    }
    [[nodiscard]] ProcessLock::Outcome add(QorIdentifier library, std::int64_t place) {
        Held& held = taken[library];
        held = {0, place, _isExclusive};
        const ProcessLock::Outcome outcome = _locks._bytes.take(place, _isExclusive);
        if (outcome != ProcessLock::Outcome::Taken) taken.erase(library);
        return outcome;
    }
    void keep() {
        for (auto at = taken.begin(); at != taken.end(); at = taken.erase(at)) {
            Held& held = _locks._held[at->first];
            if (held.row != 0 && held.place != at->second.place) _locks._bytes.release(held.place);
            held = at->second;
        }
    }

    std::map<QorIdentifier, Held> taken;

private:
    void giveBack(QorIdentifier library, std::int64_t place) {
        const auto held = _locks._held.find(library);
        if (held == _locks._held.end() || held->second.place != place)
            _locks._bytes.release(place);
        else
            (void)_locks._bytes.take(place, held->second.isExclusive);  // it gives something up, which nobody hinders
    }

    SqliteLocks& _locks;
    bool _isExclusive;
};

SqliteLocks::~SqliteLocks() = default;

template <class Steps>
int SqliteLocks::inTransaction(Steps steps) {
    int code = _connection.run("BEGIN IMMEDIATE");
    if (code != SQLITE_OK) return code;
    try {
        code = steps();
    } catch (...) {
        (void)_connection.run("ROLLBACK");
        throw;
    }
    if (code == SQLITE_OK) code = _connection.run("COMMIT");
    if (code != SQLITE_OK && sqlite3_get_autocommit(_connection.handle()) == 0) (void)_connection.run("ROLLBACK");
    return code;
}

template <class Steps>
int SqliteLocks::inTransactionWithReserve(Steps steps) {
    const int code = inTransaction(steps);
    if (statusOf(code) != QorRepositoryStatus::NoRoom) return code;
    _reserve.drop();
    return inTransaction(steps);
}

// ---- Who holds what ----

int SqliteLocks::placeOf(QorIdentifier library, std::int64_t& place) {
    SqliteStatement query;
    int code = query.prepare(_connection, "SELECT breaks FROM lock_breaks WHERE library = ?");
    if (code != SQLITE_OK) return code;
    query.bind(1, library);
    code = query.step();
    const std::int64_t breaks = code == SQLITE_ROW ? query.number(0) : 0;
    place = (breaks & 0x7fffffff) << kBitsOfLibrary | library;
    return code == SQLITE_ROW || code == SQLITE_DONE ? SQLITE_OK : code;
}

int SqliteLocks::readRows(QorIdentifier library, std::vector<Row>& rows) {
    rows.clear();
    SqliteStatement query;
    const bool isOfAll = library == QorNoIdentifier;
    int code =
        query.prepare(_connection, isOfAll ? "SELECT id, library, is_exclusive, user, process, host, since FROM locks"
                                           : "SELECT id, library, is_exclusive, user, process, host, since FROM locks "
                                             "WHERE library = ?");
    if (code != SQLITE_OK) return code;
    if (!isOfAll) query.bind(1, library);
    while ((code = query.step()) == SQLITE_ROW) {
        Row& row = rows.emplace_back();
        row.id = query.number(0);
        row.lock.library = static_cast<QorIdentifier>(query.number(1));
        row.lock.isExclusive = query.number(2) != 0;
        row.lock.user = query.text(3);
        row.lock.process = query.number(4);
        row.lock.host = query.text(5);
        row.lock.since = query.text(6);
    }
    return code == SQLITE_DONE ? SQLITE_OK : code;
}

bool SqliteLocks::isMine(const Row& row) const {
    const auto held = _held.find(row.lock.library);
    return held != _held.end() && held->second.row == row.id;
}

// Of several shared locks one may be dead and count as alive: they have one byte together.
bool SqliteLocks::isAlive(const Row& row) {
    std::int64_t place = 0;
    return isMine(row) || placeOf(row.lock.library, place) != SQLITE_OK || _bytes.isHeldByOther(place);
}

bool SqliteLocks::holds(QorIdentifier library) {
    std::vector<Row> rows;
    if (!_held.contains(library)) return false;
    return readRows(library, rows) != SQLITE_OK ||
           std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return isMine(row); });
}

std::vector<QorLibraryLock> SqliteLocks::livingLocks(QorIdentifier library) {
    std::vector<QorLibraryLock> living;
    std::vector<Row> rows;
    for (int wait = 0; wait < kWaits; ++wait) {
        if (readRows(library, rows) != SQLITE_OK) return living;
        for (Row& row : rows)
            if (isAlive(row)) living.push_back(std::move(row.lock));
        if (!living.empty()) return living;
        std::int64_t place = 0;
        if (placeOf(library, place) != SQLITE_OK || !_bytes.isHeldByOther(place)) return living;
        ::usleep(kWaitMicroseconds);  // the byte is taken before the row is written, and freed after it is gone
    }
    living.emplace_back().library = library;
    return living;
}

std::vector<QorLibraryLock> SqliteLocks::allLocks() {
    std::vector<QorLibraryLock> locks;
    std::vector<Row> rows;
    if (readRows(QorNoIdentifier, rows) != SQLITE_OK) return locks;
    for (Row& row : rows) {
        row.lock.isAlive = isAlive(row);
        locks.push_back(std::move(row.lock));
    }
    return locks;
}

std::vector<QorLibraryLock> SqliteLocks::takenOver() noexcept { return std::exchange(_takenOver, {}); }

// ---- Taking ----

LockOutcome SqliteLocks::take(std::span<const QorIdentifier> libraries, bool isExclusive, std::string_view user) {
    _problem = {};
    for (int attempt = 0; attempt < kTries; ++attempt) {
        Taking taking(*this, isExclusive);
        switch (tryToTake(taking, libraries, user)) {
            case Attempt::Taken:
                taking.keep();
                return LockOutcome::Taken;
            case Attempt::HeldByOther:
                return LockOutcome::HeldByOther;
            case Attempt::Failed:
                return LockOutcome::NotStored;
            case Attempt::Overtaken:
                break;
        }
    }
    _problem = failure(QorRepositoryStatus::Locked, "its locks are being broken time and again");
    return LockOutcome::NotStored;
}

SqliteLocks::Attempt SqliteLocks::failed(int code) {
    _problem = failure(statusOf(code), code == SQLITE_BUSY_SNAPSHOT ? std::string() : sqlite3_errstr(code));
    return Attempt::Failed;
}

SqliteLocks::Attempt SqliteLocks::tryToTake(Taking& taking, std::span<const QorIdentifier> libraries,
                                            std::string_view user) {
    for (const QorIdentifier library : libraries) {
        std::int64_t place = 0;
        if (const int code = placeOf(library, place); code != SQLITE_OK) return failed(code);
        switch (taking.add(library, place)) {
            case ProcessLock::Outcome::Taken:
                break;
            case ProcessLock::Outcome::HeldByOther:
                return Attempt::HeldByOther;
            case ProcessLock::Outcome::Failed:
                _problem = failure(QorRepositoryStatus::NoPermission,
                                   std::string("the file of its locks cannot be used: ") + std::strerror(errno));
                return Attempt::Failed;
        }
    }
    bool isOvertaken = false;
    const int code = inTransaction([&] {
        const int looked = lookForBreaks(taking, isOvertaken);
        return looked != SQLITE_OK || isOvertaken ? looked : writeRows(taking, user);
    });
    if (code != SQLITE_OK) return failed(code);
    if (isOvertaken) return Attempt::Overtaken;
    _takenOver.insert(_takenOver.end(), _dead.begin(), _dead.end());
    return Attempt::Taken;
}

int SqliteLocks::lookForBreaks(const Taking& taking, bool& isOvertaken) {
    std::int64_t generation = 0;
    int code = _connection.ask("SELECT generation FROM repository", generation);
    if (code == SQLITE_OK && generation != _generation) code = SQLITE_BUSY_SNAPSHOT;
    for (const auto& [library, held] : taking.taken) {
        std::int64_t place = 0;
        if (code == SQLITE_OK) code = placeOf(library, place);
        isOvertaken = isOvertaken || place != held.place;
    }
    return code;
}

int SqliteLocks::writeRows(Taking& taking, std::string_view user) {
    _dead.clear();
    int code = SQLITE_OK;
    for (auto& [library, held] : taking.taken) {
        if (code == SQLITE_OK) code = putAsideDead(library, held);
        if (code == SQLITE_OK) code = writeRow(library, held, user);
    }
    return code;
}

// With the byte taken, no exclusive lock of another lives; and no shared one when the byte is taken exclusively, or
// nobody else has it.
int SqliteLocks::putAsideDead(QorIdentifier library, const Held& held) {
    std::vector<Row> rows;
    int code = readRows(library, rows);
    const bool isAlone = held.isExclusive || !_bytes.isHeldByOther(held.place);
    for (Row& row : rows) {
        if (code != SQLITE_OK) break;
        if (!isMine(row) && !row.lock.isExclusive && !isAlone) continue;
        code = deleteRow(row.id);
        row.lock.isAlive = false;
        if (!isMine(row)) _dead.push_back(std::move(row.lock));
    }
    return code;
}

int SqliteLocks::writeRow(QorIdentifier library, Held& held, std::string_view user) {
    const std::string host = hostName();
    const std::string since = now();
    SqliteStatement insert;
    int code = insert.prepare(_connection,
                              "INSERT INTO locks (library, is_exclusive, user, process, host, since) "
                              "VALUES (?, ?, ?, ?, ?, ?)");
    if (code != SQLITE_OK) return code;
    insert.bind(1, library);
    insert.bind(2, held.isExclusive ? 1 : 0);
    insert.bind(4, ::getpid());
    code = insert.bind(3, user);
    if (code == SQLITE_OK) code = insert.bind(5, host);
    if (code == SQLITE_OK) code = insert.bind(6, since);
    if (code == SQLITE_OK) code = insert.finish();
    held.row = sqlite3_last_insert_rowid(_connection.handle());
    return code;
}

// ---- Giving back ----

int SqliteLocks::deleteRow(std::int64_t id) noexcept {
    SqliteStatement erase;
    const int code = erase.prepare(_connection, "DELETE FROM locks WHERE id = ?");
    if (code != SQLITE_OK) return code;
    erase.bind(1, id);
    return erase.finish();
}

int SqliteLocks::deleteRows(std::span<const QorIdentifier> libraries) noexcept {
    int code = SQLITE_OK;
    for (const QorIdentifier library : libraries)
        if (const auto held = _held.find(library); held != _held.end() && code == SQLITE_OK)
            code = deleteRow(held->second.row);
    return code;
}

// The row goes first: who then finds the byte held finds nobody's name, but never a dead holder that lives.
void SqliteLocks::release(std::span<const QorIdentifier> libraries) noexcept {
    const auto isHeld = [&](QorIdentifier library) { return _held.contains(library); };
    if (std::none_of(libraries.begin(), libraries.end(), isHeld)) return;
    (void)inTransactionWithReserve([&] { return deleteRows(libraries); });
    for (const QorIdentifier library : libraries) {
        const auto held = _held.find(library);
        if (held == _held.end()) continue;
        _bytes.release(held->second.place);
        _held.erase(held);
    }
}

void SqliteLocks::releaseAll() noexcept {
    if (_held.empty()) return;
    (void)inTransactionWithReserve([&] {
        int code = SQLITE_OK;
        for (const auto& [library, held] : _held)
            if (code == SQLITE_OK) code = deleteRow(held.row);
        return code;
    });
    for (const auto& [library, held] : _held) _bytes.release(held.place);
    _held.clear();
}

int SqliteLocks::breakOf(QorIdentifier library) noexcept {
    SqliteStatement erase;
    SqliteStatement move;
    int code = erase.prepare(_connection, "DELETE FROM locks WHERE library = ?");
    if (code != SQLITE_OK) return code;
    erase.bind(1, library);
    code = erase.finish();
    if (code == SQLITE_OK)
        code = move.prepare(_connection,
                            "INSERT INTO lock_breaks (library, breaks) VALUES (?, 1) "
                            "ON CONFLICT (library) DO UPDATE SET breaks = breaks + 1");
    if (code != SQLITE_OK) return code;
    move.bind(1, library);
    return move.finish();
}

QorRepositoryResult SqliteLocks::breakLocks(std::span<const QorIdentifier> libraries) {
    const int code = inTransactionWithReserve([&] {
        int steps = SQLITE_OK;
        for (const QorIdentifier library : libraries)
            if (steps == SQLITE_OK) steps = breakOf(library);
        return steps;
    });
    return code == SQLITE_OK ? QorRepositoryResult{} : failure(statusOf(code), sqlite3_errstr(code));
}

int SqliteLocks::clearIn(SqliteConnection& copy) noexcept { return copy.run("DELETE FROM locks"); }

// ---- Writing beside locks ----

int SqliteLocks::mayWrite(std::string& reason) {
    std::vector<Row> rows;
    if (const int code = readRows(QorNoIdentifier, rows); code != SQLITE_OK) return code;
    bool isOwner = false;
    for (const auto& [library, held] : _held) {
        const auto isIts = [id = held.row](const Row& row) { return row.id == id; };
        if (std::none_of(rows.begin(), rows.end(), isIts)) {
            reason = "the lock that this process had was broken by an administrator";
            return SQLITE_BUSY;
        }
        isOwner = isOwner || held.isExclusive;
    }
    if (isOwner) return SQLITE_OK;
    for (const Row& row : rows) {
        if (isMine(row) || !isAlive(row)) continue;
        reason = "a library is locked by " + Qor_LockHolderText(row.lock);
        return SQLITE_BUSY;
    }
    return SQLITE_OK;
}

}  // namespace qor::embedded
