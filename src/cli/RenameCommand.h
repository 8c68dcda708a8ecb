// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

struct RenameOptions {
    std::vector<std::string> files;   ///< and folders
    std::string library;              ///< empty: the one that the files name; in a repository file: its name
    std::vector<std::string> models;  ///< names; empty: all that have objects to be named
    bool dryRun = false;
    bool json = false;
    std::string language = "en";
    std::string user;  ///< who acts; empty: the operating system's
};

[[nodiscard]] Exit runRename(const RenameOptions& options, Console& console);

}  // namespace qor::cli
