// SPDX-License-Identifier: Apache-2.0
#include "cli/WholeFile.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace qor::cli {

namespace {

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

mode_t wantedMode() {
    const mode_t mask = ::umask(0);
    (void)::umask(mask);
    return static_cast<mode_t>(0666) & ~mask;
}

}  // namespace

std::string writeWholeFile(const std::string& path, std::string_view content) {
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);  // a link stays one
    const std::string place = error ? path : target.string();
    std::string fresh = place + ".XXXXXX";
    const int descriptor = ::mkstemp(fresh.data());
    if (descriptor < 0) return fmt::format("cannot be written: {}", std::strerror(errno));
    bool good = writeAll(descriptor, content) && ::fchmod(descriptor, wantedMode()) == 0 && ::fsync(descriptor) == 0;
    int problem = good ? 0 : errno;
    good = ::close(descriptor) == 0 && good && ::rename(fresh.c_str(), place.c_str()) == 0;
    if (good) return {};
    if (problem == 0) problem = errno;
    (void)::unlink(fresh.c_str());
    return fmt::format("cannot be written: {}", std::strerror(problem));
}

}  // namespace qor::cli
