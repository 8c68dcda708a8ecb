// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "platform/ISortedSet.h"
#include "simmap/QorSimulationOption.h"

/// Writes a mapping as keyword text. The operations append, and return false when a name cannot be fetched.
///
/// Values go between double quotes as they are, without doubling those inside: the texts are compared with and pasted
/// into older ones, which were written that way.
namespace qor::simmap {

[[nodiscard]] bool writeOption(const QorSimulationOption& option, std::string& text);
/// Nothing when both sets are empty.
[[nodiscard]] bool writeClasses(const ISortedSet<long>& businessProcessClasses,
                                const ISortedSet<long>& workingEnvironmentClasses, std::string& text);

}  // namespace qor::simmap
