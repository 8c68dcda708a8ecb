// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
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

struct Element {
    Span name;
    Value value;
    std::uint32_t firstKey = 0;  // its keys end where those of the next element begin
};

/// Finds keys of elements that have many, in a time that does not depend on how many. One table for all elements.
class KeyIndex {
public:
    void clear(std::uint64_t seed);
    [[nodiscard]] std::uint32_t hash(std::uint32_t element, std::string_view name) const;
    void insert(std::uint32_t hash, std::uint32_t key);

    /// The first of the keys with that hash for which `isIt` holds.
    template <class Predicate>
    [[nodiscard]] std::optional<std::uint32_t> find(std::uint32_t hash, Predicate isIt) const {
        if (_slots.empty()) return std::nullopt;
        for (std::size_t at = hash & mask(); _slots[at].key != kFree; at = (at + 1) & mask())
            if (_slots[at].hash == hash && isIt(_slots[at].key)) return _slots[at].key;
        return std::nullopt;
    }

private:
    static constexpr std::uint32_t kFree = UINT32_MAX;
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t key = kFree;
    };
    [[nodiscard]] std::size_t mask() const { return _slots.size() - 1; }
    void place(Slot slot);
    void grow();

    std::vector<Slot> _slots;  // as many as a power of two, at most two thirds taken
    std::size_t _taken = 0;
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

    /// Adds a key to the last element; null, or the key of that name that the element already has.
    const Key* add(std::string_view text, Span name);

    [[nodiscard]] const Key* find(std::string_view text, std::size_t element, std::string_view name) const;

    /// A string value; nothing for other values.
    [[nodiscard]] std::optional<std::string_view> stringOf(std::string_view text, const Value& value) const;

    static std::string_view viewOf(std::string_view text, Span span) { return {text.data() + span.at, span.length}; }

private:
    struct Range {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };
    [[nodiscard]] Range keysOf(std::size_t element) const;
    [[nodiscard]] const Key* findIndexed(std::string_view text, std::size_t element, std::string_view name) const;

    KeyIndex _index;
};

}  // namespace qor::platform::kex
