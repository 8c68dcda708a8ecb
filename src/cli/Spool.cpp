// SPDX-License-Identifier: Apache-2.0
#include "cli/Spool.h"

#include <unistd.h>

#include <array>
#include <cerrno>

namespace qor::cli {

namespace {
constexpr std::size_t kKept = std::size_t{8} << 20u;
}

int writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) return errno;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

void Spool::add(std::string_view text) {
    _pending += text;
    if (_pending.size() >= kKept) spill();
}

int Spool::copyTo(int descriptor) {
    if (_spilled) {
        std::array<char, 65536> block{};
        std::rewind(_spilled.get());
        while (const std::size_t size = std::fread(block.data(), 1, block.size(), _spilled.get()))
            if (_error == 0) _error = writeAll(descriptor, {block.data(), size});
        if (_error == 0 && std::ferror(_spilled.get()) != 0) _error = EIO;
    }
    if (_error == 0) _error = writeAll(descriptor, _pending);
    _pending.clear();
    return _error;
}

void Spool::spill() {
    if (!_spilled) _spilled.reset(std::tmpfile());
    const bool isKept = _spilled && std::fwrite(_pending.data(), 1, _pending.size(), _spilled.get()) == _pending.size();
    if (!isKept && _error == 0) _error = errno;
    _pending.clear();
}

}  // namespace qor::cli
