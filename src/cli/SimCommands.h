// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

/// What of a library's simulation texts is listed.
enum class SimListing : std::uint8_t { Options, Classes, Actions, Texts, Results };

struct SimListOptions {
    SimListing listing = SimListing::Options;
    std::string library;
    bool json = false;
    std::string language = "en";
};

struct SimCheckOptions {
    std::string library;
    std::vector<std::string> files;  ///< with models; empty: only the definitions are checked
    std::string option;              ///< name of the simulation option; empty: all
    bool json = false;
    std::string language = "en";
};

struct SimWriteOptions {
    std::string library;
    bool withoutClasses = false;
};

struct SimResetOptions {
    std::string file;
    std::string library;  ///< empty: the one that the file names
    std::vector<std::string> models;
    bool dryRun = false;
    bool json = false;
    std::string user;  ///< who acts; empty: the operating system's
};

[[nodiscard]] Exit runSimList(const SimListOptions& options, Console& console);
[[nodiscard]] Exit runSimCheck(const SimCheckOptions& options, Console& console);
[[nodiscard]] Exit runSimWrite(const SimWriteOptions& options, Console& console);
[[nodiscard]] Exit runSimReset(const SimResetOptions& options, Console& console);

}  // namespace qor::cli
