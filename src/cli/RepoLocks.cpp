// SPDX-License-Identifier: Apache-2.0
// Who has libraries of a repository file locked, and breaking such locks.
#include "cli/RepoLocks.h"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>

#include "cli/RepoCommand.h"
#include "cli/RepoSession.h"
#include "cli/RepositoryFiles.h"
#include "cli/Text.h"

namespace qor::cli {

namespace {

/// A library is locked with its parts; that is one lock to people.
std::vector<QorLibraryLock> locksByLibrary(RepoSession& session) {
    std::vector<QorLibraryLock> locks = session.platform().libraryLocks();
    for (QorLibraryLock& lock : locks) lock.library = session.reader().applicationLibraryOf(lock.library);
    const auto key = [](const QorLibraryLock& lock) {
        return std::tie(lock.library, lock.user, lock.process, lock.host, lock.isExclusive, lock.isAlive);
    };
    std::stable_sort(locks.begin(), locks.end(), [&](const auto& a, const auto& b) { return key(a) < key(b); });
    locks.erase(std::unique(locks.begin(), locks.end(), [&](const auto& a, const auto& b) { return key(a) == key(b); }),
                locks.end());
    return locks;
}

void writeLocks(RepoSession& session, JsonWriter& json, const char* name, const std::vector<QorLibraryLock>& locks) {
    json.key(name).beginList();
    for (const QorLibraryLock& lock : locks)
        json.beginObject(JsonWriter::Layout::Line)
            .field("library", session.reader().nameOf(lock.library))
            .field("user", std::string_view(lock.user))
            .field("process", lock.process)
            .field("host", std::string_view(lock.host))
            .field("since", std::string_view(lock.since))
            .field("exclusive", lock.isExclusive)
            .field("alive", lock.isAlive)
            .endObject();
    json.endList();
}

}  // namespace

void showLocks(RepoSession& session, JsonWriter* json) {
    const std::vector<QorLibraryLock> locks = locksByLibrary(session);
    if (json != nullptr) return writeLocks(session, *json, "locks", locks);
    for (const QorLibraryLock& lock : locks)
        session.console.out(fmt::format("library {}: {} by {}{}\n", cli::quoted(session.reader().nameOf(lock.library)),
                                        lock.isExclusive ? "locked" : "shared", printable(Qor_LockHolderText(lock)),
                                        lock.isAlive ? "" : ", whose process has ended"));
}

void unlock(RepoSession& session, const RepoOptions& options) {
    std::vector<QorIdentifier> libraries = session.reader().applicationLibraries();
    if (!options.library.empty()) {
        std::string reason;
        libraries = {chooseLibrary(session.reader(), options.library, reason)};
        if (!reason.empty()) return session.error(session.options.file, reason, Exit::WrongUse);
    }
    if (!session.platform().userAdministration().mayAdminister(true))
        return session.error(session.options.file,
                             "only an administrator may break a lock; --user NAME names somebody else", Exit::WrongUse);
    std::vector<QorLibraryLock> broken = locksByLibrary(session);
    std::erase_if(broken, [&](const QorLibraryLock& lock) {
        return std::find(libraries.begin(), libraries.end(), lock.library) == libraries.end();
    });
    for (const QorIdentifier library : libraries) {
        const QorRepositoryResult result = session.platform().breakLibraryLocks(library);
        if (!result.ok()) return session.error(session.options.file, problemText(result), exitOf(result.status));
    }
    if (session.options.json) return writeLocks(session, session.beginJson(), "broken", broken);
    for (const QorLibraryLock& lock : broken)
        session.console.out(fmt::format("library {}: the lock of {} was broken\n",
                                        cli::quoted(session.reader().nameOf(lock.library)),
                                        printable(Qor_LockHolderText(lock))));
    if (broken.empty()) session.console.out("nothing was locked\n");
}

}  // namespace qor::cli
