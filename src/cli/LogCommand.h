// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>

#include "cli/RepoCommand.h"

namespace qor::cli {

struct LogOptions {
    RepoOptions repo;
    std::string from;  ///< "2026-03-01 09:05", or as much of it as matters
    std::string to;
    std::string by;  ///< who acted
    std::string action;
    std::string file;  ///< a log that was put aside, by its number; empty: the log
    bool jsonLines = false;
    bool raw = false;
    std::optional<bool> names;
    std::string verificationKey;  ///< "-" reads it from standard input
    std::string head;
};

[[nodiscard]] Exit runLog(const LogOptions& options, Console& console);

}  // namespace qor::cli
