// SPDX-License-Identifier: Apache-2.0
#include "cardinality/ruleKeys.h"

namespace qor::cardinality {

namespace {

using Limit = QorCardinalityLimit;
using ClassRules = QorClassCardinality;
using RelationRules = QorRelationCardinality;
using TargetRules = QorRelationTargetCardinality;

const Limit& smaller(const Limit& written, const Limit& bound) { return bound.count < written.count ? bound : written; }
const Limit& larger(const Limit& written, const Limit& bound) { return bound.count > written.count ? bound : written; }

// Clamping runs one way on purpose: a maximum is held against maxTotal as it stands at that moment, and a minimum
// never against a maximum. A text that contradicts itself is kept as written and shows in the checks.
constexpr ClassKey kClassKeys[] = {
    {"max-objects", [](ClassRules& rules, const Limit& written) { rules.maxObjects = written; }},
    {"max-relations",
     [](ClassRules& rules, const Limit& written) {
         rules.maxTotal = written;
         lower(rules.maxIn, written);
         lower(rules.maxOut, written);
     }},
    {"max-incoming", [](ClassRules& rules, const Limit& written) { rules.maxIn = smaller(written, rules.maxTotal); }},
    {"max-outgoing", [](ClassRules& rules, const Limit& written) { rules.maxOut = smaller(written, rules.maxTotal); }},
    {"min-objects", [](ClassRules& rules, const Limit& written) { rules.minObjects = written; }},
    {"min-relations",
     [](ClassRules& rules, const Limit& written) {
         rules.minTotal = larger(larger(written, rules.minIn), rules.minOut);
     }},
    {"min-incoming",
     [](ClassRules& rules, const Limit& written) {
         rules.minIn = written;
         raise(rules.minTotal, written);
     }},
    {"min-outgoing",
     [](ClassRules& rules, const Limit& written) {
         rules.minOut = written;
         raise(rules.minTotal, written);
     }},
};

constexpr RelationKey kRelationKeys[] = {
    {"max-outgoing", Direction::Outgoing,
     [](RelationRules& rules, const Limit& written) {
         rules.maxOut = written;
         lower(rules.defaultMaxOut, written);
     }},
    {"max-incoming", Direction::Incoming,
     [](RelationRules& rules, const Limit& written) {
         rules.maxIn = written;
         lower(rules.defaultMaxIn, written);
     }},
    {"default-max-outgoing", Direction::Outgoing,
     [](RelationRules& rules, const Limit& written) { rules.defaultMaxOut = smaller(written, rules.maxOut); }},
    {"default-max-incoming", Direction::Incoming,
     [](RelationRules& rules, const Limit& written) { rules.defaultMaxIn = smaller(written, rules.maxIn); }},
    {"min-outgoing", Direction::Outgoing,
     [](RelationRules& rules, const Limit& written) { rules.minOut = larger(written, rules.defaultMinOut); }},
    {"min-incoming", Direction::Incoming,
     [](RelationRules& rules, const Limit& written) { rules.minIn = larger(written, rules.defaultMinIn); }},
    {"default-min-outgoing", Direction::Outgoing,
     [](RelationRules& rules, const Limit& written) {
         rules.defaultMinOut = written;
         raise(rules.minOut, written);
     }},
    {"default-min-incoming", Direction::Incoming,
     [](RelationRules& rules, const Limit& written) {
         rules.defaultMinIn = written;
         raise(rules.minIn, written);
     }},
};

constexpr TargetElement kTargetElements[] = {
    {"TO_CLASS", "max-outgoing", "min-outgoing", &TargetRules::maxToTarget, &TargetRules::minToTarget},
    {"FROM_CLASS", "max-incoming", "min-incoming", &TargetRules::maxFromSource, &TargetRules::minFromSource},
};

}  // namespace

std::span<const ClassKey> classKeys() { return kClassKeys; }
std::span<const RelationKey> relationKeys() { return kRelationKeys; }
std::span<const TargetElement> targetElements() { return kTargetElements; }

void lower(QorCardinalityLimit& limit, const QorCardinalityLimit& to) {
    if (to.count < limit.count) limit = to;
}

void raise(QorCardinalityLimit& limit, const QorCardinalityLimit& to) {
    if (to.count > limit.count) limit = to;
}

}  // namespace qor::cardinality
