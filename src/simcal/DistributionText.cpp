// SPDX-License-Identifier: Apache-2.0
#include "simcal/DistributionText.h"

#include <algorithm>
#include <charconv>

#include "simcal/messages.h"

namespace qor::simcal {
namespace {

SV::String keyword(QorSimCalMessage number) {
    return SV::String(QorTextResourceType + static_cast<unsigned long>(number));
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool areDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), isDigit); }

// The bound at the beginning of the text, which is taken away; empty when there is none.
std::string_view takeBound(std::string_view& text) {
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    std::size_t end = sign;
    while (end < text.size() && isDigit(text[end])) ++end;
    const auto bound = text.substr(0, end == sign ? 0 : end);
    text.remove_prefix(bound.size());
    return bound;
}

bool isBound(std::string_view text) { return !takeBound(text).empty() && text.empty(); }

// Sign and digits without leading zeros; "-0" is 0.
struct WholeNumber {
    bool negative;
    std::string_view digits;
};

WholeNumber wholeNumber(std::string_view bound) {
    const bool minus = bound.starts_with('-');
    if (minus) bound.remove_prefix(1);
    while (bound.starts_with('0')) bound.remove_prefix(1);
    return {minus && !bound.empty(), bound};
}

bool smallerMagnitude(std::string_view a, std::string_view b) {
    return a.size() != b.size() ? a.size() < b.size() : a < b;
}

std::optional<UniformBounds> splitBounds(std::string_view text) {
    const auto semicolon = text.find(';');
    if (semicolon == std::string_view::npos || text.find(';', semicolon + 1) != std::string_view::npos)
        return std::nullopt;
    return UniformBounds{text.substr(0, semicolon), text.substr(semicolon + 1)};
}

bool isPlainDecimal(std::string_view text) {
    const auto point = std::min(text.find('.'), text.size());
    const auto whole = text.substr(0, point);
    const auto fraction = text.substr(std::min(point + 1, text.size()));
    return !(whole.empty() && fraction.empty()) && areDigits(whole) && areDigits(fraction);
}

bool isParameter(std::string_view text) {
    if (!isPlainDecimal(text)) return false;
    const auto value = toDouble(text);
    return value && *value > 0 && *value <= 1;
}

// A calendar can hold a million texts: each part is copied once into its place, those of known size without a call.
template <class... Parts>
std::string joined(const Parts&... parts) {
    std::string text((std::string_view(parts).size() + ...), '\0');
    char* place = text.data();
    const auto put = [&place](std::string_view part) { place = std::copy(part.begin(), part.end(), place); };
    (put(parts), ...);
    return text;
}

std::string withDecimalPoint(std::string_view text) {
    std::string replaced(text);
    if (std::count(replaced.begin(), replaced.end(), ',') == 1) replaced[replaced.find(',')] = '.';
    return replaced;
}

}  // namespace

DistributionKeywords::DistributionKeywords()
    : exponential(keyword(QorSimCalMessage::ExponentialKeyword)), uniform(keyword(QorSimCalMessage::UniformKeyword)) {}

