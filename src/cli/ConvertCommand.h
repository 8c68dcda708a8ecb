// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

/// What commands need that change objects of one model in a repository file.
struct ModelEditOptions {
    std::string file;   ///< "shop.qor", or "shop.qor#Works" for one of its libraries
    std::string model;  ///< empty: the only one
    bool dryRun = false;
    bool json = false;
    std::string language = "en";
    std::string user;  ///< who acts; empty: the operating system's
};

struct ConvertOptions {
    ModelEditOptions edit;
    std::vector<std::string> objects;
    std::string to;
    bool keep = false;  ///< convert although cardinality rules would be broken
};

struct TransferOptions {
    ModelEditOptions edit;
    std::string from;
    std::vector<std::string> to;
    std::vector<std::string> attributes;  ///< "size" among them
    bool all = false;                     ///< all or nothing
};

[[nodiscard]] Exit runConvert(const ConvertOptions& options, Console& console);
[[nodiscard]] Exit runTransfer(const TransferOptions& options, Console& console);

}  // namespace qor::cli
