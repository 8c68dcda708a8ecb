// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// Event types of the platform. A host may raise others; nobody of the system listens to them.
enum class QorEventType : std::int32_t {
    UserChanged = 701,
    UserGroupChanged = 702,
    ModelCreated = 704,
    AutomaticUpdatesSwitched = 705,  ///< field 9: 0 while updates are suspended
    ModelRenamed = 712,
    ModelMoved = 713,
    ModelDeleted = 714,
    ModelReferencesChanged = 739,  ///< field 8: the model
    AttributeValueChanged = 756,   ///< field 9: the model; field 13: the attribute's type code
    ModelVersionsChanged = 778,
    LibraryLoaded = 827,
    LibraryLoadedCardinality = 828,
    LibraryLoadedSimMapping = 829,
    LibraryDiscarded = 839,
};

/// Order in which the listeners of one event run: lower numbers first, equal numbers in order of subscription.
using QorEventPriority = std::int32_t;
