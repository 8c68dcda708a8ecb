// SPDX-License-Identifier: Apache-2.0
// Which relations leave and reach an object, as spans.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "embedded/InstanceTables.h"
#include "embedded/ThingTable.h"
#include "platform/QorCoreBulkView.h"

namespace qor::embedded {

// For each direction one array of places (where an object's ends begin and how many they are) and one array of ends,
// laid out object by object. The ends of objects that were edited since stand in a second array, the overlay, where a
// list that outgrows its place moves to the back with twice the room. When the edits exceed an eighth of all rows,
// everything is laid out anew. Edits cost amortised O(1), whatever the number of relations that an object has: a list
// from which something went away is only marked, and tidied when it is next read.
class Adjacency {
public:
    enum Direction : std::size_t { Outgoing = 0, Incoming = 1 };

    Adjacency(const ThingTable& things, const InstanceTables& tables) : _things(things), _tables(tables) {}

    // The object's ends, ascending by relation. Holds until the next change. May lay out first.
    [[nodiscard]] std::span<const QorRelationEnd> ends(Direction direction, std::size_t object) {
        prepare();
        return preparedEnds(direction, object);
    }

    // To ask for many objects' ends: brings the lists up to date, until the next change.
    void prepare();
    [[nodiscard]] std::span<const QorRelationEnd> preparedEnds(Direction direction, std::size_t object) {
        Side& side = _sides[direction];
        if (object >= side.places.size()) return {};
        const Place& place = side.places[object];
        if (place.count & kUntidy) tidy(direction, object);
        return {first(side, place), place.count};
    }

    // Relations that were added at the end of their table are found by themselves. To be told of are:
    // - a relation that goes away, while its row still stands;
    void noteRemoval(const RelationRow& relation);
    // - a relation that gets another end, which is written here;
    void moveEnd(Direction direction, RelationRow& relation, QorIdentifier object);
    // - rows that change their places.
    void forget() noexcept { _laidOut = false; }

    // Lays everything out anew. O(objects + relations).
    void layOut();
    // Lays out anew unless nothing was edited since the last time.
    void foldIn();

    [[nodiscard]] std::size_t bytes() const;

private:
    struct Place {
        std::uint32_t start = 0;
        std::uint32_t count = 0;  // with kUntidy
    };
    static constexpr std::uint32_t kUntidy = std::uint32_t{1} << 31;

    struct Side {
        std::vector<Place> places;  // by row of the object
        std::vector<QorRelationEnd> ends;
        std::vector<QorRelationEnd> overlay;  // starts count on from the end of `ends`
    };

    [[nodiscard]] std::size_t rowOf(QorIdentifier object) const { return _things.at(object).index; }
    [[nodiscard]] QorRelationEnd endOf(Direction direction, const RelationRow& relation) const;

    void takeUpNew();
    void countEnds();
    void fillInEnds();
    static QorRelationEnd* first(Side& side, const Place& place) {
        return place.start < side.ends.size() ? side.ends.data() + place.start
                                              : side.overlay.data() + (place.start - side.ends.size());
    }
    void makeRoomForEnd(Direction direction, std::size_t object);
    void addEnd(Direction direction, std::size_t object, const QorRelationEnd& end) noexcept;
    void mark(Direction direction, QorIdentifier object) noexcept;
    void tidy(Direction direction, std::size_t object);

    const ThingTable& _things;
    const InstanceTables& _tables;
    std::array<Side, 2> _sides;
    bool _laidOut = false;
    std::size_t _relationsTakenUp = 0;  // rows of the relation table that are in the lists
    std::size_t _edits = 0;
};

}  // namespace qor::embedded
