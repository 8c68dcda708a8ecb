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

bool countObjects(const QorClassCardinality& rules, long model, std::uint32_t& count) {
    ISortedSet<long> objects;
    if (!succeeded(Request::ObjectsOfClass,
                   repository().getAllInstancesOfClassAndSubClassInModel(model, rules.key(), objects, true)))
        return false;
    count = static_cast<std::uint32_t>(objects.numberOfElements());
    return true;
}

/// One more object of the class counts for the class and for every class above it.
bool visitObjectLimits(const ClassRules& rules, long model, long cls, const LimitVisitor& visit) {
    for (const auto& candidate : rules) {
        if (candidate.maxObjects.count >= QorNoCardinalityLimit) continue;
        const auto counts = isOrDerivesFrom(cls, candidate.key());
        std::uint32_t present = 0;
        if (!counts || (*counts && !countObjects(candidate, model, present))) return false;
        if (*counts) visit({ofClass(candidate, candidate.maxObjects), QorConnectionPlace::Model, present, 1});
    }
    return true;
}

/// Keeps in mind whether every maximum holds.
class AllHold {
public:
    [[nodiscard]] LimitVisitor visitor() {
        return [this](const QorConnectionLimit& limit) { _holds = _holds && limit.slots() > 0; };
    }
    [[nodiscard]] bool holds() const { return _holds; }

private:
    bool _holds = true;
};

// ---- Relations of one object ----

/// Numbers of an object's relations.
struct Counts {
    std::uint32_t towards = 0;  ///< of the relation class, with objects of the other class
    std::uint32_t of = 0;       ///< of the relation class
    std::uint32_t inDirection = 0;
    std::uint32_t total = 0;
};
constexpr Counts kOne{1, 1, 1, 1};

/// Visits the maxima at one end that count a new relation.
void visitMaxima(const QorClassCardinality* rules, Direction direction, QorIdentifier relationClass,
                 QorIdentifier otherClass, const Counts& present, const Counts& added, const LimitVisitor& visit) {
    if (rules == nullptr) return;
    const auto where = direction == Direction::Outgoing ? QorConnectionPlace::Source : QorConnectionPlace::Target;
    const auto meet = [&](const QorCardinalityRule& most, std::uint32_t before, std::uint32_t more) {
        if (most.limit < QorNoCardinalityLimit) visit({most, where, before, more});
    };
    meet(mostTowards(*rules, direction, relationClass, otherClass), present.towards, added.towards);
    meet(mostOf(*rules, direction, relationClass), present.of, added.of);
    meet(mostInDirection(*rules, direction), present.inDirection, added.inDirection);
    meet(ofClass(*rules, rules->maxTotal), present.total, added.total);
}

/// A relation that an existing object would get, and the one that it would give up for it.
struct Exchange {
    Direction direction = Direction::Outgoing;
    QorIdentifier relationClass = QorNoIdentifier;
    QorIdentifier newClass = QorNoIdentifier;  ///< of the object at the other end
    long newEnd = -1;                          ///< that object; -1: it comes into being
    long replacedEnd = -1;                     ///< the object at the other end of the relation given up; -1: none
};

/// `present` is without the relation given up.
void count(ObjectRelations& object, const Exchange& exchange, Counts& present, Counts& added) {
    const QorRelationEnd* replaced = nullptr;
    present.inDirection = object.count(exchange.direction);
    for (const auto& end : object.ends(exchange.direction)) {
        if (end.relationClass != exchange.relationClass) continue;
        ++present.of;
        if (end.otherClass == exchange.newClass) ++present.towards;
        if (end.other == exchange.replacedEnd) replaced = &end;
    }
    if (replaced != nullptr) {
        --present.of;
        --present.inDirection;
        if (replaced->otherClass == exchange.newClass) --present.towards;
    }
    present.total = present.inDirection + object.count(opposite(exchange.direction));
    added = kOne;
    // A relation of the object to itself counts in both directions; given up, it is made anew in both.
    const bool loop = exchange.newEnd == object.object() || (exchange.replacedEnd == object.object() && !replaced);
    if (loop) ++added.total;
}

