// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorDistribution.h"

#include "platform/QorRandomGenerator.h"
#include "simcal/Calendars.h"

using simcal_tests::Language;

namespace {

const std::string kManyDigits(400, '9');

TEST(Distribution, LongTextsConvertToShortOnesAndHaveAnExpectation) {
    const Language english;
    const struct {
        std::string longText, shortText;  // no short text: no distribution
        double expectation;
    } cases[] = {
        {"Uniform (3 ; 4)", "U3;4", 3.5},
        {"  Uniform   ( -7;007 )  ", "U-7;007", 0},
        {"Uniform(0;1)", "U0;1", 0.5},
        {"Uniform (-" + kManyDigits + " ; -1)", "U-" + kManyDigits + ";-1", -1},
        {"Uniform (3 ; 3)", "", -1},
        {"Uniform (-3 ; -4)", "", -1},
        {"Uniform (-0 ; 00)", "", -1},
        {"Uniform (10 ; 9)", "", -1},
        {"Uniform (3 ; 4) x", "", -1},
        {"Uniform (3 ; 4 ; 5)", "", -1},
        {"Uniform (3.5 ; 4)", "", -1},
        {"Uniform (+3 ; 4)", "", -1},
        {"Uniform (- ; 4)", "", -1},
        {"Uniform ()", "", -1},
        {"Uniform (", "", -1},
        {"uniform (3 ; 4)", "", -1},
        {"x Uniform (3 ; 4)", "", -1},
        {"Uniform\t(3 ; 4)", "", -1},
        {"Exponential (0.5)", "E0.5", 2},
        {" Exponential ( 0,5 ) ", "E0.5", 2},
        {"Exponential (.25)", "E.25", 4},
        {"Exponential (1.)", "E1.", 1},
        {"Exponential (1)", "E1", 1},
        {"Exponential (1.0000001)", "", -1},
        {"Exponential (0)", "", -1},
        {"Exponential (-0.5)", "", -1},
        {"Exponential (0,,5)", "", -1},
        {"Exponential (.)", "", -1},
        {"Exponential (1e-1)", "", -1},
        {"Exponential (0.5 0)", "", -1},
        {"Exponential (nan)", "", -1},
        {"", "", -1},
        {std::string("Uniform (3 ; 4\0)", 16), "", -1},
    };
    for (const auto& row : cases) {
        const bool valid = !row.shortText.empty();
        SV::String shortText;
        SV::String shown;
        double expectation = -1;
        EXPECT_EQ(QorDistribution::isDistribution(row.longText), valid) << row.longText;
        EXPECT_EQ(QorDistribution::getShortDistributionString(row.longText, shortText), valid) << row.longText;
        EXPECT_EQ(shortText.str(), row.shortText) << row.longText;
        EXPECT_EQ(QorDistribution::convertLongDistributionStringInUIRep(row.longText, shown), valid);
        EXPECT_EQ(QorDistribution::convertUIRepInLongDistributionString(row.longText, shown), valid);
        EXPECT_EQ(shown.str(), valid ? row.longText : "");
        const bool fitsDouble = valid && row.longText.find(kManyDigits) == std::string::npos;
        EXPECT_EQ(QorDistribution::getExpectation(row.longText, expectation), fitsDouble) << row.longText;
        EXPECT_EQ(expectation, row.expectation) << row.longText;
    }
}

TEST(Distribution, ShortTextsConvertExactlyAsTheyAreWritten) {
    const Language english;
    const struct {
        std::string shortText, longText;
    } cases[] = {
        {"U3;7", "Uniform (3 ; 7)"},
        {"U7;3", "Uniform (7 ; 3)"},  // the order is not looked at on this way
        {"U3;5;7", ""},
        {"U3", ""},
        {"U 3;7", ""},
        {"u3;7", ""},
        {"E0,5", "Exponential (0.5)"},
        {"E.5", "Exponential (.5)"},
        {"E 0.5", ""},
        {"E0.5 ", ""},
        {"E0", ""},
        {"E", ""},
        {"", ""},
    };
    for (const auto& row : cases) {
        SV::String text;
        EXPECT_EQ(QorDistribution::getLongDistributionString(row.shortText, text), !row.longText.empty());
        EXPECT_EQ(text.str(), row.longText) << row.shortText;
    }
}

TEST(Distribution, TakesATextOnceAndReadsItInItsOwnLanguageOnly) {
    const Language german("de");
    QorDistribution distribution;
    SV::String text("untouched");
    EXPECT_EQ(distribution.getDistributionString(text), 0);
    EXPECT_EQ(distribution.setDistributionString("Uniform (3 ; 4)"), 0);
    EXPECT_EQ(distribution.setDistributionString(" Gleichverteilung (3 ; 4)"), 1);
    EXPECT_EQ(distribution.setDistributionString("Gleichverteilung (5 ; 6)"), 0);
    EXPECT_EQ(text, "untouched");

    const Language english;
    EXPECT_EQ(distribution.getDistributionStringInUIRep(text), 1);
    EXPECT_EQ(text, " Gleichverteilung (3 ; 4)");
    SV::String shortText;
    EXPECT_EQ(QorDistribution::getShortDistributionString(text, shortText), 0);
}

TEST(Distribution, OwnsItsGeneratorAndCopiesOnlyBorrowIt) {
    struct Generator : QorRandomGenerator {
        explicit Generator(bool& gone) : _gone(gone) {}
        ~Generator() override { _gone = true; }
        double next() override { return 0; }
        bool& _gone;
    };
    bool gone = false;
    {
        QorDistribution distribution;
        EXPECT_EQ(distribution.setRandomGenerator(nullptr), 0);
        ASSERT_EQ(distribution.setRandomGenerator(new Generator(gone)), 1);
        bool refusedGone = false;
        Generator refused(refusedGone);
        EXPECT_EQ(distribution.setRandomGenerator(&refused), 0);
        { const QorDistribution copy(distribution); }
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

}  // namespace
