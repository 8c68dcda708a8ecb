// SPDX-License-Identifier: Apache-2.0
#include "platform/KexParser.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "platform/KexAmounts.h"
#include "platform/KexCharacters.h"
#include "platform/KexPositions.h"
#include "platform/KexStrings.h"

namespace qor::platform::kex {

namespace {

constexpr std::size_t kMostQuotedOfName = 60;

std::string named(std::string_view name) {
    std::string out = "\"";
    out += name.substr(0, kMostQuotedOfName);
    return out += name.size() > kMostQuotedOfName ? "...\"" : "\"";
}

std::string hexadecimal(char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {'0', 'x', digits[value >> 4], digits[value & 15]};
}

/// One function per production of the grammar; each begins at its first byte, ends at the next token, and is false
/// after an error.
class Parser {
public:
    Parser(const std::string& text, Document& document)
        : _text(text), _begin(text.c_str()), _end(_begin + text.size()), _at(_begin), _document(document) {}

    std::optional<SyntaxError> parse() {
        if (parseText()) return std::nullopt;
        return std::move(_error);
    }

private:
    // text = { element }
    bool parseText() {
        if (_text.size() >= std::numeric_limits<std::uint32_t>::max()) return fail(_begin, "the text is too long");
        _document.reserveFor(_text.size());
        separators();
        while (is(*_at, kUpper))
            if (!parseElement()) return false;
        return _at == _end || unexpected();
    }

    // element = keyword [ string ] { key [ ":" value ] }
    bool parseElement() {
        makeRoomForOne(_document.elements, offset(_at), _text.size());
        _document.beginElement(offset(_at));
        word();
        separators();
        if (*_at == kQuote && !parseString(_document.elements.back().value)) return false;
        if (*_at == kColon)
            return fail(_at, "a keyword takes no colon; its value, a string, stands directly behind it");
        while (is(*_at, kLower))
            if (!parseKey()) return false;
        return true;
    }

    bool parseKey() {
        const char* const begin = _at;
        const std::string_view name = word();
        makeRoomForOne(_document.keys, offset(_at), _text.size());
        if (const Key* const same = _document.add(_text, offset(begin), name)) return keyTwice(begin, *same);
        separators();
        if (*_at != kColon) return true;
        ++_at;
        separators();
        return parseValue(name, _document.keys.back().value);
    }

    // value = string | word | integer | time | length
    bool parseValue(std::string_view key, std::uint32_t& value) {
        if (is(*_at, kDigit | kSign)) return parseAmount(value);
        if (*_at == kQuote) return parseString(value);
        if (is(*_at, kLower)) return parseWord(key, value);
        return noValue(key);
    }

    bool parseString(std::uint32_t& value) {
        const char* const begin = _at + 1;
        const FoundString found = findString(begin, _end);
        if (found.end == nullptr) return fail(_at, "the string that begins here is not closed");
        value = offset(_at);
        _document.noteString(_text, value, {begin, found.end}, found.escaped);
        _at = found.end + 1;
        separators();
        return true;
    }

    // A bare word before a colon is the next key: the value in front of it was forgotten.
    bool parseWord(std::string_view key, std::uint32_t& value) {
        const char* const begin = _at;
        value = offset(begin);
        const std::string_view read = word();
        separators();
        return *_at != kColon || fail(begin, missingValue(key) + "; " + named(read) + " is the next key");
    }

    bool parseAmount(std::uint32_t& value) {
        value = offset(_at);
        const Amount amount = readAmount(_at);
        if (amount.kind == AmountKind::Bad)
            return fail(_at, named({_at, skip(_at + 1, kNumber)}) + ": " + complaintOf(amount));
        separators();
        return true;
    }

    std::string_view word() {
        const char* const begin = _at;
        _at = skip(_at, kWord);
        return {begin, _at};
    }

    // separators = { white space | comment }
    void separators() {
        while (is(*_at, kGap)) {
            if (*_at == kCommentMark)
                while (!is(*_at, kComment)) ++_at;
            else
                ++_at;
        }
    }

    bool keyTwice(const char* at, const Key& same) {
        const QorKexPosition first = positionOf(_text, same.name);
        return fail(at, "the element " + named(Document::wordAt(_text, _document.elements.back().name)) +
                            " already has the key " + named(Document::wordAt(_text, same.name)) + ", in line " +
                            std::to_string(first.line) + ", column " + std::to_string(first.column));
    }

    bool noValue(std::string_view key) {
        if (_at == _end) return fail(_at, missingValue(key) + "; the text ends here");
        if (!is(*_at, kUpper)) return unexpected();
        const char* const begin = _at;
        return fail(begin, missingValue(key) + "; " + named(word()) +
                               " begins an element (a word with an upper-case letter in front is quoted as a value)");
    }

    static std::string missingValue(std::string_view key) {
        return "the value behind the colon of " + named(key) + " is missing";
    }

    bool unexpected() {
        const char* const at = _at;
        if (*at == kQuote) return fail(at, "a string stands only behind a keyword or behind the colon of a key");
        if (*at == kColon) return fail(at, "a colon stands only behind a key that has no value yet");
        if (is(*at, kDigit | kSign)) return fail(at, "a number stands only behind the colon of a key");
        if (is(*at, kLower)) {
            return fail(
                at, "the key " + named(word()) + " stands before any element, which begins with an upper-case letter");
        }
        if (*at == '\0') return fail(at, "a zero byte stands outside a string");
        const std::string what =
            *at > ' ' && *at <= '~' ? "the character " + std::string(1, *at) : "the byte " + hexadecimal(*at);
        return fail(at, what + " has no meaning outside strings and comments");
    }

    bool fail(const char* at, std::string complaint) {
        _error = SyntaxError{static_cast<std::size_t>(at - _begin), std::move(complaint)};
        return false;
    }

    [[nodiscard]] std::uint32_t offset(const char* at) const { return static_cast<std::uint32_t>(at - _begin); }

    const std::string& _text;
    const char* const _begin;
    const char* const _end;
    const char* _at;
    Document& _document;
    std::optional<SyntaxError> _error;
};

}  // namespace

std::optional<SyntaxError> parse(const std::string& text, Document& document) { return Parser(text, document).parse(); }

}  // namespace qor::platform::kex
