// SPDX-License-Identifier: Apache-2.0
#include "interchange/FileInput.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace qor::interchange {
namespace {

std::string problemOf(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return "there is no such file";
        case EACCES:
        case EPERM:
            return "there is no permission to read the file";
        case EISDIR:
            return "this is a folder, not a file; name the files in it";
        case ENAMETOOLONG:
            return "the name is longer than the file system allows";
        case ELOOP:
            return "the symbolic links go round in a circle";
        default:
            return "cannot be read: " + std::generic_category().message(error);
    }
}

}  // namespace

std::unique_ptr<FileSource> FileSource::open(const std::string& path, std::string& problem) {
    if (path == "-") return std::unique_ptr<FileSource>(new FileSource(STDIN_FILENO, false, 0));
    int descriptor = -1;
    if (path.empty() || path.find('\0') != std::string::npos)
        errno = ENOENT;
    else
        descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    struct stat status {};
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode)) {
        problem = problemOf(descriptor >= 0 && S_ISDIR(status.st_mode) ? EISDIR : errno);
        if (descriptor >= 0) ::close(descriptor);
        return nullptr;
    }
    const bool regular = S_ISREG(status.st_mode);
    const std::size_t size = regular ? static_cast<std::size_t>(status.st_size) : 0;
    return std::unique_ptr<FileSource>(new FileSource(descriptor, regular, size));
}

FileSource::~FileSource() {
    if (_descriptor != STDIN_FILENO) ::close(_descriptor);
}

std::ptrdiff_t FileSource::read(char* buffer, std::size_t size) {
    ssize_t count = 0;
    do count = ::read(_descriptor, buffer, size);
    while (count < 0 && errno == EINTR);
    if (count < 0) _problem = problemOf(errno);
    return count;
}

TextSource::~TextSource() = default;

std::ptrdiff_t TextSource::read(char* buffer, std::size_t size) {
    const std::size_t count = std::min(size, _text.size());
    if (count != 0) std::memcpy(buffer, _text.data(), count);
    _text.remove_prefix(count);
    return static_cast<std::ptrdiff_t>(count);
}

ResumedSource::~ResumedSource() = default;

std::ptrdiff_t ResumedSource::read(char* buffer, std::size_t size) {
    const std::ptrdiff_t count = _taken.read(buffer, size);
    return count != 0 || size == 0 ? count : _rest.read(buffer, size);
}

bool readMore(ByteSource& source, std::size_t size, std::string& text) {
    constexpr std::size_t kStep = std::size_t{1} << 18;
    const std::size_t end = text.size() + size;
    while (text.size() < end) {
        const std::size_t before = text.size();
        const std::size_t step = std::min(end - before, kStep);
        text.resize(before + step);
        const std::ptrdiff_t count = source.read(text.data() + before, step);
        text.resize(before + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count <= 0) return count == 0;
    }
    return true;
}

}  // namespace qor::interchange
