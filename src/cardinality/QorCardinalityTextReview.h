// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/QorExport.h"
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

/// What the reading of a rule text passes over in silence.
enum class QorCardinalityOversight : std::int32_t {
    SyntaxError,     ///< nothing of the text is read
    UnknownElement,  ///< the element is not read
    UnknownKey,      ///< the key is not read
    NoNumber,        ///< the value of the key is no integer and counts as 0
    NoValue,         ///< the key has no value and counts as 0
};

/// One oversight, with its place in the text.
struct QorCardinalityTextRemark {
    QorCardinalityOversight oversight = QorCardinalityOversight::SyntaxError;
    QorKexPosition position;
    SV::String element;
    SV::String key;                       ///< of keys and values
    SV::String reason;                    ///< of a syntax error
    std::vector<std::string_view> known;  ///< for what is unknown: the names that could stand there
};

/// Finds what an author of rules most likely did not mean: QorCardinalityHandler reads "max-outgonig: 1" as no rule,
/// and "max-objects: many" as a maximum of 0, and neither is an error. Nothing here depends on a repository. Without
/// memory there are no remarks, after an internal error.
class QOR_API QorCardinalityTextReview {
public:
    /// Of a class's rules, in the order of the text. What the handler reports as an error, such as a syntax error or an
    /// element that does not belong, is left to it.
    [[nodiscard]] static std::vector<QorCardinalityTextRemark> ofClassText(std::string_view text) noexcept;
    /// Of the text that says when checks run by themselves, of which the handler reports nothing at all.
    [[nodiscard]] static std::vector<QorCardinalityTextRemark> ofAutomaticChecks(std::string_view text) noexcept;
};
