// SPDX-License-Identifier: Apache-2.0
// Values of keyword texts, read and written without losing one when memory runs out: these throw, where the parser's
// own operations give an empty text, which would pass for a value.
#pragma once
#include <optional>
#include <string_view>

#include "platform/QorKexParser.h"
#include "platform/SvString.h"

namespace qor::simmap {

/// The string value of a key, empty when it has none; nothing when the element lacks the key. One look-up where there
/// is a value, which counts in records with thousands of keys.
[[nodiscard]] std::optional<SV::String> valueOf(const QorKexParser& parser, std::string_view key);
/// The same, empty when the element lacks the key.
[[nodiscard]] SV::String valueOrEmpty(const QorKexParser& parser, std::string_view key);
/// The value directly behind the element's keyword; empty when there is none.
[[nodiscard]] SV::String elementValue(const QorKexParser& parser);
/// The text as a quoted value.
[[nodiscard]] SV::String quotedValue(std::string_view text);

}  // namespace qor::simmap
