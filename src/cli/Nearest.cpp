// SPDX-License-Identifier: Apache-2.0
#include "cli/Nearest.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

#include "cli/Text.h"

namespace qor::cli {

namespace {

/// Words from files may be 64 KB long; the comparison below takes time in proportion to the product of the lengths.
constexpr std::size_t kLongestCompared = 100;

char lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = lower(a[i - 1]) == lower(b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            const bool swapped =
                i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) && lower(a[i - 2]) == lower(b[j - 1]);
            if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        std::swap(beforeLast, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

}  // namespace

std::string nearest(std::string_view word, const std::vector<std::string>& candidates) {
    std::string best;
    std::size_t allowed = std::max<std::size_t>(1, word.size() / 3);
    for (const std::string& candidate : candidates) {
        if (std::max(word.size(), candidate.size()) > kLongestCompared) continue;
        const std::size_t wrong = distance(word, candidate);
        if (wrong > allowed || (wrong == allowed && !best.empty())) continue;
        best = candidate;
        allowed = wrong;
    }
    return best;
}

std::string didYouMean(std::string_view word, const std::vector<std::string>& candidates) {
    const std::string name = nearest(word, candidates);
    return name.empty() ? "" : "; did you mean " + printable(name) + "?";
}

}  // namespace qor::cli
