// SPDX-License-Identifier: Apache-2.0
#include "embedded/ValueCheck.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "embedded/InterReferenceText.h"
#include "embedded/expressions/ExpressionParser.h"
#include "platform/SvDate.h"

namespace qor::embedded {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Reads a text of a fixed shape: '9' in the shape stands for a digit, everything else for itself.
bool hasShape(std::string_view text, std::string_view shape) {
    return text.size() == shape.size() && std::equal(text.begin(), text.end(), shape.begin(),
                                                     [](char c, char s) { return s == '9' ? isDigit(c) : c == s; });
}

int digits(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    for (const char c : text.substr(at, count)) number = number * 10 + (c - '0');
    return number;
}

bool isTimeOfDay(std::string_view text) {  // HH:MM:SS
    return digits(text, 0, 2) <= 23 && digits(text, 3, 2) <= 59 && digits(text, 6, 2) <= 59;
}

bool isDuration(std::string_view text) {
    return hasShape(text, "99:999:99:99:99") && digits(text, 3, 3) <= 364 && isTimeOfDay(text.substr(7));
}

bool isDate(std::string_view text) {
    return hasShape(text, "9999-99-99") &&
           SV::Date(digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2)).IsValid();
}

bool isDateTime(std::string_view text) {
    return text.size() == 19 && isDate(text.substr(0, 10)) && hasShape(text.substr(10), " 99:99:99") &&
           isTimeOfDay(text.substr(11));
}

// from_chars knows no plus sign, and "+-1" must not pass.
std::string_view withoutPlus(std::string_view text) {
    return text.size() > 1 && text[0] == '+' && text[1] != '-' ? text.substr(1) : text;
}

template <class Number>
std::optional<Number> numberFrom(std::string_view text) {
    text = withoutPlus(text);
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

template <class Number>
std::string numberText(Number number) {
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr};
}

}  // namespace

std::optional<std::int32_t> integerFrom(std::string_view text) { return numberFrom<std::int32_t>(text); }

std::optional<double> floatingFrom(std::string_view text) {
    const std::optional<double> number = numberFrom<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::string textFrom(std::int32_t number) { return numberText(number); }
std::string textFrom(double number) { return numberText(number); }

bool plainValueFits(QorCoreAttributeType type, bool refersToModels, std::string_view text) {
    switch (type) {
        case QorCoreAttributeType::Integer:
            return integerFrom(text).has_value();
        case QorCoreAttributeType::Floating:
            return floatingFrom(text).has_value();
        case QorCoreAttributeType::Time:
            return isDuration(text);
        case QorCoreAttributeType::Date:
            return isDate(text);
        case QorCoreAttributeType::DateTime:
            return isDateTime(text);
        case QorCoreAttributeType::InterReference:
            return parseReferences(text, refersToModels).has_value();
        case QorCoreAttributeType::Expression:
            return std::holds_alternative<ExpressionCode>(parseExpression(text));
        default:
            return true;
    }
}

std::vector<std::string_view> listParts(std::string_view text) {
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(';');
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

}  // namespace qor::embedded
