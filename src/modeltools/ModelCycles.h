// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "modeltools/ListsByKey.h"
#include "modeltools/QorReferenceIndex.h"

namespace qor::modeltools {

/// The groups of models that reach each other. Linear in models and references; needs no deep stack.
[[nodiscard]] std::vector<QorModelCycle> findCycles(const ListsByKey<long>& children);

}  // namespace qor::modeltools
