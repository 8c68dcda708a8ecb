// SPDX-License-Identifier: Apache-2.0
#include "modeltools/ReferenceFormat.h"

namespace qor::modeltools {

namespace {

constexpr std::string_view kModelPattern = "%m (%t)";
constexpr std::string_view kObjectPattern = "%o (%c) - %m (%t)";

void replaceOnce(std::string& text, std::string_view placeholder, const SV::String& value) {
    if (const auto at = text.find(placeholder); at != std::string::npos)
        text.replace(at, placeholder.size(), value.view());
}

}  // namespace

ReferenceFormat::ReferenceFormat(std::string_view pattern, bool toModels)
    : _pattern(!pattern.empty() ? pattern
               : toModels       ? kModelPattern
                                : kObjectPattern),
      _toModels(toModels) {}

// One after the other in the growing text, unlike in messages: a model named "%t" is part of the pattern by the time
// its type is put in. Names that were given so are out there, and must be found up to date.
std::string ReferenceFormat::textOf(const QorInterModRefTarget& reference) const {
    std::string text = _pattern;
    replaceOnce(text, "%m", reference.modelName);
    replaceOnce(text, "%t", reference.modelTypeName);
    if (!_toModels) {
        replaceOnce(text, "%o", reference.objectName);
        replaceOnce(text, "%c", reference.className);
    }
    return text;
}

}  // namespace qor::modeltools
