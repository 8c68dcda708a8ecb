// SPDX-License-Identifier: Apache-2.0
#include "cli/InputFiles.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace qor::cli {

namespace {

constexpr std::string_view kFolder = "/proc/self/fd/";
constexpr std::uint64_t kMostKept = std::uint64_t{1} << 30u;

bool canBeReadOnce(const std::string& file) {
    struct stat status {};
    return file == kStandardInput || (::stat(file.c_str(), &status) == 0 && S_ISFIFO(status.st_mode));
}

/// 0, or the error number.
int copy(int descriptor, std::FILE* file) {
    std::array<char, 65536> block{};
    for (std::uint64_t total = 0; total < kMostKept;) {
        const ssize_t size = ::read(descriptor, block.data(), block.size());
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) return errno;
        const auto bytes = static_cast<std::size_t>(size);
        if (std::fwrite(block.data(), 1, bytes, file) != bytes) return errno;
        total += bytes;
        // No text file holds a zero byte; the reader will tell so, and there may be no end to what comes.
        if (size == 0 || std::memchr(block.data(), 0, bytes) != nullptr) return std::fflush(file) == 0 ? 0 : errno;
    }
    return EFBIG;
}

}  // namespace

std::string InputFiles::path(const std::string& file, std::string& error) {
    if (file.empty()) error = "a file is to be named here, and the name is empty";
    if (!canBeReadOnce(file)) return file;
    auto& kept = _kept[file];
    if (!kept) {
        kept.reset(std::tmpfile());
        const int descriptor = file == kStandardInput ? STDIN_FILENO : ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
        const int failure = !kept || descriptor < 0 ? errno : copy(descriptor, kept.get());
        if (descriptor > STDERR_FILENO) ::close(descriptor);
        if (failure != 0) {
            error = fmt::format("cannot be read: {}", std::strerror(failure));
            kept.reset();
            return {};
        }
    }
    return fmt::format("{}{}", kFolder, ::fileno(kept.get()));
}

std::string InputFiles::resolved(const std::string& named) {
    return named.starts_with(kFolder) ? named.substr(kFolder.size()) : named;
}

}  // namespace qor::cli
