// SPDX-License-Identifier: Apache-2.0
// Calendar arithmetic against bare prefix sums over plain arrays (Bare*), for periods of a week and of a century, over
// random instants near and far. Names end with the period's length in days; for texts, with what they hold.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "simcal/QorCalendar.h"
#include "simcal/QorWorkingTime.h"

namespace {

constexpr std::int64_t kDay = 86400;
constexpr std::size_t kQuestions = 4096;
// Every start of a span within the week, and from far away.
constexpr std::int64_t kNear = 7 * kDay;
constexpr std::int64_t kFar = 20000 * kDay;

std::string workWeeks(int days) {
    std::string text = "B@Workday@A@28800-43200@T@46800-61200@T@Saturday@S@32400-46800@T@Sunday@B@@@$";
    for (int day = 0; day < days; ++day) text += "AAAAASB"[day % 7];
    return text;
}

std::unique_ptr<QorCalendar> workCalendar(int days) {
    auto calendar = std::make_unique<QorCalendar>(QorCalendarPropertyType::Flag, 0, 1, days);
    if (calendar->initializeCalendar(workWeeks(days)) != QorCalendarErrorCode::Ok) return nullptr;
    return calendar;
}

struct Question {
    std::int64_t from, to;
};

std::vector<Question> questions(std::int64_t span) {
    std::mt19937_64 random(1);
    std::vector<Question> made(kQuestions);
    for (auto& question : made) {
        question.from = static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(span));
        question.to = question.from + static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(span));
    }
    return made;
}

// What anybody would write down who needs nothing but the numbers.
struct Bare {
    explicit Bare(int days) : period(days) {
        for (int day = 0; day < days; ++day) {
            const int kind = day % 7 < 5 ? 0 : day % 7 - 4;
            profile.push_back(kind);
            before.push_back(total);
            total += kind == 0 ? 28800 : kind == 1 ? 14400 : 0;
        }
    }

    std::int64_t worked(std::int64_t instant) const {
        const std::int64_t day = instant / kDay;
        const std::int64_t time = instant % kDay;
        const auto ofPeriod = static_cast<std::size_t>(day % period);
        const int kind = profile[ofPeriod];
        std::int64_t sum = day / period * total + before[ofPeriod];
        for (int i = 0; i < count[kind]; ++i)
            sum += std::max<std::int64_t>(0, std::min(time, ends[kind][i]) - starts[kind][i]);
        return sum;
    }

    std::int64_t untilStart(std::int64_t instant) const {
        const std::int64_t time = instant % kDay;
        auto day = static_cast<std::size_t>(instant / kDay % period);
        for (int i = 0; i < count[profile[day]]; ++i) {
            if (starts[profile[day]][i] >= time) return starts[profile[day]][i] - time;
        }
        std::int64_t days = 0;
        do {
            ++days;
            if (++day == static_cast<std::size_t>(period)) day = 0;
        } while (count[profile[day]] == 0);
        return days * kDay - time + starts[profile[day]][0];
    }

    std::int64_t period, total = 0;
    std::vector<int> profile;
    std::vector<std::int64_t> before;
    int count[3] = {2, 1, 0};
    std::int64_t starts[3][2] = {{28800, 46800}, {32400, 0}, {0, 0}};
    std::int64_t ends[3][2] = {{43200, 61200}, {46800, 0}, {0, 0}};
};

template <class Ask>
void askAll(benchmark::State& state, std::int64_t span, Ask ask) {
    const auto asked = questions(span);
    std::size_t i = 0;
    std::int64_t previous = 0;
    for (auto _ : state) {
        // Each question waits for the last answer, so that times are those of one call.
        const Question& question = asked[i++ % kQuestions];
        previous = ask(question.from + (previous & 1), question.to + 1);
        benchmark::DoNotOptimize(previous);
    }
}

void BareSum(benchmark::State& state, std::int64_t span) {
    const Bare bare(static_cast<int>(state.range(0)));
    askAll(state, span, [&](std::int64_t from, std::int64_t to) { return bare.worked(to) - bare.worked(from); });
}
void Sum(benchmark::State& state, std::int64_t span) {
    const auto calendar = workCalendar(static_cast<int>(state.range(0)));
    askAll(state, span, [&](std::int64_t from, std::int64_t to) {
        std::int64_t seconds = 0;
        benchmark::DoNotOptimize(calendar->getTimeIntervalsSumInBetween(from, to, seconds));
        return seconds;
    });
}
void Covered(benchmark::State& state, std::int64_t span) {
    const auto calendar = workCalendar(static_cast<int>(state.range(0)));
    askAll(state, span, [&](std::int64_t from, std::int64_t to) {
        int covered = 0;
        benchmark::DoNotOptimize(calendar->isCoveredWholly(from, to, covered));
        return covered;
    });
}
void BareNext(benchmark::State& state, std::int64_t span) {
    const Bare bare(static_cast<int>(state.range(0)));
    askAll(state, span, [&](std::int64_t from, std::int64_t) { return bare.untilStart(from); });
}
void Next(benchmark::State& state, std::int64_t span) {
    const auto calendar = workCalendar(static_cast<int>(state.range(0)));
    askAll(state, span, [&](std::int64_t from, std::int64_t) {
        std::int64_t seconds = 0;
        benchmark::DoNotOptimize(calendar->howLongUntilStartOfNextInterval(from, seconds));
        return seconds;
    });
}
void AddWorkingTime(benchmark::State& state, std::int64_t span) {
    const auto calendar = workCalendar(static_cast<int>(state.range(0)));
    const QorWorkingTime time(*calendar);
    askAll(state, span, [&](std::int64_t from, std::int64_t to) {
        std::int64_t finish = 0;
        benchmark::DoNotOptimize(time.finishOf(from, (to - from) / 4, finish));
        return finish;
    });
}

