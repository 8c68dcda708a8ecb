// SPDX-License-Identifier: Apache-2.0
#include "embedded/TextArena.h"

#include <bit>
#include <cstring>
#include <limits>
#include <new>

namespace qor::embedded {

namespace {

using Length = std::uint32_t;

}  // namespace

TextArena::TextArena() = default;

TextArena::SizeClass TextArena::sizeClassOf(std::size_t textLength) noexcept {
    const std::size_t granules = (sizeof(Length) + textLength + kGranule - 1) / kGranule;
    if (granules <= 64) return {granules, granules};
    const unsigned doubling = static_cast<unsigned>(std::bit_width(granules - 1)) - 1;  // 2^doubling < granules
    const std::size_t quarter = std::size_t{1} << (doubling - 2);
    const std::size_t rounded = (granules + quarter - 1) / quarter * quarter;
    const std::size_t step = rounded / quarter - 4;  // 1 to 4
    return {64 + (doubling - 6) * 4 + step, rounded};
}

char* TextArena::at(TextRef ref) const noexcept {
    return _chunks[ref / kChunkGranules] + ref % kChunkGranules * kGranule;
}

TextRef TextArena::newBlock(std::size_t granules) {
    const std::size_t chunks = (granules + kChunkGranules - 1) / kChunkGranules;
    const std::size_t first = _chunks.size();
    if (first + chunks > kMaxChunks) throw std::bad_alloc();
    if (_chunks.capacity() < first + chunks) _chunks.reserve(2 * (first + chunks));
    _blocks.emplace_back();
    try {
        _blocks.back().reset(new char[granules * kGranule]);
    } catch (...) {
        _blocks.pop_back();
        throw;
    }
    for (std::size_t chunk = 0; chunk < chunks; ++chunk)
        _chunks.push_back(_blocks.back().get() + chunk * kChunkGranules * kGranule);
    _bytes += granules * kGranule;
    return static_cast<TextRef>(first * kChunkGranules);
}

TextRef TextArena::allocate(const SizeClass& size) {
    if (TextRef& head = _free[size.number]; head != 0) {
        const TextRef ref = head;
        std::memcpy(&head, at(ref), sizeof head);
        return ref;
    }
    // The numbering's first granule stays unused: its number means the empty text.
    if (_chunks.empty()) {
        newBlock(kChunkGranules);
        _next = 1;
        _end = kChunkGranules;
    }
    if (size.granules > kLargeGranules) return newBlock(size.granules);
    if (_end - _next < size.granules) {
        _next = newBlock(kChunkGranules);
        _end = _next + kChunkGranules;
    }
    const auto ref = static_cast<TextRef>(_next);
    _next += size.granules;
    return ref;
}

TextRef TextArena::add(std::string_view text) {
    if (text.empty()) return 0;
    if (text.size() > std::numeric_limits<Length>::max() / 2) throw std::bad_alloc();
    const TextRef ref = allocate(sizeClassOf(text.size()));
    const auto length = static_cast<Length>(text.size());
    std::memcpy(at(ref), &length, sizeof length);
    std::memcpy(at(ref) + sizeof length, text.data(), text.size());
    return ref;
}

std::string_view TextArena::view(TextRef ref) const noexcept {
    if (ref == 0) return {};
    Length length = 0;
    std::memcpy(&length, at(ref), sizeof length);
    return {at(ref) + sizeof length, length};
}

void TextArena::release(TextRef ref) noexcept {
    if (ref == 0) return;
    TextRef& head = _free[sizeClassOf(view(ref).size()).number];
    std::memcpy(at(ref), &head, sizeof head);
    head = ref;
}

void TextArena::replace(TextRef& ref, std::string_view text) {
    const TextRef added = add(text);
    release(ref);
    ref = added;
}

}  // namespace qor::embedded
