// SPDX-License-Identifier: Apache-2.0
#include "platform/KexStrings.h"

#include <algorithm>
#include <cstring>

#include "platform/KexCharacters.h"

namespace qor::platform::kex {

namespace {

// The one escape that there is, for both directions.
constexpr std::string_view kPlain = "\"";
constexpr std::string_view kEscaped = "\"\"";

void appendReplacing(std::string& out, std::string_view text, std::string_view from, std::string_view to) {
    for (std::size_t found; (found = text.find(from)) != text.npos; text.remove_prefix(found + from.size())) {
        out.append(text, 0, found);
        out += to;
    }
    out += text;
}

}  // namespace

std::string quoted(std::string_view text) {
    std::string out;
    out.reserve(text.size() + 2 + static_cast<std::size_t>(std::count(text.begin(), text.end(), kQuote)));
    out += kQuote;
    appendReplacing(out, text, kPlain, kEscaped);
    out += kQuote;
    return out;
}

void appendUnescaped(std::string& out, std::string_view body) { appendReplacing(out, body, kEscaped, kPlain); }

FoundString findString(const char* begin, const char* textEnd) {
    FoundString found;
    for (const char* at = begin;; at = found.end + kEscaped.size()) {
        found.end = static_cast<const char*>(std::memchr(at, kQuote, static_cast<std::size_t>(textEnd - at)));
        if (found.end == nullptr || found.end[1] != kQuote) return found;
        found.escaped = true;
    }
}

}  // namespace qor::platform::kex
