// SPDX-License-Identifier: Apache-2.0
#include "cardinality/breaches.h"

#include <algorithm>

#include "cardinality/breachText.h"
#include "cardinality/limits.h"
#include "cardinality/messages.h"
#include "cardinality/repository.h"
#include "platform/QorModelTypeAttrHandler.h"

namespace qor::cardinality {

namespace {

std::uint16_t messageOf(const Finding& finding) {
    if (finding.relationClass == QorNoIdentifier)
        return finding.isMinimum ? message::tooFewRelations : message::tooManyRelations;
    return finding.isMinimum ? message::tooFewOfRelationClass : message::tooManyOfRelationClass;
}

std::uint16_t directionText(const Finding& finding) {
    if (!finding.direction) return message::allRelations;
    return *finding.direction == Direction::Outgoing ? message::outgoingRelations : message::incomingRelations;
}

SV::String textOf(long object, const Finding& finding) {
    RelationMessage text{messageOf(finding),    object, QorNoIdentifier, finding.relationClass, finding.rule.limit,
                         directionText(finding)};
    if (finding.otherClass != QorNoIdentifier) {
        text.other = finding.otherClass;
        // Named in the direction in which the relations run.
        if (finding.direction == Direction::Incoming) std::swap(text.subject, text.other);
    }
    return textOf(text);
}

/// The relation ends that were counted.
std::vector<QorRelationEnd> countedEnds(ObjectRelations& object, const Finding& finding) {
    std::vector<QorRelationEnd> ends;
    if (finding.relationClass != QorNoIdentifier) {
        object.groups(*finding.direction).collect(finding.relationClass, finding.otherClass, ends);
        return ends;
    }
    for (const auto direction : {Direction::Outgoing, Direction::Incoming}) {
        if (finding.direction && *finding.direction != direction) continue;
        const auto part = object.ends(direction);
        ends.insert(ends.end(), part.begin(), part.end());
    }
    return ends;
}

void makeAscending(std::vector<long>& identifiers) {
    std::sort(identifiers.begin(), identifiers.end());
    identifiers.erase(std::unique(identifiers.begin(), identifiers.end()), identifiers.end());
}

/// Too many relations with one class concern both ends, too many of both directions no object in particular.
std::vector<long> objectsConcerned(long object, const Finding& finding, const std::vector<QorRelationEnd>& ends) {
    if (!finding.isMinimum && !finding.direction) return {};
    std::vector<long> objects{object};
    if (!finding.isMinimum && finding.otherClass != QorNoIdentifier)
        for (const auto& end : ends) objects.push_back(end.other);
    makeAscending(objects);
    return objects;
}

}  // namespace

QorCardinalityBreach breachOf(ObjectRelations& object, const Finding& finding) {
    const auto ends = countedEnds(object, finding);
    QorCardinalityBreach breach;
    breach.message = wordedFor(messageOf(finding), finding.rule.limit);
    breach.text = textOf(object.object(), finding);
    breach.subject = object.object();
    breach.rule = finding.rule;
    breach.found = finding.found;
    breach.objects = objectsConcerned(object.object(), finding, ends);
    for (const auto& end : ends) breach.relations.push_back(end.relation);
    makeAscending(breach.relations);
    return breach;
}

Outcome testClass(const QorClassCardinality& rules, long model, bool minima, bool maxima, const BreachSink& sink) {
    ISortedSet<long> objects;
    if (!succeeded(Request::ObjectsOfClass,
                   repository().getAllInstancesOfClassAndSubClassInModel(model, rules.key(), objects, true)))
        return Outcome::Failed;
    const auto found = static_cast<std::uint32_t>(objects.numberOfElements());

    const auto breached = [&](std::uint16_t message, const QorCardinalityLimit& limit) {
        QorCardinalityBreach breach;
        breach.message = wordedFor(message, limit.count);
        breach.text = objectCountText(message, rules.key(), found, limit.count);
        breach.subject = rules.key();
        breach.subjectIsClass = true;
        breach.rule = ofClass(rules, limit);
        breach.found = found;
        breach.objects.assign(objects.begin(), objects.end());
        return sink(breach);
    };
    if (minima && fallsShort(found, rules.minObjects.count) && !breached(message::tooFewObjects, rules.minObjects))
        return Outcome::Stopped;
    if (maxima && exceeds(found, rules.maxObjects.count) && !breached(message::tooManyObjects, rules.maxObjects))
        return Outcome::Stopped;
    return Outcome::Completed;
}

bool visibleClasses(long model, ISortedSet<long>& classes) {
    auto& modelTypes = *QorModelTypeAttrHandler::GetGlobal();
    unsigned long modelType = 0;
    return succeeded(Request::ModelTypeOfModel, modelTypes.GetModelTypeIndexOfModel(model, modelType)) &&
           succeeded(Request::VisibleClasses, modelTypes.GetModelTypeVisibleClasses(modelType, classes));
}

}  // namespace qor::cardinality
