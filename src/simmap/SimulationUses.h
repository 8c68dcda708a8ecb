// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "platform/QorCoreAttributeType.h"
#include "simmap/QorSimReadiness.h"

namespace qor::simmap {

// What the definitions use classes and attributes for. The operations append.
void collectUses(long library, const QorSimulationOption& option, int index, std::vector<QorSimUse>& uses);
void collectUses(const QorSimResultHolder& holder, std::vector<QorSimUse>& uses);

/// Whether an attribute of the type can hold what it is used for.
[[nodiscard]] bool canHold(const QorSimUse& use, QorCoreAttributeType type);

}  // namespace qor::simmap
