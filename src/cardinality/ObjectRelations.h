// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <vector>

#include "cardinality/Direction.h"
#include "cardinality/EndGroups.h"
#include "platform/ISortedSet.h"
#include "platform/QorCoreBulkView.h"
#include "platform/QorCoreModelingManager.h"
#include "platform/QorIdentifier.h"

namespace qor::cardinality {

/// Relations by the repository's plain operations. A reading operation that answers false has reported an internal
/// error.
class PlainRelations {
public:
    explicit PlainRelations(QorCoreModelingManager& from) : _repository(from) {}

    bool classOf(long object, QorIdentifier& cls);
    /// One object's relations.
    bool list(long object, Direction direction, ISortedSet<long>& relations);
    /// Their ends, ascending by relation.
    bool read(long object, Direction direction, std::vector<QorRelationEnd>& ends);

    /// Reads the relations that begin at the objects, so that `read` need not ask for each of them at both its ends.
    bool readAhead(std::span<const long> objects);
    /// Makes room to know the classes of so many objects; without, of a few thousand.
    void expect(std::size_t objects) { _knownObjects.assign(std::bit_ceil(std::max(objects, kLeastKnown)), {}); }

private:
    /// Objects are met again and again, each time from another neighbour.
    struct KnownObject {
        QorIdentifier object = QorNoIdentifier;
        QorIdentifier cls = QorNoIdentifier;
    };
    struct KnownRelation {
        QorIdentifier relation = QorNoIdentifier;
        QorIdentifier relationClass = QorNoIdentifier;
        QorIdentifier from = QorNoIdentifier;
        QorIdentifier to = QorNoIdentifier;
    };
    static constexpr std::size_t kLeastKnown = 4096;

    bool readEnd(long relation, Direction direction, QorRelationEnd& end);
    bool readRelation(long relation, Direction direction, QorRelationEnd& end);

    QorCoreModelingManager& _repository;
    ISortedSet<long> _relations;
    // By the lower bits of the identifier, as many as a power of two. What has lost its place to another is read again.
    std::vector<KnownObject> _knownObjects;
    std::vector<KnownRelation> _knownRelations;
};

/// Class and relations of one object at a time, taken from the repository's bulk view where it offers one and from its
/// plain operations otherwise. Buffers are kept from object to object. A reading operation that answers false has
/// reported an internal error.
class ObjectRelations {
public:
    ObjectRelations();

    // Where there is no bulk view, these speed up the reading of many objects: first how many they are, then which
    // ones.
    void expect(std::size_t objects) { _plain.expect(objects); }
    bool readAhead(std::span<const long> objects) { return _plain.readAhead(objects); }

    /// Turns to the object and reads its class.
    bool open(long object);
    [[nodiscard]] long object() const noexcept { return _object; }
    [[nodiscard]] QorIdentifier cls() const noexcept { return _cls; }

    /// Reads the object's relations in one direction, once per object.
    bool read(Direction direction);

    // After `read` of the direction:

    /// Ascending by relation. The views hold until the next `open` and the repository's next change.
    [[nodiscard]] std::span<const QorRelationEnd> ends(Direction direction) const noexcept;
    [[nodiscard]] std::uint32_t count(Direction direction) const noexcept;
    /// Relations of one relation class, with objects of one class or (none) of all.
    [[nodiscard]] std::uint32_t countOf(Direction direction, QorIdentifier relationClass, QorIdentifier otherClass);
    /// Counted on the first call for an object.
    EndGroups& groups(Direction direction);

private:
    struct Side {
        bool read = false;
        bool counted = false;
        std::span<const QorRelationEnd> ends;
        std::vector<QorRelationEnd> buffer;
        EndGroups groups;
    };

    bool openInBulk(long object);

    QorCoreBulkView* _bulk;
    PlainRelations _plain;
    long _object = QorNoIdentifier;
    QorIdentifier _cls = QorNoIdentifier;
    PerDirection<Side> _sides;
};

}  // namespace qor::cardinality
