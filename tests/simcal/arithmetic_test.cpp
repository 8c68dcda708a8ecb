// SPDX-License-Identifier: Apache-2.0
#include "platform/QorRandomGenerator.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/Calendars.h"
#include "simcal/QorDistribution.h"

using namespace simcal_tests;

namespace {

/// The code of a question and what it then gives.
template <class Value>
Answer answered(const auto& question) {
    Value value = kUntouched;
    const Code code = question(value);
    return {code, value};
}
Answer untilStart(const QorCalendar& of, std::int64_t instant) {
    return answered<std::int64_t>([&](auto& it) { return of.howLongUntilStartOfNextInterval(instant, it); });
}
Answer untilEnd(const QorCalendar& of, std::int64_t instant) {
    return answered<std::int64_t>([&](auto& it) { return of.howLongUntilEndOfInterval(instant, it); });
}
Answer isIn(const QorCalendar& of, std::int64_t instant, std::int64_t duration) {
    return answered<int>([&](auto& it) { return of.isInCurrentInterval(instant, duration, it); });
}
Answer sum(const QorCalendar& of, std::int64_t from, std::int64_t to) {
    return answered<std::int64_t>([&](auto& it) { return of.getTimeIntervalsSumInBetween(from, to, it); });
}
Answer covered(const QorCalendar& of, std::int64_t from, std::int64_t to) {
    return answered<int>([&](auto& it) { return of.isCoveredWholly(from, to, it); });
}

constexpr std::int64_t kWeekEnd = 7 * kDay;

TEST(CalendarArithmetic, AnswersAtTheBoundsOfIntervalsDaysAndPeriods) {
    const auto cyclic = calendar(kWeek, 1);
    const auto once = calendar(kWeek, 0);
    const struct {
        const QorCalendar& calendar;
        std::int64_t instant;
        Answer untilStart, untilEnd;
    } cases[] = {
        {*once, 8 * kHour, {Code::Ok, 0}, {Code::Ok, 4 * kHour}},
        {*once, 8 * kHour - 1, {Code::Ok, 1}, {Code::NoInterval, kUntouched}},
        {*once, 12 * kHour - 1, {Code::Ok, kHour + 1}, {Code::Ok, 1}},
        {*once, 12 * kHour, {Code::Ok, kHour}, {Code::NoInterval, kUntouched}},
        {*once, 17 * kHour, {Code::Ok, 15 * kHour}, {Code::NoInterval, kUntouched}},
        {*once, 4 * kDay + 17 * kHour, {Code::NoNextInterval, kUntouched}, {Code::NoInterval, kUntouched}},
        {*cyclic, 4 * kDay + 17 * kHour, {Code::Ok, 2 * kDay + 15 * kHour}, {Code::NoInterval, kUntouched}},
        // The exact end of a period that does not repeat still counts, as the start of its first day.
        {*once, kWeekEnd, {Code::Ok, 8 * kHour}, {Code::NoInterval, kUntouched}},
        {*once, kWeekEnd + 1, {Code::NoNextInterval, kUntouched}, {Code::BeyondPeriod, kUntouched}},
        {*cyclic, kWeekEnd + kDay + 9 * kHour, {Code::Ok, 4 * kHour}, {Code::Ok, 3 * kHour}},
        // Within the day before the start times are negative; before that there is no day.
        {*cyclic, -1, {Code::Ok, 8 * kHour + 1}, {Code::NoInterval, kUntouched}},
        {*cyclic, -kDay + 1, {Code::Ok, 8 * kHour + kDay - 1}, {Code::NoInterval, kUntouched}},
        {*cyclic, -kDay, {Code::CalendarInconsistent, kUntouched}, {Code::CalendarInconsistent, kUntouched}},
        {*cyclic,
         -(std::int64_t{1} << 62),
         {Code::CalendarInconsistent, kUntouched},
         {Code::CalendarInconsistent, kUntouched}},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(untilStart(row.calendar, row.instant), row.untilStart) << row.instant;
        EXPECT_EQ(untilEnd(row.calendar, row.instant), row.untilEnd) << row.instant;
    }
}

TEST(CalendarArithmetic, SpansInOneIntervalEndBeforeItDoesAndForgetTheirCycle) {
    const auto daily = calendar("B@P@A@28800-43200@T@43200-61200@T@$A");
    const struct {
        std::int64_t instant, duration, expected;
    } cases[] = {
        {8 * kHour, 4 * kHour - 1, 1}, {8 * kHour, 4 * kHour, 0}, {8 * kHour - 1, kHour, 0},
        {9 * kHour, -kHour, 1},        {9 * kHour, kDay, 1},  // the same time of the same day, a cycle later
        {9 * kHour, kDay + 1, 0},
    };
    for (const auto& row : cases)
        EXPECT_EQ(isIn(*daily, row.instant, row.duration), (Answer{Code::Ok, row.expected})) << row.duration;
    EXPECT_EQ(isIn(*calendar(kWeek, 0), kWeekEnd, 1), (Answer{Code::BeyondPeriod, kUntouched}));
}

TEST(CalendarArithmetic, AnIncompleteOrEmptyPeriodIsInconsistentOnceAnInstantIsMapped) {
    QorCalendar noDays(kFlag, 0, 1, 7);
    ASSERT_EQ(noDays.initializeCalendar("B@P@A@0-86400@T"), Code::Ok);
    const QorCalendar noPeriod(kFlag, 0, 1, 0);
    const QorCalendar negative(kFlag, 0, 0, -7);
    for (const QorCalendar* calendar : {static_cast<const QorCalendar*>(&noDays), &noPeriod}) {
        EXPECT_EQ(sum(*calendar, 1, 0), (Answer{Code::FirstAfterSecond, kUntouched}));
        EXPECT_EQ(sum(*calendar, 0, 1), (Answer{Code::CalendarInconsistent, kUntouched}));
        EXPECT_EQ(covered(*calendar, 0, 1), (Answer{Code::CalendarInconsistent, 0}));
        EXPECT_EQ(untilStart(*calendar, 0), (Answer{Code::CalendarInconsistent, kUntouched}));
    }
    EXPECT_EQ(isIn(noDays, 0, 1), (Answer{Code::Ok, 0}));
    EXPECT_EQ(isIn(noPeriod, 0, 1), (Answer{Code::CalendarInconsistent, kUntouched}));
    EXPECT_EQ(untilEnd(negative, 0), (Answer{Code::BeyondPeriod, kUntouched}));
    std::int64_t seconds = kUntouched;
    EXPECT_EQ(noDays.getTimeIntervalsSumOfPeriod(seconds), Code::CalendarInconsistent);
    EXPECT_EQ(seconds, kUntouched);
    EXPECT_EQ(noPeriod.getTimeIntervalsSumOfPeriod(seconds), Code::Ok);
    EXPECT_EQ(seconds, 0);
}

// Long periods and distances show where 32 bits end.
TEST(CalendarArithmetic, WrapsWhereTheSimulationsClockWraps) {
    const auto longOnce = [](std::size_t days) {
        return calendar("B@P@A@0-86400@T@Q@B@@@$" + std::string(days - 1, 'B') + "A", 0);
    };
    EXPECT_EQ(untilStart(*longOnce(24855), 0), (Answer{Code::Ok, 24854 * kDay}));
    EXPECT_EQ(untilStart(*longOnce(24856), 0), (Answer{Code::NoNextInterval, kUntouched}));  // over from the start
    EXPECT_EQ(sum(*longOnce(24856), 0, 1), (Answer{Code::BeyondPeriod, kUntouched}));
    EXPECT_EQ(sum(*longOnce(24856), -2147408896, -2147408896), (Answer{Code::CalendarInconsistent, kUntouched}));

    const auto longCyclic = calendar("B@P@A@0-86400@T@Q@B@@@$" + std::string(50000, 'B') + "A");
    EXPECT_EQ(untilStart(*longCyclic, 0), (Answer{Code::Ok, 25032704}));  // 50,000 days less 2^32 seconds

    const auto always = calendar("B@P@A@0-86400@T@$A");
    constexpr std::int64_t kMost = 2147483647;
    EXPECT_EQ(sum(*always, 0, kMost), (Answer{Code::Ok, kMost}));
    EXPECT_EQ(sum(*always, 0, kMost + 1), (Answer{Code::DoesNotFit, -kMost - 1}));
    EXPECT_EQ(sum(*always, 1, std::numeric_limits<std::int64_t>::max()), (Answer{Code::DoesNotFit, -kMost - 1}));
    EXPECT_EQ(untilEnd(*always, (std::int64_t{1} << 40) * kDay + 5), (Answer{Code::Ok, kDay - 5}));
}

// More than one cycle apart every profile counts, used or not.
TEST(CalendarArithmetic, CoverOverManyCyclesLooksAtUnusedProfilesToo) {
    const auto always = calendar("B@P@A@0-43200@T@43200-86400@T@Unused@B@@@$AA");
    EXPECT_EQ(covered(*always, 0, 4 * kDay - 1), (Answer{Code::Ok, 1}));
    EXPECT_EQ(covered(*always, 0, 4 * kDay), (Answer{Code::Ok, 0}));
    QorDayProfile* unused = nullptr;
    ASSERT_EQ(always->getProfileFromId('B', unused), Code::Ok);
    ASSERT_EQ(always->deleteProfile(unused), Code::Ok);
    EXPECT_EQ(covered(*always, 0, 4 * kDay), (Answer{Code::Ok, 1}));
}

TEST(CalendarArithmetic, PreparedAnswersEqualThePlainWalkAndFollowChangesBehindTheCalendar) {
    std::mt19937_64 random(20261121);
    for (int round = 0; round < 400; ++round) {
        const int periods[] = {1, 2, 3, 7, 7, 31, 400};
        const std::int64_t offsets[] = {0, 0, 5 * kDay + 3, -3 * kDay - 7, std::numeric_limits<std::int64_t>::max()};
        const auto made = randomCalendar(random, periods[random() % 7], static_cast<int>(random() % 2),
                                         offsets[random() % 5], Reach::BeyondTheDay);
        SCOPED_TRACE(textOf(*made) + " round " + std::to_string(round));
        for (int question = 0; question < 60; ++question) {
            const std::int64_t a = randomInstant(random, *made);
            const std::int64_t b = randomInstant(random, *made);
            const std::int64_t duration = static_cast<std::int64_t>(random() % 90000) - 2000;
            ASSERT_EQ(untilStart(*made, a), plain::untilStart(*made, a)) << a;
            ASSERT_EQ(untilEnd(*made, a), plain::untilEnd(*made, a)) << a;
            ASSERT_EQ(isIn(*made, a, duration), plain::isIn(*made, a, duration)) << a << " + " << duration;
            ASSERT_EQ(sum(*made, a, b), plain::sum(*made, a, b)) << a << " to " << b;
            ASSERT_EQ(covered(*made, a, b), plain::covered(*made, a, b)) << a << " to " << b;
            if (question % 20 == 19) {
                QorDayProfile& changed =
                    *made->getProfiles().elementAtIndex(random() % made->getProfiles().numberOfElements());
                if (random() % 2 == 0)
                    addRandomInterval(random, changed, Reach::BeyondTheDay);
                else
                    (void)changed.deleteIntervalAtPosition(1);
            }
        }
    }
}

TEST(CalendarExpectation, IsWeightedByTheSecondsInsideTheRange) {
    const Language english;
    // Day 1: 3.5 for an hour, then 2 for three hours. Day 2 is empty.
    const auto shop = calendar("D@P@A@0-3600@U3;4@3600-14400@E0.5@Empty@B@@@$AB");
    const struct {
        int firstDay, firstSecond, lastDay, lastSecond;
        Code code;
        double expected;
    } cases[] = {
        {1, 0, 1, 3600, Code::Ok, 3.5},        {1, 1800, 1, 5400, Code::Ok, 2.75},
        {1, 0, 2, 86400, Code::Ok, 2.375},     {1, 14400, 2, 86400, Code::NoInterval, -1},
        {1, 7, 1, 7, Code::NoInterval, -1},    {2, 0, 1, 0, Code::FirstAfterSecond, -1},
        {0, 0, 1, 0, Code::DayOutOfRange, -1}, {1, 0, 3, 0, Code::DayOutOfRange, -1},
    };
    for (const auto& row : cases) {
        double value = -1;
        EXPECT_EQ(shop->getExpectationForInterval(row.firstDay, row.firstSecond, row.lastDay, row.lastSecond, value),
                  row.code);
        EXPECT_EQ(value, row.expected) << row.firstSecond << " to " << row.lastSecond;
    }
    double value = -1;
    EXPECT_EQ(shop->getExpectationForPeriod(value), Code::Ok);
    EXPECT_EQ(value, 2.375);
    EXPECT_EQ(calendar(kWeek)->getExpectationForPeriod(value), Code::WrongPropertyType);
    EXPECT_EQ(calendar(kWeek)->getExpectationForInterval(2, 0, 1, 0, value), Code::WrongPropertyType);
}

TEST(CalendarExpectation, TheDistributionOfAnInstantGivesItsTextAndItsGenerator) {
    class Generator : public QorRandomGenerator {
        double next() override { return 1; }
    };
    const Language english;
    const auto shop = calendar("D@P@A@0-3600@U3;4@$A", 0);
    SV::String text;
    QorRandomGenerator* generator = nullptr;
    EXPECT_EQ(shop->getDistributionString(0, text), Code::Ok);
    EXPECT_EQ(text, "Uniform (3 ; 4)");
    EXPECT_EQ(shop->getDistributionString(3600, text), Code::NoInterval);
    EXPECT_EQ(shop->getRandomGenerator(0, generator), Code::NoRandomGenerator);

    ISequence<QorDistribution*> distributions;
    EXPECT_EQ(shop->getDistributions(distributions), Code::Ok);
    ASSERT_EQ(distributions.numberOfElements(), 1U);
    auto owned = std::make_unique<Generator>();
    QorRandomGenerator* const expected = owned.get();
    ASSERT_EQ(distributions.elementAtIndex(0)->setRandomGenerator(owned.release()), 1);
    EXPECT_EQ(shop->getRandomGenerator(3599, generator), Code::Ok);
    EXPECT_EQ(generator, expected);
    EXPECT_EQ(QorCalendar(*shop).getRandomGenerator(0, generator), Code::Ok);  // copies share it and leave it alone
    EXPECT_EQ(shop->getRandomGenerator(kDay + 1, generator), Code::BeyondPeriod);
    EXPECT_EQ(generator, nullptr);
    EXPECT_EQ(calendar(kWeek)->getDistributions(distributions), Code::WrongPropertyType);
}

}  // namespace
