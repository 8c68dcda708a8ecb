// SPDX-License-Identifier: Apache-2.0
#include "cardinality/KeyIndex.h"

namespace qor::cardinality {

namespace {

constexpr std::size_t kFewSlots = 16;

/// Spreads keys whose differences lie in a few bits over the whole number.
std::uint64_t mixed(std::uint64_t key) noexcept {
    key ^= key >> 32;
    key *= 0x9E3779B97F4A7C15u;
    return key ^ (key >> 29);
}

}  // namespace

KeyIndex::KeyIndex() : _slots(kFewSlots), _mask(kFewSlots - 1) {}

void KeyIndex::clear() noexcept {
    _keys.clear();
    _mask = kFewSlots - 1;
    forgetSlots();
}

std::uint32_t KeyIndex::add(std::uint64_t key) {
    auto at = place(key);
    if (_slots[at].stamp == _stamp) return _slots[at].number;
    if (2 * (_keys.size() + 1) > _mask + 1) {
        useSlots(4 * (_mask + 1));
        at = place(key);
    }
    const auto number = size();
    _keys.push_back(key);
    _slots[at] = {key, _stamp, number};
    return number;
}

std::uint32_t KeyIndex::find(std::uint64_t key) const noexcept {
    const auto& slot = _slots[place(key)];
    return slot.stamp == _stamp ? slot.number : kNone;
}

/// The key's slot, or the free slot where it belongs.
std::size_t KeyIndex::place(std::uint64_t key) const noexcept {
    auto at = static_cast<std::size_t>(mixed(key)) & _mask;
    while (_slots[at].stamp == _stamp && _slots[at].key != key) at = (at + 1) & _mask;
    return at;
}

void KeyIndex::useSlots(std::size_t count) {
    if (_slots.size() < count) _slots.resize(count);
    _mask = count - 1;
    forgetSlots();
    for (std::uint32_t number = 0; number < size(); ++number)
        _slots[place(_keys[number])] = {_keys[number], _stamp, number};
}

void KeyIndex::forgetSlots() noexcept {
    if (++_stamp != 0) return;
    for (auto& slot : _slots) slot.stamp = 0;
    _stamp = 1;
}

}  // namespace qor::cardinality
