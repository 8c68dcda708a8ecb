// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/ModelEditSession.h"

namespace qor::cli {

struct TransferOptions {
    ModelEditOptions edit;
    std::string from;
    std::vector<std::string> to;
    std::vector<std::string> attributes;  ///< "size" among them
    bool all = false;                     ///< all or nothing
};

[[nodiscard]] Exit runTransfer(const TransferOptions& options, Console& console);

}  // namespace qor::cli
