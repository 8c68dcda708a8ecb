// SPDX-License-Identifier: Apache-2.0
#include "platform/KexDocument.h"

#include <algorithm>
#include <cstring>

namespace qor::platform::kex {

namespace {

// Up to so many keys of an element are looked through one by one; all keys of larger ones stand in the index.
constexpr std::uint32_t kFewKeys = 16;

constexpr std::size_t kBytesPerKey = 16;
constexpr std::size_t kBytesPerElement = 64;
constexpr std::size_t kMostReserved = 4096;

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;

// Most names differ in length or the last character ("bp-1", "bp-2"); that is seen without a call.
bool same(std::string_view name, std::string_view other) {
    return name.size() == other.size() && name.back() == other.back() && name == other;
}

std::uint64_t mixed(std::uint64_t state, std::uint64_t more) {
    state = (state ^ more) * kMultiplier;
    return state ^ state >> 32;
}

}  // namespace

void KeyIndex::clear(std::uint64_t seed) {
    _slots.clear();
    _taken = 0;
    _seed = seed;
}

std::uint32_t KeyIndex::hash(std::uint32_t element, std::string_view name) const {
    std::uint64_t state = mixed(_seed, element);
    for (; !name.empty(); name.remove_prefix(std::min(name.size(), sizeof state))) {
        std::uint64_t piece = 0;
        std::memcpy(&piece, name.data(), std::min(name.size(), sizeof piece));
        state = mixed(state, piece);
    }
    return static_cast<std::uint32_t>(mixed(state, 0));
}

void KeyIndex::insert(std::uint32_t hash, std::uint32_t key) {
    if ((_taken + 1) * 3 > _slots.size() * 2) grow();
    place({hash, key});
    ++_taken;
}

void KeyIndex::place(Slot slot) {
    std::size_t at = slot.hash & mask();
    while (_slots[at].key != kFree) at = (at + 1) & mask();
    _slots[at] = slot;
}

void KeyIndex::grow() {
    std::vector<Slot> old(std::max<std::size_t>(64, _slots.size() * 2));
    old.swap(_slots);
    for (const Slot& slot : old)
        if (slot.key != kFree) place(slot);
}

void Document::clear() {
    elements.clear();
    keys.clear();
    unescaped.clear();
    // Differs from run to run, so that nobody can write keys that all fall on one place of the index.
    _index.clear(reinterpret_cast<std::uintptr_t>(this));
}

void Document::reserveFor(std::size_t textSize) {
    elements.reserve(std::min(kMostReserved, textSize / kBytesPerElement + 1));
    keys.reserve(std::min(kMostReserved, textSize / kBytesPerKey + 1));
}

const Key* Document::add(std::string_view text, Span name) {
    const std::size_t element = elements.size() - 1;
    if (const Key* const same = find(text, element, viewOf(text, name))) return same;

    keys.push_back({name, {}});
    const Range range = keysOf(element);
    const std::uint32_t count = range.end - range.begin;
    if (count <= kFewKeys) return nullptr;
    for (std::uint32_t key = count == kFewKeys + 1 ? range.begin : range.end - 1; key < range.end; ++key)
        _index.insert(_index.hash(static_cast<std::uint32_t>(element), viewOf(text, keys[key].name)), key);
    return nullptr;
}

Document::Range Document::keysOf(std::size_t element) const {
    const auto end = element + 1 < elements.size() ? elements[element + 1].firstKey : keys.size();
    return {elements[element].firstKey, static_cast<std::uint32_t>(end)};
}

const Key* Document::find(std::string_view text, std::size_t element, std::string_view name) const {
    const Range range = keysOf(element);
    if (range.end - range.begin > kFewKeys) return findIndexed(text, element, name);
    for (std::uint32_t key = range.begin; key < range.end; ++key)
        if (same(viewOf(text, keys[key].name), name)) return &keys[key];
    return nullptr;
}

const Key* Document::findIndexed(std::string_view text, std::size_t element, std::string_view name) const {
    const Range range = keysOf(element);
    const auto isIt = [&](std::uint32_t key) {
        return key >= range.begin && key < range.end && viewOf(text, keys[key].name) == name;
    };
    const auto key = _index.find(_index.hash(static_cast<std::uint32_t>(element), name), isIt);
    return key ? &keys[*key] : nullptr;
}

std::optional<std::string_view> Document::stringOf(std::string_view text, const Value& value) const {
    if (value.kind == ValueKind::String) return viewOf(text, value.span());
    if (value.kind == ValueKind::Unescaped) return viewOf(unescaped, value.span());
    return std::nullopt;
}

}  // namespace qor::platform::kex
