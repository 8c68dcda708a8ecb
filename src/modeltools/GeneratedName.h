// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

#include "platform/SvString.h"

/// Names of the form "base-number", and the text by which an object remembers the one that it was given last.
namespace qor::modeltools {

inline constexpr const char* kNameGenAttribute = "__NameGeneration__";

/// "base-" and anything behind it, as the platform names new objects after their class.
[[nodiscard]] bool isNameComposition(std::string_view name, std::string_view base);
/// "base-" and nothing but digits behind it.
[[nodiscard]] bool isNameNumberComposition(std::string_view name, std::string_view base);

/// What an object remembers of a generated name.
[[nodiscard]] std::string rememberedText(std::string_view name);
/// The name in a remembered text; empty when there is none, also when somebody else wrote the text.
[[nodiscard]] SV::String rememberedName(const SV::String& text, const SV::String& objectName,
                                        const SV::String& className);

}  // namespace qor::modeltools
