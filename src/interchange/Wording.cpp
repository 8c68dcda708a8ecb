// SPDX-License-Identifier: Apache-2.0
#include "interchange/Wording.h"

#include <algorithm>
#include <array>

namespace qor::interchange {
namespace {

constexpr std::size_t kShownBytes = 80;
constexpr std::size_t kComparedBytes = 64;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Insertions, deletions, replacements and swaps of neighbours between two short texts, letter case left aside.
std::size_t editDistance(std::string_view one, std::string_view other) {
    std::array<std::array<std::size_t, kComparedBytes + 1>, 3> rows{};
    for (std::size_t j = 0; j <= other.size(); ++j) rows[0][j] = j;
    for (std::size_t i = 1; i <= one.size(); ++i) {
        auto& row = rows[i % 3];
        const auto& above = rows[(i + 2) % 3];
        const auto& twoAbove = rows[(i + 1) % 3];
        row[0] = i;
        for (std::size_t j = 1; j <= other.size(); ++j) {
            const bool same = lower(one[i - 1]) == lower(other[j - 1]);
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && lower(one[i - 1]) == lower(other[j - 2]) && lower(one[i - 2]) == lower(other[j - 1]))
                row[j] = std::min(row[j], twoAbove[j - 2] + 1);
        }
    }
    return rows[one.size() % 3][other.size()];
}

}  // namespace

std::string concat(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (const auto part : parts) size += part.size();
    std::string text;
    text.reserve(size);
    for (const auto part : parts) text += part;
    return text;
}

std::string inQuotes(std::string_view text) {
    std::string_view shown = text.substr(0, std::min(text.find('\n'), kShownBytes));
    // Not in the middle of a character.
    while (shown.size() < text.size() && !shown.empty() &&
           (static_cast<unsigned char>(text[shown.size()]) & 0xC0) == 0x80)
        shown.remove_suffix(1);
    std::string result = concat({"\"", shown, shown.size() < text.size() ? "\xE2\x80\xA6\"" : "\""});
    for (char& c : result)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    return result;
}

std::size_t Guesser::tolerance(std::string_view mistyped) {
    return std::min<std::size_t>(std::max<std::size_t>(mistyped.size() / 3, 1), 3) + 1;
}

bool Guesser::closer(std::string_view mistyped, std::string_view name, std::size_t& distance) {
    --_budget;
    const std::size_t longer = std::max(mistyped.size(), name.size());
    const std::size_t shorter = std::min(mistyped.size(), name.size());
    if (longer > kComparedBytes || longer - shorter >= distance) return false;
    const std::size_t found = editDistance(mistyped, name);
    if (found >= distance || found >= longer) return false;
    distance = found;
    return true;
}

}  // namespace qor::interchange
