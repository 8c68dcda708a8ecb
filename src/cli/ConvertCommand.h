// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/ModelEditSession.h"

namespace qor::cli {

struct ConvertOptions {
    ModelEditOptions edit;
    std::vector<std::string> objects;
    std::string to;
    bool keep = false;  ///< convert although cardinality rules would be broken
};

[[nodiscard]] Exit runConvert(const ConvertOptions& options, Console& console);

}  // namespace qor::cli
