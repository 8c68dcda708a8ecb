// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorExport.h"

/// A place in the text of an expression; line and column count from 1, columns in bytes.
struct QorExpressionPlace {
    std::uint32_t line = 1;
    std::uint32_t column = 1;
};

/// What is wrong with the text of an expression.
struct QorExpressionFault {
    QorExpressionPlace place;
    std::string text;
};

/// An attribute that an expression names.
struct QorExpressionName {
    QorExpressionPlace place;
    std::string name;
};

/// The first fault of an expression's text (docs/expressions.md); nothing when it is well formed. The empty text is a
/// fault. Whether the attributes that it names exist is not asked. O(length); a lack of memory is a fault.
[[nodiscard]] QOR_API std::optional<QorExpressionFault> Qor_ExpressionFault(std::string_view text);

/// The attributes that a well-formed expression names, in the order of the text; none for any other text.
[[nodiscard]] QOR_API std::vector<QorExpressionName> Qor_ExpressionNames(std::string_view text);
