// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>
#include <variant>

#include "embedded/expressions/ExpressionCode.h"

namespace qor::embedded {

// The longest expression, in bytes, and how deeply brackets and signs may be nested in it.
inline constexpr std::size_t kLongestExpression = 65535;
inline constexpr unsigned kDeepestExpression = 100;

[[nodiscard]] std::variant<ExpressionCode, ExpressionFault> parseExpression(std::string_view text);

}  // namespace qor::embedded
