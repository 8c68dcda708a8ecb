// SPDX-License-Identifier: Apache-2.0
#include "platform/KexDocument.h"

#include <algorithm>
#include <cstring>

#include "platform/KexAmounts.h"
#include "platform/KexCharacters.h"
#include "platform/KexStrings.h"

namespace qor::platform::kex {

namespace {

constexpr std::size_t kFirstSlots = 64;

constexpr std::size_t kBytesPerKey = 16;
constexpr std::size_t kBytesPerElement = 64;
constexpr std::size_t kMostReserved = 4096;

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;

// Most names differ in length or the last character ("bp-1", "bp-2"); that is seen without a call.
bool isNamed(std::string_view text, std::uint32_t at, std::string_view name) {
    const std::size_t end = at + name.size();
    if (name.empty() || end > text.size() || is(text.data()[end], kWord) || text[end - 1] != name.back()) return false;
    return text.substr(at, name.size()) == name;
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

std::size_t Room::expected(std::size_t recordSize) const {
    const auto share = static_cast<double>(textSize) / static_cast<double>(parsed + 1) * 1.05;
    const auto inAll = static_cast<std::size_t>(static_cast<double>(needed) * share);
    return std::max(needed * 2, std::min(inAll, textSize * 2 / recordSize));
}

void Document::clear() {
    elements.clear();
    keys.clear();
    _tables.clear();
    _longStrings.clear();
    _unescaped.clear();
    // Differs from run to run, so that nobody can write keys that all fall on one place of a table.
    _index.clear(reinterpret_cast<std::uintptr_t>(this));
}

void Document::reserveFor(std::size_t textSize) {
    elements.reserve(std::min(kMostReserved, textSize / kBytesPerElement + 1));
    keys.reserve(std::min(kMostReserved, textSize / kBytesPerKey + 1));
}

// ---- Keys ----

// The key that is one too many takes those before it along.
void Document::addToTable(std::string_view text) {
    const auto element = static_cast<std::uint32_t>(elements.size() - 1);
    const Range range = rangeOf(element);
    std::uint32_t key = range.end - 1;
    if (_tables.empty() || _tables.back().element != element) {
        _tables.push_back({element, _index.begin()});
        key = range.begin;
    }
    for (; key < range.end; ++key) _index.insert(_index.hash(wordAt(text, keys[key].name)), key);
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
    const Range range = rangeOf(element);
    if (range.end - range.begin > kFewKeys) return findInTable(text, element, name);
    for (std::uint32_t key = range.begin; key < range.end; ++key)
        if (isNamed(text, keys[key].name, name)) return &keys[key];
    return nullptr;
}

const Key* Document::findInTable(std::string_view text, std::size_t element, std::string_view name) const {
    const auto table = std::lower_bound(_tables.begin(), _tables.end(), element,
                                        [](const Table& one, std::size_t wanted) { return one.element < wanted; });
    const auto isIt = [&](std::uint32_t key) { return isNamed(text, keys[key].name, name); };
    const auto key = _index.find(table->number, _index.hash(name), isIt);
    return key ? &keys[*key] : nullptr;
}

// ---- Values ----

void Document::addLongString(std::string_view text, std::uint32_t at, std::string_view body, bool isEscaped) {
    const std::size_t parsed = at + body.size();
    LongString string{at, at + 1, static_cast<std::uint32_t>(body.size()), isEscaped};
    if (isEscaped) {
        const Room room{_unescaped.size() + body.size(), parsed, text.size()};
        if (room.needed > _unescaped.capacity()) _unescaped.reserve(room.expected(1));
        string.begin = static_cast<std::uint32_t>(_unescaped.size());
        appendUnescaped(_unescaped, body);
        string.length = static_cast<std::uint32_t>(_unescaped.size()) - string.begin;
    }
    makeRoomForOne(_longStrings, parsed, text.size());
    _longStrings.push_back(string);
}

std::string_view Document::stringAt(std::string_view text, std::uint32_t at) const {
    const auto known = std::lower_bound(_longStrings.begin(), _longStrings.end(), at,
                                        [](const LongString& one, std::uint32_t wanted) { return one.at < wanted; });
    if (known != _longStrings.end() && known->at == at)
        return (known->isUnescaped ? std::string_view(_unescaped) : text).substr(known->begin, known->length);
    const std::string_view body = text.substr(at + 1);
    return body.substr(0, body.find(kQuote));
}

std::string_view Document::wordAt(std::string_view text, std::uint32_t at) {
    const char* const begin = text.data() + at;
    return {begin, static_cast<std::size_t>(skip(begin, kWord) - begin)};
}

Value Document::valueAt(std::string_view text, std::uint32_t at) const {
    if (at == 0) return {};
    const char* where = text.data() + at;
    if (*where == kQuote) return {QorKexValueKind::String, stringAt(text, at), 0};
    if (is(*where, kLower)) return {QorKexValueKind::Word, wordAt(text, at), 0};
    const Amount amount = readAmount(where);
    return {amount.kind == AmountKind::Integer ? QorKexValueKind::Integer : QorKexValueKind::TimeOrLength,
            {},
            amount.number};
}

}  // namespace qor::platform::kex
