// SPDX-License-Identifier: Apache-2.0
#include "platform/KexAmounts.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "platform/KexCharacters.h"

namespace qor::platform::kex {

namespace {

constexpr std::int64_t kMinInteger = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kMaxInteger = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t kMaxMoment = std::numeric_limits<std::int32_t>::max();

struct TimeField {
    std::size_t digits;
    std::int32_t seconds;
};
constexpr TimeField kTimeFields[] = {{2, 365 * 86400}, {3, 86400}, {2, 3600}, {2, 60}, {2, 1}};

constexpr std::string_view kLengthUnit = "cm";
constexpr char kPoint = '.';
constexpr std::size_t kDecimals = 3;
constexpr std::int64_t kPerUnit = 1000;  // 10 to the power of kDecimals

constexpr const char* kBadInteger = "an integer lies between -2147483648 and 4294967295";
constexpr const char* kBadTime =
    "a time has the form years:days:hours:minutes:seconds with 2, 3, 2, 2 and 2 digits and no sign";
constexpr const char* kLateTime = "a time is at most 2147483647 seconds, which is 68:035:03:14:07";
constexpr const char* kBadLength =
    "a length is a number of centimetres with at most three decimals and the unit behind it, as in 2.5cm";
constexpr const char* kLongLength = "a length is at most 2147483.647cm";
constexpr const char* kUnknown = "this is no integer (12), time (00:001:12:00:00) or length (2.5cm)";

constexpr Amount bad(const char* complaint) { return {AmountKind::Bad, 0, complaint}; }

/// Takes the digits at the front, at most `most` of them. The value stops growing where every range has been left.
struct Digits {
    std::int64_t value = 0;
    std::size_t count = 0;
};
constexpr std::size_t kSafeDigits = 9;  // so many leave no range
inline Digits takeDigits(std::string_view& text, std::size_t most = std::string_view::npos) {
    Digits taken;
    const char* const begin = text.data();
    const char* const end = begin + std::min(most, text.size());
    const char* const safe = begin + std::min(most, std::min(kSafeDigits, text.size()));
    const char* at = begin;
    for (; at != safe && is(*at, kDigit); ++at) taken.value = taken.value * 10 + (*at - '0');
    for (; at != end && is(*at, kDigit); ++at)
        if (taken.value <= kMaxInteger) taken.value = taken.value * 10 + (*at - '0');
    taken.count = static_cast<std::size_t>(at - begin);
    text.remove_prefix(taken.count);
    return taken;
}

bool take(std::string_view& text, char expected) {
    if (text.empty() || text.front() != expected) return false;
    text.remove_prefix(1);
    return true;
}

Amount integer(std::int64_t magnitude, bool negative) {
    const std::int64_t number = negative ? -magnitude : magnitude;
    if (number < kMinInteger || number > kMaxInteger) return bad(kBadInteger);
    return {AmountKind::Integer, number};
}

Amount readTime(std::string_view text) {
    std::int64_t seconds = 0;
    for (const TimeField& field : kTimeFields) {
        if (&field != kTimeFields && !take(text, kColon)) return bad(kBadTime);
        const Digits digits = takeDigits(text, field.digits);
        if (digits.count != field.digits) return bad(kBadTime);
        seconds += digits.value * field.seconds;
    }
    if (!text.empty()) return bad(kBadTime);
    return seconds > kMaxMoment ? bad(kLateTime) : Amount{AmountKind::Moment, seconds};
}

Amount readLength(std::int64_t whole, std::string_view rest, bool negative) {
    std::int64_t thousandths = whole * kPerUnit;
    if (take(rest, kPoint)) {
        Digits decimals = takeDigits(rest, kDecimals);
        if (decimals.count == 0) return bad(kBadLength);
        for (; decimals.count < kDecimals; ++decimals.count) decimals.value *= 10;
        thousandths += decimals.value;
    }
    if (rest != kLengthUnit) return bad(kBadLength);
    if (thousandths > kMaxMoment) return bad(kLongLength);
    if (negative && thousandths != 0) return {AmountKind::Negative, 0};
    return {AmountKind::Moment, -1 - thousandths};
}

void appendDigits(std::string& out, std::int64_t value, std::size_t atLeast) {
    char digits[20];
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const std::string_view written(digits, static_cast<std::size_t>(end - digits));
    out.append(atLeast > written.size() ? atLeast - written.size() : 0, '0') += written;
}

}  // namespace

Amount readAmount(std::string_view literal) {
    std::string_view rest = literal;
    const bool negative = take(rest, '-');
    const bool hasSign = negative || take(rest, '+');
    const Digits whole = takeDigits(rest);
    if (whole.count == 0) return bad("a sign is followed by digits");
    if (rest.empty()) return integer(whole.value, negative);
    if (rest.front() == kColon) return hasSign ? bad(kBadTime) : readTime(literal);
    if (rest.front() == kPoint || rest == kLengthUnit) return readLength(whole.value, rest, negative);
    return bad(kUnknown);
}

std::string writtenMoment(std::int32_t moment) {
    std::string out;
    if (moment >= 0) {
        for (const TimeField& field : kTimeFields) {
            if (&field != kTimeFields) out += kColon;
            appendDigits(out, moment / field.seconds, field.digits);
            moment %= field.seconds;
        }
        return out;
    }
    const std::int64_t thousandths = -1 - std::int64_t{moment};
    appendDigits(out, thousandths / kPerUnit, 1);
    if (thousandths % kPerUnit != 0) {
        out += kPoint;
        appendDigits(out, thousandths % kPerUnit, kDecimals);
        out.erase(out.find_last_not_of('0') + 1);
    }
    out += kLengthUnit;
    return out;
}

}  // namespace qor::platform::kex
