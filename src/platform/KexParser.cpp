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

ValueKind valueKind(AmountKind kind) {
    if (kind == AmountKind::Integer) return ValueKind::Integer;
    return kind == AmountKind::Moment ? ValueKind::Moment : ValueKind::NegativeLength;
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
        const Span keyword = word();
        makeRoom(_document.elements);
        _document.beginElement(keyword);
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
        const Span name = word();
        makeRoom(_document.keys);
        if (const Key* const same = _document.add(_text, name)) return keyTwice(begin, *same);
        separators();
        if (*_at != kColon) return true;
        ++_at;
        separators();
        return parseValue(name, _document.keys.back().value);
    }

    // value = string | word | integer | time | length
    bool parseValue(Span key, Value& value) {
        if (is(*_at, kDigit | kSign)) return parseAmount(value);
        if (*_at == kQuote) return parseString(value);
        if (is(*_at, kLower)) return parseWord(key, value);
        return noValue(key);
    }

    bool parseString(Value& value) {
        const char* const begin = _at + 1;
        const FoundString found = findString(begin, _end);
        if (found.end == nullptr) return fail(_at, "the string that begins here is not closed");
        value = Value::ofSpan(ValueKind::String, span(begin, found.end));
        if (found.escaped) {
            const std::size_t at = _document.unescaped.size();
            appendUnescaped(_document.unescaped, {begin, found.end});
            const std::size_t length = _document.unescaped.size() - at;
            value = Value::ofSpan(ValueKind::Unescaped,
                                  {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(length)});
        }
        _at = found.end + 1;
        separators();
        return true;
    }

    // A bare word before a colon is the next key: the value in front of it was forgotten.
    bool parseWord(Span key, Value& value) {
        const char* const begin = _at;
        value = Value::ofSpan(ValueKind::Word, word());
        separators();
        return *_at != kColon || fail(begin, missingValue(key) + "; " + named(text(value.span())) + " is the next key");
    }

    bool parseAmount(Value& value) {
        const Amount amount = readAmount(_at);
        if (amount.kind == AmountKind::Bad)
            return fail(_at, named({_at, skip(_at + 1, kNumber)}) + ": " + complaintOf(amount));
        value = Value::ofNumber(valueKind(amount.kind), amount.number);
        separators();
        return true;
    }

    // Expects the rest of the text to be like what was parsed, but commits no more than twice the text's size to that.
    template <class Record>
    void makeRoom(std::vector<Record>& records) {
        if (records.size() < records.capacity()) return;
        const auto parsed = static_cast<double>(_at - _begin);
        const auto expected = static_cast<double>(records.size()) * static_cast<double>(_text.size()) / parsed * 1.05;
        const std::size_t most = _text.size() * 2 / sizeof(Record);
        records.reserve(std::max(records.size() * 2, std::min(static_cast<std::size_t>(expected), most)));
    }

    Span word() {
        const char* const begin = _at;
        _at = skip(_at, kWord);
        return span(begin, _at);
    }

    // separators = { white space | comment }
    void separators() {
        for (;;) {
            _at = skip(_at, kSpace);
            if (*_at != kCommentMark) return;
            while (!is(*_at, kComment)) ++_at;
        }
    }

    bool keyTwice(const char* at, const Key& same) {
        const QorKexPosition first = positionOf(_text, same.name.at);
        return fail(at, "the element " + named(text(_document.elements.back().name)) + " already has the key " +
                            named(text(same.name)) + ", in line " + std::to_string(first.line) + ", column " +
                            std::to_string(first.column));
    }

    bool noValue(Span key) {
        if (_at == _end) return fail(_at, missingValue(key) + "; the text ends here");
        if (!is(*_at, kUpper)) return unexpected();
        const char* const begin = _at;
        return fail(begin, missingValue(key) + "; " + named(text(word())) +
                               " begins an element (a word with an upper-case letter in front is quoted as a value)");
    }

    std::string missingValue(Span key) const {
        return "the value behind the colon of " + named(text(key)) + " is missing";
    }

    bool unexpected() {
        const char* const at = _at;
        if (*at == kQuote) return fail(at, "a string stands only behind a keyword or behind the colon of a key");
        if (*at == kColon) return fail(at, "a colon stands only behind a key that has no value yet");
        if (is(*at, kDigit | kSign)) return fail(at, "a number stands only behind the colon of a key");
        if (is(*at, kLower)) {
            return fail(at, "the key " + named(text(word())) +
                                " stands before any element, which begins with an upper-case letter");
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

    [[nodiscard]] Span span(const char* begin, const char* end) const {
        return {static_cast<std::uint32_t>(begin - _begin), static_cast<std::uint32_t>(end - begin)};
    }
    [[nodiscard]] std::string_view text(Span span) const { return Document::viewOf(_text, span); }

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
