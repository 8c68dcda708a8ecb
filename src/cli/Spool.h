// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace qor::cli {

/// Text that is to be written later and all at once: what breaks off on the way leaves nothing half-written. What does
/// not fit into some megabytes waits in an unnamed file.
class Spool {
public:
    void add(std::string_view text);
    /// Writes everything; 0, or the number of the first error.
    [[nodiscard]] int copyTo(int descriptor);

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    void spill();

    std::string _pending;
    std::unique_ptr<std::FILE, Close> _spilled;  ///< the beginning of a large text
    int _error = 0;
};

/// 0, or the error number.
[[nodiscard]] int writeAll(int descriptor, std::string_view text);

}  // namespace qor::cli
