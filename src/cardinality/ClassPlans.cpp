// SPDX-License-Identifier: Apache-2.0
#include "cardinality/ClassPlans.h"

#include <algorithm>
#include <limits>

#include "cardinality/limits.h"

namespace qor::cardinality {

namespace {

constexpr Direction kDirections[] = {Direction::Outgoing, Direction::Incoming};

bool isBound(const QorRelationTargetCardinality& target, Direction direction) {
    return direction == Direction::Outgoing
               ? target.maxToTarget.count < QorNoCardinalityLimit || target.minToTarget.count > 0
               : target.maxFromSource.count < QorNoCardinalityLimit || target.minFromSource.count > 0;
}

ClassPlan::Relation planOf(const QorClassCardinality& rules, const QorRelationCardinality& relation) {
    ClassPlan::Relation plan;
    plan.relationClass = relation.key();
    for (const auto direction : kDirections) {
        plan.least[direction] = leastOf(rules, direction, relation.key()).limit;
        for (const auto& target : relation.targets)
            if (isBound(target, direction))
                plan.targets[direction].push_back(
                    {target.key(), leastTowards(rules, direction, relation.key(), target.key()).limit});
    }
    return plan;
}

/// The smallest maximum that any group of relations in the direction could be held against.
std::uint32_t safeCount(const QorClassCardinality& rules, Direction direction) {
    auto safe = std::numeric_limits<std::uint32_t>::max();
    const auto hold = [&safe](const QorCardinalityRule& most) {
        if (most.limit < QorNoCardinalityLimit) safe = std::min(safe, most.limit);
    };
    hold(mostInDirection(rules, direction));
    for (const auto& relation : rules.relations) {
        hold(mostOf(rules, direction, relation.key()));
        hold(mostTowards(rules, direction, relation.key(), QorNoIdentifier));
        for (const auto& target : relation.targets) hold(mostTowards(rules, direction, relation.key(), target.key()));
    }
    return safe;
}

ClassPlan planOf(const QorClassCardinality& rules) {
    ClassPlan plan;
    plan.rules = &rules;
    plan.screen = ClassScreen(rules);
    for (const auto direction : kDirections) plan.safe[direction] = safeCount(rules, direction);
    for (const auto& relation : rules.relations) plan.relations.push_back(planOf(rules, relation));
    return plan;
}

}  // namespace

const ClassPlan& ClassPlans::lookUp(QorIdentifier cls) {
    const auto number = _index.add(static_cast<std::uint32_t>(cls));
    if (number == _plans.size()) {
        const auto* rules = _rules.find(cls);
        _plans.push_back(rules == nullptr ? ClassPlan() : planOf(*rules));
        _plans.back().number = number;
    }
    return _plans[number];
}

}  // namespace qor::cardinality
