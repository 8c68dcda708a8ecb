// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityDoctor.h"

#include <algorithm>
#include <limits>

#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/RuleReader.h"
#include "cardinality/RuleSurroundings.h"
#include "cardinality/limits.h"
#include "cardinality/repository.h"
#include "platform/QorGuard.h"

using namespace qor::cardinality;

namespace {

using Fault = QorCardinalityFault;

constexpr Direction kDirections[] = {Direction::Outgoing, Direction::Incoming};

constexpr Direction opposite(Direction direction) {
    return direction == Direction::Outgoing ? Direction::Incoming : Direction::Outgoing;
}

/// Several minima that an object has to keep at once.
struct Minima {
    std::uint64_t sum = 0;
    QorCardinalityRule last;
    int count = 0;

    void add(const QorCardinalityRule& rule, std::uint64_t limit) {
        if (limit == 0) return;
        sum += limit;
        ++count;
        last = rule;
    }
    [[nodiscard]] std::uint32_t shownSum() const {
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(sum, std::numeric_limits<std::uint32_t>::max()));
    }
};

/// Examines the rules of one class.
class Examination {
public:
    Examination(const ClassRules& all, const QorClassCardinality& rules, RuleSurroundings& around,
                const QorCardinalityDoctor::Sink& sink)
        : _all(all), _rules(rules), _around(around), _sink(sink) {}

    void run() {
        examineClass();
        Minima total;
        for (const auto direction : kDirections) {
            Minima ofRelations;
            for (const auto& relation : _rules.relations) examineRelation(relation, direction, ofRelations);
            const auto least = leastInDirection(_rules, direction);
            compare(ofRelations, mostInDirection(_rules, direction));
            isImplied(least, isOutgoing(direction) ? "min-outgoing" : "min-incoming", ofRelations);
            total.add(ofRelations.sum > least.limit ? ofRelations.last : least,
                      std::max<std::uint64_t>(ofRelations.sum, least.limit));
        }
        compare(total, ofClass(_rules, _rules.maxTotal));
        isImplied(ofClass(_rules, _rules.minTotal), "min-relations", total);
    }

private:
    static bool isOutgoing(Direction direction) { return direction == Direction::Outgoing; }

    void report(Fault fault, const QorCardinalityRule& rule, const QorCardinalityRule& against = {},
                std::uint32_t count = 0) {
        _sink({fault, rule, against, count});
    }

    // ---- Pairs of limits ----

    /// A minimum against a maximum that holds for the same relations or objects, or for more.
    void compare(const QorCardinalityRule& least, const QorCardinalityRule& most) {
        if (exceeds(least.limit, most.limit)) report(Fault::MinimumAboveMaximum, least, most);
    }
    /// A single minimum was compared where it was met.
    void compare(const Minima& minima, const QorCardinalityRule& most) {
        if (minima.count < 2 || most.limit >= QorNoCardinalityLimit || minima.sum <= most.limit) return;
        report(Fault::MinimaAboveMaximum, minima.last, most, minima.shownSum());
    }
    /// A maximum that was written with its own key: has it any effect beside a maximum that counts the same and more?
    void isNeeded(const QorCardinalityRule& most, std::string_view key, const QorCardinalityRule& wider = {}) {
        if (most.key != key) return;
        if (most.limit >= QorNoCardinalityLimit)
            report(Fault::LimitsNothing, most);
        else if (wider.cls > 0 && wider.limit < QorNoCardinalityLimit && most.limit >= wider.limit)
            report(Fault::MadeVoid, most, wider);
    }
    /// A minimum that other minima bring about anyway.
    void isImplied(const QorCardinalityRule& least, std::string_view key, const Minima& minima) {
        if (least.key == key && least.limit > 0 && minima.sum >= least.limit)
            report(Fault::MadeVoid, least, minima.last);
    }

    // ---- The class ----

    void examineClass() {
        const auto limit = [this](const QorCardinalityLimit& of) { return ofClass(_rules, of); };
        if (!_around.isInAnyModel(_rules.key())) report(Fault::ClassInNoModel, anyRule());
        compare(limit(_rules.minObjects), _around.mostObjects(_rules.key()));
        isNeeded(limit(_rules.maxObjects), "max-objects", wider(_around.mostObjects(_rules.key())));
        compare(limit(_rules.minTotal), limit(_rules.maxTotal));
        compare(limit(_rules.minOut), limit(_rules.maxOut));
        compare(limit(_rules.minIn), limit(_rules.maxIn));
        isNeeded(limit(_rules.maxTotal), "max-relations");
        isNeeded(limit(_rules.maxOut), "max-outgoing", limit(_rules.maxTotal));
        isNeeded(limit(_rules.maxIn), "max-incoming", limit(_rules.maxTotal));
    }

    /// Only of a class above.
    [[nodiscard]] QorCardinalityRule wider(const QorCardinalityRule& rule) const {
        return rule.cls == _rules.key() ? QorCardinalityRule() : rule;
    }

    /// One that was written, to show where the class's rules are.
    [[nodiscard]] QorCardinalityRule anyRule() const {
        for (const auto* limit : {&_rules.maxObjects, &_rules.minObjects, &_rules.maxTotal, &_rules.minTotal,
                                  &_rules.maxIn, &_rules.minIn, &_rules.maxOut, &_rules.minOut})
            if (!limit->key.empty()) return ofClass(_rules, *limit);
        QorCardinalityRule rule;
        for (const auto& relation : _rules.relations)
            for (const auto direction : kDirections)
                if (findWritten(relation, direction, rule)) return rule;
        rule.cls = _rules.key();
        return rule;
    }

