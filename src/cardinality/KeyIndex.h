// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace qor::cardinality {

/// Numbers keys from 0 in the order in which they first appear. Clearing is O(1) and keeps the memory, so that one
/// index serves object after object without allocating.
class KeyIndex {
public:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    KeyIndex();

    void clear() noexcept;
    /// The key's number; a new key gets the next one. Amortised O(1).
    std::uint32_t add(std::uint64_t key) {
        const auto at = place(key);
        return _slots[at].stamp == _stamp ? _slots[at].number : addNew(key, at);
    }
    /// The key's number, or kNone.
    [[nodiscard]] std::uint32_t find(std::uint64_t key) const noexcept {
        const auto& slot = _slots[place(key)];
        return slot.stamp == _stamp ? slot.number : kNone;
    }
    [[nodiscard]] std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(_keys.size()); }

private:
    /// Holds a key only while its stamp is the index's.
    struct Slot {
        std::uint64_t key = 0;
        std::uint32_t stamp = 0;
        std::uint32_t number = 0;
    };

    /// Spreads keys whose differences lie in a few bits over the whole number.
    [[nodiscard]] static std::uint64_t mixed(std::uint64_t key) noexcept {
        key ^= key >> 32;
        key *= 0x9E3779B97F4A7C15u;
        return key ^ (key >> 29);
    }
    /// The key's slot, or the free slot where it belongs.
    [[nodiscard]] std::size_t place(std::uint64_t key) const noexcept {
        auto at = static_cast<std::size_t>(mixed(key)) & _mask;
        while (_slots[at].stamp == _stamp && _slots[at].key != key) at = (at + 1) & _mask;
        return at;
    }
    std::uint32_t addNew(std::uint64_t key, std::size_t at);
    void useSlots(std::size_t count);
    void forgetSlots() noexcept;

    std::vector<Slot> _slots;
    std::vector<std::uint64_t> _keys;
    std::size_t _mask;  ///< of the slots in use: few keys stay within few cache lines
    std::uint32_t _stamp = 1;
};

}  // namespace qor::cardinality
