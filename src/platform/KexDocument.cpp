// SPDX-License-Identifier: Apache-2.0
#include "platform/KexDocument.h"

#include <algorithm>
#include <cstring>

namespace qor::platform::kex {

namespace {

constexpr std::size_t kFirstSlots = 64;

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
    _tables.clear();
    _slots.clear();
    _seed = seed;
}

std::uint32_t KeyIndex::begin() {
    _tables.push_back({_slots.size(), kFirstSlots - 1, 0});
    _slots.resize(_slots.size() + kFirstSlots);
    return static_cast<std::uint32_t>(_tables.size() - 1);
}

void KeyIndex::insert(std::uint32_t hash, std::uint32_t key) {
    Table& table = _tables.back();
    if ((table.taken + 1) * 3 > (table.mask + 1) * 2) grow(table);
    place(table, {hash, key});
    ++table.taken;
}

std::uint32_t KeyIndex::hash(std::string_view name) const {
    std::uint64_t state = mixed(_seed, name.size());
    for (; !name.empty(); name.remove_prefix(std::min(name.size(), sizeof state))) {
        std::uint64_t piece = 0;
        std::memcpy(&piece, name.data(), std::min(name.size(), sizeof piece));
        state = mixed(state, piece);
    }
    return static_cast<std::uint32_t>(state);
}

void KeyIndex::place(const Table& table, Slot slot) {
    std::size_t at = slot.hash & table.mask;
    while (_slots[table.begin + at].key != kFree) at = (at + 1) & table.mask;
    _slots[table.begin + at] = slot;
}

void KeyIndex::grow(Table& table) {
    const auto begin = _slots.begin() + static_cast<std::ptrdiff_t>(table.begin);
    _moving.assign(begin, _slots.end());
    std::fill(begin, _slots.end(), Slot());
    table.mask = table.mask * 2 + 1;
    _slots.resize(table.begin + table.mask + 1);
    for (const Slot& slot : _moving)
        if (slot.key != kFree) place(table, slot);
}

void Document::clear() {
    elements.clear();
    keys.clear();
    unescaped.clear();
    // Differs from run to run, so that nobody can write keys that all fall on one place of a table.
    _index.clear(reinterpret_cast<std::uintptr_t>(this));
}

void Document::reserveFor(std::size_t textSize) {
    elements.reserve(std::min(kMostReserved, textSize / kBytesPerElement + 1));
    keys.reserve(std::min(kMostReserved, textSize / kBytesPerKey + 1));
}

// The key that is one too many takes those before it along.
void Document::addToTable(std::string_view text) {
    const Range range = rangeOf(elements.size() - 1);
    std::uint32_t key = range.end - 1;
    if (elements.back().table == kNoTable) {
        elements.back().table = _index.begin();
        key = range.begin;
    }
    for (; key < range.end; ++key) _index.insert(_index.hash(viewOf(text, keys[key].name)), key);
}

std::span<const Key> Document::keysOf(std::size_t element) const {
    const Range range = rangeOf(element);
    return {keys.data() + range.begin, range.end - range.begin};
}

Document::Range Document::rangeOf(std::size_t element) const {
    const auto end = element + 1 < elements.size() ? elements[element + 1].firstKey : keys.size();
    return {elements[element].firstKey, static_cast<std::uint32_t>(end)};
}

const Key* Document::find(std::string_view text, std::size_t element, std::string_view name) const {
    if (elements[element].table != kNoTable) return findInTable(text, elements[element].table, name);
    const Range range = rangeOf(element);
    for (std::uint32_t key = range.begin; key < range.end; ++key)
        if (same(viewOf(text, keys[key].name), name)) return &keys[key];
    return nullptr;
}

const Key* Document::findInTable(std::string_view text, std::uint32_t table, std::string_view name) const {
    const auto isIt = [&](std::uint32_t key) { return viewOf(text, keys[key].name) == name; };
    const auto key = _index.find(table, _index.hash(name), isIt);
    return key ? &keys[*key] : nullptr;
}

std::optional<std::string_view> Document::stringOf(std::string_view text, const Value& value) const {
    if (value.kind == ValueKind::String) return viewOf(text, value.span());
    if (value.kind == ValueKind::Unescaped) return viewOf(unescaped, value.span());
    return std::nullopt;
}

}  // namespace qor::platform::kex
