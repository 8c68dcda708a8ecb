// SPDX-License-Identifier: Apache-2.0
#include "embedded/NameIndex.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <utility>

#include "embedded/HashMix.h"

namespace qor::embedded {

std::uint32_t NameIndex::hashOf(NameScope scope, std::string_view name) noexcept {
    const std::uint64_t text = std::hash<std::string_view>{}(name);
    return static_cast<std::uint32_t>(mixed(text ^ mixedPair(scope.owner, scope.within)));
}

void NameIndex::makeRoom(std::size_t names) {
    const std::size_t wanted = _used + names;
    if (wanted * 4 <= _slots.size() * 3) return;
    std::vector<Slot> slots(std::bit_ceil(std::max<std::size_t>(16, wanted * 4 / 3 + 1)));
    std::swap(slots, _slots);
    _mask = _slots.size() - 1;
    _used = 0;
    for (const Slot& slot : slots)
        if (slot.id != kFree) add(slot.hash, slot.id);
}

void NameIndex::add(std::uint32_t hash, QorIdentifier id) noexcept {
    std::size_t at = hash & _mask;
    while (_slots[at].id != kFree) at = (at + 1) & _mask;
    _slots[at] = {hash, id};
    ++_used;
}

void NameIndex::remove(std::uint32_t hash, QorIdentifier id) noexcept {
    if (_slots.empty()) return;
    std::size_t hole = hash & _mask;
    while (_slots[hole].id != id) {
        if (_slots[hole].id == kFree) return;
        hole = (hole + 1) & _mask;
    }
    // Slots behind the hole move up unless that would put them before the place where their search begins.
    for (std::size_t at = (hole + 1) & _mask; _slots[at].id != kFree; at = (at + 1) & _mask) {
        if (((at - _slots[at].hash) & _mask) < ((at - hole) & _mask)) continue;
        _slots[hole] = _slots[at];
        hole = at;
    }
    _slots[hole] = {};
    --_used;
}

}  // namespace qor::embedded
