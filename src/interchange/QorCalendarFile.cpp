// SPDX-License-Identifier: Apache-2.0
#include "interchange/QorCalendarFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "interchange/FileInput.h"
#include "simcal/QorCalendarText.h"

namespace {

using Code = QorCalendarErrorCode;

constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr std::size_t kLargestFile = std::size_t{1} << 30;

struct Meaning {
    Code code;
    std::string_view text;
};
constexpr Meaning kMeanings[] = {
    {Code::Ok, "success"},
    {Code::IntervalInconsistent, "the interval does not start before it ends, or ends after 86400"},
    {Code::IntervalOverlaps, "the interval overlaps an earlier one"},
    {Code::WrongPropertyType, "the calendar has the wrong type (flags or distributions) for this"},
    {Code::BeyondPeriod, "the instant lies beyond the end of the period"},
    {Code::NoInterval, "there is no interval"},
    {Code::NoNextInterval, "there is no further interval"},
    {Code::NoDistributionText, "a distribution has no text"},
    {Code::NoRandomGenerator, "the distribution has no random generator"},
    {Code::CalendarInconsistent, "the instant lies before the period, or the calendar is not complete"},
    {Code::WrongTypeLetter, "a calendar begins with B@ (flags) or D@ (distributions)"},
    {Code::IdentifierRefused, "the profile's identifier is missing or belongs to an earlier profile"},
    {Code::AlreadyInitialized, "the calendar holds something already"},
    {Code::WrongNumberOfDays, "the day list does not hold one identifier for each day of the period"},
    {Code::DaysAlreadySet, "there is a second day list"},
    {Code::NoProfileWithIdentifier, "the day list holds an identifier that no profile before it has"},
    {Code::FlagNotSet, "the interval's property is not T"},
    {Code::NoShortDistribution, "this is no distribution: U3;7 or E0.5, lower bound below upper, 0 < parameter <= 1"},
    {Code::NameHoldsSeparator, "the profile's name holds @"},
    {Code::NoProfileWithName, "no profile has that name"},
    {Code::NameNotUnique, "two profiles have the same name"},
    {Code::ProfileInUse, "the profile is still in use"},
    {Code::NoFreeIdentifier, "there are more pairs of profiles than identifiers"},
    {Code::PositionOutOfRange, "there is no interval at that position"},
    {Code::DayOutOfRange, "the period has no such day"},
    {Code::FirstAfterSecond, "the first instant lies after the second, or a duration is negative"},
    {Code::DoesNotFit, "the result is too large"},
    {Code::NoIntersection, "the intervals do not meet"},
    {Code::CalendarsDiffer, "the calendars differ in offset, in whether they repeat, or in their number of days"},
    {Code::NotInitialized, "a calendar is empty"},
    {Code::Broken, "there is not enough memory"},
};

bool readAll(const std::string& path, std::string& content, std::string& problem) {
    const auto source = qor::interchange::FileSource::open(path, problem);
    if (!source) return false;
    for (std::size_t before = 0;; before = content.size()) {
        if (!readMore(*source, kBlock, content)) {
            problem = source->problem();
            return false;
        }
        if (content.size() == before) return true;
        if (content.size() > kLargestFile) {
            problem = "is larger than 1 GiB";
            return false;
        }
    }
}

template <class Number>
bool readNumber(std::string_view text, std::optional<Number>& number) {
    Number value{};
    const auto end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc() || rest != end) return false;
    number = value;
    return true;
}

