// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>

#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"

/// One lock of a library, or of one of its parts, in a repository file.
struct QorLibraryLock {
    QorIdentifier library = QorNoIdentifier;
    bool isExclusive = true;
    bool isAlive = true;       ///< whether the process that took it still has it; if not, the lock is void
    std::string user;          ///< logon name; empty when another process is just taking it
    std::int64_t process = 0;  ///< number of the process that took it, on its host
    std::string host;
    std::string since;  ///< "2026-11-22T09:30:00Z"
};

/// "ada (process 4711 on shopfloor, since 2026-11-22T09:30:00Z)"
[[nodiscard]] QOR_API std::string Qor_LockHolderText(const QorLibraryLock& lock);
