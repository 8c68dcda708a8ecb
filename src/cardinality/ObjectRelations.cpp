// SPDX-License-Identifier: Apache-2.0
#include "cardinality/ObjectRelations.h"

#include <algorithm>
#include <bit>

#include "cardinality/repository.h"

namespace qor::cardinality {

namespace {

/// So many are looked through faster than grouped.
constexpr std::size_t kFewEnds = 8;

/// Stores an identifier in 32 bits; the request counts as failed when it does not fit.
bool take(Request request, QorErrorCode code, long identifier, QorIdentifier& out) {
    if (!succeeded(request, code)) return false;
    const auto narrow = Qor_NarrowIdentifier(identifier);
    if (!narrow) {
        reportInternalError(request);
        return false;
    }
    out = *narrow;
    return true;
}

bool readClass(QorCoreModelingManager& from, long object, QorIdentifier& cls) {
    long found = QorNoIdentifier;
    const auto code = from.classOf(object, found);
    return take(Request::ClassOfObject, code, found, cls);
}

/// The place of an identifier in a table with as many places as a power of two.
template <class Known>
Known& placeOf(std::vector<Known>& table, long identifier) {
    return table[static_cast<std::size_t>(identifier) & (table.size() - 1)];
}

}  // namespace

// ---- Plain operations ----

bool PlainRelations::classOf(long object, QorIdentifier& cls) {
    if (_knownObjects.empty()) _knownObjects.resize(kLeastKnown);
    auto& known = placeOf(_knownObjects, object);
    if (known.cls == QorNoIdentifier || known.object != object) {
        QorIdentifier found = QorNoIdentifier;
        if (!readClass(_repository, object, found)) return false;
        known = {Qor_NarrowIdentifier(object).value_or(QorNoIdentifier), found};
    }
    cls = known.cls;
    return true;
}

bool PlainRelations::list(long object, Direction direction, ISortedSet<long>& relations) {
    return direction == Direction::Outgoing
               ? succeeded(Request::OutgoingRelations, _repository.getFromRelationInstances(object, relations))
               : succeeded(Request::IncomingRelations, _repository.getToRelationInstances(object, relations));
}

bool PlainRelations::readEnd(long relation, Direction direction, QorRelationEnd& end) {
    const auto* known = _knownRelations.empty() ? nullptr : &placeOf(_knownRelations, relation);
    if (known == nullptr || known->relation != relation) {
        if (!readRelation(relation, direction, end)) return false;
    } else {
        end.relation = known->relation;
        end.relationClass = known->relationClass;
        end.other = direction == Direction::Outgoing ? known->to : known->from;
    }
    return classOf(end.other, end.otherClass);
}

bool PlainRelations::readRelation(long relation, Direction direction, QorRelationEnd& end) {
    long relationClass = QorNoIdentifier;
    const auto code = _repository.relationOf(relation, relationClass);
    if (!take(Request::ClassOfRelation, code, relationClass, end.relationClass) ||
        !take(Request::ClassOfRelation, QorErrorCode::Ok, relation, end.relation))
        return false;
    long from = QorNoIdentifier;
    long to = QorNoIdentifier;
    if (direction == Direction::Outgoing) {
        const auto answer = _repository.getToInstanceViaRelnInstance(relation, to);
        return take(Request::TargetOfRelation, answer, to, end.other);
    }
    const auto answer = _repository.getEndpointsOfRelationInstance(relation, from, to);
    return take(Request::EndsOfRelation, answer, from, end.other);
}

bool PlainRelations::read(long object, Direction direction, std::vector<QorRelationEnd>& ends) {
    ends.clear();
    if (!list(object, direction, _relations)) return false;
    for (const long relation : _relations)
        if (!readEnd(relation, direction, ends.emplace_back())) return false;
    return true;
}

bool PlainRelations::readAhead(std::span<const long> objects) {
    std::vector<KnownRelation> read;
    for (const long object : objects) {
        if (!list(object, Direction::Outgoing, _relations)) return false;
        for (const long relation : _relations) {
            QorRelationEnd end;
            if (!readRelation(relation, Direction::Outgoing, end)) return false;
            read.push_back({end.relation, end.relationClass, static_cast<QorIdentifier>(object), end.other});
        }
    }
    _knownRelations.assign(std::bit_ceil(read.size() + 1), {});
    for (const auto& relation : read) placeOf(_knownRelations, relation.relation) = relation;
    return true;
}

// ---- One object ----

ObjectRelations::ObjectRelations() : _bulk(repository().bulkView()), _plain(repository()) {}

bool ObjectRelations::open(long object) {
    _object = object;
    _cls = QorNoIdentifier;
    for (auto& side : _sides.values) side.read = side.counted = false;
    return openInBulk(object) || _plain.classOf(object, _cls);
}

bool ObjectRelations::openInBulk(long object) {
    if (_bulk == nullptr) return false;
    long cls = QorNoIdentifier;
    auto& outgoing = _sides[Direction::Outgoing];
    auto& incoming = _sides[Direction::Incoming];
    if (_bulk->viewObject(object, cls, outgoing.ends, incoming.ends) != QorErrorCode::Ok) return false;
    const auto narrow = Qor_NarrowIdentifier(cls);
    if (!narrow) return false;
    _cls = *narrow;
    outgoing.read = incoming.read = true;
    return true;
}

bool ObjectRelations::read(Direction direction) {
    auto& wanted = _sides[direction];
    if (wanted.read) return true;
    if (!_plain.read(_object, direction, wanted.buffer)) return false;
    wanted.ends = wanted.buffer;
    wanted.read = true;
    return true;
}

std::span<const QorRelationEnd> ObjectRelations::ends(Direction direction) const noexcept {
    return _sides[direction].ends;
}

std::uint32_t ObjectRelations::count(Direction direction) const noexcept {
    return static_cast<std::uint32_t>(_sides[direction].ends.size());
}

std::uint32_t ObjectRelations::countOf(Direction direction, QorIdentifier relationClass, QorIdentifier otherClass) {
    const auto& asked = _sides[direction];
    if (asked.counted || asked.ends.size() > kFewEnds) return groups(direction).countOf(relationClass, otherClass);
    return static_cast<std::uint32_t>(
        std::count_if(asked.ends.begin(), asked.ends.end(), [&](const QorRelationEnd& end) {
            return end.relationClass == relationClass &&
                   (otherClass == QorNoIdentifier || end.otherClass == otherClass);
        }));
}

EndGroups& ObjectRelations::groups(Direction direction) {
    auto& wanted = _sides[direction];
    if (!wanted.counted) {
        wanted.groups.count(wanted.ends);
        wanted.counted = true;
    }
    return wanted.groups;
}

}  // namespace qor::cardinality
