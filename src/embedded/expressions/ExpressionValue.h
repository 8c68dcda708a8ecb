// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace qor::embedded {

// What an expression works with: a number, a text, or nothing, as the value of an attribute that has none.
class ExpressionValue {
public:
    ExpressionValue() = default;
    explicit ExpressionValue(double number) : _kind(Kind::Number), _number(number) {}
    explicit ExpressionValue(std::string text) : _kind(Kind::Text), _owned(std::move(text)) {}
    // A text that stands elsewhere and outlives the value.
    static ExpressionValue borrowed(std::string_view text) {
        ExpressionValue value;
        value._kind = Kind::Borrowed;
        value._borrowed = text;
        return value;
    }

    [[nodiscard]] bool isNothing() const { return _kind == Kind::Nothing; }
    [[nodiscard]] bool isNumber() const { return _kind == Kind::Number; }
    [[nodiscard]] bool isText() const { return _kind == Kind::Text || _kind == Kind::Borrowed; }
    // 0 for nothing; must be no text.
    [[nodiscard]] double number() const { return _number; }
    // Must be no number; empty for nothing.
    [[nodiscard]] std::string_view text() const { return _kind == Kind::Text ? std::string_view(_owned) : _borrowed; }
    // The value as text, to be added to.
    [[nodiscard]] std::string intoText() &&;

private:
    enum class Kind { Nothing, Number, Text, Borrowed };
    Kind _kind = Kind::Nothing;
    double _number = 0;
    std::string_view _borrowed;
    std::string _owned;
};

// A whole number without point and exponent as long as it is exact, so that attributes of whole numbers take it; the
// shortest text that reads back as the same number otherwise.
[[nodiscard]] std::string expressionNumberText(double number);

// A duration "YY:DDD:HH:MM:SS" in seconds, with years of 365 days, and back; nothing when there is no such duration.
[[nodiscard]] std::optional<double> secondsOfDuration(std::string_view text);
[[nodiscard]] std::optional<std::string> durationOfSeconds(double seconds);

}  // namespace qor::embedded
