// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <string_view>

namespace qor::cli {

/// The character that a text begins with. `size` is 0 at the text's end and 1, with `valid` false, for a byte that
/// belongs to no character.
struct Utf8Char {
    char32_t code = 0;
    std::size_t size = 0;
    bool valid = false;
};

[[nodiscard]] Utf8Char firstChar(std::string_view text);

/// Control characters, and marks that turn the reading direction or break the line: on a terminal they would make a
/// name look like something that it is not.
[[nodiscard]] bool isHostile(char32_t code);

}  // namespace qor::cli
