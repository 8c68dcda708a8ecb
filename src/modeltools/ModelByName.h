// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>

#include "platform/QorIdentifier.h"
#include "platform/SvString.h"

namespace qor::modeltools {

/// What came of looking for the model that a reference names.
enum class ModelSearch : std::int32_t { Found, UnknownType, UnknownModel, NoVersion };

/// The newest version of the model of that name and type.
[[nodiscard]] ModelSearch findModel(const SV::String& typeName, const SV::String& modelName, long& model);

}  // namespace qor::modeltools
