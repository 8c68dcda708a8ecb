// SPDX-License-Identifier: Apache-2.0
#include <climits>
#include <random>

#include "platform/ISortedSet.h"
#include "platform/QorAccess.h"
#include "platform/QorIdentifier.h"
#include "platform/QorMessage.h"
#include "platform/QorTimeFunctions.h"
#include "platform/SvDate.h"

TEST(SortedSet, AgreesWithStdSetUnderAnyMixOfOperations) {
    std::mt19937 random(20261121);
    ISortedSet<long> set;
    std::set<long> model;
    for (int round = 0; round < 20000; ++round) {
        const long value = static_cast<long>(random() % 700);
        switch (random() % 8) {
            case 0:
                ASSERT_EQ(set.remove(value), model.erase(value) == 1);
                break;
            case 1:
                ASSERT_EQ(set.contains(value), model.count(value) == 1);
                break;
            case 2: {
                const ISortedSet<long> more{value, value + 900, 1};
                set.addAllFrom(more);
                model.insert(more.begin(), more.end());
                break;
            }
            default:
                ASSERT_EQ(set.add(value), model.insert(value).second);
        }
        ASSERT_EQ(set.numberOfElements(), model.size());
        if (round % 500 == 0) {
            ASSERT_TRUE(std::equal(set.begin(), set.end(), model.begin(), model.end()));
        }
    }
}

TEST(Message, FillsEachPlaceholderOnceLongestFirstAndNeverLooksAtWhatItPutIn) {
    const struct {
        const char *pattern, *expected;
    } cases[] = {
        {"%s1 and %s2", "%s2 and two"}, {"%s", "%s1"},      {"%s %s", "%s1 %s"},
        {"%s2 %s2 %s", "two %s2 %s1"},  {"100 %", "100 %"}, {"", ""},
    };
    for (const auto& [pattern, expected] : cases)
        EXPECT_EQ(Qor_FillPlaceholders(pattern, {{"%s", "%s1"}, {"%s1", "%s2"}, {"%s2", "two"}}), expected) << pattern;
}

TEST(Identifier, BeyondThirtyTwoBitsIsNone) {
    EXPECT_EQ(Qor_NarrowIdentifier(5), 5);
    EXPECT_EQ(Qor_NarrowIdentifier(-1), -1);
    EXPECT_EQ(Qor_NarrowIdentifier(4294967301), std::nullopt);
    EXPECT_EQ(Qor_NarrowIdentifier(-4294967291), std::nullopt);
}

TEST(Date, EveryDayFollowsTheOneBefore) {
    SV::Date date(1599, 12, 31);
    int dayOfYear = 365;
    int weekday = static_cast<int>(SV::DayOfWeek::Friday);
    for (int i = 0; i < 200000; ++i) {
        const SV::Date next = date.AddDays(1);
        ASSERT_TRUE(next.IsValid() && date < next) << next.GetNumber();
        dayOfYear = next.GetYear() == date.GetYear() ? dayOfYear + 1 : 1;
        weekday = (weekday + 1) % 7;
        ASSERT_EQ(next.GetDayOfYear(), dayOfYear) << next.GetNumber();
        ASSERT_EQ(static_cast<int>(next.GetDayOfWeek()), weekday) << next.GetNumber();
        ASSERT_EQ(next.AddDays(-1), date);
        date = next;
    }
    EXPECT_EQ(SV::Date(2026, 11, 21).GetDayOfWeek(), SV::DayOfWeek::Saturday);
    for (const int number : {0, -20260101, 20260229, 20261301, 20260100, 100000101})
        EXPECT_FALSE(SV::Date(number).IsValid()) << number;
    EXPECT_EQ(SV::Date(9999, 12, 31).AddDays(1), SV::Date());
    EXPECT_EQ(SV::Date(1, 1, 1).AddDays(-1), SV::Date());
    EXPECT_EQ(SV::Date(INT_MAX, INT_MAX, INT_MAX), SV::Date(INT_MAX));
    EXPECT_FALSE(SV::Date(INT_MIN, 1, 1).IsValid());
}

TEST(Time, StaysWithinTheDayAndClippedIntervalsHaveNoLength) {
    SV::Time time;
    for (const auto& [seconds, expected] : {std::pair(-1, 0), {0, 0}, {3661, 3661}, {86400, 86400}, {90000, 86400}}) {
        QorTimeFunctions::setTimeInSeconds(time, seconds);
        EXPECT_EQ(QorTimeFunctions::getTimeInSeconds(time), expected);
    }
    EXPECT_EQ(QorTimeFunctions::getDiffTimeInSeconds(SV::Time(8, 0, 0), SV::Time(9, 30, 5)), 5405);
    EXPECT_EQ(QorTimeFunctions::getDiffTimeInSeconds(SV::Time(9, 0, 0), SV::Time(8, 0, 0)), 0);
    const SV::Time first(INT_MIN, 0, 0);
    const SV::Time last(INT_MAX, INT_MAX, INT_MAX);
    EXPECT_EQ(SV::Time(0, 90, 0), SV::Time(1, 30, 0));
    EXPECT_EQ(QorTimeFunctions::getTimeInSeconds(last), INT_MAX);
    EXPECT_EQ(QorTimeFunctions::getDiffTimeInSeconds(first, last), INT_MAX);
}

// An older data source writes 1 for no access; only a copy reads it so, the entry itself keeps what was delivered.
TEST(AccessEntry, ACopyReadsPermissionOneAsNoAccess) {
    const QorAccModelgroup entry(1, nullptr, 2, 1);
    EXPECT_EQ(entry.getPermission(), 1);
    EXPECT_EQ(QorAccModelgroup(entry).getPermission(), QorModelGroupPermission::None);
    EXPECT_EQ(entry.getName(), "");
}
