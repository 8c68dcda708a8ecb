// SPDX-License-Identifier: Apache-2.0
#include "embedded/OrdinaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace qor::embedded {

namespace {

constexpr mode_t kReadableByAll = 0666;

}  // namespace

OrdinaryFile::OrdinaryFile(OrdinaryFile&& other) noexcept
    : _descriptor(std::exchange(other._descriptor, -1)),
      _isWritten(other._isWritten),
      _hasFailed(other._hasFailed),
      _made(std::move(other._made)),
      _replacement(std::move(other._replacement)) {}

OrdinaryFile::~OrdinaryFile() {
    if (_descriptor >= 0) ::close(_descriptor);
}

bool OrdinaryFile::open(const std::string& path, QorFileOpenMode mode) {
    _isWritten = mode != QorFileOpenMode::Read;
    if (mode == QorFileOpenMode::Replace) return openToReplace(path);
    _descriptor = ::open(path.c_str(), (_isWritten ? O_WRONLY | O_APPEND : O_RDONLY) | O_CLOEXEC);
    if (_descriptor < 0 && _isWritten && errno == ENOENT) {
        _descriptor = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, kReadableByAll);
        _made = resolved(path);
    }
    struct stat status {};
    return _descriptor >= 0 && ::fstat(_descriptor, &status) == 0 && !S_ISDIR(status.st_mode);
}

bool OrdinaryFile::openToReplace(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || S_ISREG(status.st_mode))
        _descriptor = _replacement.begin(path);
    else if (!S_ISDIR(status.st_mode))  // a terminal, a pipe or a device takes what comes
        _descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    return _descriptor >= 0;
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
    if (_isWritten && !sync(_descriptor)) isGood = false;
    if (::close(std::exchange(_descriptor, -1)) != 0) isGood = false;
    if (!isGood) return false;
    return (_made.empty() || syncFolder(folderOf(_made))) && (!_replacement.isBegun() || _replacement.finish());
}

}  // namespace qor::embedded