/// False after an internal error.
bool visitExistingEnd(const ClassRules& rules, ObjectRelations& object, const Exchange& exchange,
                      const LimitVisitor& visit) {
    const auto* own = rules.find(object.cls());
    if (own == nullptr) return true;
    if (!object.read(Direction::Outgoing) || !object.read(Direction::Incoming)) return false;
    Counts present;
    Counts added;
    count(object, exchange, present, added);
    visitMaxima(own, exchange.direction, exchange.relationClass, exchange.newClass, present, added, visit);
    return true;
}

}  // namespace

bool visitLimits(const ClassRules& rules, const NewObject& wanted, const LimitVisitor& visit) {
    if (!visitObjectLimits(rules, wanted.model, wanted.cls, visit)) return false;
    if (wanted.relationClass < 1 || wanted.object < 1) return true;
    const auto cls = Qor_NarrowIdentifier(wanted.cls);
    const auto relationClass = Qor_NarrowIdentifier(wanted.relationClass);
    ObjectRelations object;
    if (!cls || !relationClass || !object.open(wanted.object)) return false;

    const auto direction = wanted.objectIsSource ? Direction::Outgoing : Direction::Incoming;
    if (!visitExistingEnd(rules, object, {direction, *relationClass, *cls}, visit)) return false;
    visitMaxima(rulesOf(rules, *cls), opposite(direction), *relationClass, object.cls(), {}, kOne, visit);
    return true;
}

bool visitLimits(const ClassRules& rules, const NewRelation& wanted, const LimitVisitor& visit) {
    const auto relationClass = Qor_NarrowIdentifier(wanted.relationClass);
    ObjectRelations source;
    ObjectRelations target;
    if (!relationClass || !source.open(wanted.source) || !target.open(wanted.target)) return false;
    return visitExistingEnd(rules, source, {Direction::Outgoing, *relationClass, target.cls(), wanted.target}, visit) &&
           visitExistingEnd(rules, target, {Direction::Incoming, *relationClass, source.cls(), wanted.source}, visit);
}

void visitLimits(const ClassRules& rules, const RelatedClasses& wanted, const LimitVisitor& visit) {
    const auto relationClass = Qor_NarrowIdentifier(wanted.relationClass);
    const auto source = Qor_NarrowIdentifier(wanted.source);
    const auto target = Qor_NarrowIdentifier(wanted.target);
    if (!relationClass || !source || !target) return;
    visitMaxima(rules.find(*source), Direction::Outgoing, *relationClass, *target, {}, kOne, visit);
    visitMaxima(rules.find(*target), Direction::Incoming, *relationClass, *source, {}, kOne, visit);
}

bool isAllowed(const ClassRules& rules, const NewObject& wanted) {
    AllHold all;
    return visitLimits(rules, wanted, all.visitor()) && all.holds();
}

bool isAllowed(const ClassRules& rules, const NewObjectInBetween& wanted) {
    AllHold all;
    const auto visit = all.visitor();
    if (!visitObjectLimits(rules, wanted.model, wanted.cls, visit) || !all.holds()) return false;
    const auto cls = Qor_NarrowIdentifier(wanted.cls);
    const auto relationClass = Qor_NarrowIdentifier(wanted.relationClass);
    ObjectRelations source;
    ObjectRelations target;
    if (!cls || !relationClass || !source.open(wanted.source) || !target.open(wanted.target)) return false;

    if (!visitExistingEnd(rules, source, {Direction::Outgoing, *relationClass, *cls, -1, wanted.target}, visit) ||
        !visitExistingEnd(rules, target, {Direction::Incoming, *relationClass, *cls, -1, wanted.source}, visit))
        return false;
    constexpr Counts kInBetween{1, 1, 1, 2};
    const auto* own = rulesOf(rules, *cls);
    visitMaxima(own, Direction::Incoming, *relationClass, source.cls(), {}, kInBetween, visit);
    visitMaxima(own, Direction::Outgoing, *relationClass, target.cls(), {}, kInBetween, visit);
    return all.holds();
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
