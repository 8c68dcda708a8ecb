// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cardinality/QorCardinalityCompleteCheck.h"

namespace qor::cli {

/// Checks a model as it is checked before it is saved: the run ends at the first breach, which goes to the sink. False
/// when the repository failed.
[[nodiscard]] bool reportFirstBreach(long model, const QorCardinalityCompleteCheck::Sink& sink);

}  // namespace qor::cli
