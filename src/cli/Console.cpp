// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"

#include <sys/stat.h>
#include <unistd.h>
#include <csignal>

#include <array>
#include <cerrno>
#include <cstring>

namespace qor::cli {

namespace {

constexpr std::size_t kLinesKept = std::size_t{64} << 10u;
constexpr std::size_t kDocumentKept = std::size_t{8} << 20u;

/// 0, or the error number.
int writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) return errno;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

bool isRegularFile(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/// Keeps Ctrl-C waiting while a document goes into a file, which cannot block for long.
class InterruptsHeld {
public:
    explicit InterruptsHeld(bool wanted) : _held(wanted) {
        if (!_held) return;
        sigset_t interrupts;
        sigemptyset(&interrupts);
        sigaddset(&interrupts, SIGINT);
        sigaddset(&interrupts, SIGTERM);
        sigprocmask(SIG_BLOCK, &interrupts, &_before);
    }
    InterruptsHeld(const InterruptsHeld&) = delete;
    InterruptsHeld& operator=(const InterruptsHeld&) = delete;
    ~InterruptsHeld() {
        if (_held) sigprocmask(SIG_SETMASK, &_before, nullptr);
    }

private:
    bool _held;
    sigset_t _before{};
};

}  // namespace

Console::Console() : _outColours(wantsColour(STDOUT_FILENO)), _errColours(wantsColour(STDERR_FILENO)) {}

Console::~Console() = default;

void Console::out(std::string_view text) {
    _pending += text;
    if (_mode == OutputMode::Lines && _pending.size() >= kLinesKept) flush();
    if (_mode == OutputMode::Document && _pending.size() >= kDocumentKept) spill();
}

void Console::err(std::string_view text) {
    flush();  // both may go to one terminal
    _progress.hide();
    (void)writeAll(STDERR_FILENO, text);  // nobody is left to be told
}

bool Console::finish() {
    _progress.hide();
    if (_mode == OutputMode::Lines) {
        flush();
    } else {
        const InterruptsHeld held(isRegularFile(STDOUT_FILENO));
        if (_spilled) {
            std::array<char, 65536> block{};
            std::rewind(_spilled.get());
            while (const std::size_t size = std::fread(block.data(), 1, block.size(), _spilled.get()))
                writeOut({block.data(), size});
            if (std::ferror(_spilled.get()) != 0) fail(EIO);
        }
        writeOut(_pending);
        _pending.clear();
    }
    // A reader that has gone away wants no more, and needs no message about it.
    if (_error != 0 && _error != EPIPE)
        err(std::string("qor: error: the output cannot be written: ") + std::strerror(_error) + "\n");
    return _error == 0;
}

void Console::flush() {
    const std::size_t lineEnd = _pending.rfind('\n');
    if (_mode == OutputMode::Document || lineEnd == std::string::npos) return;
    _progress.hide();
    writeOut(std::string_view(_pending).substr(0, lineEnd + 1));
    _pending.erase(0, lineEnd + 1);
}

void Console::spill() {
    if (!_spilled) _spilled.reset(std::tmpfile());
    if (!_spilled || std::fwrite(_pending.data(), 1, _pending.size(), _spilled.get()) != _pending.size()) fail(errno);
    _pending.clear();
}

void Console::writeOut(std::string_view text) {
    if (_error == 0) fail(writeAll(STDOUT_FILENO, text));
}

void Console::fail(int error) {
    if (_error == 0) _error = error;
}

}  // namespace qor::cli
