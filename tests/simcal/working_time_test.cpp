// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorWorkingTime.h"

#include "simcal/Calendars.h"
#include "simcal/QorCalendarAlgebra.h"

using namespace simcal_tests;

namespace {

constexpr std::int64_t kWorkday = 8 * kHour;

TEST(WorkingTime, PlansForwardAndBackwardAcrossDaysAndCycles) {
    const Language english;
    const auto cyclic = calendar(kWeek, 1, 100);  // instant -100 is the start of day 1
    const auto once = calendar(kWeek, 0, 100);
    const struct {
        const QorCalendar& calendar;
        std::int64_t instant, seconds;  // negative: backward
        Code code;
        std::int64_t expected;
        const char* why;
    } cases[] = {
        {*cyclic, 0, 1, Code::Ok, 8 * kHour + 1, "open at 08:00:01, day 1, profile Workday; interval ends 12:00"},
        {*cyclic, 0, 4 * kHour, Code::Ok, 12 * kHour, "closed at 12:00, day 1, profile Workday; opens day 1 13:00"},
        {*cyclic, 0, 5 * kWorkday + 1, Code::Ok, 7 * kDay + 8 * kHour + 1,
         "open at 08:00:01, day 1, profile Workday; interval ends 12:00"},
        {*cyclic, 5 * kDay + 3 * kHour, 0, Code::Ok, 5 * kDay + 3 * kHour,
         "closed at 03:00, day 6, profile Weekend; opens day 1 08:00"},
        {*cyclic, -5 * kDay, 5 * kWorkday, Code::Ok, 4 * kDay + 17 * kHour,
         "closed at 17:00, day 5, profile Workday; opens day 1 08:00"},
        {*once, 0, 5 * kWorkday, Code::Ok, 4 * kDay + 17 * kHour,
         "closed at 17:00, day 5, profile Workday; does not open again"},
        {*once, kDay, 5 * kWorkday, Code::NoNextInterval, 0, "the period ends with 28800 s of working time missing"},
        {*cyclic, kDay, -kWorkday, Code::Ok, 8 * kHour, "open at 08:00, day 1, profile Workday; interval ends 12:00"},
        {*cyclic, 7 * kDay, -1, Code::Ok, 4 * kDay + 17 * kHour - 1,
         "open at 16:59:59, day 5, profile Workday; interval ends 17:00"},
        {*once, 99 * kDay, -5 * kWorkday, Code::Ok, 8 * kHour,
         "open at 08:00, day 1, profile Workday; interval ends 12:00"},
        {*once, 99 * kDay, -5 * kWorkday - 2, Code::NoNextInterval, 0,
         "the period begins with 2 s of working time missing"},
        {*once, 99 * kDay, 0, Code::Ok, 99 * kDay, "closed: the period is over"},
        {*once, -1, 0, Code::Ok, -1, "closed: the period has not begun"},
    };
    for (const auto& row : cases) {
        const QorWorkingTime time(row.calendar);
        std::int64_t found = 0;
        SV::String why;
        const std::int64_t instant = row.instant - 100;
        const Code code = row.seconds < 0 ? time.latestStartFor(instant, -row.seconds, found, &why)
                                          : time.finishOf(instant, row.seconds, found, &why);
        EXPECT_EQ(code, row.code) << row.why;
        EXPECT_EQ(found, row.code == Code::Ok ? row.expected - 100 : 0) << row.why;
        EXPECT_EQ(why, row.why);
    }
}

TEST(WorkingTime, FindsTheIntervalsAroundAnInstant) {
    const auto cyclic = calendar(kWeek, 1);
    const QorWorkingTime time(*cyclic);
    const struct {
        std::int64_t instant, previousEnd, nextStart;  // -1: none
    } cases[] = {
        {-5, -1, 8 * kHour},
        {8 * kHour, -1, 8 * kHour},
        {12 * kHour - 1, -1, 13 * kHour},
        {12 * kHour, 12 * kHour, 13 * kHour},
        {17 * kHour, 17 * kHour, kDay + 8 * kHour},
        {7 * kDay, 4 * kDay + 17 * kHour, 7 * kDay + 8 * kHour},
        {700 * kDay + 1, 697 * kDay + 17 * kHour, 700 * kDay + 8 * kHour},
    };
    for (const auto& row : cases) {
        std::int64_t start = -1, end = -1, unused = 0;
        EXPECT_EQ(time.previousInterval(row.instant, unused, end) == Code::Ok, row.previousEnd >= 0) << row.instant;
        EXPECT_EQ(time.nextInterval(row.instant, start, unused), Code::Ok);
        EXPECT_EQ(end, row.previousEnd) << row.instant;
        EXPECT_EQ(start, row.nextStart) << row.instant;
    }
    const auto touching = calendar("B@P@A@0-86400@T@$A");
    std::int64_t start = 0, end = 0;
    EXPECT_EQ(QorWorkingTime(*touching).previousInterval(2 * kDay, start, end), Code::Ok);
    EXPECT_EQ(start, kDay);
    EXPECT_EQ(end, 2 * kDay);
}

TEST(WorkingTime, SeesWhenNothingCanEverBeDone) {
    const Language english;
    const auto never = calendar("B@P@A@@@$AAA");
    const auto once = calendar(kWeek, 0);
    const QorCalendar noDays(kFlag, 0, 1, 7);
    int flag = -1;
    std::int64_t found = 0;
    SV::String why;
    EXPECT_EQ(QorWorkingTime(*never).isNeverOpen(flag), Code::Ok);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(QorWorkingTime(*never).finishOf(0, 1, found, &why), Code::NoNextInterval);
    EXPECT_EQ(why, "never open: no day of the period has an interval");
    EXPECT_EQ(QorWorkingTime(*once).canEverFinish(5 * kWorkday, flag), Code::Ok);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(QorWorkingTime(*once).canEverFinish(5 * kWorkday + 1, flag), Code::Ok);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(QorWorkingTime(noDays).isNeverOpen(flag), Code::CalendarInconsistent);
}

TEST(WorkingTime, IsNotBoundTo32BitsAndSaysWhenItExceeds64) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    const auto always = calendar("B@P@A@0-86400@T@$A", 1, -1000);
    const auto seldom = calendar("B@P@A@0-1@T@Q@B@@@$" + std::string(40000, 'B') + "A", 0);
    const QorWorkingTime time(*always);
    std::int64_t found = 0;
    EXPECT_EQ(time.sumBetween(std::numeric_limits<std::int64_t>::min(), kMost, found), Code::Ok);
    EXPECT_EQ(found, kMost - 1000);
    EXPECT_EQ(time.finishOf(1000, std::int64_t{1} << 60, found), Code::Ok);
    EXPECT_EQ(found, (std::int64_t{1} << 60) + 1000);
    for (const std::int64_t start : {std::int64_t{1000}, kMost - 500}) {
        EXPECT_EQ(time.finishOf(start, start == 1000 ? kMost : 1000, found), Code::DoesNotFit);
        EXPECT_EQ(found, (std::int64_t{1} << 60) + 1000) << "touched";
    }
    EXPECT_EQ(QorWorkingTime(*seldom).finishOf(0, 1, found), Code::Ok);
    EXPECT_EQ(found, 40000 * kDay + 1);
    EXPECT_EQ(QorWorkingTime(*seldom).finishOf(0, -1, found), Code::FirstAfterSecond);
}

