// SPDX-License-Identifier: Apache-2.0
#include "embedded/OrdinaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

namespace qor::embedded {

namespace {

constexpr mode_t kReadableByAll = 0666;

mode_t wantedMode() {
    const mode_t mask = ::umask(0);
    (void)::umask(mask);
    return kReadableByAll & ~mask;
}

// The file itself, not a link to it.
std::string resolved(const std::string& path) {
    char* const found = ::realpath(path.c_str(), nullptr);
    if (found == nullptr) return path;
    std::string target = found;
    std::free(found);
    return target;
}

}  // namespace

OrdinaryFile::OrdinaryFile(OrdinaryFile&& other) noexcept
    : _descriptor(std::exchange(other._descriptor, -1)),
      _isWritten(other._isWritten),
      _hasFailed(other._hasFailed),
      _target(std::move(other._target)),
      _unfinished(std::exchange(other._unfinished, {})) {}

OrdinaryFile::~OrdinaryFile() {
    if (_descriptor >= 0) ::close(_descriptor);
    if (!_unfinished.empty()) (void)::unlink(_unfinished.c_str());
}

bool OrdinaryFile::open(const std::string& path, QorFileOpenMode mode) {
    _isWritten = mode != QorFileOpenMode::Read;
    if (mode == QorFileOpenMode::Replace) return openToReplace(path);
    const int flags = _isWritten ? O_WRONLY | O_APPEND | O_CREAT : O_RDONLY;
    _descriptor = ::open(path.c_str(), flags | O_CLOEXEC, kReadableByAll);
    struct stat status {};
    return _descriptor >= 0 && ::fstat(_descriptor, &status) == 0 && !S_ISDIR(status.st_mode);
}

bool OrdinaryFile::openToReplace(const std::string& path) {
    struct stat status {};
    const bool isThere = ::stat(path.c_str(), &status) == 0;
    if (isThere && !S_ISREG(status.st_mode)) {  // a terminal, a pipe or a device takes what comes
        if (S_ISDIR(status.st_mode)) return false;
        _descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        return _descriptor >= 0;
    }
    _target = resolved(path);
    std::string unfinished = _target + ".XXXXXX";
    _descriptor = ::mkstemp(unfinished.data());
    if (_descriptor < 0) return false;
    _unfinished = std::move(unfinished);
    return ::fchmod(_descriptor, isThere ? status.st_mode & 07777 : wantedMode()) == 0;
}

long OrdinaryFile::read(char* buffer, unsigned long size) {
    if (_isWritten) return -1;
    unsigned long done = 0;
    while (done < size) {
        const ssize_t got = ::read(_descriptor, buffer + done, size - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -1;
        if (got == 0) break;
        done += static_cast<unsigned long>(got);
    }
    return static_cast<long>(done);
}

long OrdinaryFile::write(const char* bytes, unsigned long size) {
    if (!_isWritten) return -1;
    unsigned long done = 0;
    while (done < size) {
        const ssize_t written = ::write(_descriptor, bytes + done, size - done);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            _hasFailed = true;
            return done == 0 && errno != ENOSPC ? -1 : static_cast<long>(done);
        }
        done += static_cast<unsigned long>(written);
    }
    return static_cast<long>(done);
}

bool OrdinaryFile::close() {
    bool isGood = !_hasFailed;
    // What cannot be synced, such as a pipe, has nothing to sync.
    if (_isWritten && ::fsync(_descriptor) != 0 && errno != EINVAL && errno != EROFS) isGood = false;
    if (::close(std::exchange(_descriptor, -1)) != 0) isGood = false;
    if (_unfinished.empty()) return isGood;
    const std::string unfinished = std::exchange(_unfinished, {});
    if (isGood && ::rename(unfinished.c_str(), _target.c_str()) == 0) return true;
    (void)::unlink(unfinished.c_str());
    return false;
}

}  // namespace qor::embedded
