// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cli/SimCommands.h"

namespace qor::cli {

/// Resets the results of models in a repository file, all of them or none.
[[nodiscard]] Exit resetInRepository(const SimResetOptions& options, Console& console);

}  // namespace qor::cli
