// SPDX-License-Identifier: Apache-2.0
#include "simmap/OldResultText.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

#include "simmap/KexValues.h"
#include "simmap/ResultHolders.h"

namespace qor::simmap {

namespace {

constexpr char kSeparator = ';';
constexpr char kHolderMark = '@';
constexpr std::string_view kWhiteSpace = " \t\r\n";
constexpr std::string_view kSourceKeys[] = {kFromAttributeKey, kResultAttributeKey};

std::string_view trimmed(std::string_view text) {
    const auto begin = text.find_first_not_of(kWhiteSpace);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kWhiteSpace) - begin + 1);
}

std::vector<std::string_view> entriesOf(std::string_view text) {
    std::vector<std::string_view> entries;
    for (;;) {
        const auto end = text.find(kSeparator);
        entries.push_back(trimmed(text.substr(0, end)));
        if (end == std::string_view::npos) return entries;
        text.remove_prefix(end + 1);
    }
}

/// Writes the records of one text, entry by entry.
class Rewriter {
public:
    Rewriter(std::vector<std::string_view> entries, QorCoreVarType part) : _entries(std::move(entries)), _part(part) {}

    std::optional<SV::String> rewrite() {
        while (!isAtEnd())
            if (!rewriteRecord()) return std::nullopt;
        return SV::String(std::move(_text));
    }

private:
    /// Between records; an empty entry behind the last separator is none.
    [[nodiscard]] bool isAtEnd() const {
        return _at == _entries.size() || (_at + 1 == _entries.size() && _entries[_at].empty());
    }

    bool rewriteRecord() {
        const auto opening = _entries[_at++];
        if (opening.empty()) return nextHolder();
        if (!opening.starts_with(kHolderMark))
            return _holder != nullptr && openRecord(kSourceElement, opening) && writeKeys(kSourceKeys, true);
        const auto name = trimmed(opening.substr(1));
        return nextHolder() && openRecord(_holder->element, name) && writeKeys(_holder->fixedKeys, false);
    }

    /// Goes on to the next kind of holder that the part declares.
    bool nextHolder() {
        const auto holders = resultHolders();
        do {
            if (_next == holders.size()) return false;
            _holder = &holders[_next++];
        } while (_holder->part != _part);
        return true;
    }

    bool openRecord(std::string_view element, std::string_view cls) {
        if (cls.empty()) return false;
        if (!_text.empty()) _text += "\n\n";
        _text.append(element).append(" ").append(quotedValue(cls).view());
        return true;
    }

    bool writeKeys(std::span<const std::string_view> keys, bool required) {
        for (const auto key : keys) {
            if (_at == _entries.size()) return false;
            const auto value = _entries[_at++];
            if (value.starts_with(kHolderMark) || (required && value.empty())) return false;
            if (value.empty()) continue;
            _text.append("\n").append(key).append(":").append(quotedValue(value).view());
        }
        return true;
    }

    std::vector<std::string_view> _entries;
    QorCoreVarType _part;
    std::size_t _at = 0;
    std::size_t _next = 0;
    const ResultHolder* _holder = nullptr;
    std::string _text;
};

/// Takes the number at the beginning of the version away, with the point behind it.
std::uint64_t takeNumber(std::string_view& version) {
    std::uint64_t number = 0;
    const auto* const begin = version.data();
    const auto result = std::from_chars(begin, begin + version.size(), number);
    if (result.ec == std::errc::result_out_of_range) number = UINT64_MAX;
    version.remove_prefix(static_cast<std::size_t>(result.ptr - begin));
    if (!version.empty()) version.remove_prefix(1);
    return number;
}

}  // namespace

bool isOldResultText(std::string_view text) {
    return !text.empty() && (text.front() == kHolderMark || text.front() == kSeparator);
}

std::optional<SV::String> rewriteOldResultText(std::string_view text, QorCoreVarType part) {
    if (!isOldResultText(text)) return std::nullopt;
    return Rewriter(entriesOf(text), part).rewrite();
}

bool isVersionBelow(std::string_view version, std::string_view bound) {
    while (!version.empty() || !bound.empty()) {
        const auto number = takeNumber(version);
        const auto boundNumber = takeNumber(bound);
        if (number != boundNumber) return number < boundNumber;
    }
    return false;
}

}  // namespace qor::simmap
