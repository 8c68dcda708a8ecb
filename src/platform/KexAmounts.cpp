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
constexpr std::int32_t kMinute = 60;
constexpr std::int32_t kHour = 60 * kMinute;
constexpr std::int32_t kDay = 24 * kHour;
constexpr std::int32_t kYear = 365 * kDay;
constexpr TimeField kTimeFields[] = {{2, kYear}, {3, kDay}, {2, kHour}, {2, kMinute}, {2, 1}};

constexpr std::string_view kLengthUnit = "cm";
constexpr char kPoint = '.';
constexpr std::size_t kDecimals = 3;
constexpr std::int64_t kPerUnit = 1000;                                   // 10 to the power of kDecimals
constexpr std::int64_t kThousandths[kDecimals + 1] = {1000, 100, 10, 1};  // in one of the last of so many decimals

constexpr const char* kComplaints[] = {
    "a sign is followed by digits",
    "an integer lies between -2147483648 and 4294967295",
    "a time has the form years:days:hours:minutes:seconds with 2, 3, 2, 2 and 2 digits and no sign",
    "a time is at most 2147483647 seconds, which is 68:035:03:14:07",
    "a length is a number of centimetres with at most three decimals and the unit behind it, as in 2.5cm",
    "a length is at most 2147483.647cm",
    "this is no integer (12), time (00:001:12:00:00) or length (2.5cm)",
};

constexpr Amount bad(Complaint complaint) { return {AmountKind::Bad, complaint, 0}; }
constexpr Amount good(AmountKind kind, std::int64_t number) { return {kind, {}, number}; }

/// The digits at the front, at most `Most` of them where that is few. The value stops growing where every range has
/// been left.
struct Digits {
    std::int64_t value = 0;
    std::size_t count = 0;
};
constexpr std::size_t kSafeDigits = 9;  // so many leave no range
constexpr std::size_t kAllDigits = std::string_view::npos;
template <std::size_t Most>
inline Digits takeDigits(const char*& at) {
    Digits taken;
    const char* const begin = at;
    for (; is(*at, kDigit) && at != begin + std::min(Most, kSafeDigits); ++at)
        taken.value = taken.value * 10 + (*at - '0');
    if constexpr (Most > kSafeDigits)
        for (; is(*at, kDigit); ++at)
            if (taken.value <= kMaxInteger) taken.value = taken.value * 10 + (*at - '0');
    taken.count = static_cast<std::size_t>(at - begin);
    return taken;
}

inline bool take(const char*& at, char expected) {
    if (*at != expected) return false;
    ++at;
    return true;
}

inline bool endsAt(const char* at) { return !is(*at, kNumber); }

Amount integer(std::int64_t magnitude, bool negative) {
    const std::int64_t number = negative ? -magnitude : magnitude;
    if (number < kMinInteger || number > kMaxInteger) return bad(Complaint::BadInteger);
    return good(AmountKind::Integer, number);
}

/// Exactly so many digits, and what follows them.
template <std::size_t Count>
inline bool takeField(const char*& at, std::int32_t secondsEach, std::int64_t& seconds) {
    std::int32_t value = 0;
    for (std::size_t digit = 0; digit < Count; ++digit, ++at) {
        if (!is(*at, kDigit)) return false;
        value = value * 10 + (*at - '0');
    }
    seconds += std::int64_t{value} * secondsEach;
    return true;
}

inline Amount readTime(const char*& at) {
    std::int64_t seconds = 0;
    const bool isTime = takeField<2>(at, kYear, seconds) && take(at, kColon) && takeField<3>(at, kDay, seconds) &&
                        take(at, kColon) && takeField<2>(at, kHour, seconds) && take(at, kColon) &&
                        takeField<2>(at, kMinute, seconds) && take(at, kColon) && takeField<2>(at, 1, seconds);
    if (!isTime || !endsAt(at)) return bad(Complaint::BadTime);
    return seconds > kMaxMoment ? bad(Complaint::LateTime) : good(AmountKind::Moment, seconds);
}

// Behind the digits of whole centimetres.
inline Amount readLength(const char*& at, std::int64_t whole, bool negative) {
    std::int64_t thousandths = whole * kPerUnit;
    const bool hasPoint = take(at, kPoint);
    if (hasPoint) {
        const Digits decimals = takeDigits<kDecimals>(at);
        if (decimals.count == 0) return bad(Complaint::BadLength);
        thousandths += decimals.value * kThousandths[decimals.count];
    }
    if (!take(at, kLengthUnit[0]) || !take(at, kLengthUnit[1]) || !endsAt(at))
        return bad(hasPoint ? Complaint::BadLength : Complaint::Unknown);
    if (thousandths > kMaxMoment) return bad(Complaint::LongLength);
    if (negative && thousandths != 0) return good(AmountKind::Negative, 0);
    return good(AmountKind::Moment, -1 - thousandths);
}

// At any first byte of a number; `at` goes wherever reading ends.
inline Amount readFrom(const char*& at) {
    const char* const begin = at;
    const bool negative = take(at, '-');
    const bool hasSign = negative || take(at, '+');
    const Digits whole = takeDigits<kAllDigits>(at);
    if (whole.count == 0) return bad(Complaint::NoDigits);
    if (endsAt(at)) return integer(whole.value, negative);
    if (*at == kColon) return hasSign ? bad(Complaint::BadTime) : readTime(at = begin);
    return readLength(at, whole.value, negative);
}

void appendDigits(std::string& out, std::int64_t value, std::size_t atLeast) {
    char digits[20];
    const char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    const std::string_view written(digits, static_cast<std::size_t>(end - digits));
    out.append(atLeast > written.size() ? atLeast - written.size() : 0, '0') += written;
}

}  // namespace

const char* complaintOf(const Amount& amount) { return kComplaints[static_cast<std::size_t>(amount.complaint)]; }

Amount readAmount(const char*& at) {
    const char* behind = at;
    const Amount amount = readFrom(behind);
    if (amount.kind != AmountKind::Bad) at = behind;
    return amount;
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
