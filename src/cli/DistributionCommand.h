// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

/// What `qor distribution VERB` was given.
struct DistributionOptions {
    std::string verb;  ///< check, short, long or mean
    std::string text;  ///< "-": the first line of standard input
    bool json = false;
    std::string language = "en";
};

[[nodiscard]] Exit runDistribution(const DistributionOptions& options, Console& console);

}  // namespace qor::cli