#define NEAR_AND_FAR(name)                                    \
    BENCHMARK_CAPTURE(name, near, kNear)->Arg(7)->Arg(36500); \
    BENCHMARK_CAPTURE(name, far, kFar)->Arg(7)->Arg(36500)
NEAR_AND_FAR(BareSum);
NEAR_AND_FAR(Sum);
NEAR_AND_FAR(Covered);
NEAR_AND_FAR(BareNext);
NEAR_AND_FAR(Next);
NEAR_AND_FAR(AddWorkingTime);

void read(benchmark::State& state, QorCalendarPropertyType type, int days, const std::string& text) {
    for (auto _ : state) {
        QorCalendar calendar(type, 0, 1, days);
        if (calendar.initializeCalendar(text) != QorCalendarErrorCode::Ok) state.SkipWithError("not read");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

std::string manyIntervals(const char* letter, const char* property) {
    std::string text = letter;
    for (const char identifier : std::string("ABCDEFGH")) {
        text += std::string("@Profile ") + identifier + "@" + identifier;
        for (int start = 0; start < 86400; start += 60)
            text += "@" + std::to_string(start) + "-" + std::to_string(start + 50) + "@" + property;
    }
    return text + "@$A";
}

void ReadText(benchmark::State& state, int days) { read(state, QorCalendarPropertyType::Flag, days, workWeeks(days)); }
BENCHMARK_CAPTURE(ReadText, days, 36500);
void ReadIntervals(benchmark::State& state) { read(state, QorCalendarPropertyType::Flag, 1, manyIntervals("B", "T")); }
BENCHMARK(ReadIntervals);
void ReadDistributions(benchmark::State& state) {
    read(state, QorCalendarPropertyType::Distribution, 1, manyIntervals("D", "U30;700"));
}
BENCHMARK(ReadDistributions);

// From the text to the first sum.
void ReadAndSum(benchmark::State& state) {
    const auto days = static_cast<int>(state.range(0));
    const std::string text = workWeeks(days);
    for (auto _ : state) {
        QorCalendar calendar(QorCalendarPropertyType::Flag, 0, 1, days);
        std::int64_t seconds = 0;
        if (calendar.initializeCalendar(text) != QorCalendarErrorCode::Ok ||
            calendar.getTimeIntervalsSumInBetween(0, kFar, seconds) != QorCalendarErrorCode::Ok)
            state.SkipWithError("not read");
        benchmark::DoNotOptimize(seconds);
    }
}
BENCHMARK(ReadAndSum)->Arg(365)->Arg(3650)->Arg(36500);

// Ten by nine profiles meet in 90 pairs.
void Intersection(benchmark::State& state) {
    const auto days = static_cast<int>(state.range(0));
    const auto shifts = [days](int profiles, int step) {
        std::string text = "B";
        for (int p = 0; p < profiles; ++p) {
            const int start = 18000 + p * step;
            text += "@P" + std::to_string(p) + "@" + static_cast<char>('A' + p) + "@" + std::to_string(start) + "-" +
                    std::to_string(start + 14400) + "@T@" + std::to_string(start + 18000) + "-" +
                    std::to_string(start + 30000) + "@T";
        }
        text += "@$";
        for (int day = 0; day < days; ++day) text += static_cast<char>('A' + day % profiles);
        return text;
    };
    QorCalendar first(QorCalendarPropertyType::Flag, 0, 1, days);
    QorCalendar second(QorCalendarPropertyType::Flag, 0, 1, days);
    if (first.initializeCalendar(shifts(10, 1800)) != QorCalendarErrorCode::Ok ||
        second.initializeCalendar(shifts(9, 2000)) != QorCalendarErrorCode::Ok)
        state.SkipWithError("not read");
    for (auto _ : state) {
        QorCalendar result(QorCalendarPropertyType::Flag, 0, 1, days);
        if (first.intersection(second, result) != QorCalendarErrorCode::Ok) state.SkipWithError("no intersection");
    }
}
BENCHMARK(Intersection)->Arg(365)->Arg(36500);

}  // namespace
