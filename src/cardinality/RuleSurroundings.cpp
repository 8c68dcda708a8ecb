// SPDX-License-Identifier: Apache-2.0
#include "cardinality/RuleSurroundings.h"

#include <algorithm>

#include "cardinality/repository.h"
#include "platform/QorModelTypeAttrHandler.h"

namespace qor::cardinality {

namespace {

void demand(Request request, QorErrorCode code) {
    if (!succeeded(request, code)) throw RuleSurroundings::RepositoryFailed();
}

}  // namespace

RuleSurroundings::RuleSurroundings(const QorCardinalityMap<QorClassCardinality>& rules) {
    readModelTypes();
    readMostObjects(rules);
}

void RuleSurroundings::readModelTypes() {
    auto& modelTypes = *QorModelTypeAttrHandler::GetGlobal();
    ISortedSet<long> classes;
    for (unsigned long type = 0; modelTypes.GetModelTypeVisibleClasses(type, classes) == QorErrorCode::Ok; ++type)
        _visible.push_back(classes);
}

void RuleSurroundings::readMostObjects(const QorCardinalityMap<QorClassCardinality>& rules) {
    for (const auto& record : rules) {
        if (record.maxObjects.count >= QorNoCardinalityLimit) continue;
        ISortedSet<long> counted;
        demand(Request::Subclasses, repository().getAllSubClasses(record.key(), counted));
        counted.add(record.key());
        for (const long cls : counted) {
            const auto [place, isNew] = _mostObjects.try_emplace(cls, ofClass(record, record.maxObjects));
            if (!isNew && record.maxObjects.count < place->second.limit)
                place->second = ofClass(record, record.maxObjects);
        }
    }
}

bool RuleSurroundings::mayRun(QorIdentifier relationClass, Direction direction, QorIdentifier cls) {
    const auto [place, isNew] = _relationClasses.try_emplace(cls);
    auto& known = place->second;
    if (isNew) {
        demand(Request::LeavingRelationClasses,
               repository().getAllFromRelationsRecursive(cls, known[Direction::Outgoing]));
        demand(Request::ArrivingRelationClasses,
               repository().getAllToRelationsRecursive(cls, known[Direction::Incoming]));
    }
    return known[direction].contains(relationClass);
}

bool RuleSurroundings::isInAnyModel(QorIdentifier cls) const { return areInOneModel(cls, cls); }

bool RuleSurroundings::areInOneModel(QorIdentifier one, QorIdentifier other) const {
    return std::any_of(_visible.begin(), _visible.end(), [one, other](const ISortedSet<long>& classes) {
        return classes.contains(one) && classes.contains(other);
    });
}

QorCardinalityRule RuleSurroundings::mostObjects(QorIdentifier cls) const {
    const auto place = _mostObjects.find(cls);
    if (place != _mostObjects.end()) return place->second;
    QorCardinalityRule none;
    none.limit = QorNoCardinalityLimit;
    return none;
}

}  // namespace qor::cardinality
