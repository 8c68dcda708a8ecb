// SPDX-License-Identifier: Apache-2.0
// Keyed hashes of rows. The key stands in the repository file itself: the hashes tell damage, and no attacker.
#pragma once
#include <array>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "embedded/store/StoredRow.h"

namespace qor::embedded {

class RowHash {
public:
    static constexpr std::size_t kKeyBytes = 16;
    using Key = std::array<unsigned char, kKeyBytes>;

    // Random bytes; none when the system has no source of them.
    [[nodiscard]] static bool makeKey(Key& key) noexcept;
    void setKey(const Key& key) noexcept { _key = key; }

    [[nodiscard]] std::int64_t of(const StoredRow& row, std::size_t numbers, std::size_t texts);
    [[nodiscard]] std::int64_t of(std::initializer_list<std::int64_t> numbers, std::string_view text = {});

private:
    [[nodiscard]] char* roomFor(std::size_t bytes);
    [[nodiscard]] std::int64_t hashOf(std::string_view bytes) const noexcept;

    Key _key{};
    std::array<char, 256> _small;
    std::vector<char> _large;
};

// Of all rows of one scope. Adding and taking away in any order gives the same.
struct RowSum {
    std::int64_t rows = 0;
    std::uint64_t total = 0;

    void add(std::int64_t hash) noexcept {
        ++rows;
        total += static_cast<std::uint64_t>(hash);
    }
    void takeAway(std::int64_t hash) noexcept {
        --rows;
        total -= static_cast<std::uint64_t>(hash);
    }
    friend bool operator==(const RowSum& a, const RowSum& b) { return a.rows == b.rows && a.total == b.total; }
};

}  // namespace qor::embedded
