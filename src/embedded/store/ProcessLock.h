// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <sys/types.h>

#include <cstdint>
#include <set>
#include <string>

namespace qor::embedded {

// Locks that live no longer than their process: single bytes of a file beside the repository, which is always empty.
// The system frees them when the file is closed, however the process ends. Never bytes of the repository itself, on
// which the storage engine keeps locks of its own. The file stays when nobody needs it: who deletes it makes two files
// out of one, and two holders of one lock.
class ProcessLock {
public:
    enum class Outcome { Taken, HeldByOther, Failed };

    explicit ProcessLock(const std::string& repository) : _repository(repository), _path(repository + ".locks") {}
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;
    ~ProcessLock() { close(); }

    // Turns a lock of the other kind that is held already into this one. After Failed, errno tells why.
    [[nodiscard]] Outcome take(std::int64_t place, bool isExclusive);
    void release(std::int64_t place) noexcept;
    // Also when that cannot be found out.
    [[nodiscard]] bool isHeldByOther(std::int64_t place) noexcept;

private:
    [[nodiscard]] bool makeWritable() noexcept;
    [[nodiscard]] bool isStillInPlace() const noexcept;
    void giveRightsOfRepository() const noexcept;
    void close() noexcept;

    std::string _repository;
    std::string _path;
    int _file = -1;
    bool _isWritable = false;
    std::set<std::int64_t> _held;
};

}  // namespace qor::embedded
