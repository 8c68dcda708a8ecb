// SPDX-License-Identifier: Apache-2.0
#include "simcal/Calendars.h"

#include <algorithm>
#include <utility>

#include "embedded/MessageTable.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/QorDistribution.h"

namespace simcal_tests {

Language::Language(std::string iso) : _iso(std::move(iso)) {
    _host.texts = this;
    _host.windows = &_windows;
    _installation.emplace(_host);
}

const char* Language::text(unsigned short number) const {
    for (const auto& row : qor::embedded::messageRows(_iso)) {
        if (row.number == number) return row.text;
    }
    return nullptr;
}

SV::Time at(int hour, int minute, int second) { return SV::Time(hour, minute, second); }

QorDayIntervalWithProperty open(SV::Time start, SV::Time end, int flag) { return {start, end, flag}; }

QorDayIntervalWithProperty arrivals(SV::Time start, SV::Time end, const std::string& longText) {
    QorDistribution distribution;
    EXPECT_EQ(distribution.setDistributionString(longText), 1) << longText;
    return {start, end, &distribution};
}

std::unique_ptr<QorCalendar> calendar(const std::string& text, int cyclic, std::int64_t offset) {
    const auto days = static_cast<int>(text.size() - (text.rfind("@$") + 2));
    auto read = std::make_unique<QorCalendar>(text[0] == 'B' ? kFlag : kDistribution, offset, cyclic, days);
    EXPECT_EQ(read->initializeCalendar(text), Code::Ok) << text;
    return read;
}

std::string textOf(const QorCalendar& calendar) {
    SV::String text;
    EXPECT_EQ(calendar.getCalendarAsString(text), Code::Ok);
    return text.str();
}

std::string day(const QorCalendar& calendar, int day) {
    std::string text;
    const QorDayProfile* profile = calendar.getProfileOfDay(day);
    if (profile == nullptr) return "no profile";
    QorDayIntervalWithProperty* interval = nullptr;
    for (int i = 1; profile->getIntervalAtPosition(i, interval) == Code::Ok; ++i) {
        SV::Time start, end;
        EXPECT_EQ(interval->getStartTime(start), Code::Ok);
        EXPECT_EQ(interval->getEndTime(end), Code::Ok);
        if (i > 1) text += ' ';
        text += std::to_string(QorTimeFunctions::getTimeInSeconds(start)) + '-' +
                std::to_string(QorTimeFunctions::getTimeInSeconds(end));
    }
    return text;
}

void addRandomInterval(std::mt19937_64& random, QorDayProfile& profile, Reach reach) {
    // Coarse times, so that intervals touch and overlap often.
    const int beyond = reach == Reach::BeyondTheDay ? 3600 : 0;
    const int start = std::max(-beyond, static_cast<int>(random() % 26) * 3600 - 3600);
    const int end = random() % 8 == 0 ? 86400 : std::min(86400 + beyond, start + static_cast<int>(random() % 5) * 3600);
    (void)profile.insertDayIntervalWithProperty(open(SV::Time(0, 0, start), SV::Time(0, 0, end)));
}

std::unique_ptr<QorCalendar> randomCalendar(std::mt19937_64& random, int period, int cyclic, std::int64_t offset,
                                            Reach reach) {
    auto made = std::make_unique<QorCalendar>(kFlag, offset, cyclic, period);
    const int profiles = 1 + static_cast<int>(random() % 4);
    for (int p = 0; p < profiles; ++p) {
        QorDayProfile profile(kFlag, static_cast<char>('A' + p), "P" + std::to_string(p));
        if (random() % 4 == 0)
            (void)profile.insertDayIntervalWithProperty(open(at(0), at(24)));
        else
            for (auto count = random() % 5; count > 0; --count) addRandomInterval(random, profile, reach);
        EXPECT_EQ(p == 0 ? made->initializeCalendarWithProfile(profile) : made->addProfile(profile), Code::Ok);
    }
    const bool mostlyFirst = random() % 2 == 0;
    for (int d = 1; d <= period; ++d) {
        const auto p = mostlyFirst && random() % 4 != 0 ? 0 : random() % static_cast<unsigned>(profiles);
        EXPECT_EQ(made->assignNewProfileToDay(d, "P" + std::to_string(p)), Code::Ok);
    }
    return made;
}

std::int64_t randomInstant(std::mt19937_64& random, const QorCalendar& calendar) {
    const std::int64_t period = calendar.getPeriodLengthInDays() * kDay;
    std::int64_t seconds = 0;
    switch (random() % 16) {
        case 0:
            return static_cast<std::int64_t>(random());
        case 1:
            seconds = static_cast<std::int64_t>(random() >> 22);
            break;
        case 2:
            seconds = -static_cast<std::int64_t>(random() % 200000);
            break;
        case 3:
            seconds = period * static_cast<std::int64_t>(random() % 4);
            break;
        default:
            seconds = static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(3 * period / 1800)) * 1800;
    }
    // The offset may wrap, as it does in the calendar.
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(seconds) + random() % 3 - 1 -
                                     static_cast<std::uint64_t>(calendar.getOffsetInSeconds()));
}

