// SPDX-License-Identifier: Apache-2.0
#include "embedded/Adjacency.h"

#include <algorithm>
#include <bit>

namespace qor::embedded {

namespace {

constexpr Adjacency::Direction kDirections[] = {Adjacency::Outgoing, Adjacency::Incoming};

constexpr Adjacency::Direction opposite(Adjacency::Direction direction) {
    return direction == Adjacency::Outgoing ? Adjacency::Incoming : Adjacency::Outgoing;
}

QorIdentifier ownEnd(Adjacency::Direction direction, const RelationRow& relation) {
    return direction == Adjacency::Outgoing ? relation.from : relation.to;
}

bool relationIsLower(const QorRelationEnd& a, const QorRelationEnd& b) { return a.relation < b.relation; }
bool relationIsSame(const QorRelationEnd& a, const QorRelationEnd& b) { return a.relation == b.relation; }

}  // namespace

QorRelationEnd Adjacency::endOf(Direction direction, const RelationRow& relation) const {
    const QorIdentifier other = ownEnd(opposite(direction), relation);
    return {relation.id, relation.relationClass, other, _tables.objects[rowOf(other)].cls};
}

void Adjacency::noteRemoval(const RelationRow& relation) {
    if (!_laidOut) return;
    mark(Outgoing, relation.from);
    mark(Incoming, relation.to);
    ++_edits;
}

void Adjacency::moveEnd(Direction direction, RelationRow& relation, QorIdentifier object) {
    if (_laidOut) {
        takeUpNew();
        makeRoomForEnd(direction, rowOf(object));
    }
    const QorIdentifier before = ownEnd(direction, relation);
    (direction == Outgoing ? relation.from : relation.to) = object;
    if (!_laidOut) return;
    mark(direction, before);
    mark(opposite(direction), ownEnd(opposite(direction), relation));
    addEnd(direction, rowOf(object), endOf(direction, relation));
    ++_edits;
}

void Adjacency::foldIn() {
    if (!_laidOut || _edits > 0 || _relationsTakenUp < _tables.relations.size()) layOut();
}

void Adjacency::layOut() {
    _laidOut = false;
    countEnds();
    for (Side& side : _sides) {
        std::uint32_t start = 0;
        for (Place& place : side.places) {
            place.start = start;
            start += place.count;
            place.count = 0;
        }
        side.ends.resize(start);
    }
    fillInEnds();
    _relationsTakenUp = _tables.relations.size();
    _edits = 0;
    _laidOut = true;
}

void Adjacency::countEnds() {
    for (Side& side : _sides) {
        side.overlay = {};
        side.places.assign(_tables.objects.size(), {});
    }
    for (const RelationRow& relation : _tables.relations) {
        if (relation.id == QorNoIdentifier) continue;
        ++_sides[Outgoing].places[rowOf(relation.from)].count;
        ++_sides[Incoming].places[rowOf(relation.to)].count;
    }
}

void Adjacency::fillInEnds() {
    for (const RelationRow& relation : _tables.relations) {
        if (relation.id == QorNoIdentifier) continue;
        const std::size_t from = rowOf(relation.from);
        const std::size_t to = rowOf(relation.to);
        Place& leaving = _sides[Outgoing].places[from];
        Place& arriving = _sides[Incoming].places[to];
        _sides[Outgoing].ends[leaving.start + leaving.count++] = {relation.id, relation.relationClass, relation.to,
                                                                  _tables.objects[to].cls};
        _sides[Incoming].ends[arriving.start + arriving.count++] = {relation.id, relation.relationClass, relation.from,
                                                                    _tables.objects[from].cls};
    }
}

void Adjacency::prepare() {
    const std::size_t fresh = _tables.relations.size() - (_laidOut ? _relationsTakenUp : 0);
    if (!_laidOut || (fresh + _edits) * 8 > _tables.objects.size() + _tables.relations.size())
        layOut();
    else if (fresh > 0)
        takeUpNew();
}

void Adjacency::takeUpNew() {
    for (; _relationsTakenUp < _tables.relations.size(); ++_relationsTakenUp) {
        const RelationRow& relation = _tables.relations[_relationsTakenUp];
        if (relation.id == QorNoIdentifier) continue;
        for (const Direction direction : kDirections) makeRoomForEnd(direction, rowOf(ownEnd(direction, relation)));
        for (const Direction direction : kDirections)
            addEnd(direction, rowOf(ownEnd(direction, relation)), endOf(direction, relation));
        ++_edits;
    }
}

// A list in the overlay has room for the next power of two, one among the laid out ends for no more than it holds.
void Adjacency::makeRoomForEnd(Direction direction, std::size_t object) {
    Side& side = _sides[direction];
    if (side.places.size() < _tables.objects.size()) side.places.resize(_tables.objects.size());
    Place& place = side.places[object];
    const std::uint32_t count = place.count & ~kUntidy;
    const bool inOverlay = count > 0 && place.start >= side.ends.size();
    if (inOverlay && count < std::bit_ceil(count)) return;

    const std::size_t start = side.overlay.size();
    side.overlay.resize(start + std::bit_ceil(count + 1));
    std::copy_n(first(side, place), count, side.overlay.begin() + static_cast<std::ptrdiff_t>(start));
    place.start = static_cast<std::uint32_t>(side.ends.size() + start);
}

void Adjacency::addEnd(Direction direction, std::size_t object, const QorRelationEnd& end) noexcept {
    Side& side = _sides[direction];
    Place& place = side.places[object];
    const std::uint32_t count = place.count & ~kUntidy;
    QorRelationEnd* const ends = first(side, place);
    const bool keepsOrder = count == 0 || ends[count - 1].relation < end.relation;
    ends[count] = end;
    place.count = (count + 1) | (place.count & kUntidy) | (keepsOrder ? 0 : kUntidy);
}

void Adjacency::mark(Direction direction, QorIdentifier object) noexcept {
    Side& side = _sides[direction];
    const std::size_t row = rowOf(object);
    if (row < side.places.size() && side.places[row].count > 0) side.places[row].count |= kUntidy;
}

// Makes every end anew from its relation's row, leaves out those that are not the object's any more, and restores the
// order.
void Adjacency::tidy(Direction direction, std::size_t object) {
    Side& side = _sides[direction];
    Place& place = side.places[object];
    QorRelationEnd* const begin = first(side, place);
    QorRelationEnd* end = begin;
    for (const QorRelationEnd* read = begin; read != begin + (place.count & ~kUntidy); ++read) {
        const ThingPlace thing = _things.at(read->relation);
        if (thing.kind != QorThingKind::Relation) continue;
        const RelationRow& relation = _tables.relations[thing.index];
        if (ownEnd(direction, relation) == _tables.objects[object].id) *end++ = endOf(direction, relation);
    }
    if (!std::is_sorted(begin, end, relationIsLower)) std::sort(begin, end, relationIsLower);
    place.count = static_cast<std::uint32_t>(std::unique(begin, end, relationIsSame) - begin);
}

std::size_t Adjacency::bytes() const {
    std::size_t bytes = 0;
    for (const Side& side : _sides)
        bytes += side.places.capacity() * sizeof(Place) +
                 (side.ends.capacity() + side.overlay.capacity()) * sizeof(QorRelationEnd);
    return bytes;
}

}  // namespace qor::embedded
