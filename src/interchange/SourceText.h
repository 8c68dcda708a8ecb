// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "interchange/Findings.h"
#include "interchange/Tree.h"

namespace qor::interchange {

/// A character of a text and its length in bytes; length 0 for what is not UTF-8.
struct Character {
    char32_t value = 0;
    std::size_t length = 0;
};
[[nodiscard]] Character characterAt(std::string_view text, std::size_t offset);

/// What can stand in a YAML file only as an escape: control characters, carriage returns, and what YAML takes for a
/// line end and editors do not. Tabs and line feeds are none of these.
[[nodiscard]] bool isSpecialCharacter(char32_t c);
[[nodiscard]] bool holdsSpecialCharacter(std::string_view text);

enum class TextForm { Yaml, Json };

/// What a text may hold before anything is made of it: UTF-8 throughout, no zero bytes; in YAML also nothing that its
/// readers take for a line end and editors do not, no control characters, no endless lines. The first fault is
/// reported.
[[nodiscard]] bool isReadableText(std::string_view text, TextForm form, Findings& findings);

/// What ends a stretch that must not become longer than kMaxStretch: the line feed of a line of YAML, the quotation
/// mark of a text in JSON.
[[nodiscard]] constexpr char stretchEnd(TextForm form) { return form == TextForm::Yaml ? '\n' : '"'; }

/// The byte order mark of UTF-8 taken away.
[[nodiscard]] std::string_view withoutByteOrderMark(std::string_view text);

/// Lines and columns of ascending offsets into a text, in one pass.
class LineCursor {
public:
    explicit LineCursor(std::string_view text) : _text(text) {}
    [[nodiscard]] Mark at(std::size_t offset);

private:
    std::string_view _text;
    std::size_t _lineStart = 0;
    std::size_t _searched = 0;  // no line feed between the line's start and here
    std::uint32_t _line = 1;
};

/// Offsets of lines and columns counted in characters, in one pass over a text when they mostly ascend.
class CharacterCursor {
public:
    explicit CharacterCursor(std::string_view text) : _text(text) {}
    /// Both from 0.
    [[nodiscard]] std::size_t offsetOf(std::size_t line, std::size_t character);
    /// The mark of the place that was last asked for.
    [[nodiscard]] Mark mark() const;

private:
    std::string_view _text;
    std::size_t _lineStart = 0;
    std::size_t _line = 0;
    std::size_t _character = 0;
    std::size_t _offset = 0;
};

}  // namespace qor::interchange
