// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <span>
#include <string>

#include "cli/Exit.h"
#include "cli/RepositoryOptions.h"

namespace qor::cli {

class Console;
class LogRun;

/// A command on the administrator log.
struct LogVerb {
    const char* name;
    const char* purpose;
    bool writes;
    bool filters;  ///< takes the arguments that choose lines
    void (LogRun::*run)();
};
[[nodiscard]] std::span<const LogVerb> logVerbs();

struct LogOptions {
    RepositoryOptions repository;
    const LogVerb* verb = nullptr;
    std::string target;  ///< of an export; "-" is standard output
    std::string from;    ///< "2026-03-01 09:05", or as much of it as matters
    std::string to;
    std::string by;  ///< who acted
    std::string action;
    std::string number;  ///< of a log that was put aside; empty: the log
    bool jsonLines = false;
    bool raw = false;
    std::optional<bool> names;
    std::string verificationKey;  ///< "-" reads it from standard input
    std::string head;
};

[[nodiscard]] Exit runLog(const LogOptions& options, Console& console);

}  // namespace qor::cli
