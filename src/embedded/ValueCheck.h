// SPDX-License-Identifier: Apache-2.0
// Which texts an attribute takes.
//
//   Integer            decimal, -2147483648 to 2147483647
//   Floating           decimal with a point, exponent allowed; finite
//   Time               "YY:DDD:HH:MM:SS", days to 364, hours to 23
//   Date, DateTime     "2024-02-29", "2024-02-29 23:59:59", years 1 to 9999
//   Enumeration        one of its values
//   EnumerationList    several of its values, each once, with ";" between them
//   InterReference     a keyword text (InterReferenceText.h)
//   Expression         a formula (docs/expressions.md)
//   Record             none: its rows are things of their own
//   everything else    any text
//
// The positions of objects in their drawing are long texts, and keyword texts as well.
//
// The empty text is taken by every type but Record. No text holds a zero byte.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorCoreAttributeType.h"

namespace qor::embedded {

[[nodiscard]] std::optional<std::int32_t> integerFrom(std::string_view text);
[[nodiscard]] std::optional<double> floatingFrom(std::string_view text);
[[nodiscard]] std::string textFrom(std::int32_t number);
// The shortest text that reads back as the same number; the number must be finite.
[[nodiscard]] std::string textFrom(double number);

// Whether a type without enumeration takes a text that is not empty.
[[nodiscard]] bool plainValueFits(QorCoreAttributeType type, bool refersToModels, std::string_view text);

// The parts of a value of an enumeration list.
[[nodiscard]] std::vector<std::string_view> listParts(std::string_view text);

// `isMember(part)` tells whether the attribute's enumeration holds the text.
template <class IsMember>
[[nodiscard]] bool valueFits(QorCoreAttributeType type, bool refersToModels, std::string_view text, IsMember isMember) {
    if (type == QorCoreAttributeType::Record) return false;
    if (text.empty()) return true;
    if (text.find('\0') != std::string_view::npos) return false;
    if (type == QorCoreAttributeType::Enumeration) return isMember(text);
    if (type == QorCoreAttributeType::EnumerationList) {
        std::vector<std::string_view> parts = listParts(text);
        if (!std::all_of(parts.begin(), parts.end(), isMember)) return false;
        std::sort(parts.begin(), parts.end());
        return std::adjacent_find(parts.begin(), parts.end()) == parts.end();
    }
    return plainValueFits(type, refersToModels, text);
}

}  // namespace qor::embedded
