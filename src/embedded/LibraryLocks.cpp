// SPDX-License-Identifier: Apache-2.0
#include "embedded/LibraryLocks.h"

#include <algorithm>
#include <utility>
#include <vector>

std::string Qor_LockHolderText(const QorLibraryLock& lock) {
    if (lock.user.empty()) return "somebody";
    return lock.user + " (process " + std::to_string(lock.process) + " on " + lock.host + ", since " + lock.since + ")";
}

namespace qor::embedded {

namespace {

// False when nobody has them any more, too: the user has no lock then.
bool isLockedOnlyBy(const std::string& user, std::span<const QorIdentifier> libraries, LockStore& locks) {
    bool isLocked = false;
    for (const QorIdentifier library : libraries)
        for (const QorLibraryLock& lock : locks.livingLocks(library)) {
            if (lock.user != user) return false;
            isLocked = true;
        }
    return isLocked;
}

}  // namespace

const LibraryLocks::Own* LibraryLocks::own(QorIdentifier library, RepositoryStore* file) {
    const auto found = _own.find(library);
    if (found == _own.end()) return nullptr;
    if (file == nullptr || file->locks().holds(library)) return &found->second;
    _own.erase(found);
    return nullptr;
}

QorErrorCode LibraryLocks::take(std::span<const QorIdentifier> libraries, bool isExclusive, const std::string& user,
                                RepositoryStore* file, QorRepositoryResult& problem) {
    std::vector<QorIdentifier> needed;
    std::map<QorIdentifier, Own> taken;
    for (const QorIdentifier library : libraries) {
        const Own* const it = own(library, file);
        if (it != nullptr && it->user != user) return QorErrorCode::LockedByOther;
        if (it != nullptr && (it->isExclusive || !isExclusive)) continue;
        needed.push_back(library);
        taken[library] = {user, isExclusive};
    }
    if (needed.empty()) return QorErrorCode::Ok;
    if (file != nullptr) {
        if (file->isReadOnly()) {
            problem = failure(QorRepositoryStatus::ReadOnly);
            return QorRepositoryCode::NotStored;
        }
        switch (file->locks().take(needed, isExclusive, user)) {
            case LockOutcome::Taken:
                break;
            case LockOutcome::HeldByOther:
                return isLockedOnlyBy(user, needed, file->locks()) ? QorErrorCode::Ok : QorErrorCode::LockedByOther;
            case LockOutcome::NotStored:
                problem = file->locks().problem();
                return QorRepositoryCode::NotStored;
        }
    }
    for (const QorIdentifier library : needed) _own.erase(library);
    _own.merge(taken);
    return QorErrorCode::Ok;
}

QorErrorCode LibraryLocks::release(std::span<const QorIdentifier> libraries, const std::string& user,
                                   RepositoryStore* file) {
    QorErrorCode code = QorErrorCode::Ok;
    std::vector<QorIdentifier> its;
    for (const QorIdentifier library : libraries) {
        const Own* const it = own(library, file);
        // One that was broken goes as well: the file still counts this process among those who had one.
        if (it == nullptr || it->user == user) its.push_back(library);
        QorLibraryLock lock;
        if (it == nullptr ? find(library, user, file, lock) && lock.user != user : it->user != user)
            code = QorErrorCode::LockedByOther;
    }
    if (file != nullptr) file->locks().release(its);
    for (const QorIdentifier library : its) _own.erase(library);
    return code;
}

bool LibraryLocks::find(QorIdentifier library, const std::string& user, RepositoryStore* file, QorLibraryLock& found) {
    std::vector<QorLibraryLock> locks;
    if (const Own* const it = own(library, file))
        locks.push_back({library, it->isExclusive, true, it->user, 0, {}, {}});
    if (file != nullptr)
        for (QorLibraryLock& lock : file->locks().livingLocks(library)) locks.push_back(std::move(lock));
    // A shared lock of the user's own is none to them.
    const auto counts = [&](const QorLibraryLock& lock) { return lock.isExclusive || lock.user != user; };
    const auto at = std::find_if(locks.begin(), locks.end(), counts);
    if (at == locks.end()) return false;
    found = std::move(*at);
    return true;
}

}  // namespace qor::embedded
