// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <limits>
#include <optional>

/// Repository identifiers are signed 32-bit numbers handed out by the repository, from 1 upwards; contracts carry them
/// as `long`, which is wider here.
using QorIdentifier = std::int32_t;

inline constexpr QorIdentifier QorNoIdentifier = -1;

/// The identifier in 32 bits, or nothing when it does not fit: 4294967301 must not turn into 5.
[[nodiscard]] constexpr std::optional<QorIdentifier> Qor_NarrowIdentifier(long identifier) noexcept {
    if (identifier < std::numeric_limits<QorIdentifier>::min() ||
        identifier > std::numeric_limits<QorIdentifier>::max())
        return std::nullopt;
    return static_cast<QorIdentifier>(identifier);
}