namespace plain {
namespace {

__extension__ using Wide = __int128;

std::int64_t seconds(SV::Time time) { return QorTimeFunctions::getTimeInSeconds(time); }

struct Moment {
    Code code = Code::Ok;
    std::int32_t cycle = 0, day = 0;
    SV::Time time{};
    const QorDayProfile* profile = nullptr;  // null outside the day list
    [[nodiscard]] Code onADay() const {
        return code == Code::Ok && profile == nullptr ? Code::CalendarInconsistent : code;
    }
};

Moment map(const QorCalendar& calendar, std::int64_t instant) {
    const auto s = static_cast<std::int64_t>(static_cast<std::uint64_t>(instant) +
                                             static_cast<std::uint64_t>(calendar.getOffsetInSeconds()));
    const std::int32_t length = calendar.getPeriodLengthInDays();
    if (calendar.isCyclic() == 0 && s > static_cast<std::int32_t>(Wide{length} * kDay)) return {Code::BeyondPeriod};
    if (length < 1) return {Code::CalendarInconsistent};
    Moment moment;
    Wide d = s / kDay;
    if (d >= length) {
        moment.cycle = static_cast<std::int32_t>(d / length);
        d = d % length;
    }
    const auto product = static_cast<std::int32_t>(Wide{moment.cycle} * length);
    moment.day = d < -1000 ? -1000 : static_cast<std::int32_t>(d + 1);
    moment.time = SV::Time(0, 0, static_cast<std::int32_t>(s - (product + d) * kDay));
    moment.profile = calendar.getProfileOfDay(moment.day);
    return moment;
}

std::int64_t whole(const QorDayProfile* profile) {
    std::int64_t sum = 0;
    EXPECT_EQ(profile->getIntervalLengthSum(sum), Code::Ok);
    return sum;
}

// Both ends of a span with their parts of a day, and the days between.
struct Span {
    Span(const QorCalendar& calendar, std::int64_t from, std::int64_t to) {
        if (from > to) code = Code::FirstAfterSecond;
        for (auto [end, instant] : {std::pair(&first, from), std::pair(&last, to)}) {
            if (code == Code::Ok) code = (*end = map(calendar, instant)).code;
        }
        for (const Moment* end : {&first, &last}) {
            if (code == Code::Ok) code = end->onADay();
        }
        if (code != Code::Ok) return;
        cycles = std::int64_t{last.cycle} - first.cycle;
        withinADay = cycles == 0 && first.day == last.day;
        code = first.profile->getIntervalLengthSumInBetween(first.time, withinADay ? last.time : at(24), head);
        if (withinADay || code != Code::Ok) return;
        code = last.profile->getIntervalLengthSumInBetween(SV::Time(), last.time, tail);
        const int lastDay = cycles == 0 ? last.day - 1 : calendar.getPeriodLengthInDays();
        for (int day = first.day + 1; day <= lastDay; ++day) between.push_back(calendar.getProfileOfDay(day));
        for (int day = 1; cycles != 0 && day < last.day; ++day) between.push_back(calendar.getProfileOfDay(day));
    }
    Code code = Code::Ok;
    Moment first, last;
    bool withinADay = false;
    std::int64_t cycles = 0, head = 0, tail = 0;
    std::vector<const QorDayProfile*> between;
};

}  // namespace

Answer untilStart(const QorCalendar& calendar, std::int64_t instant) {
    const Moment now = map(calendar, instant);
    if (const Code code = now.onADay(); code != Code::Ok)
        return {code == Code::BeyondPeriod ? Code::NoNextInterval : code, kUntouched};
    QorDayIntervalWithProperty* target = nullptr;
    std::int64_t k = 0;
    if (now.profile->getNextInterval(now.time, target) != Code::Ok) {
        int day = now.day;
        do {
            if (++k > calendar.getPeriodLengthInDays()) return {Code::NoNextInterval, kUntouched};
            if (++day > calendar.getPeriodLengthInDays()) {
                if (calendar.isCyclic() == 0) return {Code::NoNextInterval, kUntouched};
                day = 1;
            }
        } while (calendar.getProfileOfDay(day)->getIntervalAtPosition(1, target) != Code::Ok);
    }
    SV::Time start;
    EXPECT_EQ(target->getStartTime(start), Code::Ok);
    return {Code::Ok, static_cast<std::int32_t>(k * kDay - seconds(now.time) + seconds(start))};
}

Answer untilEnd(const QorCalendar& calendar, std::int64_t instant) {
    const Moment now = map(calendar, instant);
    if (const Code code = now.onADay(); code != Code::Ok) return {code, kUntouched};
    QorDayIntervalWithProperty* current = nullptr;
    SV::Time end;
    if (const Code code = now.profile->getCurrentInterval(now.time, current); code != Code::Ok)
        return {code, kUntouched};
    EXPECT_EQ(current->getEndTime(end), Code::Ok);
    return {Code::Ok, seconds(end) - seconds(now.time)};
}

Answer isIn(const QorCalendar& calendar, std::int64_t instant, std::int64_t duration) {
    if (duration >= 86401) return {Code::Ok, 0};
    const Moment first = map(calendar, instant);
    const Moment last = map(calendar, static_cast<std::int64_t>(static_cast<std::uint64_t>(instant) +
                                                                static_cast<std::uint64_t>(duration)));
    for (const Moment* end : {&first, &last}) {
        if (end->code != Code::Ok) return {end->code, kUntouched};
    }
    const auto current = [](const Moment& moment) {
        QorDayIntervalWithProperty* interval = nullptr;
        if (moment.profile != nullptr) (void)moment.profile->getCurrentInterval(moment.time, interval);
        return interval;
    };
    const bool same = first.day == last.day && current(first) != nullptr && current(first) == current(last);
    return {Code::Ok, same ? 1 : 0};
}

Answer sum(const QorCalendar& calendar, std::int64_t from, std::int64_t to) {
    const Span span(calendar, from, to);
    if (span.code != Code::Ok) return {span.code, kUntouched};
    double period = 0;
    for (int day = 1; day <= calendar.getPeriodLengthInDays(); ++day)
        period += static_cast<double>(whole(calendar.getProfileOfDay(day)));
    double total = static_cast<double>(span.head) + static_cast<double>(span.tail);
    for (const auto* profile : span.between) total += static_cast<double>(whole(profile));
    total += static_cast<double>(std::max<std::int64_t>(0, span.cycles - 1)) * period;
    if (total >= 2147483648.0) return {Code::DoesNotFit, std::numeric_limits<std::int32_t>::min()};
    return {Code::Ok, static_cast<std::int32_t>(total)};
}

Answer covered(const QorCalendar& calendar, std::int64_t from, std::int64_t to) {
    Span span(calendar, from, to);
    if (span.code != Code::Ok) return {span.code, 0};
    const std::int64_t start = seconds(span.first.time), end = seconds(span.last.time);
    if (span.withinADay) return {Code::Ok, span.head == end - start ? 1 : 0};
    if (span.cycles != 0 && span.cycles != 1)
        span.between.assign(calendar.getProfiles().begin(), calendar.getProfiles().end());
    const bool days = std::all_of(span.between.begin(), span.between.end(),
                                  [](const auto* profile) { return whole(profile) == kDay; });
    return {Code::Ok, days && span.head == kDay - start && span.tail == end ? 1 : 0};
}

}  // namespace plain
}  // namespace simcal_tests
