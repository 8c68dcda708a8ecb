// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

// Numbers of keyword texts: integers, times and lengths. Times and lengths share one number, the moment: 0 and above
// are seconds, a negative number m is a length of -1 - m thousandths of a centimetre.
namespace qor::platform::kex {

enum class AmountKind : std::uint8_t {
    Integer,
    Moment,    // a time or a length; the number is its moment
    Negative,  // a length below zero: part of the language, but without a number
    Bad,
};

struct Amount {
    AmountKind kind = AmountKind::Bad;
    std::int64_t number = 0;
    const char* complaint = "";  ///< what is wrong with a bad one
};

/// Reads a number; the literal must be all of it.
[[nodiscard]] Amount readAmount(std::string_view literal);

/// A moment as time or length; readAmount is its inverse.
[[nodiscard]] std::string writtenMoment(std::int32_t moment);

}  // namespace qor::platform::kex
