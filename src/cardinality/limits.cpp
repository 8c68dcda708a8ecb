// SPDX-License-Identifier: Apache-2.0
#include "cardinality/limits.h"

namespace qor::cardinality {

namespace {

/// Where one kind of limit stands in the records.
struct Places {
    QorCardinalityLimit QorClassCardinality::*ofClass;
    QorCardinalityLimit QorRelationCardinality::*ofRelation;
    QorCardinalityLimit QorRelationCardinality::*ofOtherClasses;
    QorCardinalityLimit QorRelationTargetCardinality::*ofTarget;
};

constexpr PerDirection<Places> kMost{
    {{{&QorClassCardinality::maxOut, &QorRelationCardinality::maxOut, &QorRelationCardinality::defaultMaxOut,
       &QorRelationTargetCardinality::maxToTarget},
      {&QorClassCardinality::maxIn, &QorRelationCardinality::maxIn, &QorRelationCardinality::defaultMaxIn,
       &QorRelationTargetCardinality::maxFromSource}}}};
constexpr PerDirection<Places> kLeast{
    {{{&QorClassCardinality::minOut, &QorRelationCardinality::minOut, &QorRelationCardinality::defaultMinOut,
       &QorRelationTargetCardinality::minToTarget},
      {&QorClassCardinality::minIn, &QorRelationCardinality::minIn, &QorRelationCardinality::defaultMinIn,
       &QorRelationTargetCardinality::minFromSource}}}};

QorCardinalityRule ofRelation(const QorClassCardinality& rules, const Places& places, QorIdentifier relationClass) {
    const auto* relation = rules.relations.find(relationClass);
    if (relation == nullptr) return ofClass(rules, rules.*places.ofClass);
    const auto& limit = relation->*places.ofRelation;
    return {rules.key(), limit.key, relationClass, QorNoIdentifier, limit.count};
}

QorCardinalityRule towards(const QorClassCardinality& rules, const Places& places, QorIdentifier relationClass,
                           QorIdentifier otherClass) {
    const auto* relation = rules.relations.find(relationClass);
    if (relation == nullptr) return ofClass(rules, rules.*places.ofClass);
    const auto* target = relation->targets.find(otherClass);
    const auto& limit = target == nullptr ? relation->*places.ofOtherClasses : target->*places.ofTarget;
    return {rules.key(), limit.key, relationClass, target == nullptr ? QorNoIdentifier : otherClass, limit.count};
}

}  // namespace

QorCardinalityRule ofClass(const QorClassCardinality& rules, const QorCardinalityLimit& limit) {
    return {rules.key(), limit.key, QorNoIdentifier, QorNoIdentifier, limit.count};
}

QorCardinalityRule mostTowards(const QorClassCardinality& rules, Direction direction, QorIdentifier relationClass,
                               QorIdentifier otherClass) {
    return towards(rules, kMost[direction], relationClass, otherClass);
}

QorCardinalityRule leastTowards(const QorClassCardinality& rules, Direction direction, QorIdentifier relationClass,
                                QorIdentifier otherClass) {
    return towards(rules, kLeast[direction], relationClass, otherClass);
}

QorCardinalityRule mostOf(const QorClassCardinality& rules, Direction direction, QorIdentifier relationClass) {
    return ofRelation(rules, kMost[direction], relationClass);
}

QorCardinalityRule leastOf(const QorClassCardinality& rules, Direction direction, QorIdentifier relationClass) {
    return ofRelation(rules, kLeast[direction], relationClass);
}

QorCardinalityRule mostInDirection(const QorClassCardinality& rules, Direction direction) {
    return ofClass(rules, rules.*kMost[direction].ofClass);
}

QorCardinalityRule leastInDirection(const QorClassCardinality& rules, Direction direction) {
    return ofClass(rules, rules.*kLeast[direction].ofClass);
}

}  // namespace qor::cardinality
