// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

struct RepoOptions {
    std::string family = "repo";  ///< of commands, as in "qor.repo.info/1"
    std::string verb;
    std::string file;
    std::vector<std::string> inputs;  ///< of an import
    std::string target;               ///< folder of an export, file of a backup
    std::string library;              ///< by its name in the repository
    bool keep = false;                ///< models that break rules are imported all the same
    bool json = false;
    std::string language = "en";
    std::string user;     ///< empty: the operating system's
    std::string keyFile;  ///< empty: the usual place
};

[[nodiscard]] Exit runRepo(const RepoOptions& options, Console& console);

}  // namespace qor::cli
