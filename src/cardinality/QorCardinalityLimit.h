// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>

/// As a maximum this number, like every larger one, limits nothing.
inline constexpr std::uint32_t QorNoCardinalityLimit = 65535;

/// A limit as it stands after reading a rule text.
struct QorCardinalityLimit {
    std::uint32_t count = 0;
    /// The key whose value this is, a literal. Not always the limit's own key: "max-relations" lowers the limits of
    /// the single directions. Empty while no key has set the limit.
    std::string_view key;
};
