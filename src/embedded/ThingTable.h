// SPDX-License-Identifier: Apache-2.0
// What stands behind each identifier: its kind and its place in the table of that kind, in 4 bytes.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "embedded/QorRepositoryReader.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

// Makes that many calls of push_back free of failure. Grows the vector by doubling, or by exactly what is announced
// when that is more.
template <class Element>
void makeRoomFor(std::vector<Element>& elements, std::size_t more) {
    const std::size_t needed = elements.size() + more;
    if (needed > elements.capacity()) elements.reserve(std::max(needed, std::max<std::size_t>(4, elements.size() * 2)));
}

template <class Element>
void makeRoomForOne(std::vector<Element>& elements) {
    makeRoomFor(elements, 1);
}

struct ThingPlace {
    QorThingKind kind = QorThingKind::None;
    std::uint32_t index = 0;
};

class ThingTable {
public:
    // Identifiers below this one are the platform's fixed numbers.
    static constexpr QorIdentifier kFirstDynamic = 1000;
    static constexpr std::size_t kMaxIndex = (std::size_t{1} << 27) - 1;

    // Identifiers up to `last` can be handed out.
    explicit ThingTable(QorIdentifier last = std::numeric_limits<QorIdentifier>::max())
        : _last(last), _entries(static_cast<std::size_t>(kFirstDynamic), 0) {}

    [[nodiscard]] ThingPlace at(QorIdentifier id) const {
        if (id < 0 || static_cast<std::size_t>(id) >= _entries.size()) return {};
        const std::uint32_t entry = _entries[static_cast<std::size_t>(id)];
        return {static_cast<QorThingKind>(entry >> kIndexBits), entry & kIndexMask};
    }
    [[nodiscard]] QorThingKind kindOf(QorIdentifier id) const { return at(id).kind; }
    [[nodiscard]] bool exists(QorIdentifier id) const { return kindOf(id) != QorThingKind::None; }

    // `things` more can be added, the last one at `index` of its kind's table.
    [[nodiscard]] bool hasRoomFor(std::size_t things, std::size_t index) const {
        return index <= kMaxIndex && _entries.size() + things <= static_cast<std::size_t>(_last) + 1;
    }
    // Makes `add` free of failure for that many things.
    void makeRoom(std::size_t things) { makeRoomFor(_entries, things); }

    QorIdentifier add(QorThingKind kind, std::size_t index) noexcept {
        _entries.push_back(packed(kind, index));
        return static_cast<QorIdentifier>(_entries.size() - 1);
    }
    // For a fixed number of the platform, or for a thing whose row moved.
    void place(QorIdentifier id, QorThingKind kind, std::size_t index) noexcept {
        _entries[static_cast<std::size_t>(id)] = packed(kind, index);
    }
    // The identifier that is handed out next.
    [[nodiscard]] QorIdentifier next() const { return static_cast<QorIdentifier>(_entries.size()); }
    // Goes on from `next`, which lies further; what is between stays free, to be placed.
    void skipTo(QorIdentifier next) { _entries.resize(static_cast<std::size_t>(next), 0); }
    void remove(QorIdentifier id) noexcept { _entries[static_cast<std::size_t>(id)] = 0; }

    [[nodiscard]] std::size_t bytes() const { return _entries.capacity() * sizeof(std::uint32_t); }

private:
    static constexpr unsigned kIndexBits = 27;
    static constexpr std::uint32_t kIndexMask = (std::uint32_t{1} << kIndexBits) - 1;

    static std::uint32_t packed(QorThingKind kind, std::size_t index) noexcept {
        return static_cast<std::uint32_t>(kind) << kIndexBits | static_cast<std::uint32_t>(index);
    }

    QorIdentifier _last;
    std::vector<std::uint32_t> _entries;
};

// The row behind an identifier; null when the identifier is of another kind.
template <class Row>
[[nodiscard]] const Row* rowOf(const ThingTable& things, const std::vector<Row>& rows, QorIdentifier id,
                               QorThingKind kind) {
    const ThingPlace place = things.at(id);
    return place.kind == kind ? &rows[place.index] : nullptr;
}

// Takes out the rows that have no identifier any more and tells the things that stay their new places.
template <class Row>
void closeGaps(ThingTable& things, std::vector<Row>& rows) noexcept {
    std::erase_if(rows, [](const Row& row) { return row.id == QorNoIdentifier; });
    for (std::size_t at = 0; at < rows.size(); ++at) things.place(rows[at].id, things.kindOf(rows[at].id), at);
}

}  // namespace qor::embedded
