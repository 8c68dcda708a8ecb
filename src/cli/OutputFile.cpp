// SPDX-License-Identifier: Apache-2.0
#include "cli/OutputFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "cli/InputFiles.h"
#include "cli/InterruptsHeld.h"

namespace qor::cli {

namespace {

constexpr mode_t kReadableByAll = 0666;

mode_t wantedMode() {
    const mode_t mask = ::umask(0);
    (void)::umask(mask);
    return kReadableByAll & ~mask;
}

/// A terminal, a pipe or a device takes text as it is.
bool isToBeReplaced(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) != 0 || (S_ISREG(status.st_mode) && !path.starts_with("/dev/"));
}

/// The file itself, not a link to it.
std::string resolved(const std::string& path) {
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

}  // namespace

std::string OutputFile::commit() {
    const int error = _path == kStandardOutput ? _content.copyTo(STDOUT_FILENO)
                      : isToBeReplaced(_path)  ? replaceFile(resolved(_path))
                                               : writeInto();
    return error == 0 ? std::string() : fmt::format("cannot be written: {}", std::strerror(error));
}

int OutputFile::replaceFile(const std::string& path) {
    const InterruptsHeld held(true);
    std::string fresh = path + ".XXXXXX";
    const int descriptor = ::mkstemp(fresh.data());
    if (descriptor < 0) return errno;
    int error = _content.copyTo(descriptor);
    const auto keep = [&error](int result) {
        if (error == 0 && result != 0) error = errno;
    };
    keep(::fchmod(descriptor, wantedMode()));
    keep(::fsync(descriptor));
    keep(::close(descriptor));
    if (error == 0) keep(::rename(fresh.c_str(), path.c_str()));
    if (error != 0) (void)::unlink(fresh.c_str());
    return error;
}

int OutputFile::writeInto() {
    const int descriptor = ::open(_path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) return errno;
    const int error = _content.copyTo(descriptor);
    return ::close(descriptor) != 0 && error == 0 ? errno : error;
}

}  // namespace qor::cli
