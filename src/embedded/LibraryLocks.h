// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <span>
#include <string>

#include "embedded/store/RepositoryStore.h"
#include "platform/QorErrorCode.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// Which libraries are locked by whom: those that this platform locked for its users, and those that other processes
// locked in the same file. Without a file (null) there are no others.
class LibraryLocks {
public:
    // All of them or none. A user who has the lock in another process passes as well, and gets no lock: only one
    // process writes.
    QorErrorCode take(std::span<const QorIdentifier> libraries, bool isExclusive, const std::string& user,
                      RepositoryStore* file, QorRepositoryResult& problem);
    // What the user has; LockedByOther when one of them is somebody else's. The others are freed all the same.
    QorErrorCode release(std::span<const QorIdentifier> libraries, const std::string& user, RepositoryStore* file);
    // The lock that keeps the user from an exclusive one, or that the user has exclusively. False when there is none.
    [[nodiscard]] bool find(QorIdentifier library, const std::string& user, RepositoryStore* file,
                            QorLibraryLock& found);
    // When the file is let go of, with the locks in it.
    void forget() noexcept { _own.clear(); }

private:
    struct Own {
        std::string user;
        bool isExclusive = true;
    };
    // Null also for one that was broken.
    [[nodiscard]] const Own* own(QorIdentifier library, RepositoryStore* file);

    std::map<QorIdentifier, Own> _own;
};

}  // namespace qor::embedded