TEST(WorkingTime, AddingAndSummingAreInverseAndAgreeWithTheCalendarsSums) {
    std::mt19937_64 random(5);
    for (int round = 0; round < 300; ++round) {
        const auto made = randomCalendar(random, 1 + static_cast<int>(random() % 30), 1, 77);
        const QorWorkingTime time(*made);
        SCOPED_TRACE(textOf(*made));
        int never = 0;
        ASSERT_EQ(time.isNeverOpen(never), Code::Ok);
        for (int i = 0; i < 40; ++i) {
            const auto from = static_cast<std::int64_t>(random() % 9000000);
            const auto to = from + static_cast<std::int64_t>(random() % 9000000);
            std::int64_t sum = 0, plain = 0, finish = 0, start = 0, back = 0;
            ASSERT_EQ(time.sumBetween(from, to, sum), Code::Ok);
            ASSERT_EQ(made->getTimeIntervalsSumInBetween(from, to, plain), Code::Ok);
            ASSERT_EQ(sum, plain);
            if (never != 0 || sum == 0) continue;
            // The earliest finish and the latest start: one second less to go means one second less of work.
            ASSERT_EQ(time.finishOf(from, sum, finish), Code::Ok);
            ASSERT_EQ(time.latestStartFor(to, sum, start), Code::Ok);
            ASSERT_LE(finish, to);
            ASSERT_GE(start, from);
            ASSERT_EQ(time.sumBetween(from, finish, back), Code::Ok);
            ASSERT_EQ(back, sum);
            ASSERT_EQ(time.sumBetween(from, finish - 1, back), Code::Ok);
            ASSERT_EQ(back, sum - 1);
            ASSERT_EQ(time.sumBetween(start + 1, to, back), Code::Ok);
            ASSERT_EQ(back, sum - 1);
            if (i == 20) addRandomInterval(random, *made->getProfiles().elementAtIndex(0));
        }
    }
}

