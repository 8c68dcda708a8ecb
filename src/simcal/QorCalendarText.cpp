// SPDX-License-Identifier: Apache-2.0
// The text form of calendars: what reading puts into the calendar, and writing.
#include "simcal/QorCalendarText.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "platform/QorGuard.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/CalendarReader.h"
#include "simcal/IntervalCollector.h"
#include "simcal/QorCalendar.h"

using Code = QorCalendarErrorCode;

namespace {

void appendNumber(std::string& text, std::int32_t number) {
    char digits[12];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    text.append(std::begin(digits), end);
}

Code appendTimes(std::string& text, const QorDayIntervalWithProperty& interval) {
    SV::Time start;
    SV::Time end;
    if (const Code code = interval.getStartTime(start); code != Code::Ok) return code;
    if (const Code code = interval.getEndTime(end); code != Code::Ok) return code;
    text += '@';
    appendNumber(text, QorTimeFunctions::getTimeInSeconds(start));
    text += '-';
    appendNumber(text, QorTimeFunctions::getTimeInSeconds(end));
    text += '@';
    return Code::Ok;
}

}  // namespace

Code QorCalendar::initializeCalendar(const SV::String& text) noexcept {
    std::size_t failedAt = 0;
    return readText(text, failedAt);
}

Code QorCalendar::readText(const SV::String& text, std::size_t& failedAt) noexcept {
    if (!_profiles.isEmpty()) return Code::AlreadyInitialized;
    const Code code = Qor_Guarded("calendar", Code::Broken, [&] {
        qor::simcal::CalendarReader reader(*this, text);
        const Code read = reader.read();
        failedAt = reader.failedAt();
        return read;
    });
    if (code != Code::Ok) cleanUp();
    return code;
}

Code QorCalendar::addNewboolInterval(qor::simcal::IntervalCollector& intervals, SV::Time start, SV::Time end,
                                     std::string_view property) {
    if (property != "T") return Code::FlagNotSet;
    return intervals.add({start, end, {}});
}

Code QorCalendar::addNewDistributionInterval(qor::simcal::IntervalCollector& intervals, SV::Time start, SV::Time end,
                                             std::string_view property,
                                             const qor::simcal::DistributionKeywords& keywords) {
    auto distribution = qor::simcal::validLongOfShort(property, keywords);
    if (!distribution) return Code::NoShortDistribution;
    return intervals.add({start, end, std::move(*distribution)});
}

Code QorCalendar::setDays(std::string_view identifiers) {
    if (static_cast<std::int64_t>(identifiers.size()) != std::int64_t{_periodLength}) return Code::WrongNumberOfDays;
    if (!_days.empty()) return Code::DaysAlreadySet;
    const auto byIdentifier = profilesByIdentifier();
    std::vector<QorDayProfile*> days;
    days.reserve(identifiers.size());
    for (const char identifier : identifiers) {
        QorDayProfile* profile = byIdentifier[static_cast<unsigned char>(identifier)];
        if (profile == nullptr) return Code::NoProfileWithIdentifier;
        days.push_back(profile);
    }
    _days = std::move(days);
    ++_revision;
    return Code::Ok;
}

Code QorCalendar::getCalendarAsString(SV::String& text) const noexcept {
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        const qor::simcal::DistributionKeywords keywords;
        std::string written = _type == QorCalendarPropertyType::Flag ? "B" : "D";
        for (const QorDayProfile* profile : _profiles) {
            if (profile->_type != _type) return Code::CalendarInconsistent;
            written += '@';
            written += profile->_name;
            written += '@';
            written += profile->_identifier;
            if (profile->_intervals.empty()) written += "@@";
            for (const auto& interval : profile->_intervals) {
                if (const Code code = appendTimes(written, *interval); code != Code::Ok) return code;
                if (const Code code = interval->appendProperty(written, keywords); code != Code::Ok) return code;
            }
        }
        written += "@$";
        for (const QorDayProfile* day : _days) written += day->_identifier;
        text = SV::String(std::move(written));
        return Code::Ok;
    });
}

Code QorCalendarText::read(QorCalendar& calendar, const SV::String& text, unsigned long& failedAt) noexcept {
    std::size_t place = 0;
    const Code code = calendar.readText(text, place);
    if (code != Code::Ok) failedAt = place;
    return code;
}

int QorCalendarText::typeOf(const SV::String& text, QorCalendarPropertyType& type) noexcept {
    const std::string_view letter = text.view().substr(0, 1);
    if (letter != "B" && letter != "D") return 0;
    type = letter == "B" ? QorCalendarPropertyType::Flag : QorCalendarPropertyType::Distribution;
    return 1;
}

int QorCalendarText::periodLengthOf(const SV::String& text, int& days) noexcept {
    constexpr std::string_view kMark = "@$";
    const auto mark = text.view().rfind(kMark);
    if (mark == std::string_view::npos) return 0;
    const auto list = text.view().substr(mark + kMark.size());
    const auto length = std::min(list.find('@'), list.size());
    if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) return 0;
    days = static_cast<int>(length);
    return 1;
}