    // ---- Relation classes ----

    void examineRelation(const QorRelationCardinality& relation, Direction direction, Minima& ofClass) {
        QorCardinalityRule written;
        if (!findWritten(relation, direction, written)) return;
        if (!_around.mayRun(relation.key(), direction, _rules.key())) {
            report(Fault::RelationCannotTouch, written);
            return;
        }
        const auto least = leastOf(_rules, direction, relation.key());
        const auto most = mostOf(_rules, direction, relation.key());
        const auto mostInAll = mostInDirection(_rules, direction);
        compare(least, most);
        if (!exceeds(least.limit, most.limit)) compare(least, mostInAll);
        isNeeded(most, isOutgoing(direction) ? "max-outgoing" : "max-incoming", mostInAll);
        isNeeded(mostTowards(_rules, direction, relation.key(), QorNoIdentifier),
                 isOutgoing(direction) ? "default-max-outgoing" : "default-max-incoming", most);

        Minima ofTargets;
        for (const auto& target : relation.targets) examineTarget(relation, target, direction, ofTargets);
        compare(ofTargets, most);
        isImplied(least, isOutgoing(direction) ? "min-outgoing" : "min-incoming", ofTargets);
        ofClass.add(ofTargets.sum > least.limit ? ofTargets.last : least,
                    std::max<std::uint64_t>(ofTargets.sum, least.limit));
    }

    /// Whether the text says anything about relations of the class in the direction.
    bool findWritten(const QorRelationCardinality& relation, Direction direction, QorCardinalityRule& rule) const {
        for (const auto& one : {mostOf(_rules, direction, relation.key()), leastOf(_rules, direction, relation.key()),
                                mostTowards(_rules, direction, relation.key(), QorNoIdentifier)})
            if (isWritten(one, rule)) return true;
        for (const auto& target : relation.targets)
            for (const auto& one : {mostTowards(_rules, direction, relation.key(), target.key()),
                                    leastTowards(_rules, direction, relation.key(), target.key())})
                if (isWritten(one, rule)) return true;
        return false;
    }
    static bool isWritten(const QorCardinalityRule& one, QorCardinalityRule& rule) {
        if (one.key.empty()) return false;
        rule = one;
        return true;
    }

    // ---- Other classes ----

    void examineTarget(const QorRelationCardinality& relation, const QorRelationTargetCardinality& target,
                       Direction direction, Minima& ofRelation) {
        const auto least = leastTowards(_rules, direction, relation.key(), target.key());
        const auto most = mostTowards(_rules, direction, relation.key(), target.key());
        if (least.key.empty() && most.key.empty()) return;
        const auto& written = most.key.empty() ? least : most;
        if (!_around.mayRun(relation.key(), opposite(direction), target.key())) {
            report(Fault::OtherClassIsNoEnd, written);
            return;
        }
        if (_around.isInAnyModel(_rules.key()) && !_around.areInOneModel(_rules.key(), target.key()))
            report(Fault::OtherClassInNoModel, written);

        const auto mostOfRelation = mostOf(_rules, direction, relation.key());
        compare(least, most);
        if (!exceeds(least.limit, most.limit)) compare(least, mostOfRelation);
        isNeeded(most, isOutgoing(direction) ? "max-outgoing" : "max-incoming", mostOfRelation);
        ofRelation.add(least, least.limit);
        if (least.limit > 0) examineRequired(relation, target, direction, least);
    }

    /// Can there be the objects at the other end that the rule demands?
    void examineRequired(const QorRelationCardinality& relation, const QorRelationTargetCardinality& target,
                         Direction direction, const QorCardinalityRule& least) {
        if (const auto objects = _around.mostObjects(target.key()); objects.cls > 0 && objects.limit == 0)
            report(Fault::RequiredClassHasNoRoom, least, objects);
        const auto* other = _all.find(target.key());
        if (other == nullptr) return;
        const auto back = opposite(direction);
        for (const auto& most :
             {mostTowards(*other, back, relation.key(), _rules.key()), mostOf(*other, back, relation.key()),
              mostInDirection(*other, back), ofClass(*other, other->maxTotal)}) {
            if (most.limit != 0) continue;
            report(Fault::RequiredClassRefuses, least, most);
            return;
        }
    }

    const ClassRules& _all;
    const QorClassCardinality& _rules;
    RuleSurroundings& _around;
    const QorCardinalityDoctor::Sink& _sink;
};

}  // namespace

QorCardinalityDoctor::QorCardinalityDoctor(const QorCardinalityHandler& handler) : _handler(handler) {}
QorCardinalityDoctor::~QorCardinalityDoctor() = default;

bool QorCardinalityDoctor::diagnose(const Sink& sink) const {
    return Qor_Guarded(kSource, false, [&] {
        const auto& all = _handler.getClassCardinalities();
        try {
            RuleSurroundings around(all);
            for (const auto& rules : all) Examination(all, rules, around, sink).run();
        } catch (const RuleSurroundings::RepositoryFailed&) {
            return false;
        }
        return true;
    });
}
