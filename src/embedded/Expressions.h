// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <variant>

#include "embedded/Repository.h"
#include "embedded/expressions/ExpressionMachine.h"

namespace qor::embedded {

// How many expressions may stand behind one another, each as an attribute of the one before.
inline constexpr std::size_t kDeepestExpressionChain = 64;

// Works out the expression that the attribute of an object, relation or record row holds: its own one, else the
// attribute's default. Expressions that it names as attributes are worked out once each.
[[nodiscard]] std::variant<std::string, ExpressionFault> expressionResult(const Repository& repository,
                                                                          QorIdentifier instance,
                                                                          const AttributeRow& attribute);

}  // namespace qor::embedded
