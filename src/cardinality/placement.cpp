// SPDX-License-Identifier: Apache-2.0
#include "cardinality/placement.h"

#include <algorithm>
#include <optional>

#include "cardinality/ObjectRelations.h"
#include "cardinality/limits.h"
#include "cardinality/repository.h"

namespace qor::cardinality {

namespace {

constexpr Direction opposite(Direction direction) {
    return direction == Direction::Outgoing ? Direction::Incoming : Direction::Outgoing;
}

const QorClassCardinality* rulesOf(const ClassRules& rules, long cls) {
    const auto key = Qor_NarrowIdentifier(cls);
    return key ? rules.find(*key) : nullptr;
}

// ---- Numbers of objects ----

/// Whether objects of the class count as objects of the other one; nothing after an internal error.
std::optional<bool> isOrDerivesFrom(long cls, long ancestor) {
    if (cls == ancestor) return true;
    ISortedSet<long> subclasses;
    if (!succeeded(Request::Subclasses, repository().getAllSubClasses(ancestor, subclasses))) return std::nullopt;
    return subclasses.contains(cls);
}

bool hasRoomForOneMore(const QorClassCardinality& rules, long model) {
    ISortedSet<long> objects;
    if (!succeeded(Request::ObjectsOfClass,
                   repository().getAllInstancesOfClassAndSubClassInModel(model, rules.key(), objects, true)))
        return false;
    return !exceeds(static_cast<std::uint32_t>(objects.numberOfElements() + 1), rules.maxObjects.count);
}

/// One more object of the class counts for the class and for every class above it.
bool modelHasRoom(const ClassRules& rules, long model, long cls) {
    for (const auto& candidate : rules) {
        if (candidate.maxObjects.count >= QorNoCardinalityLimit) continue;
        const auto counts = isOrDerivesFrom(cls, candidate.key());
        if (!counts || (*counts && !hasRoomForOneMore(candidate, model))) return false;
    }
    return true;
}

// ---- Relations of one object ----

/// Numbers of an object's relations as they would be.
struct Counts {
    std::uint32_t towards = 0;  ///< of the relation class, with objects of the other class
    std::uint32_t of = 0;       ///< of the relation class
    std::uint32_t inDirection = 0;
    std::uint32_t total = 0;
};

bool maximaHold(const QorClassCardinality* rules, Direction direction, QorIdentifier relationClass,
                QorIdentifier otherClass, const Counts& counts) {
    if (rules == nullptr) return true;
    return !exceeds(counts.towards, mostTowards(*rules, direction, relationClass, otherClass).limit) &&
           !exceeds(counts.of, mostOf(*rules, direction, relationClass).limit) &&
           !exceeds(counts.inDirection, mostInDirection(*rules, direction).limit) &&
           !exceeds(counts.total, rules->maxTotal.count);
}

/// A relation that an existing object would get, and the one that it would give up for it.
struct Exchange {
    Direction direction = Direction::Outgoing;
    QorIdentifier relationClass = QorNoIdentifier;
    QorIdentifier newClass = QorNoIdentifier;  ///< of the new object at the other end
    long replacedEnd = -1;                     ///< the object at the other end of the relation given up; -1: none
};

Counts countsAfter(ObjectRelations& object, const Exchange& exchange) {
    const auto ends = object.ends(exchange.direction);
    Counts counts{1, 1, object.count(exchange.direction) + 1, 0};
    const QorRelationEnd* replaced = nullptr;
    for (const auto& end : ends) {
        if (end.relationClass != exchange.relationClass) continue;
        ++counts.of;
        if (end.otherClass == exchange.newClass) ++counts.towards;
        if (end.other == exchange.replacedEnd) replaced = &end;
    }
    if (replaced != nullptr) {
        --counts.of;
        --counts.inDirection;
        if (replaced->otherClass == exchange.newClass) --counts.towards;
    }
    // A relation of the object to itself is given up and made anew in both directions.
    const bool loop = exchange.replacedEnd == object.object();
    const auto otherDirection = object.count(opposite(exchange.direction)) + (loop && replaced == nullptr ? 1u : 0u);
    counts.total = counts.inDirection + otherDirection;
    return counts;
}

/// Whether the maxima at the existing object hold after the exchange; not after an internal error.
bool existingEndAllows(const ClassRules& rules, ObjectRelations& object, const Exchange& exchange) {
    const auto* own = rules.find(object.cls());
    if (own == nullptr) return true;
    if (!object.read(Direction::Outgoing) || !object.read(Direction::Incoming)) return false;
    return maximaHold(own, exchange.direction, exchange.relationClass, exchange.newClass,
                      countsAfter(object, exchange));
}

}  // namespace

bool isAllowed(const ClassRules& rules, const NewObject& wanted) {
    if (!modelHasRoom(rules, wanted.model, wanted.cls)) return false;
    if (wanted.relationClass < 1 || wanted.object < 1) return true;
    const auto cls = Qor_NarrowIdentifier(wanted.cls);
    const auto relationClass = Qor_NarrowIdentifier(wanted.relationClass);
    ObjectRelations object;
    if (!cls || !relationClass || !object.open(wanted.object)) return false;

    const auto direction = wanted.objectIsSource ? Direction::Outgoing : Direction::Incoming;
    return existingEndAllows(rules, object, {direction, *relationClass, *cls}) &&
           maximaHold(rulesOf(rules, *cls), opposite(direction), *relationClass, object.cls(), {1, 1, 1, 1});
}

bool isAllowed(const ClassRules& rules, const NewObjectInBetween& wanted) {
    if (!modelHasRoom(rules, wanted.model, wanted.cls)) return false;
    const auto cls = Qor_NarrowIdentifier(wanted.cls);
    const auto relationClass = Qor_NarrowIdentifier(wanted.relationClass);
    ObjectRelations source;
    ObjectRelations target;
    if (!cls || !relationClass || !source.open(wanted.source) || !target.open(wanted.target)) return false;

    const auto* own = rulesOf(rules, *cls);
    return existingEndAllows(rules, source, {Direction::Outgoing, *relationClass, *cls, wanted.target}) &&
           existingEndAllows(rules, target, {Direction::Incoming, *relationClass, *cls, wanted.source}) &&
           maximaHold(own, Direction::Incoming, *relationClass, source.cls(), {1, 1, 1, 2}) &&
           maximaHold(own, Direction::Outgoing, *relationClass, target.cls(), {1, 1, 1, 2});
}

std::uint32_t relationSlots(const ClassRules& rules, long relationClass, long sourceClass, long targetClass) {
    auto slots = QorNoCardinalityLimit;
    const auto relation = Qor_NarrowIdentifier(relationClass);
    const auto source = Qor_NarrowIdentifier(sourceClass);
    const auto target = Qor_NarrowIdentifier(targetClass);
    if (!relation || !source || !target) return slots;
    if (const auto* own = rules.find(*source))
        slots = std::min(slots, mostTowards(*own, Direction::Outgoing, *relation, *target).limit);
    if (const auto* own = rules.find(*target))
        slots = std::min(slots, mostTowards(*own, Direction::Incoming, *relation, *source).limit);
    return slots;
}

}  // namespace qor::cardinality
