// SPDX-License-Identifier: Apache-2.0
#include "embedded/ValueTable.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "embedded/HashMix.h"

namespace qor::embedded {

std::size_t ValueTable::homeOf(QorIdentifier thing, QorIdentifier attribute) const noexcept {
    return mixedPair(thing, attribute) & _mask;
}

// The slot that holds the value, or the free one where the search for it ends.
std::size_t ValueTable::slotOf(QorIdentifier thing, QorIdentifier attribute) const noexcept {
    std::size_t at = homeOf(thing, attribute);
    while (_slots[at].thing != kFree && (_slots[at].thing != thing || _slots[at].attribute != attribute))
        at = (at + 1) & _mask;
    return at;
}

TextRef* ValueTable::find(QorIdentifier thing, QorIdentifier attribute) noexcept {
    if (_slots.empty()) return nullptr;
    Slot& slot = _slots[slotOf(thing, attribute)];
    return slot.thing == kFree ? nullptr : &slot.text;
}

const TextRef* ValueTable::find(QorIdentifier thing, QorIdentifier attribute) const noexcept {
    if (_slots.empty()) return nullptr;
    const Slot& slot = _slots[slotOf(thing, attribute)];
    return slot.thing == kFree ? nullptr : &slot.text;
}

void ValueTable::makeRoom(std::size_t values) {
    const std::size_t wanted = _used + values;
    if (wanted * 4 <= _slots.size() * 3) return;
    std::vector<Slot> slots(std::bit_ceil(std::max<std::size_t>(16, wanted * 4 / 3 + 1)));
    std::swap(slots, _slots);
    _mask = _slots.size() - 1;
    _used = 0;
    for (const Slot& slot : slots)
        if (slot.thing != kFree) add(slot.thing, slot.attribute, slot.text);
}

void ValueTable::add(QorIdentifier thing, QorIdentifier attribute, TextRef text) noexcept {
    _slots[slotOf(thing, attribute)] = {thing, attribute, text};
    ++_used;
}

void ValueTable::remove(QorIdentifier thing, QorIdentifier attribute) noexcept {
    if (_slots.empty()) return;
    std::size_t hole = slotOf(thing, attribute);
    if (_slots[hole].thing == kFree) return;
    // Slots behind the hole move up unless that would put them before the place where their search begins.
    for (std::size_t at = (hole + 1) & _mask; _slots[at].thing != kFree; at = (at + 1) & _mask) {
        const std::size_t home = homeOf(_slots[at].thing, _slots[at].attribute);
        if (((at - home) & _mask) < ((at - hole) & _mask)) continue;
        _slots[hole] = _slots[at];
        hole = at;
    }
    _slots[hole] = {};
    --_used;
}

}  // namespace qor::embedded
