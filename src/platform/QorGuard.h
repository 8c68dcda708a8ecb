// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <utility>

#include "platform/displayErrorMessage.h"

/// Runs `call` and returns its result; when it throws, reports an internal error of `source` and returns `fallback`.
/// Every exported operation that can throw inside goes through this: no exception crosses the library boundary.
template <class Result, class Call>
Result Qor_Guarded(const char* source, Result fallback, Call&& call) noexcept {
    try {
        return std::forward<Call>(call)();
    } catch (...) {
        displayErrorMessage(source, 0, "an exception was caught");
        return fallback;
    }
}

template <class Call>
void Qor_Guarded(const char* source, Call&& call) noexcept {
    try {
        std::forward<Call>(call)();
    } catch (...) {
        displayErrorMessage(source, 0, "an exception was caught");
    }
}
