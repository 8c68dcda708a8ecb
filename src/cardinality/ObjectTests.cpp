// SPDX-License-Identifier: Apache-2.0
#include "cardinality/ObjectTests.h"

#include "cardinality/limits.h"

namespace qor::cardinality {

TestObserver::~TestObserver() = default;
void TestObserver::passed(std::span<const QorRelationEnd>) {}
void TestObserver::turnsTo(QorIdentifier) {}
bool TestObserver::wantsMinimumTowards(QorIdentifier) { return true; }
void TestObserver::passedMinima(const ClassPlan&) {}

namespace {

/// Tests of one object of a class with rules. Each test answers whether the next one follows.
class Tests {
public:
    Tests(ObjectRelations& object, const ClassPlan& plan, TestObserver& observer)
        : _object(object), _plan(plan), _rules(*plan.rules), _observer(observer) {}

    Outcome maxima() {
        return outcome(outgoingGroups() && everyOutgoing() && everyIncoming() && incomingGroups() && everyRelation());
    }
    Outcome minima() {
        return outcome(relationClasses() && leastInDirectionHolds(Direction::Outgoing) &&
                       leastInDirectionHolds(Direction::Incoming) && leastInTotalHolds());
    }

private:
    Outcome outcome(bool completed) const {
        if (completed) return Outcome::Completed;
        return _failed ? Outcome::Failed : Outcome::Stopped;
    }

    bool read(Direction direction) {
        if (_object.read(direction)) return true;
        _failed = true;
        return false;
    }

    // ---- Maxima ----

    bool outgoingGroups() {
        if (!mostOfGroupsHold(Direction::Outgoing)) return false;
        _observer.passed(_object.ends(Direction::Outgoing));
        return true;
    }
    bool incomingGroups() { return mostOfGroupsHold(Direction::Incoming); }
    bool everyOutgoing() { return mostInDirectionHolds(Direction::Outgoing); }
    bool everyIncoming() { return mostInDirectionHolds(Direction::Incoming); }

    /// One test per group stands for the tests at each of its relations, which would all say the same.
    bool mostOfGroupsHold(Direction direction) {
        if (!read(direction)) return false;
        const auto safe = _plan.safe[direction];
        if (_object.count(direction) <= safe) return true;
        for (const auto& group : _object.groups(direction).groups()) {
            if (group.count <= safe) continue;
            const auto rule = group.otherClass == QorNoIdentifier
                                  ? mostOf(_rules, direction, group.relationClass)
                                  : mostTowards(_rules, direction, group.relationClass, group.otherClass);
            if (!exceeds(group.count, rule.limit)) continue;
            if (!breach({false, direction, group.relationClass, group.otherClass, rule, group.count, group.first}))
                return false;
        }
        return true;
    }

    bool mostInDirectionHolds(Direction direction) {
        if (!read(direction)) return false;
        const auto found = _object.count(direction);
        const auto rule = mostInDirection(_rules, direction);
        return !exceeds(found, rule.limit) ||
               breach({false, direction, QorNoIdentifier, QorNoIdentifier, rule, found, 0});
    }

    bool everyRelation() {
        const auto found = total();
        const auto rule = ofClass(_rules, _rules.maxTotal);
        return !exceeds(found, rule.limit) ||
               breach({false, std::nullopt, QorNoIdentifier, QorNoIdentifier, rule, found, 0});
    }

    // ---- Minima ----

    bool relationClasses() {
        for (const auto& relation : _plan.relations) {
            _observer.turnsTo(relation.relationClass);
            for (const auto direction : {Direction::Outgoing, Direction::Incoming})
                if (!leastTowardsTargetsHolds(relation, direction) || !leastOfRelationHolds(relation, direction))
                    return false;
        }
        return true;
    }

    bool leastTowardsTargetsHolds(const ClassPlan::Relation& relation, Direction direction) {
        for (const auto& target : relation.targets[direction]) {
            if (!_observer.wantsMinimumTowards(target.cls)) continue;
            if (!read(direction)) return false;
            if (target.least == 0) continue;
            const auto found = _object.countOf(direction, relation.relationClass, target.cls);
            if (!fallsShort(found, target.least)) continue;
            const auto rule = leastTowards(_rules, direction, relation.relationClass, target.cls);
            if (!breach({true, direction, relation.relationClass, target.cls, rule, found, 0})) return false;
        }
        return true;
    }

