// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>

#include "cardinality/ObjectTests.h"
#include "cardinality/QorCardinalityCompleteCheck.h"
#include "platform/ISortedSet.h"

namespace qor::cardinality {

/// The breach in full, rendered, with the objects and relations that it concerns.
[[nodiscard]] QorCardinalityBreach breachOf(ObjectRelations& object, const Finding& finding);

/// Takes a breach; false ends the tests.
using BreachSink = std::function<bool(const QorCardinalityBreach&)>;

/// Tests the number of objects of a class, subclasses included, in a model: the minimum before the maximum.
Outcome testClass(const QorClassCardinality& rules, long model, bool minima, bool maxima, const BreachSink& sink);

/// The classes whose objects the model may hold; false after an internal error.
bool visibleClasses(long model, ISortedSet<long>& classes);

}  // namespace qor::cardinality
