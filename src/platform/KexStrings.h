// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>

// Strings of keyword texts. Between its double quotes every byte stands for itself; only the double quote is escaped,
// by doubling it. Writing and reading are inverse for every sequence of bytes.
namespace qor::platform::kex {

/// The text in its quoted form.
[[nodiscard]] std::string quoted(std::string_view text);

/// A string as it was found in a text that begins behind the opening quote.
struct FoundString {
    const char* end = nullptr;  ///< the closing quote; null when there is none
    bool escaped = false;       ///< holds doubled quotes
};
[[nodiscard]] FoundString findString(const char* begin, const char* textEnd);

/// Appends what the text between two quotes stands for.
void appendUnescaped(std::string& out, std::string_view body);

}  // namespace qor::platform::kex
