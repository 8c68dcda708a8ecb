// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>

#include "platform/ISortedSet.h"
#include "platform/QorIdentifier.h"

namespace qor::modeltools {

/// The attributes through which classes refer to models below, each with the classes that designate it.
using HierarchyAttributes = std::map<QorIdentifier, ISortedSet<long>>;

/// Of the loaded library's classes; empty while none is loaded.
[[nodiscard]] HierarchyAttributes readHierarchyAttributes();

}  // namespace qor::modeltools
