// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "platform/QorCoreAttributeType.h"
#include "platform/QorErrorCode.h"

namespace qor::simmap {

/// What a reset leaves in an attribute of the type, as text.
[[nodiscard]] const char* resetText(QorCoreAttributeType type);

/// Resets an attribute of an object: numbers to 0, times to no time, everything else to the empty text. Raises no
/// event for the single value; whoever resets knows the objects.
QorErrorCode writeReset(long model, long object, long attribute, QorCoreAttributeType type);

}  // namespace qor::simmap
