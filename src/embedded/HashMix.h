// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::embedded {

// Spreads every bit of the number over all bits of the result.
[[nodiscard]] constexpr std::uint64_t mixed(std::uint64_t number) noexcept {
    number = (number ^ number >> 30) * 0xbf58476d1ce4e5b9U;
    number = (number ^ number >> 27) * 0x94d049bb133111ebU;
    return number ^ number >> 31;
}

[[nodiscard]] constexpr std::uint64_t mixedPair(std::int32_t first, std::int32_t second) noexcept {
    return mixed(static_cast<std::uint64_t>(static_cast<std::uint32_t>(first)) << 32 |
                 static_cast<std::uint32_t>(second));
}

}  // namespace qor::embedded
