// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

struct CheckOptions {
    std::vector<std::string> files;
    std::string library;              ///< empty: the one that the file names, for BPMN the shipped one
    std::vector<std::string> models;  ///< names; empty: all
    bool first = false;               ///< one breach per model, as when a model is saved
    bool json = false;
    bool quiet = false;
    std::string language = "en";
};

struct LibraryOptions {
    std::string file;
    bool json = false;
};

struct RulesOptions {
    std::string file;
    std::string cls;  ///< empty: all
    bool json = false;
    std::string language = "en";
};

[[nodiscard]] Exit runCheck(const CheckOptions& options, Console& console);
[[nodiscard]] Exit runLibrary(const LibraryOptions& options, Console& console);
[[nodiscard]] Exit runLibraryCheck(const LibraryOptions& options, Console& console);
[[nodiscard]] Exit runRules(const RulesOptions& options, Console& console);

}  // namespace qor::cli
