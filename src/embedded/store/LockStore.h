// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorLibraryLock.h"
#include "embedded/QorRepositoryFile.h"

namespace qor::embedded {

enum class LockOutcome { Taken, HeldByOther, NotStored };

// The locks of libraries as all processes see them. They are read and written at once and are no content: nothing of
// them is answered from memory, and writing them is no change of the repository. std::bad_alloc may be thrown by all
// but the noexcept ones.
class LockStore {
public:
    virtual ~LockStore();

    // All of them or none. A shared lock of this process becomes an exclusive one. Refused also when the repository was
    // changed since it was read: what is answered from memory would be locked as it is not.
    virtual LockOutcome take(std::span<const QorIdentifier> libraries, bool isExclusive, std::string_view user) = 0;
    // Always frees them; on a full disk the rows may stay behind, without a living holder.
    virtual void release(std::span<const QorIdentifier> libraries) noexcept = 0;
    // Whether this process has the lock, and nobody broke it.
    [[nodiscard]] virtual bool holds(QorIdentifier library) = 0;
    // The living locks of a library. A lock that somebody is taking just now is waited for, but not for long.
    [[nodiscard]] virtual std::vector<QorLibraryLock> livingLocks(QorIdentifier library) = 0;
    // Of all libraries, dead ones among them.
    [[nodiscard]] virtual std::vector<QorLibraryLock> allLocks() = 0;
    // Frees the libraries whoever holds them; a holder that lives finds out when it next writes.
    virtual QorRepositoryResult breakLocks(std::span<const QorIdentifier> libraries) = 0;
    // The dead locks that were put aside by taking others, since this was last asked.
    [[nodiscard]] virtual std::vector<QorLibraryLock> takenOver() noexcept = 0;
    // Why `take` gave NotStored.
    [[nodiscard]] virtual const QorRepositoryResult& problem() const = 0;
};

}  // namespace qor::embedded
