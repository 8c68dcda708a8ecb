// SPDX-License-Identifier: Apache-2.0
#include "cli/DocumentFields.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "cli/Nearest.h"
#include "cli/Text.h"

namespace qor::cli {

void DocumentFaults::add(const QorDocumentNode& node, std::string text) {
    _diagnostics.push_back({QorSeverity::Error, {_file, node.line(), node.column()}, std::move(text)});
}

DocumentFields::DocumentFields(const QorDocumentNode& mapping, std::string_view what,
                               std::initializer_list<std::string_view> keys, DocumentFaults& faults)
    : _mapping(mapping), _what(what), _keysAndValues(mapping.keysAndValues()), _faults(faults) {
    if (!mapping.isMapping()) faults.add(mapping, fmt::format("{} is a mapping of keys and values", what));
    const std::vector<std::string> known(keys.begin(), keys.end());
    for (std::size_t at = 0; at < _keysAndValues.size(); at += 2) {
        const std::string key(_keysAndValues[at].text());
        if (std::find(known.begin(), known.end(), key) == known.end())
            faults.add(_keysAndValues[at],
                       fmt::format("{} has no key {}{}", what, quoted(key), didYouMean(key, known)));
    }
}

QorDocumentNode DocumentFields::operator[](std::string_view key) const {
    for (std::size_t at = 0; at < _keysAndValues.size(); at += 2)
        if (_keysAndValues[at].text() == key) return _keysAndValues[at + 1];
    return {};
}

std::string DocumentFields::text(std::string_view key) const {
    const auto value = (*this)[key];
    if (value.isList() || value.isMapping()) _faults.add(value, fmt::format("the value of \"{}\" is a text", key));
    return std::string(value.text());
}

std::string DocumentFields::requiredText(std::string_view key) const {
    auto value = text(key);
    if (value.empty() && _mapping.isMapping())
        _faults.add(_mapping, fmt::format("{} needs the key \"{}\" with a text", _what, key));
    return value;
}

std::vector<QorDocumentNode> DocumentFields::list(std::string_view key) const {
    const auto value = (*this)[key];
    if (value.isMapping() || !value.text().empty())
        _faults.add(value, fmt::format("the value of \"{}\" is a list", key));
    return value.items();
}

std::uint32_t DocumentFields::number(std::string_view key) const {
    const auto digits = text(key);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc() && !digits.empty() && end == digits.data() + digits.size()) return number;
    const auto value = (*this)[key];
    _faults.add(value ? value : _mapping, fmt::format("{} needs the key \"{}\" with a whole number", _what, key));
    return 0;
}

}  // namespace qor::cli