std::string_view trimSpaces(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::optional<std::string_view> textInParentheses(std::string_view text, std::string_view keyword) {
    text = trimSpaces(text);
    if (keyword.empty() || !text.starts_with(keyword)) return std::nullopt;
    text = trimSpaces(text.substr(keyword.size()));
    if (text.size() < 2 || !text.starts_with('(') || !text.ends_with(')')) return std::nullopt;
    return text.substr(1, text.size() - 2);
}

std::optional<UniformBounds> boundsOfLong(std::string_view text, std::string_view keyword) {
    const auto inner = textInParentheses(text, keyword);
    if (!inner) return std::nullopt;
    auto bounds = splitBounds(*inner);
    if (!bounds) return std::nullopt;
    bounds->lower = trimSpaces(bounds->lower);
    bounds->upper = trimSpaces(bounds->upper);
    if (!isBound(bounds->lower) || !isBound(bounds->upper) || !inOrder(*bounds)) return std::nullopt;
    return bounds;
}

std::optional<UniformBounds> boundsOfShort(std::string_view text) {
    if (!text.starts_with('U')) return std::nullopt;
    text.remove_prefix(1);
    UniformBounds bounds;
    bounds.lower = takeBound(text);
    if (bounds.lower.empty() || !text.starts_with(';')) return std::nullopt;
    text.remove_prefix(1);
    bounds.upper = takeBound(text);
    if (bounds.upper.empty() || !text.empty()) return std::nullopt;
    return bounds;
}

bool inOrder(const UniformBounds& bounds) {
    const auto lower = wholeNumber(bounds.lower);
    const auto upper = wholeNumber(bounds.upper);
    if (lower.negative != upper.negative) return lower.negative;
    return lower.negative ? smallerMagnitude(upper.digits, lower.digits) : smallerMagnitude(lower.digits, upper.digits);
}

std::optional<std::string> parameterOfLong(std::string_view text, std::string_view keyword) {
    const auto inner = textInParentheses(text, keyword);
    if (!inner) return std::nullopt;
    std::string parameter = withDecimalPoint(trimSpaces(*inner));
    if (!isParameter(parameter)) return std::nullopt;
    return parameter;
}

std::optional<std::string> parameterOfShort(std::string_view text) {
    if (!text.starts_with('E')) return std::nullopt;
    std::string parameter = withDecimalPoint(text.substr(1));
    if (!isParameter(parameter)) return std::nullopt;
    return parameter;
}

std::string shortUniform(const UniformBounds& bounds) { return joined("U", bounds.lower, ";", bounds.upper); }

std::string shortExponential(std::string_view parameter) { return joined("E", parameter); }

std::string longUniform(const UniformBounds& bounds, std::string_view keyword) {
    return joined(keyword, " (", bounds.lower, " ; ", bounds.upper, ")");
}

std::string longExponential(std::string_view parameter, std::string_view keyword) {
    return joined(keyword, " (", parameter, ")");
}

std::optional<std::string> longOfShort(std::string_view shortText, const DistributionKeywords& keywords) {
    if (const auto bounds = boundsOfShort(shortText)) return longUniform(*bounds, keywords.uniform);
    if (const auto parameter = parameterOfShort(shortText)) return longExponential(*parameter, keywords.exponential);
    return std::nullopt;
}

std::optional<std::string> validLongOfShort(std::string_view shortText, const DistributionKeywords& keywords) {
    if (const auto bounds = boundsOfShort(shortText))
        return inOrder(*bounds) ? std::optional(longUniform(*bounds, keywords.uniform)) : std::nullopt;
    return longOfShort(shortText, keywords);
}

std::optional<std::string> shortOfLong(std::string_view longText, const DistributionKeywords& keywords) {
    if (const auto bounds = boundsOfLong(longText, keywords.uniform)) return shortUniform(*bounds);
    if (const auto parameter = parameterOfLong(longText, keywords.exponential)) return shortExponential(*parameter);
    return std::nullopt;
}

std::optional<double> expectationOfUniform(std::string_view longText, std::string_view keyword) {
    const auto bounds = boundsOfLong(longText, keyword);
    if (!bounds) return std::nullopt;
    const auto lower = toDouble(bounds->lower);
    const auto upper = toDouble(bounds->upper);
    if (!lower || !upper) return std::nullopt;
    return *lower / 2 + *upper / 2;  // halved one by one, so that the sum cannot overflow
}

std::optional<double> expectationOfExponential(std::string_view longText, std::string_view keyword) {
    const auto parameter = parameterOfLong(longText, keyword);
    if (!parameter) return std::nullopt;
    return 1 / toDouble(*parameter).value();
}

std::optional<double> expectationOfLong(std::string_view longText, const DistributionKeywords& keywords) {
    if (const auto uniform = expectationOfUniform(longText, keywords.uniform)) return uniform;
    return expectationOfExponential(longText, keywords.exponential);
}

std::optional<double> toDouble(std::string_view number) {
    double value = 0;
    const auto end = number.data() + number.size();
    const auto [rest, error] = std::from_chars(number.data(), end, value, std::chars_format::fixed);
    if (error != std::errc() || rest != end) return std::nullopt;
    return value;
}

}  // namespace qor::simcal
