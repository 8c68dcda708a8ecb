// SPDX-License-Identifier: Apache-2.0
#include "modeltools/GeneratedName.h"

#include <algorithm>

#include "platform/QorKexParser.h"

namespace qor::modeltools {

namespace {

constexpr std::string_view kRemembered = "NAMEGEN last:";
constexpr std::string_view kLastKey = "last";

/// What follows "base-"; empty when the name does not begin so.
std::string_view behindBase(std::string_view name, std::string_view base) {
    if (!name.starts_with(base)) return {};
    name.remove_prefix(base.size());
    return name.starts_with('-') ? name.substr(1) : std::string_view();
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

}  // namespace

bool isNameComposition(std::string_view name, std::string_view base) { return !behindBase(name, base).empty(); }

bool isNameNumberComposition(std::string_view name, std::string_view base) {
    const std::string_view number = behindBase(name, base);
    return !number.empty() && std::all_of(number.begin(), number.end(), isDigit);
}

std::string rememberedText(std::string_view name) {
    std::string text(kRemembered);
    text += QorKexParser::GetKexTextOfStrValue(name).view();
    return text;
}

SV::String rememberedName(const SV::String& text, const SV::String& objectName, const SV::String& className) {
    if (text.IsEmpty()) return {};
    QorKexParser parser(text, objectName, className);
    return parser.Parse() == 0 ? parser.GetStrValue(kLastKey) : SV::String();
}

}  // namespace qor::modeltools
