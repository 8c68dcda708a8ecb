// SPDX-License-Identifier: Apache-2.0
#include "interchange/TextArena.h"

#include <cstring>
#include <new>

namespace qor::interchange {

TextArena::Ref TextArena::addChunk(std::size_t size) {
    constexpr std::size_t kMaxChunks = std::size_t{1} << (32 - kChunkBits);
    if (_chunks.size() == kMaxChunks) throw std::bad_alloc();
    _chunks.emplace_back(new char[size]);
    return static_cast<Ref>((_chunks.size() - 1) << kChunkBits);
}

TextArena::Ref TextArena::add(std::string_view text) {
    if (_chunks.empty()) {
        _next = addChunk(kChunkSize);
        _room = kChunkSize;
    }
    Ref ref = _next;
    if (text.size() > kChunkSize / 4) {
        // Large texts get a chunk to themselves, so that little room is lost at the end of the shared ones.
        ref = addChunk(text.size());
    } else {
        // A text may fill a chunk but not begin behind its end: that would be the next chunk's number.
        if (text.size() >= _room) {
            ref = _next = addChunk(kChunkSize);
            _room = kChunkSize;
        }
        _next += static_cast<Ref>(text.size());
        _room -= text.size();
    }
    if (!text.empty()) std::memcpy(_chunks[ref >> kChunkBits].get() + (ref & kOffsetMask), text.data(), text.size());
    return ref;
}

}  // namespace qor::interchange
