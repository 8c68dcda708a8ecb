// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// What the intervals of a calendar carry. A calendar, its profiles and their intervals have the same type.
enum class QorCalendarPropertyType : std::int32_t {
    Flag = 0,          ///< whether somebody works; letter "B" in texts
    Distribution = 1,  ///< at which rate something arrives; letter "D" in texts
};