    bool leastOfRelationHolds(const ClassPlan::Relation& relation, Direction direction) {
        if (!read(direction)) return false;
        if (relation.least[direction] == 0) return true;
        const auto found = _object.countOf(direction, relation.relationClass, QorNoIdentifier);
        if (!fallsShort(found, relation.least[direction])) return true;
        const auto rule = leastOf(_rules, direction, relation.relationClass);
        return breach({true, direction, relation.relationClass, QorNoIdentifier, rule, found, 0});
    }

    bool leastInDirectionHolds(Direction direction) {
        if (!read(direction)) return false;
        const auto found = _object.count(direction);
        const auto rule = leastInDirection(_rules, direction);
        return !fallsShort(found, rule.limit) ||
               breach({true, direction, QorNoIdentifier, QorNoIdentifier, rule, found, 0});
    }

    bool leastInTotalHolds() {
        const auto found = total();
        const auto rule = ofClass(_rules, _rules.minTotal);
        return !fallsShort(found, rule.limit) ||
               breach({true, std::nullopt, QorNoIdentifier, QorNoIdentifier, rule, found, 0});
    }

    /// A relation of the object to itself counts twice.
    [[nodiscard]] std::uint32_t total() const {
        return _object.count(Direction::Outgoing) + _object.count(Direction::Incoming);
    }

    bool breach(const Finding& finding) { return _observer.breached(_object, finding); }

    ObjectRelations& _object;
    const ClassPlan& _plan;
    const QorClassCardinality& _rules;
    TestObserver& _observer;
    bool _failed = false;
};

}  // namespace

const ClassPlan* ObjectTests::planKept(const QorObjectView& object) {
    const auto cls = Qor_NarrowIdentifier(object.cls);
    if (!cls) return nullptr;
    const auto& plan = _plans.of(*cls);
    if (plan.rules == nullptr) return &plan;
    const auto holds = [&](Direction direction, std::span<const QorRelationEnd> ends) {
        return plan.screen.holds(direction, ends, [&]() -> const EndGroups& {
            _groups.count(ends);
            return _groups;
        });
    };
    const bool allHold = holds(Direction::Outgoing, object.outgoing) && holds(Direction::Incoming, object.incoming) &&
                         plan.screen.totalHolds(static_cast<std::uint32_t>(object.outgoing.size()) +
                                                static_cast<std::uint32_t>(object.incoming.size()));
    return allHold ? &plan : nullptr;
}

/// Reads no more, and in no other order, than the tests would, so that a failing repository shows alike.
ObjectTests::Screening ObjectTests::screen(ObjectRelations& object, const ClassPlan& plan, TestObserver& observer) {
    for (const auto direction : {Direction::Outgoing, Direction::Incoming}) {
        if (!object.read(direction)) return Screening::Failed;
        const auto groups = [&]() -> const EndGroups& { return object.groups(direction); };
        if (!plan.screen.holds(direction, object.ends(direction), groups)) return Screening::Suspicious;
        if (direction == Direction::Outgoing) observer.passed(object.ends(direction));
    }
    const auto total = object.count(Direction::Outgoing) + object.count(Direction::Incoming);
    return plan.screen.totalHolds(total) ? Screening::Holds : Screening::Suspicious;
}

Outcome ObjectTests::test(ObjectRelations& object, TestObserver& observer) {
    const auto& plan = _plans.of(object.cls());
    if (plan.rules == nullptr) return Outcome::Completed;
    switch (screen(object, plan, observer)) {
        case Screening::Holds:
            observer.passedMinima(plan);
            return Outcome::Completed;
        case Screening::Failed:
            return Outcome::Failed;
        case Screening::Suspicious:
            break;
    }
    Tests tests(object, plan, observer);
    const auto maxima = tests.maxima();
    return maxima == Outcome::Completed ? tests.minima() : maxima;
}

Outcome ObjectTests::testMaxima(ObjectRelations& object, TestObserver& observer) {
    const auto& plan = _plans.of(object.cls());
    return plan.rules == nullptr ? Outcome::Completed : Tests(object, plan, observer).maxima();
}

Outcome ObjectTests::testMinima(ObjectRelations& object, TestObserver& observer) {
    const auto& plan = _plans.of(object.cls());
    return plan.rules == nullptr ? Outcome::Completed : Tests(object, plan, observer).minima();
}

}  // namespace qor::cardinality
