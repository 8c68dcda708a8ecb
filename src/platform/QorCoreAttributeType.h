// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// Attribute type codes. A repository may know further ones.
enum class QorCoreAttributeType : std::int32_t {
    None = -1,  ///< output of a failed query
    Integer = 0,
    Floating = 1,
    Text = 2,
    LongText = 3,
    Time = 4,  ///< a duration as "YY:DDD:HH:MM:SS"
    Enumeration = 5,
    EnumerationList = 6,
    Date = 7,
    SimulationAction = 8,  ///< evaluated by the simulation when an event occurs
    InterReference = 9,    ///< refers to models, or to objects in models
    Expression = 10,
    Record = 11,  ///< a table; its columns are the attributes of a record class
    AttributeProfile = 12,
    DateTime = 13,
    Distribution = 14,
    Calendar = 15,
};
