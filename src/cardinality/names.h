// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>

#include "platform/SvString.h"

namespace qor::cardinality {

// Names for messages. Nothing after a failure, which has then been reported.
[[nodiscard]] std::optional<SV::String> nameOfClass(long cls);
[[nodiscard]] std::optional<SV::String> nameOfAttribute(long attribute);
[[nodiscard]] std::optional<SV::String> nameOfRelationClass(long relationClass);
[[nodiscard]] std::optional<SV::String> nameOfObject(long object);

}  // namespace qor::cardinality
