// SPDX-License-Identifier: Apache-2.0
#include "interchange/TextArena.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace qor::interchange {

TextArena::Ref TextArena::addChunk(std::size_t size) {
    constexpr std::size_t kMaxChunks = std::size_t{1} << (32 - kChunkBits);
    if (_chunks.size() == kMaxChunks) throw std::bad_alloc();
    _chunks.emplace_back(new char[size]);
    return static_cast<Ref>((_chunks.size() - 1) << kChunkBits);
}

// Small at first: most files are.
void TextArena::beginSharedChunk() {
    constexpr std::size_t kFirstSize = 4096;
    _sharedSize = std::clamp(_sharedSize * 2, kFirstSize, kChunkSize);
    _next = addChunk(_sharedSize);
    _room = _sharedSize;
}

TextArena::Ref TextArena::add(std::string_view text) {
    Ref ref = 0;
    if (text.size() > std::max(_sharedSize, kChunkSize / 8) / 4) {
        // Large texts get a chunk to themselves, so that little room is lost at the end of the shared ones.
        ref = addChunk(text.size());
    } else {
        // A text may fill a chunk but not begin behind its end: that would be the next chunk's number.
        while (text.size() >= _room) beginSharedChunk();
        ref = _next;
        _next += static_cast<Ref>(text.size());
        _room -= text.size();
    }
    if (!text.empty()) std::memcpy(_chunks[ref >> kChunkBits].get() + (ref & kOffsetMask), text.data(), text.size());
    return ref;
}

}  // namespace qor::interchange
