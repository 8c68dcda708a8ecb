// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <functional>

#include "platform/ISortedSet.h"

namespace qor::modeltools {

/// Calls `visit` for each class that models of the type show and that has the attribute for names, inherited or not, in
/// ascending order, until it answers false.
void forEachNamingClass(unsigned long modelType, const std::function<bool(long cls, long attribute)>& visit);

/// The objects of the class and its subclasses; empty when the repository fails.
[[nodiscard]] ISortedSet<long> objectsOf(long model, long cls);

}  // namespace qor::modeltools
