// SPDX-License-Identifier: Apache-2.0
#include "simcal/CalendarReader.h"

#include <algorithm>
#include <utility>

namespace qor::simcal {
namespace {

using Code = QorCalendarErrorCode;

constexpr char kSeparator = '@';
constexpr char kDaysMark = '$';
constexpr std::int32_t kBeyondDay = QorCalendar::kSecondsPerDay + 1;

// Reads digits from `at` on; numbers beyond the end of the day count as just beyond it. False when there is no digit.
bool takeNumber(std::string_view text, std::size_t& at, std::int32_t& number) {
    const std::size_t first = at;
    std::int32_t value = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
        value = std::min(value * 10 + (text[at] - '0'), kBeyondDay);
    number = value;
    return at != first;
}

}  // namespace

std::optional<std::string_view> CalendarReader::nextToken() {
    if (_atEnd) return std::nullopt;
    _tokenAt = _at;
    const std::size_t end = std::min(_text.find(kSeparator, _at), _text.size());
    const auto token = _text.substr(_at, end - _at);
    _atEnd = end == _text.size();
    _at = end + 1;
    return token;
}

bool CalendarReader::nextIsEmpty() const { return !_atEnd && (_at == _text.size() || _text[_at] == kSeparator); }

bool CalendarReader::takeInterval(SV::Time& start, SV::Time& end) {
    if (_atEnd) return false;
    std::size_t at = _at;
    std::int32_t first = 0;
    std::int32_t second = 0;
    if (!takeNumber(_text, at, first) || at == _text.size() || _text[at] != '-') return false;
    ++at;
    if (!takeNumber(_text, at, second) || (at < _text.size() && _text[at] != kSeparator)) return false;
    _tokenAt = _at;
    _atEnd = at == _text.size();
    _at = at + 1;
    // An end beyond the day makes the interval inconsistent, wherever it starts.
    start = SV::Time(0, 0, second == kBeyondDay ? kBeyondDay : first);
    end = SV::Time(0, 0, second);
    return true;
}

Code CalendarReader::read() {
    const std::string_view letter = _calendar._type == QorCalendarPropertyType::Flag ? "B" : "D";
    if (nextToken() != letter) return Code::WrongTypeLetter;
    if (_calendar._type == QorCalendarPropertyType::Distribution) _keywords.emplace();
    while (const auto token = nextToken()) {
        const bool isDayList = token->starts_with(kDaysMark);
        const Code code = isDayList ? _calendar.setDays(token->substr(1)) : readProfile(*token);
        if (code != Code::Ok) return code;
    }
    return Code::Ok;
}

Code CalendarReader::readProfile(std::string_view name) {
    const std::size_t nameAt = _tokenAt;
    const auto identifier = nextToken().value_or(std::string_view());
    // The separator is no identifier either: a missing one is refused when the finished profile is added.
    auto profile = std::make_unique<QorDayProfile>(_calendar._type,
                                                   identifier.empty() ? kSeparator : identifier.front(), SV::String());
    profile->_name = SV::String(name);
    if (const Code code = readIntervals(); code != Code::Ok) return code;
    profile->takeOver(_intervals.sorted());
    _intervals.clear();
    if (nextIsEmpty()) {
        (void)nextToken();
        (void)nextToken();
    }
    const Code code = _calendar.adopt(std::move(profile));
    if (code != Code::Ok) _tokenAt = nameAt;
    return code;
}

Code CalendarReader::readIntervals() {
    SV::Time start;
    SV::Time end;
    while (takeInterval(start, end)) {
        const std::size_t intervalAt = _tokenAt;
        const auto property = nextToken().value_or(std::string_view());
        const Code code = _keywords ? _calendar.addNewDistributionInterval(_intervals, start, end, property, *_keywords)
                                    : _calendar.addNewboolInterval(_intervals, start, end, property);
        if (code == Code::IntervalInconsistent || code == Code::IntervalOverlaps) _tokenAt = intervalAt;
        if (code != Code::Ok) return code;
    }
    return Code::Ok;
}

}  // namespace qor::simcal
