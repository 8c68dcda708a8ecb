// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/expressions/ExpressionCode.h"

namespace qor::embedded {

enum class ExpressionTokenKind : std::uint8_t { End, Number, Text, Attribute, Word, Sign, Bad };

struct ExpressionToken {
    ExpressionTokenKind kind = ExpressionTokenKind::End;
    std::size_t offset = 0;
    std::string_view written;  // of a word or sign
    double number = 0;
    std::string text;  // of a text or attribute, without its marks; of a bad one, what is wrong
};

// The tokens of an expression, one after the other.
class ExpressionTokens {
public:
    explicit ExpressionTokens(std::string_view text) : _text(text) {}
    [[nodiscard]] ExpressionToken next();

private:
    [[nodiscard]] ExpressionToken number(std::size_t from);
    [[nodiscard]] ExpressionToken enclosed(std::size_t from, char end, ExpressionTokenKind kind, const char* unclosed);

    std::string_view _text;
    std::size_t _at = 0;
};

}  // namespace qor::embedded
