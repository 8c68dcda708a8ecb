// SPDX-License-Identifier: Apache-2.0
#include "cardinality/IdentifierMarks.h"

#include "platform/QorIdentifier.h"

namespace qor::cardinality {

namespace {

constexpr std::uint32_t kWordBits = 64;
constexpr std::uint32_t kPageWords = 512;
constexpr std::uint32_t kPageBits = kPageWords * kWordBits;

struct Place {
    explicit Place(QorIdentifier identifier) noexcept {
        const auto number = static_cast<std::uint32_t>(identifier);
        page = number / kPageBits;
        word = number % kPageBits / kWordBits;
        bit = std::uint64_t{1} << (number % kWordBits);
    }
    std::uint32_t page;
    std::uint32_t word;
    std::uint64_t bit;
};

}  // namespace

void IdentifierMarks::add(long identifier) {
    const auto narrow = Qor_NarrowIdentifier(identifier);
    if (!narrow) return;
    const Place place(*narrow);
    if (place.page >= _pages.size()) _pages.resize(place.page + 1);
    auto& page = _pages[place.page];
    if (page.empty()) page.resize(kPageWords);
    page[place.word] |= place.bit;
}

bool IdentifierMarks::contains(long identifier) const noexcept {
    const auto narrow = Qor_NarrowIdentifier(identifier);
    if (!narrow) return false;
    const Place place(*narrow);
    if (place.page >= _pages.size() || _pages[place.page].empty()) return false;
    return (_pages[place.page][place.word] & place.bit) != 0;
}

}  // namespace qor::cardinality
