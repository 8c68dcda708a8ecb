// SPDX-License-Identifier: Apache-2.0
#include "embedded/expressions/ExpressionTokens.h"

#include <charconv>
#include <cmath>

namespace qor::embedded {

namespace {

using Kind = ExpressionTokenKind;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

ExpressionToken bad(std::size_t offset, std::string text) {
    ExpressionToken token;
    token.kind = Kind::Bad;
    token.offset = offset;
    token.text = std::move(text);
    return token;
}

constexpr std::string_view kLongSigns[] = {"<>", "<=", ">="};
constexpr std::string_view kShortSigns = "+-*/&=<>(),";

}  // namespace

ExpressionToken ExpressionTokens::next() {
    while (_at < _text.size() && isBlank(_text[_at])) ++_at;
    ExpressionToken token;
    token.offset = _at;
    if (_at == _text.size()) return token;

    const char c = _text[_at];
    if (isDigit(c)) return number(_at);
    if (c == '"') return enclosed(_at, '"', Kind::Text, "a text is not closed by a double quote");
    if (c == '[') return enclosed(_at, ']', Kind::Attribute, "an attribute's name is not closed by \"]\"");
    if (isLetter(c)) {
        std::size_t end = _at;
        while (end < _text.size() && isLetter(_text[end])) ++end;
        token.kind = Kind::Word;
        token.written = _text.substr(_at, end - _at);
    } else {
        token.kind = Kind::Sign;
        for (const std::string_view sign : kLongSigns)
            if (_text.substr(_at, sign.size()) == sign) token.written = sign;
        if (token.written.empty() && kShortSigns.find(c) != std::string_view::npos)
            token.written = _text.substr(_at, 1);
        if (token.written.empty()) return bad(_at, "this character has no meaning here");
    }
    _at += token.written.size();
    return token;
}

// from_chars knows no locale.
ExpressionToken ExpressionTokens::number(std::size_t from) {
    ExpressionToken token;
    token.kind = Kind::Number;
    token.offset = from;
    const char* const begin = _text.data() + from;
    const auto [end, error] = std::from_chars(begin, _text.data() + _text.size(), token.number);
    if (error != std::errc() || !std::isfinite(token.number)) return bad(from, "this number is too great or too small");
    _at = from + static_cast<std::size_t>(end - begin);
    if (_at < _text.size() && (isLetter(_text[_at]) || _text[_at] == '.')) return bad(_at, "a number goes on wrongly");
    return token;
}

// The closing mark stands doubled where it is meant itself.
ExpressionToken ExpressionTokens::enclosed(std::size_t from, char end, ExpressionTokenKind kind, const char* unclosed) {
    ExpressionToken token;
    token.kind = kind;
    token.offset = from;
    for (_at = from + 1; _at < _text.size(); ++_at) {
        if (_text[_at] == end) {
            if (_at + 1 == _text.size() || _text[_at + 1] != end) {
                ++_at;
                if (kind == Kind::Attribute && token.text.empty()) return bad(from, "an attribute's name is missing");
                return token;
            }
            ++_at;
        }
        token.text += _text[_at];
    }
    return bad(from, unclosed);
}

}  // namespace qor::embedded
