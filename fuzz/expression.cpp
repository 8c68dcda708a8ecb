// SPDX-License-Identifier: Apache-2.0
// Any bytes as an expression. A fault stands inside the text; what parses is worked out to a value within bounds or to
// a fault inside the text, and twice to the same.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "embedded/QorExpression.h"
#include "embedded/expressions/ExpressionMachine.h"
#include "embedded/expressions/ExpressionParser.h"

namespace {

using namespace qor::embedded;

void demand(bool condition) {
    if (!condition) std::abort();
}

// An attribute's value depends on its name alone.
class Attributes final : public ExpressionContext {
public:
    std::variant<ExpressionValue, ExpressionFault> attribute(std::string_view name) override {
        switch (name.front()) {
            case 'f':
                return ExpressionFault{0, "unknown"};
            case 'n':
                return ExpressionValue(static_cast<double>(name.size()));
            case 'e':
                return ExpressionValue();
            default:
                return ExpressionValue::borrowed("00:001:02:03:04");
        }
    }
};

// The result, or the fault with its place.
std::string worth(std::string_view text, const ExpressionCode& code) {
    Attributes attributes;
    auto outcome = runExpression(code, attributes);
    if (const auto* fault = std::get_if<ExpressionFault>(&outcome)) {
        demand(fault->offset <= text.size() && !fault->text.empty());
        return "!" + std::to_string(fault->offset) + fault->text;
    }
    std::string result = std::get<ExpressionValue>(std::move(outcome)).intoText();
    demand(result.size() <= kLongestExpressionResult);
    return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto parsed = parseExpression(text);
    const auto shown = Qor_ExpressionFault(text);
    if (const auto* fault = std::get_if<ExpressionFault>(&parsed)) {
        demand(fault->offset <= size && !fault->text.empty());
        demand(shown.has_value() && shown->text == fault->text && Qor_ExpressionNames(text).empty());
        return 0;
    }
    demand(!shown.has_value());
    const auto& code = std::get<ExpressionCode>(parsed);
    demand(worth(text, code) == worth(text, code));
    return 0;
}
