// SPDX-License-Identifier: Apache-2.0
#include "embedded/QorExpression.h"

#include "embedded/expressions/ExpressionParser.h"
#include "platform/QorGuard.h"

using namespace qor::embedded;

namespace {

// For ascending offsets, in one pass over the text.
class Places {
public:
    explicit Places(std::string_view text) : _text(text) {}
    QorExpressionPlace at(std::size_t offset) {
        for (; _next < offset && _next < _text.size(); ++_next) {
            ++_place.column;
            if (_text[_next] == '\n') _place = {_place.line + 1, 1};
        }
        return _place;
    }

private:
    std::string_view _text;
    std::size_t _next = 0;
    QorExpressionPlace _place;
};

}  // namespace

std::optional<QorExpressionFault> Qor_ExpressionFault(std::string_view text) {
    return Qor_Guarded("embedded", std::optional(QorExpressionFault{{}, {}}),
                       [&]() -> std::optional<QorExpressionFault> {
                           auto parsed = parseExpression(text);
                           auto* const fault = std::get_if<ExpressionFault>(&parsed);
                           if (fault == nullptr) return std::nullopt;
                           return QorExpressionFault{Places(text).at(fault->offset), std::move(fault->text)};
                       });
}

std::vector<QorExpressionName> Qor_ExpressionNames(std::string_view text) {
    return Qor_Guarded("embedded", std::vector<QorExpressionName>(), [&] {
        std::vector<QorExpressionName> names;
        auto parsed = parseExpression(text);
        auto* const code = std::get_if<ExpressionCode>(&parsed);
        if (code == nullptr) return names;
        Places places(text);
        for (const ExpressionInstruction& instruction : code->instructions)
            if (instruction.step == ExpressionStep::PushAttribute)
                names.push_back({places.at(instruction.offset), code->texts[instruction.operand]});
        return names;
    });
}
