// SPDX-License-Identifier: Apache-2.0
#include "cli/OutputFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/InputFiles.h"
#include "cli/InterruptsHeld.h"
#include "embedded/FileReplacement.h"

namespace qor::cli {

namespace {

/// A terminal, a pipe or a device takes text as it is.
bool isToBeReplaced(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) != 0 || (S_ISREG(status.st_mode) && !path.starts_with("/dev/"));
}

}  // namespace

std::string OutputFile::commit() {
    const int error = _path == kStandardOutput ? _content.copyTo(STDOUT_FILENO)
                      : isToBeReplaced(_path)  ? replaceFile()
                                               : writeInto();
    return error == 0 ? std::string() : fmt::format("cannot be written: {}", std::strerror(error));
}

int OutputFile::replaceFile() {
    const InterruptsHeld held(true);
    embedded::FileReplacement replacement;
    const int descriptor = replacement.begin(_path);
    if (descriptor < 0) return errno;
    int error = _content.copyTo(descriptor);
    const auto keep = [&error](bool isDone) {
        if (error == 0 && !isDone) error = errno;
    };
    keep(embedded::sync(descriptor));
    keep(::close(descriptor) == 0);
    if (error == 0) keep(replacement.finish());
    return error;
}

int OutputFile::writeInto() {
    const int descriptor = ::open(_path.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) return errno;
    const int error = _content.copyTo(descriptor);
    return ::close(descriptor) != 0 && error == 0 ? errno : error;
}

}  // namespace qor::cli
