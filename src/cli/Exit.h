// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <cstdint>

namespace qor::cli {

/// How the command ends. The numbers ascend with how much a result is to be mistrusted, so that of several the larger
/// one is told.
enum class Exit : std::int32_t {
    Clean = 0,
    Findings = 1,
    WrongUse = 2,
    BadInput = 3,  ///< not readable or not valid
    Locked = 4,
    WriteFailed = 5,
    Internal = 70,
};

[[nodiscard]] constexpr Exit worse(Exit a, Exit b) { return std::max(a, b); }

}  // namespace qor::cli
