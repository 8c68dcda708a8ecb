// SPDX-License-Identifier: Apache-2.0
#include "modeltools/EscapedText.h"

namespace qor::modeltools {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr char kHex[] = "0123456789abcdef";

struct Form {
    unsigned char first;  // bits that tell the form
    unsigned char mask;
    std::size_t length;
    unsigned lowest;  // what shorter forms can say must not be said in this one
};
constexpr Form kForms[] = {{0xC0, 0xE0, 2, 0x80}, {0xE0, 0xF0, 3, 0x800}, {0xF0, 0xF8, 4, 0x10000}};

/// Whether a document may hold the character: no half of a pair, nothing beyond Unicode, no U+FFFE and U+FFFF.
bool isAllowed(unsigned code) {
    return code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF) && code != 0xFFFE && code != 0xFFFF;
}

/// Bytes of the character that the text begins with, of several bytes; 0 when there is none.
std::size_t lengthOfCharacter(std::string_view text) {
    const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    for (const Form& form : kForms) {
        if ((byte(0) & form.mask) != form.first) continue;
        if (text.size() < form.length) return 0;
        unsigned code = byte(0) & static_cast<unsigned char>(~form.mask);
        for (std::size_t at = 1; at < form.length; ++at) {
            if ((byte(at) & 0xC0U) != 0x80U) return 0;
            code = code << 6U | (byte(at) & 0x3FU);
        }
        return code >= form.lowest && isAllowed(code) ? form.length : 0;
    }
    return 0;
}

/// Calls `plain(character)` for each byte of ASCII, `other(text)` for each further character or its replacement.
template <class Plain, class Other>
void eachCharacter(std::string_view text, Plain plain, Other other) {
    while (!text.empty()) {
        std::size_t length = 1;
        if (static_cast<unsigned char>(text.front()) < 0x80) {
            plain(text.front());
        } else {
            const std::size_t whole = lengthOfCharacter(text);
            other(whole == 0 ? kReplacement : text.substr(0, whole));
            length = whole == 0 ? 1 : whole;
        }
        text.remove_prefix(length);
    }
}

}  // namespace

void appendMarkup(std::string& document, std::string_view text) {
    const auto plain = [&document](char character) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '&')
            document += "&amp;";
        else if (character == '<')
            document += "&lt;";
        else if (character == '>')
            document += "&gt;";
        else if (character == '"')
            document += "&quot;";
        else if (character == '\t' || character == '\n' || character == '\r')
            document.append("&#").append(std::to_string(code)).append(";");
        else if (code < 0x20)
            document += kReplacement;
        else
            document += character;
    };
    eachCharacter(text, plain, [&document](std::string_view character) { document += character; });
}

void appendJson(std::string& document, std::string_view text) {
    const auto plain = [&document](char character) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\')
            document.append(1, '\\').append(1, character);
        else if (character == '\n')
            document += "\\n";
        else if (code < 0x20 || code == 0x7F)
            document.append("\\u00").append(1, kHex[code >> 4U]).append(1, kHex[code & 15U]);
        else
            document += character;
    };
    document += '"';
    eachCharacter(text, plain, [&document](std::string_view character) { document += character; });
    document += '"';
}

std::size_t characters(std::string_view text) {
    std::size_t count = 0;
    eachCharacter(
        text, [&count](char) { ++count; }, [&count](std::string_view) { ++count; });
    return count;
}

}  // namespace qor::modeltools
