// SPDX-License-Identifier: Apache-2.0
// The grammar of distribution texts, without allocation where a view will do.
//
//   long form    keyword spaces "(" lower ";" upper ")"  |  keyword spaces "(" parameter ")"
//   short form   "U" lower ";" upper                     |  "E" parameter
//   bound        ["-"] digits, of any length
//   parameter    plain decimal in (0, 1], its point possibly written as a single comma
//
// The long form is read generously (blanks around every part), the short form exactly as it is written. Only the space
// character counts as blank, and no locale has a say.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "platform/SvString.h"

namespace qor::simcal {

struct DistributionKeywords {
    DistributionKeywords();  // those of the current language
    SV::String exponential;
    SV::String uniform;
};

struct UniformBounds {
    std::string_view lower;
    std::string_view upper;
};

std::string_view trimSpaces(std::string_view text);

// What stands between the parentheses after the keyword; nothing when the text has another form.
std::optional<std::string_view> textInParentheses(std::string_view text, std::string_view keyword);

// Both bounds are numeric and the lower one is smaller.
std::optional<UniformBounds> boundsOfLong(std::string_view text, std::string_view keyword);
// Both bounds are numeric, in any order.
std::optional<UniformBounds> boundsOfShort(std::string_view text);
bool inOrder(const UniformBounds& bounds);

// The valid parameter with "." as its decimal point.
std::optional<std::string> parameterOfLong(std::string_view text, std::string_view keyword);
std::optional<std::string> parameterOfShort(std::string_view text);

std::string shortUniform(const UniformBounds& bounds);
std::string shortExponential(std::string_view parameter);
std::string longUniform(const UniformBounds& bounds, std::string_view keyword);
std::string longExponential(std::string_view parameter, std::string_view keyword);

// The long form of a short one, whatever the order of its bounds; nothing when it is none.
std::optional<std::string> longOfShort(std::string_view shortText, const DistributionKeywords& keywords);

// The long form of a short one that is valid in itself, bounds in order; nothing otherwise.
std::optional<std::string> validLongOfShort(std::string_view shortText, const DistributionKeywords& keywords);

// The short form of a valid long one; nothing otherwise.
std::optional<std::string> shortOfLong(std::string_view longText, const DistributionKeywords& keywords);

// The mean of a valid long form; nothing for other texts, and for bounds beyond the range of doubles.
std::optional<double> expectationOfUniform(std::string_view longText, std::string_view keyword);
std::optional<double> expectationOfExponential(std::string_view longText, std::string_view keyword);
std::optional<double> expectationOfLong(std::string_view longText, const DistributionKeywords& keywords);

// The nearest double of a bound or parameter; nothing when it is beyond the range of doubles.
std::optional<double> toDouble(std::string_view number);

}  // namespace qor::simcal
