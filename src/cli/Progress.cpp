// SPDX-License-Identifier: Apache-2.0
#include "cli/Progress.h"

#include <sys/ioctl.h>
#include <sys/time.h>
#include <unistd.h>
#include <csignal>
#include <ctime>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "cli/Text.h"

namespace qor::cli {

namespace {

constexpr std::size_t kLongestLine = 400;
constexpr std::size_t kRoomForSeconds = 12;
constexpr std::string_view kClear = "\r\x1B[K";

// What the signal handlers need. They run between any two instructions of the one thread, so `say` fills the buffer
// that is not shown and then switches.
char buffers[2][kLongestLine];
std::size_t lengths[2] = {0, 0};
volatile sig_atomic_t current = 0;
volatile sig_atomic_t shown = 0;
timespec startTime{};

void put(std::string_view text) {
    const ssize_t ignored = ::write(STDERR_FILENO, text.data(), text.size());
    (void)ignored;  // a line that cannot be shown is none
}

void draw(int) {
    const int errorBefore = errno;
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    auto seconds = static_cast<unsigned long>(now.tv_sec - startTime.tv_sec);

    char line[kLongestLine + 40];
    std::size_t size = 0;
    const auto append = [&](std::string_view text) {
        std::memcpy(line + size, text.data(), text.size());
        size += text.size();
    };
    append(kClear);
    append({buffers[current], lengths[current]});
    append("  ");
    char digits[20];
    std::size_t first = sizeof digits;
    do {
        digits[--first] = static_cast<char>('0' + seconds % 10);
        seconds /= 10;
    } while (seconds != 0);
    append({digits + first, sizeof digits - first});
    append(" s");
    shown = 1;
    put({line, size});
    errno = errorBefore;
}

void endBySignal(int number) {
    if (shown != 0) put(kClear);
    signal(number, SIG_DFL);
    raise(number);
}

void handle(int number, void (*handler)(int), int flags) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigemptyset(&action.sa_mask);
    struct sigaction before {};
    sigaction(number, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);
}

void runTimer(bool on) {
    itimerval interval{};
    if (on) {
        interval.it_value.tv_sec = 1;
        interval.it_interval.tv_usec = 250000;
    }
    setitimer(ITIMER_REAL, &interval, nullptr);
}

std::size_t columns() {
    winsize size{};
    const bool known = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

bool isStartOfChar(char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u; }

}  // namespace

Progress::~Progress() {
    if (!_started) return;
    runTimer(false);
    hide();
}

void Progress::start() {
    const char* terminal = std::getenv("TERM");
    const bool canRedraw = terminal != nullptr && std::strcmp(terminal, "dumb") != 0 && ::isatty(STDERR_FILENO) == 1;
    if (_started || !canRedraw) return;
    _started = true;
    clock_gettime(CLOCK_MONOTONIC, &startTime);
    handle(SIGALRM, draw, SA_RESTART);
    handle(SIGINT, endBySignal, 0);
    handle(SIGTERM, endBySignal, 0);
    runTimer(true);
}

void Progress::say(std::string_view text) {
    if (!_started) return;
    std::string line = printable(text);
    const std::size_t width = columns();
    const std::size_t room = std::min(kLongestLine, width > kRoomForSeconds ? width - kRoomForSeconds : 0);
    if (line.size() > room) {
        std::size_t end = room;
        while (end > 0 && !isStartOfChar(line[end])) --end;
        line.resize(end);
    }
    const int other = 1 - current;
    std::memcpy(buffers[other], line.data(), line.size());
    lengths[other] = line.size();
    std::atomic_signal_fence(std::memory_order_release);
    current = other;
}

void Progress::hide() {
    if (shown == 0) return;
    shown = 0;
    put(kClear);
}

}  // namespace qor::cli
