// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "cli/SimCommands.h"

namespace qor::cli {

/// Whether the file begins as repository files do.
[[nodiscard]] bool isRepositoryFile(const std::string& path);

/// Resets the results of models in a repository file, all of them or none.
[[nodiscard]] Exit resetInRepository(const SimResetOptions& options, Console& console);

}  // namespace qor::cli
