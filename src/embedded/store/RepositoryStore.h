// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "embedded/QorRepositoryFile.h"
#include "embedded/store/FileStore.h"
#include "embedded/store/LockStore.h"
#include "embedded/store/StoredRow.h"

namespace qor::embedded {

// Takes the rows of a repository as they are read.
class StoredRowSink {
public:
    virtual ~StoredRowSink();
    // Identifiers below `next` have been handed out. Comes first.
    virtual void expect(QorIdentifier next) = 0;
    // The library, class or model whose content the row is; none when the row refers to what is not there.
    virtual QorIdentifier take(const StoredRow& row) = 0;
};

// Where a repository's rows are kept: read once, written behind. Results say what went wrong; std::bad_alloc may be
// thrown by all but the noexcept ones.
class RepositoryStore {
public:
    virtual ~RepositoryStore();

    [[nodiscard]] virtual bool isReadOnly() const = 0;
    // What could not be read as it was written must not be written over.
    virtual void refuseWriting() noexcept = 0;

    // Gives every row, table by table, each by its key. What is damaged is left out and named; the rest is given.
    virtual QorRepositoryResult load(StoredRowSink& sink) = 0;

    // One transaction. After a failure the other calls do nothing, and `commit` gives the failure; nothing is then
    // kept. `scope` is the library, class or model whose content the row is.
    virtual void begin() = 0;
    virtual void put(const StoredRow& row, QorIdentifier scope, bool isNew) = 0;
    virtual void remove(const StoredRow& key, QorIdentifier scope) = 0;
    virtual QorRepositoryResult commit(QorIdentifier next) = 0;
    virtual void rollBack() noexcept = 0;

    // Whether the storage below the rows is sound.
    virtual QorRepositoryResult checkStorage() = 0;
    // Copies everything into another place, which is there afterwards as a whole or as it was before.
    virtual QorRepositoryResult backUp(const std::string& target) = 0;
    // Those of its libraries.
    [[nodiscard]] virtual LockStore& locks() = 0;
    // How often something was committed.
    [[nodiscard]] virtual std::int64_t generation() const = 0;

    // The file area beside the rows; never written within a transaction of these.
    [[nodiscard]] virtual FileStore& files() = 0;
};

[[nodiscard]] inline QorRepositoryResult failure(QorRepositoryStatus status, std::string text = {}) {
    if (text.empty()) text = Qor_RepositoryStatusText(status);
    return {status, std::move(text), {}};
}

}  // namespace qor::embedded
