// SPDX-License-Identifier: Apache-2.0
// The handler's checks and questions: a thin layer over the run that ends at the first breach.
#include <algorithm>
#include <memory>

#include "cardinality/FirstBreachRun.h"
#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/breachText.h"
#include "cardinality/placement.h"
#include "cardinality/repository.h"
#include "platform/QorGuard.h"
#include "platform/SvWindow.h"

using namespace qor::cardinality;

CheckedMarks& QorCardinalityHandler::checked() {
    if (!_checked) _checked = std::make_unique<CheckedMarks>();
    return *_checked;
}

/// A check that throws has failed.
template <class Check>
bool QorCardinalityHandler::run(const Check& check) noexcept {
    return Qor_Guarded(kSource, false, [&] {
        FirstBreachRun run(plans(), {_errorText, checked(), _badObjects, _badRelations});
        return check(run);
    });
}

// ---- Checks ----

int QorCardinalityHandler::checkModel(long model, int keep) noexcept {
    if (!_isActive) return 1;
    const QorWaitCursor wait;
    if (keep == 0) resetCheck();
    return run([&](FirstBreachRun& run) { return run.checkModel(model); }) ? 1 : 0;
}

int QorCardinalityHandler::checkObject(long object, bool minima, bool maxima) noexcept {
    const QorWaitCursor wait;
    resetCheck();
    return checkOneObject(object, minima, maxima);
}

int QorCardinalityHandler::checkRelation(long relation, bool minima, bool maxima) noexcept {
    const QorWaitCursor wait;
    resetCheck();
    if (!_isActive) return 1;
    return run([&](FirstBreachRun& run) { return run.checkRelation(relation, minima, maxima); }) ? 1 : 0;
}

bool QorCardinalityHandler::checkClass(long model, long cls, bool minima, bool maxima) noexcept {
    const QorWaitCursor wait;
    resetCheck();
    return !_isActive || checkOneClass(model, cls, minima, maxima);
}

int QorCardinalityHandler::checkRelateClasses(long relationClass, long sourceClass, long targetClass) noexcept {
    const QorWaitCursor wait;
    return !_isActive || getRelationSlotCount(relationClass, sourceClass, targetClass) != 0 ? 1 : 0;
}

const ISortedSet<long>& QorCardinalityHandler::getBadObjects() const noexcept { return _badObjects; }
const ISortedSet<long>& QorCardinalityHandler::getBadRelations() const noexcept { return _badRelations; }

bool QorCardinalityHandler::checkOneClass(long model, long cls, bool minima, bool maxima) noexcept {
    return run([&](FirstBreachRun& run) { return run.checkClass(model, cls, minima, maxima); });
}

int QorCardinalityHandler::checkOneObject(long object, bool minima, bool maxima) noexcept {
    if (!_isActive) return 1;
    return run([&](FirstBreachRun& run) { return run.checkObject(object, minima, maxima); }) ? 1 : 0;
}

int QorCardinalityHandler::checkOneObjectMax(long object) noexcept {
    return run([&](FirstBreachRun& run) { return run.testObject(object, false, true); }) ? 1 : 0;
}

int QorCardinalityHandler::checkOneObjectMin(long object) noexcept {
    return run([&](FirstBreachRun& run) { return run.testObject(object, true, false); }) ? 1 : 0;
}

// ---- Questions of an editor ----

unsigned long QorCardinalityHandler::getRelationSlotCount(long relationClass, long sourceClass,
                                                          long targetClass) const noexcept {
    return relationSlots(_classes, relationClass, sourceClass, targetClass);
}

bool QorCardinalityHandler::isNewObjectAllowed(long model, long cls, long relationClass, long object,
                                               bool objectIsSource) const noexcept {
    if (!_isActive) return true;
    return Qor_Guarded(kSource, false, [&] {
        return isAllowed(_classes, NewObject{model, cls, relationClass, object, objectIsSource});
    });
}

bool QorCardinalityHandler::isNewObjectInBetweenAllowed(long model, long cls, long relationClass, long source,
                                                        long target) const noexcept {
    if (!_isActive) return true;
    return Qor_Guarded(kSource, false, [&] {
        return isAllowed(_classes, NewObjectInBetween{model, cls, relationClass, source, target});
    });
}

// ---- Results and marks ----

namespace {

/// Numbers beyond 16 bits have no text, as 0 has none.
std::uint16_t resourceNumber(unsigned long number) noexcept {
    return number <= UINT16_MAX ? static_cast<std::uint16_t>(number) : std::uint16_t{0};
}

}  // namespace

