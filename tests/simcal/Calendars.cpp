// SPDX-License-Identifier: Apache-2.0
#include "simcal/Calendars.h"

#include <algorithm>
#include <array>

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

struct Moment {
    std::int32_t cycle, day;
    SV::Time time;
};

std::int64_t seconds(SV::Time time) { return QorTimeFunctions::getTimeInSeconds(time); }

__extension__ using Wide = __int128;

Code map(const QorCalendar& calendar, std::int64_t instant, Moment& moment) {
    const auto s = static_cast<std::int64_t>(static_cast<std::uint64_t>(instant) +
                                             static_cast<std::uint64_t>(calendar.getOffsetInSeconds()));
    const std::int32_t length = calendar.getPeriodLengthInDays();
    if (calendar.isCyclic() == 0 && s > static_cast<std::int32_t>(Wide{length} * kDay)) return Code::BeyondPeriod;
    if (length < 1) return Code::CalendarInconsistent;
    Wide d = s / kDay;
    std::int32_t cycle = 0;
    if (d >= length) {
        cycle = static_cast<std::int32_t>(d / length);
        d = d % length;
    }
    const auto product = static_cast<std::int32_t>(Wide{cycle} * length);
    const Wide time = s - (product + d) * kDay;
    moment = {cycle, d < -1000 ? -1000 : static_cast<std::int32_t>(d + 1),
              SV::Time(0, 0, static_cast<std::int32_t>(time))};
    return Code::Ok;
}

Answer lengthBetween(const QorCalendar& calendar, int day, SV::Time from, SV::Time to) {
    Answer answer{Code::CalendarInconsistent, kUntouched};
    if (const auto* profile = calendar.getProfileOfDay(day))
        answer.code = profile->getIntervalLengthSumInBetween(from, to, answer.value);
    return answer;
}

std::int64_t whole(const QorDayProfile& profile) {
    std::int64_t sum = 0;
    EXPECT_EQ(profile.getIntervalLengthSum(sum), Code::Ok);
    return sum;
}

}  // namespace

