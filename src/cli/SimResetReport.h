// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "cli/SimCommands.h"
#include "embedded/QorRepositoryReader.h"
#include "platform/ISortedSet.h"
#include "simmap/QorSimResultReset.h"

namespace qor::cli {

/// The models of the wanted names among those offered; false, after telling so, when a name has none.
[[nodiscard]] bool chooseModels(const std::vector<std::string>& wanted, const ISortedSet<long>& offered,
                                const QorRepositoryReader& reader, ISortedSet<long>& chosen, Console& console);

/// Tells why a reset cannot be done.
void refuseReset(Console& console, std::string_view why);

/// The changes of a reset, planned or carried out.
void reportReset(const SimResetOptions& options, const QorRepositoryReader& reader, const QorSimResultReset& reset,
                 Console& console);

}  // namespace qor::cli
