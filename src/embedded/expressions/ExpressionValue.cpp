// SPDX-License-Identifier: Apache-2.0
#include "embedded/expressions/ExpressionValue.h"

#include <array>
#include <cmath>
#include <cstdint>

#include "embedded/ValueCheck.h"

namespace qor::embedded {

namespace {

// From the left: where a part of a duration begins, how many digits it has, how many seconds it counts in.
struct DurationPart {
    std::size_t at;
    std::size_t digits;
    std::int64_t seconds;
};
constexpr std::array kDurationParts = {DurationPart{0, 2, 365LL * 86400}, DurationPart{3, 3, 86400},
                                       DurationPart{7, 2, 3600}, DurationPart{10, 2, 60}, DurationPart{13, 2, 1}};
constexpr std::int64_t kYears = 100;

}  // namespace

std::string ExpressionValue::intoText() && {
    if (isNumber()) return expressionNumberText(_number);
    return _kind == Kind::Text ? std::move(_owned) : std::string(_borrowed);
}

std::string expressionNumberText(double number) {
    constexpr double kExact = 9007199254740992.0;  // 2 to the power of 53
    if (number == std::trunc(number) && std::fabs(number) <= kExact)
        return std::to_string(static_cast<std::int64_t>(number));
    return textFrom(number);
}

std::optional<double> secondsOfDuration(std::string_view text) {
    if (text.empty() || !plainValueFits(QorCoreAttributeType::Time, false, text)) return std::nullopt;
    std::int64_t seconds = 0;
    for (const DurationPart& part : kDurationParts)
        seconds += part.seconds * *integerFrom(text.substr(part.at, part.digits));
    return static_cast<double>(seconds);
}

std::optional<std::string> durationOfSeconds(double number) {
    const double rounded = std::round(number);
    if (!(rounded >= 0) || rounded >= static_cast<double>(kYears * kDurationParts.front().seconds)) return std::nullopt;
    auto rest = static_cast<std::int64_t>(rounded);
    std::string text;
    for (const DurationPart& part : kDurationParts) {
        const std::string count = std::to_string(rest / part.seconds);
        rest %= part.seconds;
        if (!text.empty()) text += ':';
        text.append(part.digits - count.size(), '0').append(count);
    }
    return text;
}

}  // namespace qor::embedded
