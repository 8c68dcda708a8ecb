// SPDX-License-Identifier: Apache-2.0
#include "cli/StandardInput.h"

#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace qor::cli {

namespace {

constexpr std::string_view kFolder = "/proc/self/fd/";

/// 0, or the error number.
int copyInto(std::FILE* file) {
    std::array<char, 65536> block{};
    while (true) {
        const ssize_t size = ::read(STDIN_FILENO, block.data(), block.size());
        if (size == 0) return std::fflush(file) == 0 ? 0 : errno;
        if (size < 0 && errno == EINTR) continue;
        if (size < 0) return errno;
        const auto bytes = static_cast<std::size_t>(size);
        if (std::fwrite(block.data(), 1, bytes, file) != bytes) return errno;
    }
}

}  // namespace

const std::string& StandardInput::path(std::string& error) {
    if (_file) return _path;
    _file.reset(std::tmpfile());
    const int failure = _file ? copyInto(_file.get()) : errno;
    if (failure == 0)
        _path = fmt::format("{}{}", kFolder, ::fileno(_file.get()));
    else
        error = fmt::format("standard input cannot be read: {}", std::strerror(failure));
    return _path;
}

std::string StandardInput::resolved(const std::string& named) {
    return named.starts_with(kFolder) ? named.substr(kFolder.size()) : named;
}

void StandardInput::rename(QorImportResult& result) const {
    for (QorDiagnostic& diagnostic : result.diagnostics)
        if (diagnostic.place.file == _path) diagnostic.place.file = kStandardInput;
}

}  // namespace qor::cli
