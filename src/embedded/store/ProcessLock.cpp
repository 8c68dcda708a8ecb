// SPDX-License-Identifier: Apache-2.0
#include "embedded/store/ProcessLock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace qor::embedded {

namespace {

constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW;

struct flock byteAt(std::int64_t place, int type) {
    struct flock lock {};
    lock.l_type = static_cast<short>(type);
    lock.l_whence = SEEK_SET;
    lock.l_start = static_cast<off_t>(place);
    lock.l_len = 1;
    return lock;
}

}  // namespace

void ProcessLock::close() noexcept {
    if (_file < 0) return;
    // A child process may have the file open as well.
    struct flock all = byteAt(0, F_UNLCK);
    all.l_len = 0;
    (void)::fcntl(_file, F_OFD_SETLK, &all);
    ::close(_file);
    _file = -1;
    _held.clear();
}

bool ProcessLock::isStillInPlace() const noexcept {
    struct stat open {};
    struct stat named {};
    return ::fstat(_file, &open) == 0 && ::stat(_path.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

// Whoever may write to the repository may lock it.
void ProcessLock::giveRightsOfRepository() const noexcept {
    struct stat status {};
    if (::stat(_repository.c_str(), &status) != 0) return;
    if (::geteuid() == 0) (void)!::fchown(_file, status.st_uid, status.st_gid);
    (void)::fchmod(_file, status.st_mode & 0666U);
}

bool ProcessLock::makeWritable() noexcept {
    if (_file >= 0 && _held.empty() && (!_isWritable || !isStillInPlace())) close();
    if (_file >= 0) return true;
    _file = ::open(_path.c_str(), O_RDWR | kFlags);
    if (_file < 0 && errno == ENOENT) {
        _file = ::open(_path.c_str(), O_RDWR | O_CREAT | O_EXCL | kFlags, S_IRUSR | S_IWUSR);
        if (_file >= 0)
            giveRightsOfRepository();
        else if (errno == EEXIST)
            _file = ::open(_path.c_str(), O_RDWR | kFlags);
    }
    _isWritable = true;
    return _file >= 0;
}

ProcessLock::Outcome ProcessLock::take(std::int64_t place, bool isExclusive) {
    if (!makeWritable()) return Outcome::Failed;
    const bool isNew = _held.insert(place).second;
    struct flock lock = byteAt(place, isExclusive ? F_WRLCK : F_RDLCK);
    if (::fcntl(_file, F_OFD_SETLK, &lock) == 0) return Outcome::Taken;
    if (isNew) _held.erase(place);
    return errno == EAGAIN || errno == EACCES ? Outcome::HeldByOther : Outcome::Failed;
}

void ProcessLock::release(std::int64_t place) noexcept {
    if (_file < 0) return;
    struct flock lock = byteAt(place, F_UNLCK);
    (void)::fcntl(_file, F_OFD_SETLK, &lock);
    _held.erase(place);
}

bool ProcessLock::isHeldByOther(std::int64_t place) noexcept {
    if (_file >= 0 && _held.empty() && !isStillInPlace()) close();
    if (_file < 0) {
        _file = ::open(_path.c_str(), O_RDONLY | kFlags);
        _isWritable = false;
        if (_file < 0) return errno != ENOENT && errno != ENOTDIR;
    }
    struct flock lock = byteAt(place, F_WRLCK);
    return ::fcntl(_file, F_OFD_GETLK, &lock) != 0 || lock.l_type != F_UNLCK;
}

}  // namespace qor::embedded
