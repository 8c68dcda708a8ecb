// SPDX-License-Identifier: Apache-2.0
#include "cli/Console.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/InterruptsHeld.h"

namespace qor::cli {

namespace {

constexpr std::size_t kLinesKept = std::size_t{64} << 10u;

bool isRegularFile(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

Console::Console() : _outColours(wantsColour(STDOUT_FILENO)), _errColours(wantsColour(STDERR_FILENO)) {}

Console::~Console() = default;

void Console::out(std::string_view text) {
    if (_mode == OutputMode::Document) {
        _document.add(text);
        return;
    }
    _pending += text;
    if (_pending.size() >= kLinesKept) flush();
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
        fail(_document.copyTo(STDOUT_FILENO));
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

void Console::writeOut(std::string_view text) {
    if (_error == 0) fail(writeAll(STDOUT_FILENO, text));
}

void Console::fail(int error) {
    if (_error == 0) _error = error;
}

}  // namespace qor::cli
