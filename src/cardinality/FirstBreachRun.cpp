// SPDX-License-Identifier: Apache-2.0
#include "cardinality/FirstBreachRun.h"

#include <utility>

#include "cardinality/ObjectBlocks.h"
#include "cardinality/repository.h"

namespace qor::cardinality {

namespace {

void addAll(ISortedSet<long>& set, std::vector<long> identifiers) {
    ISortedSet<long> added;
    added.assign(std::move(identifiers));
    set.addAllFrom(added);
}

}  // namespace

FirstBreachRun::FirstBreachRun(ClassPlans& plans, RunResults results)
    : _plans(plans), _results(results), _tests(plans) {}
FirstBreachRun::~FirstBreachRun() = default;

bool FirstBreachRun::checkModel(long model) {
    ISortedSet<long> objects;
    if (!succeeded(Request::ObjectsOfModel, repository().getAllInstancesInModel(model, objects))) return false;
    ObjectBlocks blocks({objects.begin(), objects.end()}, repository().bulkView());
    for (auto block = blocks.next(); !block.objects.empty(); block = blocks.next())
        for (std::size_t at = 0; at < block.objects.size(); ++at)
            if (!checkInBlock(block.objects[at], at < block.views.size() ? &block.views[at] : nullptr)) return false;

    ISortedSet<long> classes;
    if (!visibleClasses(model, classes)) return false;
    for (const long cls : classes) {
        if (_results.checked.classes.contains(cls)) continue;
        _results.checked.classes.add(cls);
        if (!checkClass(model, cls, true, true)) return false;
    }
    return true;
}

bool FirstBreachRun::checkInBlock(long object, const QorObjectView* view) {
    const auto* kept = view == nullptr ? nullptr : _tests.planKept(*view);
    if (kept == nullptr) return checkObject(object, true, true);
    if (_results.checked.objects.contains(object)) return true;
    if (kept->rules != nullptr) {
        passed(view->outgoing);
        passedMinima(*kept);
    }
    _results.checked.objects.add(object);
    return true;
}

bool FirstBreachRun::checkObject(long object, bool minima, bool maxima) {
    if (_results.checked.objects.contains(object)) return true;
    const bool holds = (!minima && !maxima) || testObject(object, minima, maxima);
    _results.checked.objects.add(object);
    return holds;
}

bool FirstBreachRun::testObject(long object, bool minima, bool maxima) {
    if (!_object.open(object)) return false;
    if (minima && maxima) return _tests.test(_object, *this) == Outcome::Completed;
    if (maxima && _tests.testMaxima(_object, *this) != Outcome::Completed) return false;
    return !minima || _tests.testMinima(_object, *this) == Outcome::Completed;
}

bool FirstBreachRun::checkRelation(long relation, bool minima, bool maxima) {
    long relationClass = QorNoIdentifier;
    long source = QorNoIdentifier;
    long target = QorNoIdentifier;
    if (!succeeded(Request::ClassOfRelation, repository().relationOf(relation, relationClass))) return false;
    if (!succeeded(Request::EndsOfRelation, repository().getEndpointsOfRelationInstance(relation, source, target)))
        return false;

    bool holds = true;
    for (const long end : {source, target})
        if (!checkObject(end, minima, maxima) && _results.badRelations.contains(relation)) holds = false;
    return holds;
}

bool FirstBreachRun::checkClass(long model, long cls, bool minima, bool maxima) {
    const auto key = Qor_NarrowIdentifier(cls);
    const auto* rules = key ? _plans.rules().find(*key) : nullptr;
    if (rules == nullptr) return true;
    const auto sink = [this](const QorCardinalityBreach& breach) {
        record(breach);
        return false;
    };
    return testClass(*rules, model, minima, maxima, sink) == Outcome::Completed;
}

void FirstBreachRun::record(const QorCardinalityBreach& breach) {
    addAll(_results.badObjects, breach.objects);
    addAll(_results.badRelations, breach.relations);
    _results.errorText = breach.text;
}

bool FirstBreachRun::breached(ObjectRelations& object, const Finding& finding) {
    const auto breach = breachOf(object, finding);
    record(breach);
    if (finding.isMinimum || finding.direction != Direction::Outgoing) return false;
    if (finding.relationClass == QorNoIdentifier) return false;
    // The relations up to the one at which the breach was met, and, towards one class, all that were counted. Their
    // ends stay unchecked: being part of this breach says nothing of their own limits.
    passed(object.ends(Direction::Outgoing).first(finding.firstEnd + 1));
    if (finding.otherClass != QorNoIdentifier)
        for (const long relation : breach.relations) _results.checked.relations.add(relation);
    return false;
}

void FirstBreachRun::passed(std::span<const QorRelationEnd> outgoing) {
    for (const auto& end : outgoing) _results.checked.relations.add(end.relation);
}

void FirstBreachRun::turnsTo(QorIdentifier relationClass) { _results.checked.classes.add(relationClass); }

bool FirstBreachRun::wantsMinimumTowards(QorIdentifier cls) {
    if (_results.checked.classes.contains(cls)) return false;
    _results.checked.classes.add(cls);
    return true;
}

void FirstBreachRun::passedMinima(const ClassPlan& plan) {
    if (plan.number >= _met.size()) _met.resize(plan.number + 1);
    if (_met[plan.number]) return;
    _met[plan.number] = true;
    for (const auto& relation : plan.relations) {
        turnsTo(relation.relationClass);
        for (const auto& targets : relation.targets.values)
            for (const auto& target : targets) (void)wantsMinimumTowards(target.cls);
    }
}

}  // namespace qor::cardinality
