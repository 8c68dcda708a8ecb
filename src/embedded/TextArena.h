// SPDX-License-Identifier: Apache-2.0
// The texts of a repository, without a heap block for each.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace qor::embedded {

// A text in the arena; 0 is the empty text.
using TextRef = std::uint32_t;

// A text takes 4 bytes for its length and its bytes, rounded up to 8. What is released is used again for texts of
// about the same length, so that editing does not make the arena grow for ever. Up to 32 GB.
class TextArena {
public:
    TextArena();

    // Throws std::bad_alloc, and has then changed nothing.
    [[nodiscard]] TextRef add(std::string_view text);
    void release(TextRef ref) noexcept;
    // Holds until the text is released or replaced.
    [[nodiscard]] std::string_view view(TextRef ref) const noexcept;
    // Puts another text in the place of the one that `ref` names; `text` may be a view into the arena.
    void replace(TextRef& ref, std::string_view text);

    [[nodiscard]] std::size_t bytes() const { return _bytes; }

private:
    static constexpr std::size_t kGranule = 8;
    static constexpr std::size_t kChunkGranules = std::size_t{1} << 17;
    static constexpr std::size_t kMaxChunks = std::size_t{1} << 15;
    // Above this size a text gets a block of its own instead of a place in a shared one.
    static constexpr std::size_t kLargeGranules = kChunkGranules / 8;

    // Sizes are exact up to 64 granules, then four steps to each doubling.
    struct SizeClass {
        std::size_t number;
        std::size_t granules;
    };
    static SizeClass sizeClassOf(std::size_t textLength) noexcept;

    [[nodiscard]] char* at(TextRef ref) const noexcept;
    TextRef allocate(const SizeClass& size);
    TextRef newBlock(std::size_t granules);

    std::vector<std::unique_ptr<char[]>> _blocks;
    std::vector<char*> _chunks;  // where each 1 MB of the numbering begins
    std::size_t _next = 0;       // first free granule of the chunk that is being filled
    std::size_t _end = 0;
    std::size_t _bytes = 0;
    std::array<TextRef, 192> _free{};  // by size class; a free block's first bytes name the next one
};

}  // namespace qor::embedded
