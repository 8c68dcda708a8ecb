// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <string_view>

// What a byte may be part of in a keyword text outside strings and comments. Bytes without a class, such as zero and
// all that are not ASCII, have no meaning there; so the zero byte behind a text ends every loop over a class.
namespace qor::platform::kex {

enum Class : std::uint8_t {
    kUpper = 1,      // begins a keyword
    kLower = 2,      // begins a key or a bare word
    kDigit = 4,      // begins a number
    kSign = 8,       // may stand before a number's digits
    kJoint = 16,     // joins words: '-' and '_'
    kGap = 32,       // separates, or begins a comment
    kFraction = 64,  // inside times and lengths: ':' and '.'
    kComment = 128,  // ends a comment: line ends and the zero byte
};

inline constexpr std::uint8_t kWord = kUpper | kLower | kDigit | kJoint;
inline constexpr std::uint8_t kNumber = kWord | kFraction;

inline constexpr char kQuote = '"';
inline constexpr char kColon = ':';
inline constexpr char kCommentMark = '#';

inline constexpr std::array<std::uint8_t, 256> kClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    const auto mark = [&classes](std::string_view characters, Class what) {
        for (const char c : characters) classes[static_cast<unsigned char>(c)] |= what;
    };
    mark("ABCDEFGHIJKLMNOPQRSTUVWXYZ", kUpper);
    mark("abcdefghijklmnopqrstuvwxyz", kLower);
    mark("0123456789", kDigit);
    mark("+-", kSign);
    mark("-_", kJoint);
    mark(" \t\n\v\f\r#", kGap);
    mark(":.", kFraction);
    mark(std::string_view("\n\r\0", 3), kComment);
    return classes;
}();

constexpr bool is(char c, std::uint8_t classes) { return (kClasses[static_cast<unsigned char>(c)] & classes) != 0; }

/// The first byte from `at` on that has none of the classes.
inline const char* skip(const char* at, std::uint8_t classes) {
    while (is(*at, classes)) ++at;
    return at;
}

}  // namespace qor::platform::kex
