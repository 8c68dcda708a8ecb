// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorKexParser.h"

// A parsed keyword text. It holds where in the text the names and values begin, and no more: what they are is read
// there when it is asked for, since most of a large text is asked for once or never. As these are offsets, copies of
// text and document belong together without any repair. The text ends with a zero byte wherever one is handed in.
namespace qor::platform::kex {

/// A keyword or key; its name reaches as far as a word does.
struct Key {
    std::uint32_t name = 0;
    std::uint32_t value = 0;  ///< where its value begins, the quote of a string included; 0: it has none
};

struct Element {
    std::uint32_t name = 0;
    std::uint32_t value = 0;
    std::uint32_t firstKey = 0;  ///< its keys end where those of the next element begin
};

struct Value {
    QorKexValueKind kind = QorKexValueKind::None;
    std::string_view text;    ///< of a string, without its quotes, or word
    std::int64_t number = 0;  ///< of an integer, or the moment of a time or length; 0 for a length below zero
};

/// Hash tables of the keys of elements that have many. Each lies together, so that the one in work stays near; only the
/// last one grows.
class KeyIndex {
public:
    void clear(std::uint64_t seed);
    /// The number of a new, empty table.
    std::uint32_t begin();
    void insert(std::uint32_t hash, std::uint32_t key);

    [[nodiscard]] std::uint32_t hash(std::string_view name) const;

    /// The first of the keys with that hash for which `isIt` holds.
    template <class Predicate>
    [[nodiscard]] std::optional<std::uint32_t> find(std::uint32_t table, std::uint32_t hash, Predicate isIt) const {
        const Table& where = _tables[table];
        for (std::size_t at = hash & where.mask;; at = (at + 1) & where.mask) {
            const Slot& slot = _slots[where.begin + at];
            if (slot.key == kFree) return std::nullopt;
            if (slot.hash == hash && isIt(slot.key)) return slot.key;
        }
    }

private:
    static constexpr std::uint32_t kFree = UINT32_MAX;
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t key = kFree;
    };
    struct Table {
        std::size_t begin = 0;
        std::size_t mask = 0;  // it has one slot more, a power of two; at most two thirds are taken
        std::size_t taken = 0;
    };
    void place(const Table& table, Slot slot);
    void grow(Table& table);

    std::vector<Table> _tables;
    std::vector<Slot> _slots;
    std::vector<Slot> _moving;  // kept for its memory
    std::uint64_t _seed = 0;
};

/// So many records have to fit, and how many the whole text will have if what is left of it is like what was parsed; no
/// more than twice the text's size is committed to that.
struct Room {
    std::size_t needed = 0;
    std::size_t parsed = 0;
    std::size_t textSize = 0;

    [[nodiscard]] std::size_t expected(std::size_t recordSize) const;
};

template <class Record>
void makeRoomForOne(std::vector<Record>& records, std::size_t parsed, std::size_t textSize) {
    if (records.size() < records.capacity()) return;
    records.reserve(Room{records.size() + 1, parsed, textSize}.expected(sizeof(Record)));
}

class Document {
public:
    std::vector<Element> elements;
    std::vector<Key> keys;

    void clear();
    /// Makes room for what a text of that size usually holds.
    void reserveFor(std::size_t textSize);

    void beginElement(std::uint32_t name) {
        elements.push_back({name, 0, static_cast<std::uint32_t>(keys.size())});
        _met = 0;
    }
    /// Adds a key to the last element; null, or the key of that name that the element already has.
    const Key* add(std::string_view text, std::uint32_t at, std::string_view name) {
        const std::uint64_t mark = markOf(name);
        if ((_met & mark) != 0)
            if (const Key* const same = find(text, elements.size() - 1, name)) return same;
        _met |= mark;
        keys.push_back({at, 0});
        if (keys.size() - elements.back().firstKey > kFewKeys) addToTable(text);
        return nullptr;
    }
    /// The string that begins with the quote at `at`.
    void noteString(std::string_view text, std::uint32_t at, std::string_view body, bool isEscaped) {
        if (isEscaped || body.size() > kShortString) addLongString(text, at, body, isEscaped);
    }

    [[nodiscard]] std::span<const Key> keysOf(std::size_t element) const;
    [[nodiscard]] const Key* find(std::string_view text, std::size_t element, std::string_view name) const;

    /// The word that begins at a place.
    [[nodiscard]] static std::string_view wordAt(std::string_view text, std::uint32_t at);
    /// O(log of the long strings), whatever its length.
    [[nodiscard]] Value valueAt(std::string_view text, std::uint32_t at) const;

private:
    // Up to so many keys of an element are looked through one by one; all keys of larger ones stand in a table.
    static constexpr std::size_t kFewKeys = 16;
    // The ends of shorter strings are found again where they are asked for.
    static constexpr std::size_t kShortString = 64;

    struct Range {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };
    struct Table {
        std::uint32_t element = 0;
        std::uint32_t number = 0;
    };
    struct LongString {
        std::uint32_t at = 0;
        std::uint32_t begin = 0;  ///< in the text, or in `_unescaped`
        std::uint32_t length = 0;
        bool isUnescaped = false;
    };
    /// One of 64 bits; names with different bits are different.
    static std::uint64_t markOf(std::string_view name) {
        const auto first = static_cast<unsigned char>(name.front());
        const auto last = static_cast<unsigned char>(name.back());
        return std::uint64_t{1} << ((first + last * 5u + name.size() * 3u) % 64u);
    }
    [[nodiscard]] Range rangeOf(std::size_t element) const;
    void addToTable(std::string_view text);
    void addLongString(std::string_view text, std::uint32_t at, std::string_view body, bool isEscaped);
    [[nodiscard]] std::string_view stringAt(std::string_view text, std::uint32_t at) const;
    [[nodiscard]] const Key* findInTable(std::string_view text, std::size_t element, std::string_view name) const;

    KeyIndex _index;
    std::vector<Table> _tables;            // of the elements with many keys, ascending
    std::vector<LongString> _longStrings;  // ascending
    std::string _unescaped;
    std::uint64_t _met = 0;  // marks of the last element's keys: a new mark is a new name
};

}  // namespace qor::platform::kex
