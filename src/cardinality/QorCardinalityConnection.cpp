// SPDX-License-Identifier: Apache-2.0
#include "cardinality/QorCardinalityConnection.h"

#include <algorithm>

#include "cardinality/QorCardinalityHandler.h"
#include "cardinality/limits.h"
#include "cardinality/placement.h"
#include "cardinality/repository.h"
#include "platform/QorGuard.h"

using namespace qor::cardinality;

namespace {

QorConnectionAdvice free() { return {true, QorNoCardinalityLimit, {}}; }

/// `wanted`: what visitLimits takes.
template <class Wanted>
QorConnectionAdvice adviceOn(const QorCardinalityHandler& handler, const Wanted& wanted) {
    if (handler.getActivation() == 0) return free();
    return Qor_Guarded(kSource, QorConnectionAdvice(), [&] {
        auto advice = free();
        const auto take = [&advice](const QorConnectionLimit& limit) {
            advice.slots = std::min(advice.slots, limit.slots());
            advice.limits.push_back(limit);
        };
        if (!visitLimits(handler.getClassCardinalities(), wanted, take)) return QorConnectionAdvice();
        advice.allowed = advice.slots > 0;
        return advice;
    });
}

}  // namespace

std::uint32_t QorConnectionLimit::slots() const noexcept {
    if (present > rule.limit || added > rule.limit - present) return 0;
    return added == 0 ? QorNoCardinalityLimit : (rule.limit - present) / added;
}

QorCardinalityConnection::QorCardinalityConnection(const QorCardinalityHandler& handler) : _handler(handler) {}
QorCardinalityConnection::~QorCardinalityConnection() = default;

QorConnectionAdvice QorCardinalityConnection::betweenClasses(long relationClass, long sourceClass,
                                                             long targetClass) const noexcept {
    if (_handler.getActivation() == 0) return free();
    return Qor_Guarded(kSource, QorConnectionAdvice(), [&] {
        auto advice = free();
        const auto take = [&advice](const QorConnectionLimit& limit) { advice.limits.push_back(limit); };
        visitLimits(_handler.getClassCardinalities(), RelatedClasses{relationClass, sourceClass, targetClass}, take);
        advice.slots =
            static_cast<std::uint32_t>(_handler.getRelationSlotCount(relationClass, sourceClass, targetClass));
        advice.allowed = advice.slots > 0;
        return advice;
    });
}

QorConnectionAdvice QorCardinalityConnection::betweenObjects(long relationClass, long source,
                                                             long target) const noexcept {
    return adviceOn(_handler, NewRelation{relationClass, source, target});
}

QorConnectionAdvice QorCardinalityConnection::withNewObject(long model, long cls, long relationClass, long object,
                                                            bool objectIsSource) const noexcept {
    return adviceOn(_handler, NewObject{model, cls, relationClass, object, objectIsSource});
}
