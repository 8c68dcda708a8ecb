// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace qor::interchange {

/// Keeps many texts without a heap block for each. Texts stay where they are until the arena goes; at most about
/// 1 GiB of them.
class TextArena {
public:
    using Ref = std::uint32_t;

    /// Throws std::bad_alloc when the arena is full.
    Ref add(std::string_view text);
    [[nodiscard]] const char* at(Ref ref) const { return _chunks[ref >> kChunkBits].get() + (ref & kOffsetMask); }
    [[nodiscard]] std::string_view view(Ref ref, std::size_t size) const { return {at(ref), size}; }

private:
    static constexpr unsigned kChunkBits = 18;
    static constexpr std::size_t kChunkSize = std::size_t{1} << kChunkBits;
    static constexpr Ref kOffsetMask = kChunkSize - 1;

    Ref addChunk(std::size_t size);
    void beginSharedChunk();

    std::vector<std::unique_ptr<char[]>> _chunks;
    Ref _next = 0;          // where the next small text goes
    std::size_t _room = 0;  // bytes left behind it
    std::size_t _sharedSize = 0;
};

}  // namespace qor::interchange