bool readTruth(std::string_view text, std::optional<bool>& truth) {
    if (text != "yes" && text != "no") return false;
    truth = text == "yes";
    return true;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// The lines above the text form, and where that begins.
class Head {
public:
    Head(const std::string& file, std::string_view content, std::vector<QorDiagnostic>& diagnostics)
        : _file(file), _content(content), _diagnostics(diagnostics) {}

    // The text form; nothing when there is none.
    std::optional<std::string_view> read() {
        while (_at < _content.size()) {
            const char first = _content[_at];
            if (first == 'B' || first == 'D') return text();
            const std::size_t end = std::min(_content.find('\n', _at), _content.size());
            readLine(_content.substr(_at, end - _at));
            _at = end + 1;
            ++_line;
        }
        error(1, "there is no calendar: a line that begins with B@ (flags) or D@ (distributions)");
        return std::nullopt;
    }

    [[nodiscard]] const QorCalendarSettings& settings() const { return _settings; }

    void errorInText(std::string_view text, std::size_t at, std::string_view what) {
        const auto before = text.substr(0, std::min(at, text.size()));
        const auto lastLine = before.rfind('\n');
        _line += static_cast<std::uint32_t>(std::count(before.begin(), before.end(), '\n'));
        const std::size_t column = lastLine == std::string_view::npos ? before.size() : before.size() - lastLine - 1;
        error(static_cast<std::uint32_t>(column) + 1, what);
    }

private:
    std::string_view text() const {
        std::string_view rest = _content.substr(_at);
        if (rest.ends_with('\n')) rest.remove_suffix(1);
        if (rest.ends_with('\r')) rest.remove_suffix(1);
        return rest;
    }

    void readLine(std::string_view line) {
        if (line.starts_with('#') || trimmed(line).empty()) return;
        const auto colon = std::min(line.find(':'), line.size());
        const auto key = trimmed(line.substr(0, colon));
        const auto value = trimmed(line.substr(std::min(colon + 1, line.size())));
        if (key == "offset") {
            if (!readNumber(value, _settings.offset)) error(1, "offset: is followed by a whole number of seconds");
        } else if (key == "cyclic") {
            if (!readTruth(value, _settings.cyclic)) error(1, "cyclic: is followed by yes or no");
        } else if (key == "days") {
            if (!readNumber(value, _settings.days) || *_settings.days < 1)
                error(1, "days: is followed by a number of days from 1");
        } else {
            error(1, "this is neither a setting (offset:, cyclic:, days:) nor a calendar, which begins with B@ or D@");
        }
    }

    void error(std::uint32_t column, std::string_view what) {
        _diagnostics.push_back({QorSeverity::Error, {_file, _line, column}, std::string(what)});
    }

    const std::string& _file;
    std::string_view _content;
    std::vector<QorDiagnostic>& _diagnostics;
    QorCalendarSettings _settings;
    std::size_t _at = 0;
    std::uint32_t _line = 1;
};

}  // namespace

std::string_view QorCalendarFile::meaningOf(QorCalendarErrorCode code) noexcept {
    for (const Meaning& meaning : kMeanings) {
        if (meaning.code == code) return meaning.text;
    }
    return "unknown result code";
}

std::unique_ptr<QorCalendar> QorCalendarFile::read(const std::string& path, const QorCalendarSettings& overriding,
                                                   std::vector<QorDiagnostic>& diagnostics) {
    std::string content;
    std::string problem;
    if (!readAll(path, content, problem)) {
        diagnostics.push_back({QorSeverity::Error, {path}, problem});
        return nullptr;
    }
    return readText(path, content, overriding, diagnostics);
}

std::unique_ptr<QorCalendar> QorCalendarFile::readText(const std::string& name, std::string_view content,
                                                       const QorCalendarSettings& overriding,
                                                       std::vector<QorDiagnostic>& diagnostics) {
    const std::size_t errorsBefore = diagnostics.size();
    Head head(name, content, diagnostics);
    const auto found = head.read();
    if (!found || diagnostics.size() != errorsBefore) return nullptr;
    const SV::String text(*found);
    const QorCalendarSettings& own = head.settings();

    QorCalendarPropertyType type{};
    int listed = 0;
    (void)QorCalendarText::typeOf(text, type);
    if (QorCalendarText::periodLengthOf(text, listed) == 0 || listed == 0) {
        head.errorInText(*found, found->size(), "there is no day list: @$ and the identifier of a profile per day");
        return nullptr;
    }
    const int days = overriding.days.value_or(own.days.value_or(listed));
    const bool cyclic = overriding.cyclic.value_or(own.cyclic.value_or(false));
    auto calendar =
        std::make_unique<QorCalendar>(type, overriding.offset.value_or(own.offset.value_or(0)), cyclic ? 1 : 0, days);
    unsigned long failedAt = 0;
    const Code code = QorCalendarText::read(*calendar, text, failedAt);
    if (code == Code::Ok && calendar->getProfileOfDay(1) != nullptr) return calendar;
    head.errorInText(*found, code == Code::Ok ? found->size() : failedAt,
                     code == Code::Ok ? "there is no day list at the end" : meaningOf(code));
    return nullptr;
}

QorCalendarErrorCode QorCalendarFile::write(const QorCalendar& calendar, std::string& content) {
    SV::String text;
    if (const Code code = calendar.getCalendarAsString(text); code != Code::Ok) return code;
    content = fmt::format("cyclic: {}\noffset: {}\ndays: {}\n{}\n", calendar.isCyclic() != 0 ? "yes" : "no",
                          calendar.getOffsetInSeconds(), calendar.getPeriodLengthInDays(), text.view());
    return Code::Ok;
}
