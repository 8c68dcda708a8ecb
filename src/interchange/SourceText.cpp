// SPDX-License-Identifier: Apache-2.0
#include "interchange/SourceText.h"

#include <array>
#include <cstring>
#include <string>

#include "interchange/Format.h"
#include "interchange/Wording.h"

namespace qor::interchange {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

unsigned char byteAt(std::string_view text, std::size_t offset) {
    return offset < text.size() ? static_cast<unsigned char>(text[offset]) : 0;
}

bool continues(std::string_view text, std::size_t offset) { return (byteAt(text, offset) & 0xC0) == 0x80; }

std::string codePoint(char32_t value) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "U+";
    for (int shift = value > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) text += kDigits[(value >> shift) & 0xF];
    return text;
}

bool isLineEndForYamlOnly(char32_t c) { return c == 0x85 || c == 0x2028 || c == 0x2029; }

std::string faultAt(std::string_view text, std::size_t offset, const Character& c, TextForm form) {
    if (c.length == 0) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        const unsigned char byte = byteAt(text, offset);
        const char digits[] = {kDigits[byte >> 4], kDigits[byte & 15]};
        return concat({"the byte 0x", {digits, 2}, " is not UTF-8; the file must be saved in UTF-8"});
    }
    if (form == TextForm::Json) return {};
    if (isLineEndForYamlOnly(c.value))
        return concat({"the line separator ", codePoint(c.value),
                       " can only stand as an escape in double quotes (\"\\N\", \"\\L\" or \"\\P\")"});
    if (c.value == '\r' && byteAt(text, offset + 1) != '\n')
        return "a carriage return without a line feed can only stand as \"\\r\" in double quotes";
    if (isSpecialCharacter(c.value) && c.value != '\r')
        return concat({"the character ", codePoint(c.value), " can only stand as an escape in double quotes"});
    return {};
}

// Where a stretch begins that does not end in time; npos when there is none.
std::size_t endlessStretch(std::string_view text, TextForm form) {
    std::size_t begin = 0;
    while (text.size() - begin > kMaxStretch) {
        const std::size_t end = text.find(stretchEnd(form), begin);
        if (end == std::string_view::npos || end - begin > kMaxStretch) return begin;
        begin = end + 1;
    }
    return std::string_view::npos;
}

}  // namespace

Character characterAt(std::string_view text, std::size_t offset) {
    const unsigned char lead = byteAt(text, offset);
    if (lead < 0x80) return {lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4) return {};
    char32_t value = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!continues(text, offset + i)) return {};
        value = (value << 6) | (byteAt(text, offset + i) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    if (value < kSmallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return {};
    return {value, length};
}

bool isSpecialCharacter(char32_t c) {
    return (c < 0x20 && c != '\t' && c != '\n') || (c >= 0x7F && c < 0xA0) || isLineEndForYamlOnly(c) || c == 0xFEFF ||
           c == 0xFFFE || c == 0xFFFF;
}

bool holdsSpecialCharacter(std::string_view text) {
    for (std::size_t offset = 0; offset < text.size();) {
        const Character c = characterAt(text, offset);
        if (c.length == 0 || isSpecialCharacter(c.value)) return true;
        offset += c.length;
    }
    return false;
}

bool isReadableText(std::string_view text, TextForm form, Findings& findings) {
    // First, since it tells best what is wrong with a file that is no text at all.
    if (const std::size_t zero = text.find('\0'); zero != std::string_view::npos) {
        findings.error(LineCursor(text).at(zero), "a zero byte: this is no text file");
        return false;
    }
    for (std::size_t offset = 0; offset < text.size();) {
        const unsigned char byte = byteAt(text, offset);
        if (byte >= 0x20 && byte < 0x7F) {
            ++offset;
            continue;
        }
        const Character c = characterAt(text, offset);
        if (std::string fault = faultAt(text, offset, c, form); !fault.empty()) {
            findings.error(LineCursor(text).at(offset), std::move(fault));
            return false;
        }
        offset += c.length;
    }
    const std::size_t stretch = endlessStretch(text, form);
    if (stretch == std::string_view::npos) return true;
    findings.error(LineCursor(text).at(stretch),
                   form == TextForm::Yaml ? "a line of more than 16 MiB" : "a text of more than 16 MiB");
    return false;
}

std::string_view withoutByteOrderMark(std::string_view text) {
    return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

Mark LineCursor::at(std::size_t offset) {
    while (const void* const feed = std::memchr(_text.data() + _searched, '\n', offset - _searched)) {
        _lineStart = _searched = static_cast<std::size_t>(static_cast<const char*>(feed) - _text.data()) + 1;
        ++_line;
    }
    _searched = offset;
    return {_line, static_cast<std::uint32_t>(offset - _lineStart + 1)};
}

std::size_t CharacterCursor::offsetOf(std::size_t line, std::size_t character) {
    while (line < _line) {
        // The line before ends with the line feed ahead of this one.
        const std::size_t feed = _lineStart < 2 ? std::string_view::npos : _text.rfind('\n', _lineStart - 2);
        _lineStart = _offset = feed == std::string_view::npos ? 0 : feed + 1;
        _character = 0;
        --_line;
    }
    while (_line < line) {
        const std::size_t end = _text.find('\n', _offset);
        if (end == std::string_view::npos) break;
        _lineStart = _offset = end + 1;
        _character = 0;
        ++_line;
    }
    if (character < _character) {
        _offset = _lineStart;
        _character = 0;
    }
    for (; _character < character && _offset < _text.size(); ++_character) do
            ++_offset;
        while (continues(_text, _offset));
    return _offset;
}

Mark CharacterCursor::mark() const {
    return {static_cast<std::uint32_t>(_line + 1), static_cast<std::uint32_t>(_offset - _lineStart + 1)};
}

}  // namespace qor::interchange
