// SPDX-License-Identifier: Apache-2.0
// How files come to stand where they belong, whole and to stay. All of it is inline: the command, which is linked with
// what the library exports, replaces its files in the same way.
#pragma once
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <utility>

namespace qor::embedded {

[[nodiscard]] inline std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

// The file itself, not a link to it.
[[nodiscard]] inline std::string resolved(const std::string& path) {
    char* const found = ::realpath(path.c_str(), nullptr);
    if (found == nullptr) return path;
    std::string target = found;
    std::free(found);
    return target;
}

// What cannot be synced, such as a pipe, has nothing to sync. After false, errno tells why.
[[nodiscard]] inline bool sync(int descriptor) noexcept {
    return ::fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS;
}

// True when the names in the folder are on the disk. A folder that may be written but not read cannot be synced.
inline bool syncFolder(const std::string& folder) noexcept {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return errno == EACCES;
    const bool isSynced = sync(descriptor);
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return isSynced;
}

// A file that is written beside another one, or beside the place of one, and takes that place when it is complete. It
// has the mode of the other, or that of any new file. Unless it took the place, it goes at the end. Of what fails,
// errno tells why.
class FileReplacement {
public:
    FileReplacement() = default;
    FileReplacement(FileReplacement&& other) noexcept
        : _target(std::move(other._target)), _unfinished(std::exchange(other._unfinished, {})) {}
    FileReplacement& operator=(const FileReplacement&) = delete;
    ~FileReplacement() {
        if (isBegun()) (void)::unlink(_unfinished.c_str());
    }

    // Gives the file to write to, which the caller closes; -1 when it cannot be made.
    [[nodiscard]] int begin(const std::string& path) {
        _target = resolved(path);
        std::string unfinished = _target + ".XXXXXX";
        const int descriptor = ::mkstemp(unfinished.data());
        if (descriptor < 0) return -1;
        _unfinished = std::move(unfinished);
        if (::fchmod(descriptor, wantedMode()) == 0) return descriptor;
        const int error = errno;
        ::close(descriptor);
        errno = error;
        return -1;
    }
    [[nodiscard]] bool isBegun() const noexcept { return !_unfinished.empty(); }
    [[nodiscard]] const std::string& path() const noexcept { return _unfinished; }
    // To be called when all of it is on the disk and it is closed. False may leave either of the two in the place.
    [[nodiscard]] bool finish() {
        if (::rename(_unfinished.c_str(), _target.c_str()) != 0) return false;
        _unfinished.clear();
        return syncFolder(folderOf(_target));
    }

private:
    [[nodiscard]] mode_t wantedMode() const noexcept {
        struct stat status {};
        if (::stat(_target.c_str(), &status) == 0) return status.st_mode & 07777U;
        const mode_t mask = ::umask(0);
        (void)::umask(mask);
        return 0666U & ~mask;
    }

    std::string _target;
    std::string _unfinished;
};

}  // namespace qor::embedded
