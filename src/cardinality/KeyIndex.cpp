// SPDX-License-Identifier: Apache-2.0
#include "cardinality/KeyIndex.h"

namespace qor::cardinality {

namespace {
constexpr std::size_t kFewSlots = 16;
}

KeyIndex::KeyIndex() : _slots(kFewSlots), _mask(kFewSlots - 1) {}

void KeyIndex::clear() noexcept {
    _keys.clear();
    _mask = kFewSlots - 1;
    forgetSlots();
}

std::uint32_t KeyIndex::addNew(std::uint64_t key, std::size_t at) {
    if (2 * (_keys.size() + 1) > _mask + 1) {
        useSlots(4 * (_mask + 1));
        at = place(key);
    }
    const auto number = size();
    _keys.push_back(key);
    auto& slot = _slots[at];
    slot.key = key;
    slot.stamp = _stamp;
    slot.number = number;
    return number;
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
