// SPDX-License-Identifier: Apache-2.0
#include "simmap/KexValues.h"

#include <new>

namespace qor::simmap {

std::optional<SV::String> valueOf(const QorKexParser& parser, std::string_view key) {
    if (const auto value = parser.GetStrView(key)) return SV::String(*value);
    if (parser.IsContained(key)) return SV::String();
    return std::nullopt;
}

SV::String valueOrEmpty(const QorKexParser& parser, std::string_view key) {
    return SV::String(parser.GetStrView(key).value_or(std::string_view()));
}

SV::String elementValue(const QorKexParser& parser) {
    return SV::String(parser.GetStrView().value_or(std::string_view()));
}

SV::String quotedValue(std::string_view text) {
    auto quoted = QorKexParser::GetKexTextOfStrValue(text);
    if (quoted.IsEmpty()) throw std::bad_alloc();  // even an empty text has its quotes
    return quoted;
}

}  // namespace qor::simmap
