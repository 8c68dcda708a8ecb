// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

struct HierarchyOptions {
    std::vector<std::string> files;   ///< and folders
    std::string library;              ///< empty: the one that the files name; in a repository file: its name
    std::vector<std::string> models;  ///< names; empty: all that no other one refers to
    bool whereUsed = false;
    bool broken = false;
    bool json = false;
    std::string xml;  ///< file to write; empty: none
    std::string svg;
    std::size_t maxElements = 10'000;
    std::string language = "en";
};

[[nodiscard]] Exit runHierarchy(const HierarchyOptions& options, Console& console);

}  // namespace qor::cli