Answer untilStart(const QorCalendar& calendar, std::int64_t instant) {
    Moment now{};
    if (const Code code = map(calendar, instant, now); code != Code::Ok)
        return {code == Code::BeyondPeriod ? Code::NoNextInterval : code, kUntouched};
    const auto* profile = calendar.getProfileOfDay(now.day);
    if (profile == nullptr) return {Code::CalendarInconsistent, kUntouched};
    QorDayIntervalWithProperty* target = nullptr;
    std::int64_t k = 0;
    if (profile->getNextInterval(now.time, target) != Code::Ok) {
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
    Moment now{};
    if (const Code code = map(calendar, instant, now); code != Code::Ok) return {code, kUntouched};
    const auto* profile = calendar.getProfileOfDay(now.day);
    if (profile == nullptr) return {Code::CalendarInconsistent, kUntouched};
    QorDayIntervalWithProperty* current = nullptr;
    if (const Code code = profile->getCurrentInterval(now.time, current); code != Code::Ok) return {code, kUntouched};
    SV::Time end;
    EXPECT_EQ(current->getEndTime(end), Code::Ok);
    return {Code::Ok, seconds(end) - seconds(now.time)};
}

Answer isIn(const QorCalendar& calendar, std::int64_t instant, std::int64_t duration) {
    if (duration >= 86401) return {Code::Ok, 0};
    std::array<Moment, 2> moments{};
    std::array<QorDayIntervalWithProperty*, 2> current{};
    const auto end =
        static_cast<std::int64_t>(static_cast<std::uint64_t>(instant) + static_cast<std::uint64_t>(duration));
    if (const Code code = map(calendar, instant, moments[0]); code != Code::Ok) return {code, kUntouched};
    if (const Code code = map(calendar, end, moments[1]); code != Code::Ok) return {code, kUntouched};
    for (std::size_t i = 0; i < 2; ++i) {
        const auto* profile = calendar.getProfileOfDay(moments[i].day);
        if (profile == nullptr || profile->getCurrentInterval(moments[i].time, current[i]) != Code::Ok)
            return {Code::Ok, 0};
    }
    return {Code::Ok, moments[0].day == moments[1].day && current[0] == current[1] ? 1 : 0};
}

Answer sum(const QorCalendar& calendar, std::int64_t from, std::int64_t to) {
    if (from > to) return {Code::FirstAfterSecond, kUntouched};
    Moment a{}, b{};
    if (const Code code = map(calendar, from, a); code != Code::Ok) return {code, kUntouched};
    if (const Code code = map(calendar, to, b); code != Code::Ok) return {code, kUntouched};
    if (calendar.getProfileOfDay(a.day) == nullptr || calendar.getProfileOfDay(b.day) == nullptr)
        return {Code::CalendarInconsistent, kUntouched};
    if (a.cycle == b.cycle && a.day == b.day) return lengthBetween(calendar, a.day, a.time, b.time);
    double total = 0;
    for (const Answer& part :
         {lengthBetween(calendar, a.day, a.time, at(24)), lengthBetween(calendar, b.day, SV::Time(), b.time)}) {
        if (part.code != Code::Ok) return part;
        total += static_cast<double>(part.value);
    }
    const auto addDays = [&](int first, int last, double times) {
        double days = 0;
        for (int day = first; day <= last; ++day) days += static_cast<double>(whole(*calendar.getProfileOfDay(day)));
        total += times * days;
    };
    const int length = calendar.getPeriodLengthInDays();
    if (a.cycle == b.cycle) {
        addDays(a.day + 1, b.day - 1, 1);
    } else {
        addDays(a.day + 1, length, 1);
        addDays(1, b.day - 1, 1);
        const double between = static_cast<double>(b.cycle) - static_cast<double>(a.cycle) - 1;
        if (between > 0) addDays(1, length, between);
    }
    if (total >= 2147483648.0) return {Code::DoesNotFit, std::numeric_limits<std::int32_t>::min()};
    return {Code::Ok, static_cast<std::int32_t>(total)};
}

Answer covered(const QorCalendar& calendar, std::int64_t from, std::int64_t to) {
    if (from > to) return {Code::FirstAfterSecond, 0};
    Moment a{}, b{};
    if (const Code code = map(calendar, from, a); code != Code::Ok) return {code, 0};
    if (const Code code = map(calendar, to, b); code != Code::Ok) return {code, 0};
    if (calendar.getProfileOfDay(a.day) == nullptr || calendar.getProfileOfDay(b.day) == nullptr)
        return {Code::CalendarInconsistent, 0};
    if (a.cycle == b.cycle && a.day == b.day) {
        const Answer same = lengthBetween(calendar, a.day, a.time, b.time);
        return {same.code, same.code == Code::Ok && same.value == seconds(b.time) - seconds(a.time) ? 1 : 0};
    }
    const Answer head = lengthBetween(calendar, a.day, a.time, at(24));
    const Answer tail = lengthBetween(calendar, b.day, SV::Time(), b.time);
    if (head.code != Code::Ok) return {head.code, 0};
    if (tail.code != Code::Ok) return {tail.code, 0};
    if (head.value != kDay - seconds(a.time) || tail.value != seconds(b.time)) return {Code::Ok, 0};
    std::vector<const QorDayProfile*> between;
    const auto collect = [&](int first, int last) {
        for (int day = first; day <= last; ++day) between.push_back(calendar.getProfileOfDay(day));
    };
    if (a.cycle == b.cycle) {
        collect(a.day + 1, b.day - 1);
    } else if (std::int64_t{b.cycle} - a.cycle == 1) {
        collect(a.day + 1, calendar.getPeriodLengthInDays());
        collect(1, b.day - 1);
    } else {
        for (const auto* profile : calendar.getProfiles()) between.push_back(profile);
    }
    return {Code::Ok,
            std::all_of(between.begin(), between.end(), [](const auto* profile) { return whole(*profile) == kDay; })
                ? 1
                : 0};
}

}  // namespace plain
}  // namespace simcal_tests
