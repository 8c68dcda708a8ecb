// SPDX-License-Identifier: Apache-2.0
#include "platform/QorMessage.h"

#include <string>
#include <vector>

namespace {

struct Open {
    const QorPlaceholder* placeholder;
    bool filled = false;
};

/// The longest placeholder that begins the text; null when none does.
Open* longestAt(std::string_view text, std::vector<Open>& placeholders) {
    Open* longest = nullptr;
    for (auto& open : placeholders) {
        const auto name = open.placeholder->name;
        if (!name.empty() && text.starts_with(name) &&
            (longest == nullptr || name.size() > longest->placeholder->name.size()))
            longest = &open;
    }
    return longest;
}

}  // namespace

SV::String Qor_FillPlaceholders(std::string_view pattern, std::initializer_list<QorPlaceholder> placeholders) {
    std::vector<Open> names;
    for (const auto& placeholder : placeholders) names.push_back({&placeholder});

    std::string filled;
    std::size_t at = 0;
    while (at < pattern.size()) {
        Open* found = longestAt(pattern.substr(at), names);
        if (found == nullptr) {
            filled += pattern[at++];
            continue;
        }
        filled += found->filled ? found->placeholder->name : found->placeholder->text;
        found->filled = true;
        at += found->placeholder->name.size();
    }
    return filled;
}

SV::String Qor_Message(std::uint16_t number, std::initializer_list<QorPlaceholder> placeholders) {
    return Qor_FillPlaceholders(SV::String(QorTextResourceType + number).view(), placeholders);
}
