// SPDX-License-Identifier: Apache-2.0
#include "simcal/Calendars.h"
#include "simcal/QorDistribution.h"

using namespace simcal_tests;

namespace {

TEST(CalendarText, ReadsWhatTheGrammarSaysAndEmptiesTheCalendarOtherwise) {
    const Language english;
    const struct {
        QorCalendarPropertyType type;
        int period;
        std::string text;
        Code code;
    } cases[] = {
        {kFlag, 7, kWeek, Code::Ok},
        {kFlag, 2, "B", Code::Ok},  // no day list: incomplete, and no failure
        {kFlag, 2, "B@P@A@0-1@T", Code::Ok},
        {kFlag, 2, "B@P@A@@skipped@$AA", Code::Ok},
        {kFlag, 2, "B@P@A@@", Code::Ok},
        {kFlag, 2, "B@P@Abc@0-1@T@@@$AA", Code::Ok},  // the first character is the identifier
        {kFlag, 2, "B@P@A@0-1@T@$AA@Q@B", Code::Ok},  // a profile behind the day list
        {kFlag, 2, "B@P@A@5-6@T@0-5@T@$AA", Code::Ok},
        {kFlag, 2, "B@P@A@-1-5@Q@B@$AB", Code::Ok},  // "-1-5" is a name, and so is "B", with the identifier "$"
        {kFlag, 3, "B@P@$AA@Q@B@@@$$$$", Code::Ok},  // "$" is an identifier like others
        {kFlag, 1, "B@P@\xE4@@@$\xE4", Code::Ok},
        {kFlag, 0, "B@$", Code::Ok},
        {kFlag, 2, "", Code::WrongTypeLetter},
        {kFlag, 2, "D@P@A@@@$AA", Code::WrongTypeLetter},
        {kFlag, 2, "BB@P@A@@@$AA", Code::WrongTypeLetter},
        {kFlag, 2, "B@P", Code::IdentifierRefused},
        {kFlag, 2, "B@", Code::IdentifierRefused},
        {kFlag, 2, "B@P@@@@$AA", Code::IdentifierRefused},
        {kFlag, 2, "B@P@A@@@Q@A@@@$AA", Code::IdentifierRefused},
        {kFlag, 2, "B@P@A@@@P@B@@@$AA", Code::NameNotUnique},
        {kFlag, 2, "B@P@A@0-1@F@$AA", Code::FlagNotSet},
        {kFlag, 2, "B@P@A@0-1", Code::FlagNotSet},
        {kFlag, 2, "B@P@A@1-0@F@$AA", Code::FlagNotSet},  // the property comes before the interval
        {kFlag, 2, "B@P@A@5-5@T@$AA", Code::IntervalInconsistent},
        {kFlag, 2, "B@P@A@0-86401@T@$AA", Code::IntervalInconsistent},
        {kFlag, 2, "B@P@A@0-" + std::string(30, '9') + "@T@$AA", Code::IntervalInconsistent},
        {kFlag, 2, "B@P@A@0-5@T@4-6@T@$AA", Code::IntervalOverlaps},
        {kFlag, 2, "B@P@A@0-86400@T@P@A@1-0@T", Code::IntervalInconsistent},  // before the profile's own checks
        {kFlag, 2, "B@P@A@0-1@T@$A", Code::WrongNumberOfDays},
        {kFlag, 2, "B@P@A@0-1@T@$AA@$AX@$A", Code::DaysAlreadySet},
        {kFlag, 2, "B@P@A@0-1@T@$AX", Code::NoProfileWithIdentifier},
        {kFlag, 2, "B@$AA@P@A@@", Code::NoProfileWithIdentifier},
        {kFlag, 2, std::string("B@P\0x@A@0-1@T@$A\0", 17), Code::NoProfileWithIdentifier},
        {kDistribution, 1, "D@P@A@0-1@U3;7@1-2@E.5@$A", Code::Ok},
        {kDistribution, 1, "D@P@A@0-1@U7;3@$A", Code::NoShortDistribution},
        {kDistribution, 1, "D@P@A@0-1@T@$A", Code::NoShortDistribution},
        {kDistribution, 1, "D@P@A@1-0@X@$A", Code::NoShortDistribution},
    };
    for (const auto& row : cases) {
        QorCalendar read(row.type, 0, 0, row.period);
        EXPECT_EQ(read.initializeCalendar(row.text), row.code) << row.text;
        if (row.code != Code::Ok) {
            EXPECT_TRUE(read.getProfiles().isEmpty()) << row.text;
            EXPECT_EQ(read.getProfileOfDay(1), nullptr) << row.text;
        }
    }
}

TEST(CalendarText, ASecondReadingIsRefusedAndChangesNothing) {
    const auto week = calendar(kWeek);
    EXPECT_EQ(week->initializeCalendar("rubbish"), Code::AlreadyInitialized);
    EXPECT_EQ(textOf(*week), kWeek);
}

TEST(CalendarText, WritesWhatItReadsAndEveryCutIsAnsweredWithoutHalfACalendar) {
    const Language english;
    for (const std::string& text : {kWeek, std::string("D@P@A@0-1@U-3;7@1-2@E.5@Q@!@@@$A!")}) {
        EXPECT_EQ(textOf(*calendar(text)), text);
        for (std::size_t length = 0; length < text.size(); ++length) {
            QorCalendar read(text[0] == 'B' ? kFlag : kDistribution, 0, 0, text[0] == 'B' ? 7 : 2);
            const Code code = read.initializeCalendar(text.substr(0, length));
            EXPECT_EQ(read.getProfileOfDay(1), nullptr) << length;
            EXPECT_TRUE(code == Code::Ok || read.getProfiles().isEmpty()) << length;
        }
    }
    std::mt19937_64 random(3);
    for (int round = 0; round < 300; ++round) {
        const std::string text = textOf(*randomCalendar(random, 1 + static_cast<int>(random() % 40)));
        EXPECT_EQ(textOf(*calendar(text)), text);
    }
}

TEST(CalendarText, RefusesToWriteWhatIsIncompleteOfAnotherTypeOrWithoutDistribution) {
    SV::String text("untouched");
    QorCalendar incomplete(kFlag, 0, 0, 2);
    ASSERT_EQ(incomplete.addProfile(QorDayProfile(kFlag, 'A', "P")), Code::Ok);
    EXPECT_EQ(incomplete.getCalendarAsString(text), Code::CalendarInconsistent);

    const auto mixed = calendar(kWeek);
    ASSERT_EQ(mixed->addProfile(QorDayProfile(kDistribution, 'D', "Arrivals")), Code::Ok);  // adding looks at no type
    EXPECT_EQ(mixed->getCalendarAsString(text), Code::CalendarInconsistent);

    const QorDistribution empty;
    QorCalendar shop(kDistribution, 0, 0, 1);
    QorDayProfile profile(kDistribution, 'A', "P");
    ASSERT_EQ(profile.insertDayIntervalWithProperty({at(8), at(9), &empty}), Code::Ok);
    ASSERT_EQ(shop.initializeCalendarWithProfile(profile), Code::Ok);
    EXPECT_EQ(shop.getCalendarAsString(text), Code::NoDistributionText);

    std::optional<Language> language(std::in_place, "de");
    const auto german = calendar("D@P@A@0-1@U3;7@$A");
    language.emplace("en");  // the stored texts keep the keyword of the language they were read in
    EXPECT_EQ(german->getCalendarAsString(text), Code::NoShortDistribution);
    EXPECT_EQ(text, "untouched");
}

TEST(CalendarText, AFlagThatIsNotSetIsWrittenButNotReadBack) {
    QorCalendar shop(kFlag, 0, 0, 1);
    QorDayProfile profile(kFlag, 'A', "P");
    ASSERT_EQ(profile.insertDayIntervalWithProperty(open(at(8), at(9), 0)), Code::Ok);
    ASSERT_EQ(shop.initializeCalendarWithProfile(profile), Code::Ok);
    EXPECT_EQ(textOf(shop), "B@P@A@28800-32400@F@$A");
    EXPECT_EQ(QorCalendar(kFlag, 0, 0, 1).initializeCalendar(textOf(shop)), Code::FlagNotSet);
}

TEST(CalendarText, NamesThatLookLikeOtherTokensAreWrittenAsTheyAreAndReadAsThose) {
    QorCalendar shop(kFlag, 0, 0, 1);
    QorDayProfile first(kFlag, 'A', "P");
    ASSERT_EQ(first.insertDayIntervalWithProperty(open(at(0), at(24))), Code::Ok);
    ASSERT_EQ(shop.initializeCalendarWithProfile(first), Code::Ok);
    ASSERT_EQ(shop.addProfile(QorDayProfile(kFlag, 'B', "10-20")), Code::Ok);
    EXPECT_EQ(textOf(shop), "B@P@A@0-86400@T@10-20@B@@@$A");
    EXPECT_EQ(QorCalendar(kFlag, 0, 0, 1).initializeCalendar(textOf(shop)), Code::FlagNotSet);
}

}  // namespace
