// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace qor::modeltools {

// Text of any bytes as part of a document in UTF-8. What is no character there, or must not stand in such a document,
// becomes the replacement character.

/// Between the tags of XML, or in a quoted attribute.
void appendMarkup(std::string& document, std::string_view text);
/// A JSON string with its quotes.
void appendJson(std::string& document, std::string_view text);

/// How many characters the text has; a byte that belongs to none counts as one.
[[nodiscard]] std::size_t characters(std::string_view text);

}  // namespace qor::modeltools
