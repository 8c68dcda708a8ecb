// SPDX-License-Identifier: Apache-2.0
// Reading all rows, and writing some.
#include <limits>

#include "embedded/store/SqliteStore.h"

namespace qor::embedded {

namespace {

constexpr std::size_t kMostFindings = 1000;

bool fitsIdentifier(std::int64_t number) {
    return number >= std::numeric_limits<QorIdentifier>::min() && number <= std::numeric_limits<QorIdentifier>::max();
}

}  // namespace

// ---- Reading ----

void SqliteStore::find(QorRepositoryResult& result, std::string finding) const {
    if (result.ok()) result = failure(QorRepositoryStatus::Damaged);
    if (result.findings.size() < kMostFindings) result.findings.push_back(std::move(finding));
}

QorRepositoryResult SqliteStore::load(StoredRowSink& sink) {
    QorRepositoryResult result;
    if (!_headIsSound) find(result, "repository: its key is damaged, so that nothing can be compared with its hash");
    sink.expect(_headIsSound ? _head.next : 0);
    _sums.clear();
    _lastScope = QorNoIdentifier;
    // All tables as of the same commit.
    if (const int code = _connection.run("BEGIN"); code != SQLITE_OK)
        return failure(statusOf(code), sqlite3_errstr(code));
    int failed = SQLITE_OK;
    try {
        // What is damaged is left out; what the device does not give may well be there the next time.
        const auto noteEnd = [&](const char* what, int code) {
            const QorRepositoryStatus status = statusOf(code);
            if (status == QorRepositoryStatus::Damaged || status == QorRepositoryStatus::NotARepository)
                find(result, std::string(what) + ": " + sqlite3_errstr(code));
            else if (code != SQLITE_DONE)
                failed = code;
        };
        for (std::size_t at = 0; at < kStoredTables && failed == SQLITE_OK; ++at) {
            const auto table = static_cast<StoredTable>(at);
            noteEnd(layoutOf(table).name, loadTable(table, sink, result));
        }
        if (failed == SQLITE_OK && _headIsSound) noteEnd("sums", compareSums(result));
    } catch (...) {
        (void)_connection.run("ROLLBACK");
        throw;
    }
    (void)_connection.run("ROLLBACK");
    _sums = {};
    if (failed != SQLITE_OK) return failure(statusOf(failed), sqlite3_errstr(failed));
    return result;
}

int SqliteStore::loadTable(StoredTable table, StoredRowSink& sink, QorRepositoryResult& result) {
    SqliteStatement rows;
    int code = rows.prepare(_connection, sqlFor(layoutOf(table), RowStatement::Select));
    if (code != SQLITE_OK) return code;
    while ((code = rows.step()) == SQLITE_ROW) loadRow(table, rows, sink, result);
    return code;
}

void SqliteStore::loadRow(StoredTable table, SqliteStatement& row, StoredRowSink& sink, QorRepositoryResult& result) {
    const StoredTableLayout& layout = layoutOf(table);
    const std::size_t numbers = layout.numberCount();
    const std::size_t texts = layout.textCount();
    StoredRow read;
    read.table = table;
    for (std::size_t at = 0; at < numbers; ++at) {
        const int column = static_cast<int>(at);
        const bool isNone = layout.numbers[at].optional && row.isNull(column);
        const std::int64_t number = isNone ? QorNoIdentifier : row.number(column);
        if (!fitsIdentifier(number))
            return find(result, described(table, row) + " holds a number that is none of ours");
        read.numbers[at] = static_cast<QorIdentifier>(number);
    }
    // A value of another type is read as what it would be; the hash tells it.
    for (std::size_t at = 0; at < texts; ++at) read.texts[at] = row.text(static_cast<int>(numbers + at));
    const std::int64_t stored = row.number(static_cast<int>(numbers + texts));
    if (_headIsSound && _hash.of(read, numbers, texts) != stored)
        return find(result, described(table, row) + " is not what was written");
    const QorIdentifier scope = sink.take(read);
    if (scope == QorNoIdentifier) return find(result, described(table, row) + " refers to what is not there");
    if (scope != _lastScope) _lastSum = &_sums[_lastScope = scope];
    _lastSum->add(stored);
}

// "objects 1017" or "attribute_values 1017, 1003"
std::string SqliteStore::described(StoredTable table, const SqliteStatement& row) const {
    const StoredTableLayout& layout = layoutOf(table);
    std::string text = layout.name;
    for (std::size_t at = 0; at < layout.keys; ++at)
        text += (at == 0 ? " " : ", ") + std::to_string(row.number(static_cast<int>(at)));
    return text;
}

// Rows that are missing, or there twice, show in the sum over their model or class.
int SqliteStore::compareSums(QorRepositoryResult& result) {
    SqliteStatement query;
    int code = query.prepare(_connection, "SELECT scope, row_count, total, hash FROM sums");
    if (code != SQLITE_OK) return code;
    while ((code = query.step()) == SQLITE_ROW) {
        const std::int64_t scope = query.number(0);
        const RowSum stored{query.number(1), static_cast<std::uint64_t>(query.number(2))};
        const bool isSound =
            fitsIdentifier(scope) && _hash.of({scope, query.number(1), query.number(2)}) == query.number(3);
        const auto found = isSound ? _sums.find(static_cast<QorIdentifier>(scope)) : _sums.end();
        if (found == _sums.end() || !(found->second == stored))
            find(result, "the content of " + std::to_string(scope) + " is not complete, or more than was written");
        if (found != _sums.end()) _sums.erase(found);
    }
    for (const auto& [scope, sum] : _sums)
        find(result, "the content of " + std::to_string(scope) + " is more than was written");
    return code;
}

// ---- Writing ----

void SqliteStore::note(int code) noexcept {
    if (_failure == SQLITE_OK) _failure = code;
}

SqliteStatement& SqliteStore::statement(StoredTable table, RowStatement kind) {
    SqliteStatement& its = _statements[static_cast<std::size_t>(table)][static_cast<std::size_t>(kind)];
    if (!its.isPrepared()) note(its.prepare(_connection, sqlFor(layoutOf(table), kind)));
    return its;
}

// Answers come from memory, so a file that somebody else has changed since must not be written.
void SqliteStore::begin() {
    _changes.clear();
    _refusal.clear();
    _failure = _isReadOnly ? SQLITE_READONLY : _connection.run("BEGIN IMMEDIATE");
    if (_failure != SQLITE_OK) return;
    std::int64_t generation = 0;
    note(_connection.ask("SELECT generation FROM repository", generation));
    if (_failure == SQLITE_OK && generation != _head.generation) note(SQLITE_BUSY_SNAPSHOT);
    if (_failure == SQLITE_OK) note(_locks.mayWrite(_refusal));
}

void SqliteStore::bindRow(SqliteStatement& statement, const StoredRow& row, std::int64_t hash) {
    const StoredTableLayout& layout = layoutOf(row.table);
    int place = 1;
    for (std::size_t at = 0; at < layout.numberCount(); ++at, ++place) {
        if (layout.numbers[at].optional && row.numbers[at] == QorNoIdentifier)
            statement.bindNull(place);
        else
            statement.bind(place, row.numbers[at]);
    }
    for (std::size_t at = 0; at < layout.textCount(); ++at, ++place) note(statement.bind(place, row.texts[at]));
    statement.bind(place, hash);
}

void SqliteStore::bindKey(SqliteStatement& statement, const StoredRow& row) const {
    for (std::size_t at = 0; at < layoutOf(row.table).keys; ++at)
        statement.bind(static_cast<int>(at) + 1, row.numbers[at]);
}

bool SqliteStore::takeStoredHash(const StoredRow& key, RowSum& sum) {
    SqliteStatement& query = statement(key.table, RowStatement::Hash);
    if (_failure != SQLITE_OK) return false;
    bindKey(query, key);
    const int code = query.step();
    if (code == SQLITE_ROW)
        sum.takeAway(query.number(0));
    else
        note(code == SQLITE_DONE ? SQLITE_CORRUPT : code);  // what memory knows of must be there
    query.reset();
    return _failure == SQLITE_OK;
}

void SqliteStore::put(const StoredRow& row, QorIdentifier scope, bool isNew) {
    if (_failure != SQLITE_OK) return;
    const StoredTableLayout& layout = layoutOf(row.table);
    RowSum& sum = _changes[scope];
    if (!isNew && !takeStoredHash(row, sum)) return;
    SqliteStatement& write = statement(row.table, isNew ? RowStatement::Insert : RowStatement::Replace);
    if (_failure != SQLITE_OK) return;
    const std::int64_t hash = _hash.of(row, layout.numberCount(), layout.textCount());
    bindRow(write, row, hash);
    if (_failure == SQLITE_OK) note(write.finish());
    sum.add(hash);
}

void SqliteStore::remove(const StoredRow& key, QorIdentifier scope) {
    if (_failure != SQLITE_OK || !takeStoredHash(key, _changes[scope])) return;
    SqliteStatement& erase = statement(key.table, RowStatement::Remove);
    if (_failure != SQLITE_OK) return;
    bindKey(erase, key);
    note(erase.finish());
}

int SqliteStore::writeSum(QorIdentifier scope, const RowSum& change) {
    RowSum sum;
    {
        SqliteStatement query;
        int code = query.prepare(_connection, "SELECT row_count, total FROM sums WHERE scope = ?");
        if (code != SQLITE_OK) return code;
        query.bind(1, scope);
        code = query.step();
        if (code == SQLITE_ROW) sum = {query.number(0), static_cast<std::uint64_t>(query.number(1))};
        if (code != SQLITE_ROW && code != SQLITE_DONE) return code;
    }
    sum.rows += change.rows;
    sum.total += change.total;
    SqliteStatement write;
    const bool isEmpty = sum.rows == 0;
    int code =
        write.prepare(_connection, isEmpty ? "DELETE FROM sums WHERE scope = ?"
                                           : "REPLACE INTO sums (scope, row_count, total, hash) VALUES (?, ?, ?, ?)");
    if (code != SQLITE_OK) return code;
    write.bind(1, scope);
    if (!isEmpty) {
        const auto total = static_cast<std::int64_t>(sum.total);
        write.bind(2, sum.rows);
        write.bind(3, total);
        write.bind(4, _hash.of({scope, sum.rows, total}));
    }
    return write.finish();
}

QorRepositoryResult SqliteStore::commit(QorIdentifier next) {
    for (const auto& [scope, change] : _changes)
        if (_failure == SQLITE_OK) note(writeSum(scope, change));
    Head head = _head;
    head.next = next;
    ++head.generation;
    if (_failure == SQLITE_OK) note(writeHead(head));
    if (_failure == SQLITE_OK) note(_connection.run("COMMIT"));
    if (_failure == SQLITE_OK) {
        _head = head;
        _reserve.lay();
        return {};
    }
    std::string why = _refusal;
    const bool isSaidByStatus = (_failure & 0xff) == SQLITE_BUSY || _isReadOnly;
    if (why.empty() && !isSaidByStatus) why = sqlite3_errstr(_failure);
    const QorRepositoryResult result = failure(statusOf(_failure), std::move(why));
    rollBack();
    if (result.status == QorRepositoryStatus::NoRoom) _reserve.drop();
    return result;
}

void SqliteStore::rollBack() noexcept {
    for (auto& ofTable : _statements)
        for (SqliteStatement& its : ofTable)
            if (its.isPrepared()) its.reset();
    if (_connection.handle() != nullptr && sqlite3_get_autocommit(_connection.handle()) == 0)
        (void)_connection.run("ROLLBACK");
}

}  // namespace qor::embedded
