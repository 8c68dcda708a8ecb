// SPDX-License-Identifier: Apache-2.0
#include "interchange/YamlText.h"

#include <algorithm>
#include <array>

#include "interchange/Format.h"
#include "interchange/SourceText.h"

namespace qor::interchange {
namespace {

constexpr std::size_t kMaxOneLine = kMaxStretch / 8;  // an escape takes at most six bytes
constexpr std::size_t kMaxBlock = kMaxStretch - 4096;
constexpr std::string_view kDigits = "0123456789ABCDEF";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isOfLongCharacter(char c) { return static_cast<unsigned char>(c) >= 0x80; }

// Words that other readers of YAML take for something else than a text.
bool isTakenWord(std::string_view text) {
    constexpr std::array<std::string_view, 9> kWords = {"y", "n", "yes", "no", "true", "false", "on", "off", "null"};
    constexpr std::size_t kLongest = 5;
    if (text.size() > kLongest) return false;
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return std::find(kWords.begin(), kWords.end(), lower) != kWords.end();
}

bool isPlain(std::string_view text) {
    if (text.empty() || !(isLetter(text.front()) || isOfLongCharacter(text.front())) || text.back() == ' ')
        return false;
    const auto isHarmless = [](char c) {
        return isLetter(c) || isDigit(c) || isOfLongCharacter(c) ||
               std::string_view(" _-./()+%=").find(c) != std::string_view::npos;
    };
    return std::all_of(text.begin(), text.end(), isHarmless) && !holdsSpecialCharacter(text) && !isTakenWord(text);
}

void appendEscape(std::string& out, char32_t c) {
    const auto hex = [&](int digits) {
        for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) out += kDigits[(c >> shift) & 0xF];
    };
    out += '\\';
    switch (c) {
        case '"':
        case '\\':
            out += static_cast<char>(c);
            return;
        case '\n':
            out += 'n';
            return;
        case '\r':
            out += 'r';
            return;
        case '\t':
            out += 't';
            return;
        default:
            break;
    }
    out += c <= 0xFF ? 'x' : 'u';
    hex(c <= 0xFF ? 2 : 4);
}

}  // namespace

bool canBeWritten(std::string_view text) {
    if (text.size() > kMaxOneLine && (!canBeBlock(text) || text.size() > kMaxBlock)) return false;
    for (std::size_t offset = 0; offset < text.size();) {
        const Character c = characterAt(text, offset);
        if (c.length == 0 || c.value == 0) return false;
        offset += c.length;
    }
    return true;
}

void appendScalar(std::string& out, std::string_view text) {
    if (isPlain(text)) {
        out += text;
        return;
    }
    out += '"';
    for (std::size_t offset = 0; offset < text.size();) {
        const Character c = characterAt(text, offset);
        if (c.value == '"' || c.value == '\\' || c.value == '\n' || c.value == '\t' || isSpecialCharacter(c.value))
            appendEscape(out, c.value);
        else
            out += text.substr(offset, c.length);
        offset += std::max<std::size_t>(c.length, 1);
    }
    out += '"';
}

bool isBetterAsBlock(std::string_view text) {
    return (text.size() > kMaxOneLine || text.find('\n') != std::string_view::npos) && canBeBlock(text);
}

bool canBeBlock(std::string_view text) {
    // A block of blank lines only would not show its indentation.
    return text.find_first_not_of(" \n") != std::string_view::npos && !holdsSpecialCharacter(text);
}

void appendBlock(std::string& out, std::string_view text, std::size_t indent) {
    out += '|';
    // The indentation is told where the first line does not show it.
    if (text.front() == ' ' || text.front() == '\n' || text.front() == '\t') out += '2';
    if (text.back() != '\n')
        out += '-';
    else if (text.ends_with("\n\n"))
        out += '+';
    out += '\n';
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end != 0) out.append(indent, ' ');
        out += text.substr(0, end);
        out += '\n';
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

}  // namespace qor::interchange
