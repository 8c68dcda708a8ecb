// SPDX-License-Identifier: Apache-2.0
#include "platform/QorTimeFunctions.h"
#include "simcal/Calendars.h"
#include "simcal/QorDateFunctions.h"

using namespace simcal_tests;

namespace {

TEST(DayInterval, SharesTimeOnlyWhereBothLastAndTouchingIsNotSharing) {
    const struct {
        QorDayIntervalWithProperty first, second;
        Code code;
        int start, end;
    } cases[] = {
        {open(at(8), at(12)), open(at(12), at(16)), Code::NoIntersection, 0, 0},
        {open(at(8), at(12)), open(at(11), at(16)), Code::Ok, 11, 12},
        {open(at(0), at(24)), open(at(8), at(9)), Code::Ok, 8, 9},
        {open(at(9), at(9)), open(at(8), at(10)), Code::IntervalInconsistent, 0, 0},
        {open(at(8), at(10)), open(at(10), at(9)), Code::IntervalInconsistent, 0, 0},
    };
    for (const auto& row : cases) {
        SV::Time start, end;
        EXPECT_EQ(QorDayIntervalWithProperty::intersectionInterval(row.first, row.second, start, end), row.code);
        EXPECT_EQ(start, at(row.start));
        EXPECT_EQ(end, at(row.end));
    }
}

TEST(DayProfile, PutsIntervalsInTheirPlaceAndRefusesOverlaps) {
    QorDayProfile profile(kFlag, 'A', "Workday");
    const struct {
        QorDayIntervalWithProperty interval;
        Code code;
    } cases[] = {
        {open(at(12), at(13)), Code::Ok},
        {open(at(11), at(12, 30)), Code::IntervalOverlaps},
        {open(at(12, 15), at(12, 30)), Code::IntervalOverlaps},
        {open(at(8), at(14)), Code::IntervalOverlaps},
        {open(at(8), at(12)), Code::Ok},  // touching, and in front
        {open(at(23), at(24)), Code::Ok},
        {open(at(14), at(14)), Code::IntervalInconsistent},
        {arrivals(at(15), at(16), "#14001 (1 ; 2)"), Code::WrongPropertyType},  // "#14001": no host offers the keyword
        {open(at(13), at(23)), Code::Ok},
    };
    for (const auto& row : cases) EXPECT_EQ(profile.insertDayIntervalWithProperty(row.interval), row.code);

    QorCalendar shop(kFlag, 0, 0, 1);
    ASSERT_EQ(shop.initializeCalendarWithProfile(profile), Code::Ok);
    EXPECT_EQ(day(shop, 1), "28800-43200 43200-46800 46800-82800 82800-86400");
    EXPECT_EQ(profile.deleteIntervalAtPosition(0), Code::PositionOutOfRange);
    EXPECT_EQ(profile.deleteIntervalAtPosition(5), Code::PositionOutOfRange);

    QorDayIntervalWithProperty* third = nullptr;
    QorDayIntervalWithProperty* found = nullptr;
    ASSERT_EQ(profile.getIntervalAtPosition(3, third), Code::Ok);
    ASSERT_EQ(profile.deleteIntervalAtPosition(1), Code::Ok);
    EXPECT_EQ(profile.getCurrentInterval(at(22, 59, 59), found), Code::Ok);
    EXPECT_EQ(found, third);  // intervals keep their addresses
    EXPECT_EQ(profile.getNextInterval(at(13), found), Code::Ok);
    EXPECT_EQ(found, third);
    EXPECT_EQ(profile.getNextInterval(at(23, 0, 1), found), Code::NoNextInterval);
    EXPECT_EQ(profile.getCurrentInterval(at(24), found), Code::NoInterval);
    EXPECT_EQ(found, nullptr);
}

TEST(DayProfile, CountsHandMadeIntervalsOfAnyLength) {
    constexpr int kMost = std::numeric_limits<int>::max();
    QorDayProfile profile(kFlag, 'A', "P");
    ASSERT_EQ(profile.insertDayIntervalWithProperty(open(at(0, 0, -kMost), at(0, 0, kMost))), Code::Ok);
    std::int64_t seconds = 0;
    EXPECT_EQ(profile.getIntervalLengthSumInBetween(at(0, 0, -kMost), at(0, 0, kMost), seconds), Code::Ok);
    EXPECT_EQ(seconds, 2 * std::int64_t{kMost});
}

// A result with two intervals keeps its second one, which the intersection then meets.
TEST(DayProfile, AnIntersectionEmptiesItsResultOnlyHalfWay) {
    QorDayProfile day(kFlag, 'A', "Day");
    ASSERT_EQ(day.insertDayIntervalWithProperty(open(at(0), at(24), 0)), Code::Ok);
    QorDayProfile result(kFlag, 'B', "Result");
    ASSERT_EQ(result.insertDayIntervalWithProperty(open(at(1), at(2))), Code::Ok);
    EXPECT_EQ(day.intersection(day, result), Code::Ok);
    EXPECT_EQ(result.getNumberOfIntervals(), 1);

    for (const int hour : {1, 3, 5, 7}) {
        QorDayProfile next(kFlag, 'B', "Result");
        for (int h = 1; h <= hour; h += 2)
            ASSERT_EQ(next.insertDayIntervalWithProperty(open(at(h), at(h + 1))), Code::Ok);
        EXPECT_EQ(QorDayProfile(kFlag, 'C', "Empty").intersection(day, next), Code::Ok);
        EXPECT_EQ(next.getNumberOfIntervals(), (hour + 1) / 4);
        const Code expected = next.getNumberOfIntervals() > 1 ? Code::IntervalOverlaps : Code::Ok;
        EXPECT_EQ(day.intersection(day, next), expected);
    }
    EXPECT_EQ(day.intersection(QorDayProfile(kDistribution, 'D', "Arrivals"), result), Code::WrongPropertyType);
    EXPECT_EQ(day.intersection(day, day), Code::Ok);
}

TEST(Calendar, ChecksNewProfilesByIdentifierThenNameAndNeverByType) {
    QorCalendar shop(kFlag, 0, 5, 2);
    EXPECT_EQ(shop.isCyclic(), 1);
    const struct {
        char identifier;
        const char* name;
        Code code;
    } cases[] = {
        {'@', "P@", Code::IdentifierRefused}, {'A', "P@", Code::NameHoldsSeparator}, {'A', "P", Code::Ok},
        {'A', "P", Code::IdentifierRefused},  {'B', "P", Code::NameNotUnique},       {'\xE4', "p", Code::Ok},
    };
    for (const auto& row : cases)
        EXPECT_EQ(shop.addProfile(QorDayProfile(kDistribution, row.identifier, row.name)), row.code) << row.name;
    EXPECT_EQ(shop.initializeCalendarWithProfile(QorDayProfile(kFlag, 'Z', "Z")), Code::AlreadyInitialized);
    EXPECT_EQ(shop.assignNewProfileToDay(1, "P"), Code::CalendarInconsistent);
}

TEST(Calendar, AnswersWrongDaysNamesAndProfilesInAFixedOrder) {
    const auto week = calendar(kWeek);
    const auto other = calendar(kWeek);
    SV::String name;
    ISortedSet<int> days{99};
    EXPECT_EQ(week->getProfileNameForDay(0, name), Code::DayOutOfRange);
    EXPECT_EQ(week->getProfileNameForDay(8, name), Code::DayOutOfRange);
    EXPECT_EQ(week->getProfileNameForDay(7, name), Code::Ok);
    EXPECT_EQ(name, "Weekend");
    EXPECT_EQ(week->getDaysWhereProfileIsAssigned("weekend", days), Code::NoProfileWithName);
    EXPECT_EQ(week->getDaysWhereProfileIsAssigned("Weekend", days), Code::Ok);
    EXPECT_EQ(days, (ISortedSet<int>{6, 7, 99}));
    EXPECT_EQ(week->assignNewProfileToDay(9, "Nobody"), Code::NoProfileWithName);
    EXPECT_EQ(week->assignNewProfileToDay(9, "Weekend"), Code::DayOutOfRange);
    // What comes before the first bad number stays.
    EXPECT_EQ(week->assignProfileToDays("Weekend", {1, 3, 8, 4}), Code::DayOutOfRange);
    EXPECT_EQ(textOf(*week).substr(kWeek.size() - 7), "BABBABB");
    EXPECT_EQ(week->assignProfileToDays("Weekend", {0, 2}), Code::DayOutOfRange);

    EXPECT_EQ(week->deleteProfile(nullptr), Code::NoProfileWithName);
    EXPECT_EQ(week->deleteProfile(other->getProfiles().elementAtIndex(0)), Code::NoProfileWithName);
    QorDayProfile* workday = week->getProfiles().elementAtIndex(0);
    EXPECT_EQ(week->deleteProfile(workday), Code::ProfileInUse);
    ASSERT_EQ(week->assignProfileToDays("Weekend", {2, 5}), Code::Ok);
    EXPECT_EQ(week->deleteProfile(workday), Code::Ok);
    EXPECT_EQ(week->getProfileFromId('A', workday), Code::NoProfileWithIdentifier);
    EXPECT_EQ(workday, nullptr);
}

TEST(Calendar, FreeIdentifiersRunFromTheExclamationMarkTo127WithoutTheSeparator) {
    QorCalendar shop(kFlag, 0, 0, 1);
    std::string taken;
    char identifier = 0;
    while (shop.getUniqueId(identifier) == Code::Ok) {
        ASSERT_EQ(shop.addProfile(QorDayProfile(kFlag, identifier, std::string(1, identifier))), Code::Ok);
        taken += identifier;
    }
    std::string expected;
    for (char c = '!'; c < 127; ++c) {
        if (c != '@') expected += c;
    }
    EXPECT_EQ(taken, expected + '\x7F');
    EXPECT_EQ(shop.getUniqueId(identifier), Code::NoFreeIdentifier);
}

// Identifiers can be changed behind the calendar; a copy then takes the first profile that has one.
TEST(Calendar, ACopyFindsTheProfilesOfItsDaysByIdentifier) {
    const auto week = calendar(kWeek);
    EXPECT_EQ(textOf(QorCalendar(*week)), kWeek);
    week->getProfiles().elementAtIndex(1)->setIdentifier('A');
    const QorCalendar copy(*week);
    EXPECT_EQ(day(copy, 7), "28800-43200 46800-61200");
    EXPECT_EQ(day(*week, 7), "");
}

TEST(CalendarIntersection, NamesItsProfilesByThePairsInDayOrder) {
    const auto early = calendar("B@Early@E@21600-50400@T@Off@O@@@$EEOE");
    const auto late = calendar("B@Late@L@43200-79200@T@Night@N@0-21600@T@36000-86400@T@$LNLL");
    QorCalendar both(kFlag, 0, 1, 4);
    ASSERT_EQ(early->intersection(*late, both), Code::Ok);
    EXPECT_EQ(textOf(both), "B@Early & Late@!@43200-50400@T@Early & Night@\"@36000-50400@T@Off & Late@#@@@$!\"#!");
}

TEST(CalendarIntersection, ChecksTypeKindAndContentInThisOrder) {
    const auto week = calendar(kWeek);
    const QorCalendar arrivals(kDistribution, 0, 1, 7), shifted(kFlag, 1, 1, 7), empty(kFlag, 0, 1, 7);
    QorCalendar days(kFlag, 0, 1, 7);
    ASSERT_EQ(days.addProfile(QorDayProfile(kFlag, 'A', "P")), Code::Ok);
    QorCalendar result(kFlag, 0, 1, 7);
    EXPECT_EQ(shifted.intersection(arrivals, result), Code::WrongPropertyType);
    EXPECT_EQ(empty.intersection(shifted, result), Code::CalendarsDiffer);
    EXPECT_EQ(week->intersection(empty, *week), Code::NotInitialized);
    EXPECT_EQ(week->intersection(*week, *week), Code::AlreadyInitialized);
    EXPECT_EQ(week->intersection(days, result), Code::CalendarInconsistent);  // profiles, but no days
    EXPECT_EQ(day(result, 7), "");                                            // where the stand-in stays
}

// 93 pairs have identifiers beside the stand-in's; the 94th fails on its first day and leaves the days before.
TEST(CalendarIntersection, RunsOutOfIdentifiersInDayOrder) {
    QorCalendar many(kFlag, 0, 0, 94);
    for (int i = 1; i <= 94; ++i) {
        const QorDayProfile profile(kFlag, static_cast<char>(100 + i), "P" + std::to_string(i));
        ASSERT_EQ(i == 1 ? many.initializeCalendarWithProfile(profile) : many.addProfile(profile), Code::Ok);
        ASSERT_EQ(many.assignNewProfileToDay(i, profile.getName()), Code::Ok);
    }
    const auto always = calendar("B@Always@A@0-86400@T@$" + std::string(94, 'A'), 0);
    QorCalendar result(kFlag, 0, 0, 94);
    EXPECT_EQ(always->intersection(many, result), Code::NoFreeIdentifier);
    SV::String name;
    EXPECT_EQ(result.getProfileNameForDay(93, name), Code::Ok);
    EXPECT_EQ(name, "Always & P93");
    EXPECT_EQ(result.getProfileNameForDay(94, name), Code::Ok);
    EXPECT_EQ(name, "Dummy Day Profile");
}

TEST(DateFunctions, CountDaysOfOneYear) {
    const struct {
        SV::DayOfWeek weekday;
        unsigned long year;
        int first, count;  // 0: refused
    } years[] = {
        {SV::DayOfWeek::Monday, 1799, 0, 0},         {SV::DayOfWeek::Monday, 10000, 0, 0},
        {SV::DayOfWeek::Friday, 2027, 1, 53},        {SV::DayOfWeek::Thursday, 2027, 7, 52},
        {SV::DayOfWeek::Saturday, 2028, 1, 53},      {SV::DayOfWeek::Sunday, 2028, 2, 53},
        {SV::DayOfWeek::Friday, 9999, 1, 53},        {SV::DayOfWeek::Wednesday, 1800, 1, 53},
        {static_cast<SV::DayOfWeek>(7), 2027, 0, 0}, {SV::DayOfWeek::Monday, 4294969323, 0, 0},
    };
    for (const auto& row : years) {
        ISortedSet<int> days;
        EXPECT_EQ(QorDateFunctions::getAllDaysInYear(row.weekday, row.year, days), row.count != 0) << row.year;
        EXPECT_EQ(days.numberOfElements(), static_cast<unsigned long>(row.count)) << row.year;
        for (unsigned long i = 0; i < days.numberOfElements(); ++i)
            EXPECT_EQ(days.elementAtIndex(i), row.first + 7 * static_cast<int>(i)) << row.year;
    }
    const struct {
        int from, to, first, last;
    } ranges[] = {
        {20280228, 20280301, 59, 61}, {20271231, 20271231, 365, 365}, {20271231, 20280101, 0, -1},
        {20270302, 20270301, 0, -1},  {20270229, 20270301, 0, -1},
    };
    for (const auto& row : ranges) {
        ISortedSet<int> days, expected;
        for (int day = row.first; day <= row.last; ++day) expected.add(day);
        EXPECT_EQ(QorDateFunctions::getAllDaysInBetween(SV::Date(row.from), SV::Date(row.to), days),
                  !expected.isEmpty());
        EXPECT_EQ(days, expected) << row.from;
    }
}

}  // namespace
