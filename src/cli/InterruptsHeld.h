// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <csignal>

namespace qor::cli {

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

}  // namespace qor::cli
