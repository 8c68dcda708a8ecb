// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>
#include <variant>

#include "embedded/expressions/ExpressionCode.h"
#include "embedded/expressions/ExpressionValue.h"

namespace qor::embedded {

// Where an expression finds the attributes that it names.
class ExpressionContext {
public:
    virtual ~ExpressionContext();
    // The value, or why there is none (the fault's offset counts for nothing). A borrowed text must hold until the
    // expression is worked out.
    virtual std::variant<ExpressionValue, ExpressionFault> attribute(std::string_view name) = 0;
};

// The longest text that an expression makes, so that attributes that double each other's texts end somewhere.
inline constexpr std::size_t kLongestExpressionResult = std::size_t{1} << 20;

// Works the expression out in time of its length and of the texts it handles. The result may refer to texts of the
// context.
[[nodiscard]] std::variant<ExpressionValue, ExpressionFault> runExpression(const ExpressionCode& code,
                                                                           ExpressionContext& context);

}  // namespace qor::embedded
