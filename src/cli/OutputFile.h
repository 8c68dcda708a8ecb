// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

#include "cli/Spool.h"

namespace qor::cli {

/// A file that comes into being whole or not at all: an earlier one of its name stays until the new one is complete.
/// "-" is standard output.
class OutputFile {
public:
    explicit OutputFile(std::string path) : _path(std::move(path)) {}

    void add(std::string_view text) { _content.add(text); }
    /// Puts the file in its place. Empty, or why that failed.
    [[nodiscard]] std::string commit();
    [[nodiscard]] const std::string& path() const { return _path; }

private:
    [[nodiscard]] int replaceFile();
    [[nodiscard]] int writeInto();

    std::string _path;
    Spool _content;
};

}  // namespace qor::cli
