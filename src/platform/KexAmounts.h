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

/// What is wrong with a bad number.
enum class Complaint : std::uint8_t { NoDigits, BadInteger, BadTime, LateTime, BadLength, LongLength, Unknown };

struct Amount {
    AmountKind kind = AmountKind::Bad;
    Complaint complaint{};  ///< of a bad one only
    std::int64_t number = 0;
};

/// The complaint about a bad number, in words.
[[nodiscard]] const char* complaintOf(const Amount& amount);

/// Reads the number at `at`, a digit or a sign of a text that ends with a zero byte. The number reaches to the first
/// byte that cannot be part of one; `at` goes there, and stays where it is when the number is bad.
[[nodiscard]] Amount readAmount(const char*& at);

/// A moment as time or length; readAmount is its inverse.
[[nodiscard]] std::string writtenMoment(std::int32_t moment);

}  // namespace qor::platform::kex
