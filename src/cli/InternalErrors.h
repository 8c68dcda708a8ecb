// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>

#include "cli/Workspace.h"

namespace qor::cli {

class Console;

/// Tells and counts what should never happen.
class InternalErrors {
public:
    explicit InternalErrors(Console& console);
    InternalErrors(const InternalErrors&) = delete;
    InternalErrors& operator=(const InternalErrors&) = delete;

    void add(std::string_view text);
    [[nodiscard]] std::uint64_t count() const { return _count; }
    /// Where the system reports them.
    [[nodiscard]] QorWindows& windows() { return _windows; }

private:
    Console& _console;
    CommandWindows _windows;
    std::uint64_t _count = 0;
};

}  // namespace qor::cli