TEST(CalendarAlgebra, IntersectionUnionAndDifferenceHoldWhatTheirNamesSay) {
    std::mt19937_64 random(13);
    for (int round = 0; round < 200; ++round) {
        const auto a = randomCalendar(random, 5);
        const auto b = randomCalendar(random, 5);
        QorCalendar both(kFlag, 0, 1, 5), either(kFlag, 0, 1, 5), rest(kFlag, 0, 1, 5), again(kFlag, 0, 1, 5);
        ASSERT_EQ(a->intersection(*b, both), Code::Ok);
        ASSERT_EQ(QorCalendarAlgebra::unite(*a, *b, either), Code::Ok);
        ASSERT_EQ(QorCalendarAlgebra::subtract(*a, *b, rest), Code::Ok);
        ASSERT_EQ(QorCalendarAlgebra::unite(both, rest, again), Code::Ok);
        int equal = 0;
        EXPECT_EQ(QorCalendarAlgebra::areEqual(*a, again, equal), Code::Ok);
        EXPECT_EQ(equal, 1) << textOf(*a) << " and " << textOf(*b) << " give " << textOf(again);
        for (int i = 0; i < 50; ++i) {
            const auto instant = static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(5 * kDay));
            const auto left = [instant](const QorCalendar& calendar) {  // 0: outside
                std::int64_t seconds = 0;
                return calendar.howLongUntilEndOfInterval(instant, seconds) == Code::Ok ? seconds : 0;
            };
            const auto in = [&left](const QorCalendar& calendar) { return left(calendar) > 0; };
            ASSERT_EQ(left(both), std::min(left(*a), left(*b))) << instant;
            ASSERT_EQ(in(either), in(*a) || in(*b)) << instant;
            ASSERT_EQ(in(rest), in(*a) && !in(*b)) << instant;
        }
    }
}

TEST(CalendarAlgebra, ComparesWhatCalendarsSayAndLeavesNothingBehindWhenItFails) {
    const auto week = calendar("B@P@A@28800-43200@T@46800-61200@T@$A");
    QorCalendar result(kFlag, 0, 1, 1);
    ASSERT_EQ(QorCalendarAlgebra::unite(*week, *calendar("B@Q@B@0-30000@T@$B"), result), Code::Ok);
    EXPECT_EQ(textOf(result), "B@P + Q@!@0-43200@T@46800-61200@T@$!");
    int equal = -1;
    EXPECT_EQ(QorCalendarAlgebra::areEqual(result, *calendar("B@X@X@0-5@T@5-43200@T@46800-61200@T@$X"), equal),
              Code::Ok);
    EXPECT_EQ(equal, 1);
    EXPECT_EQ(QorCalendarAlgebra::areEqual(result, *week, equal), Code::Ok);
    EXPECT_EQ(equal, 0);
    EXPECT_EQ(QorCalendarAlgebra::unite(*week, *week, result), Code::AlreadyInitialized);

    // "A" with "B - C" and "A - B" with "C" would be named alike.
    QorCalendar ambiguous(kFlag, 0, 1, 2);
    const auto first = calendar("B@A@A@@@A - B@B@@@$AB");
    const auto second = calendar("B@B - C@A@@@C@B@@@$AB");
    EXPECT_EQ(QorCalendarAlgebra::subtract(*first, *second, ambiguous), Code::NameNotUnique);
    EXPECT_FALSE(ambiguous.isInitialized());
}

}  // namespace
