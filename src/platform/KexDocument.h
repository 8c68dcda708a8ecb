// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// A parsed keyword text. It refers to the text by offsets, so that copies of both belong together without any repair.
namespace qor::platform::kex {

struct Span {
    std::uint32_t at = 0;
    std::uint32_t length = 0;
};

enum class ValueKind : std::uint8_t {
    None,
    String,     // the span lies in the text, between the quotes
    Unescaped,  // a string with doubled quotes; the span lies in Document::unescaped
    Word,
    Integer,
    Moment,
    NegativeLength,
};

struct Value {
    ValueKind kind = ValueKind::None;
    std::uint32_t first = 0;   // a span's offset, or a number's lower half
    std::uint32_t second = 0;  // a span's length, or a number's upper half

    static Value ofSpan(ValueKind kind, Span span) { return {kind, span.at, span.length}; }
    static Value ofNumber(ValueKind kind, std::int64_t number) {
        const auto bits = static_cast<std::uint64_t>(number);
        return {kind, static_cast<std::uint32_t>(bits), static_cast<std::uint32_t>(bits >> 32)};
    }
    [[nodiscard]] Span span() const { return {first, second}; }
    [[nodiscard]] std::int64_t number() const { return static_cast<std::int64_t>(std::uint64_t{second} << 32 | first); }
};

struct Key {
    Span name;
    Value value;
};

constexpr std::uint32_t kNoTable = UINT32_MAX;

struct Element {
    Span name;
    Value value;
    std::uint32_t firstKey = 0;  // its keys end where those of the next element begin
    std::uint32_t table = kNoTable;
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

class Document {
public:
    std::vector<Element> elements;
    std::vector<Key> keys;
    std::string unescaped;

    void clear();
    /// Makes room for what a text of that size usually holds.
    void reserveFor(std::size_t textSize);

    void beginElement(Span name) {
        elements.push_back({name, {}, static_cast<std::uint32_t>(keys.size()), kNoTable});
        _met = 0;
    }
    /// Adds a key to the last element; null, or the key of that name that the element already has.
    const Key* add(std::string_view text, Span name) {
        const std::string_view view = viewOf(text, name);
        const std::uint64_t mark = markOf(view);
        if ((_met & mark) != 0)
            if (const Key* const same = find(text, elements.size() - 1, view)) return same;
        _met |= mark;
        keys.push_back({name, {}});
        if (keys.size() - elements.back().firstKey > kFewKeys) addToTable(text);
        return nullptr;
    }

    [[nodiscard]] std::span<const Key> keysOf(std::size_t element) const;
    [[nodiscard]] const Key* find(std::string_view text, std::size_t element, std::string_view name) const;

    /// A string value; nothing for other values.
    [[nodiscard]] std::optional<std::string_view> stringOf(std::string_view text, const Value& value) const;

    static std::string_view viewOf(std::string_view text, Span span) { return {text.data() + span.at, span.length}; }

private:
    // Up to so many keys of an element are looked through one by one; all keys of larger ones stand in a table.
    static constexpr std::size_t kFewKeys = 16;

    struct Range {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };
    /// One of 64 bits; names with different bits are different.
    static std::uint64_t markOf(std::string_view name) {
        const auto first = static_cast<unsigned char>(name.front());
        const auto last = static_cast<unsigned char>(name.back());
        return std::uint64_t{1} << ((first + last * 5u + name.size() * 3u) % 64u);
    }
    [[nodiscard]] Range rangeOf(std::size_t element) const;
    void addToTable(std::string_view text);
    [[nodiscard]] const Key* findInTable(std::string_view text, std::uint32_t table, std::string_view name) const;

    KeyIndex _index;
    std::uint64_t _met = 0;  // marks of the last element's keys: a new mark is a new name
};

}  // namespace qor::platform::kex
