// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/QorIdentifier.h"

namespace qor::cardinality {

/// A set of identifiers as a bitmap in pages, so that a check can mark a million objects in passing.
class IdentifierMarks {
public:
    /// Identifiers beyond 32 bits stand for nothing and are not marked.
    void add(long identifier) {
        if (!Qor_NarrowIdentifier(identifier)) return;
        const Place place(identifier);
        if (place.page >= _pages.size() || _pages[place.page].empty()) addPage(place.page);
        _pages[place.page][place.word] |= place.bit;
    }
    [[nodiscard]] bool contains(long identifier) const noexcept {
        if (!Qor_NarrowIdentifier(identifier)) return false;
        const Place place(identifier);
        if (place.page >= _pages.size() || _pages[place.page].empty()) return false;
        return (_pages[place.page][place.word] & place.bit) != 0;
    }

private:
    static constexpr std::uint32_t kWordBits = 64;
    static constexpr std::uint32_t kPageWords = 512;

    struct Place {
        explicit Place(long identifier) noexcept
            : page(static_cast<std::uint32_t>(identifier) / (kPageWords * kWordBits)),
              word(static_cast<std::uint32_t>(identifier) / kWordBits % kPageWords),
              bit(std::uint64_t{1} << (static_cast<std::uint32_t>(identifier) % kWordBits)) {}
        std::uint32_t page;
        std::uint32_t word;
        std::uint64_t bit;
    };

    void addPage(std::size_t page);

    std::vector<std::vector<std::uint64_t>> _pages;  ///< a page without marks is empty
};

/// What a run has checked already.
struct CheckedMarks {
    IdentifierMarks objects;
    IdentifierMarks relations;
    IdentifierMarks classes;  ///< classes and relation classes
};

}  // namespace qor::cardinality