void QorCardinalityHandler::makeErrorText(unsigned long message, long subject, long other, long relationClass,
                                          unsigned long number, unsigned long direction) noexcept {
    Qor_Guarded(kSource, [&] {
        const auto limit = static_cast<std::uint32_t>(std::min<unsigned long>(number, UINT32_MAX));
        _errorText = textOf({resourceNumber(message), subject, other, relationClass, limit, resourceNumber(direction)});
    });
}

void QorCardinalityHandler::setBadInstance(long identifier, bool markSource, bool markTarget) noexcept {
    Qor_Guarded(kSource, [&] {
        long cls = QorNoIdentifier;
        if (repository().classOf(identifier, cls) == QorErrorCode::Ok) {
            _badObjects.add(identifier);
            return;
        }
        _badRelations.add(identifier);
        if (!markSource && !markTarget) return;
        long source = QorNoIdentifier;
        long target = QorNoIdentifier;
        if (!succeeded(Request::EndsOfRelation,
                       repository().getEndpointsOfRelationInstance(identifier, source, target)))
            return;
        if (markSource) _badObjects.add(source);
        if (markTarget) _badObjects.add(target);
    });
}

void QorCardinalityHandler::setBadInstances(const ISortedSet<long>& identifiers, bool markSource,
                                            bool markTarget) noexcept {
    for (const long identifier : identifiers) setBadInstance(identifier, markSource, markTarget);
}

void QorCardinalityHandler::setChecked(long identifier) noexcept {
    Qor_Guarded(kSource, [&] {
        auto& marks = checked();
        if (repository().isRelationInstance(identifier))
            marks.relations.add(identifier);
        else if (repository().isClass(identifier) || repository().isRelationClass(identifier))
            marks.classes.add(identifier);
        else
            marks.objects.add(identifier);
    });
}

void QorCardinalityHandler::setChecked(const ISortedSet<long>& identifiers) noexcept {
    for (const long identifier : identifiers) setChecked(identifier);
}

bool QorCardinalityHandler::isAlreadyChecked(long identifier) const noexcept {
    return _checked != nullptr && (_checked->objects.contains(identifier) || _checked->relations.contains(identifier) ||
                                   _checked->classes.contains(identifier));
}

bool QorCardinalityHandler::areAlreadyChecked(const ISortedSet<long>& identifiers) const noexcept {
    return std::all_of(identifiers.begin(), identifiers.end(), [this](long one) { return isAlreadyChecked(one); });
}

// ---- Relations of an object ----

namespace {

unsigned long allRelations(long object, Direction direction, ISortedSet<long>& relations) noexcept {
    relations.removeAll();
    return Qor_Guarded(kSource, 0ul, [&] {
        return PlainRelations(repository()).list(object, direction, relations) ? relations.numberOfElements() : 0ul;
    });
}

/// Null `otherClass`: any.
unsigned long relationsOfClass(long object, Direction direction, long relationClass, const long* otherClass,
                               ISortedSet<long>& relations) noexcept {
    relations.removeAll();
    return Qor_Guarded(kSource, 0ul, [&] {
        std::vector<QorRelationEnd> ends;
        if (!PlainRelations(repository()).read(object, direction, ends)) return 0ul;
        for (const auto& end : ends)
            if (end.relationClass == relationClass && (otherClass == nullptr || end.otherClass == *otherClass))
                relations.add(end.relation);
        return relations.numberOfElements();
    });
}

}  // namespace

unsigned long QorCardinalityHandler::getCurrentOutRelations(long object, ISortedSet<long>& relations) const noexcept {
    return allRelations(object, Direction::Outgoing, relations);
}

unsigned long QorCardinalityHandler::getCurrentOutRelations(long object, long relationClass,
                                                            ISortedSet<long>& relations) const noexcept {
    return relationsOfClass(object, Direction::Outgoing, relationClass, nullptr, relations);
}

unsigned long QorCardinalityHandler::getCurrentOutRelations(long object, long relationClass, long otherClass,
                                                            ISortedSet<long>& relations) const noexcept {
    return relationsOfClass(object, Direction::Outgoing, relationClass, &otherClass, relations);
}

unsigned long QorCardinalityHandler::getCurrentInRelations(long object, ISortedSet<long>& relations) const noexcept {
    return allRelations(object, Direction::Incoming, relations);
}

unsigned long QorCardinalityHandler::getCurrentInRelations(long object, long relationClass,
                                                           ISortedSet<long>& relations) const noexcept {
    return relationsOfClass(object, Direction::Incoming, relationClass, nullptr, relations);
}

unsigned long QorCardinalityHandler::getCurrentInRelations(long object, long relationClass, long otherClass,
                                                           ISortedSet<long>& relations) const noexcept {
    return relationsOfClass(object, Direction::Incoming, relationClass, &otherClass, relations);
}
