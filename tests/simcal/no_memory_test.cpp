// SPDX-License-Identifier: Apache-2.0
// Every allocation of every operation fails once: the operation says so, throws nothing, changes no result and works
// the next time.
#include "platform/QorRandomGenerator.h"
#include "simcal/Calendars.h"
#include "simcal/QorCalendarAlgebra.h"
#include "simcal/QorCalendarText.h"
#include "simcal/QorDateFunctions.h"
#include "simcal/QorDistribution.h"
#include "simcal/QorWorkingTime.h"
#include "support/FailingAllocations.h"

using namespace simcal_tests;

namespace {

// Arguments that are made before memory runs out.
const SV::String kFlags{kWeek};
const SV::String kShop = "D@A profile with a long name@A@0-3600@U1234567;7654321@3600-14400@E0.5@Empty@B@@@$AB";
const SV::String kUniform = "Gleichverteilung (1234567 ; 7654321)";
const SV::String kExponential = "Exponentialverteilung (0.00000000000000005)";
const SV::String kShort = "U1234567;7654321";

// What an operation works on, fresh for each failing allocation, so that everything prepared is prepared anew.
struct Scene {
    std::unique_ptr<QorCalendar> week = calendar(kWeek);
    std::unique_ptr<QorCalendar> late = calendar("B@The late shift of the workshop@L@36000-72000@T@$LLLLLLL");
    std::unique_ptr<QorCalendar> shop = calendar(kShop.str());
    QorCalendar flags{kFlag, 0, 1, 7};
    QorCalendar arrivals{kDistribution, 0, 1, 2};
    QorDayProfile profile{kDistribution, 'Z', "Another profile with a long name"};
    QorDistribution distribution;
    QorWorkingTime time{*week};
    ISortedSet<int> days{500};
    ISequence<QorDistribution*> distributions;
    SV::String text{"untouched"};
    std::int64_t number = kUntouched;
    int flag = 777;
    double mean = -1;

    Scene() {
        EXPECT_EQ(distribution.setDistributionString(kUniform), 1);
        EXPECT_EQ(profile.insertDayIntervalWithProperty({at(1), at(2), &distribution}), Code::Ok);
    }
    // Everything that an operation can have changed.
    [[nodiscard]] std::string picture() const {
        std::string seen = textOf(*week) + textOf(*late) + textOf(*shop) + text.str() + std::to_string(number) +
                           std::to_string(flag) + std::to_string(mean) + distribution.getText().str();
        for (const auto* calendar : {&flags, &arrivals}) {
            seen += std::to_string(calendar->getProfiles().numberOfElements());
            if (calendar->getProfileOfDay(1) != nullptr) seen += textOf(*calendar);
        }
        for (const int day : days) seen += ' ' + std::to_string(day);
        return seen + std::to_string(distributions.numberOfElements()) + std::to_string(profile.getNumberOfIntervals());
    }
};

Code told(int result) { return result == 1 ? Code::Ok : Code::Broken; }

// clang-format off
const struct Operation {
    const char* name;
    std::function<Code(Scene&)> run;
} kOperations[] = {
    {"read flags", [](Scene& s) { return s.flags.initializeCalendar(kFlags); }},
    {"read distributions", [](Scene& s) { return s.arrivals.initializeCalendar(kShop); }},
    {"fill", [](Scene& s) { return s.arrivals.initializeCalendarWithProfile(s.profile); }},
    {"write", [](Scene& s) { return s.shop->getCalendarAsString(s.text); }},
    {"add", [](Scene& s) { return s.shop->addProfile(s.profile); }},
    {"insert", [](Scene& s) { return s.profile.insertDayIntervalWithProperty({at(8), at(9), &s.distribution}); }},
    {"add a copy", [](Scene& s) { return s.shop->addProfile(QorDayProfile(s.profile)); }},
    {"name of a day", [](Scene& s) { return s.late->getProfileNameForDay(1, s.text); }},
    {"days", [](Scene& s) { return s.week->getDaysWhereProfileIsAssigned("Weekend", s.days); }},
    {"distributions", [](Scene& s) { return s.shop->getDistributions(s.distributions); }},
    {"union", [](Scene& s) { return QorCalendarAlgebra::unite(*s.week, *s.late, s.flags); }},
    {"difference", [](Scene& s) { return QorCalendarAlgebra::subtract(*s.week, *s.late, s.flags); }},
    {"equality", [](Scene& s) { return QorCalendarAlgebra::areEqual(*s.shop, *s.shop, s.flag); }},
    {"next", [](Scene& s) { return s.week->howLongUntilStartOfNextInterval(5, s.number); }},
    {"end", [](Scene& s) { return s.week->howLongUntilEndOfInterval(9 * kHour, s.number); }},
    {"in", [](Scene& s) { return s.week->isInCurrentInterval(9 * kHour, 5, s.flag); }},
    {"sum", [](Scene& s) { return s.week->getTimeIntervalsSumInBetween(5, 9 * kDay, s.number); }},
    {"sum of all", [](Scene& s) { return s.week->getTimeIntervalsSumOfPeriod(s.number); }},
    {"mean of all", [](Scene& s) { return s.shop->getExpectationForPeriod(s.mean); }},
    {"mean of a day", [](Scene& s) { return s.shop->getProfileOfDay(1)->getExpectation(s.mean); }},
    {"long text", [](Scene& s) { return s.shop->getDistributionString(5, s.text); }},
    {"finish", [](Scene& s) { return s.time.finishOf(0, 99999, s.number, &s.text); }},
    {"start", [](Scene& s) { return s.time.latestStartFor(9 * kDay, 99999, s.number, &s.text); }},
    {"no work", [](Scene& s) { return s.time.finishOf(0, 0, s.number, &s.text); }},
    {"sum of work", [](Scene& s) { return s.time.sumBetween(0, 9 * kDay, s.number); }},
    {"interval", [](Scene& s) { std::int64_t end = 0; return s.time.nextInterval(0, s.number, end, &s.text); }},
    {"never open", [](Scene& s) { return s.time.isNeverOpen(s.flag); }},
    {"weekdays", [](Scene& s) { return told(QorDateFunctions::getAllDaysInYear(SV::DayOfWeek::Monday, 2027, s.days)); }},
    {"dates", [](Scene& s) { return told(QorDateFunctions::getAllDaysInBetween(SV::Date(20270105), SV::Date(20270309), s.days)); }},
    {"set", [](Scene&) { return told(QorDistribution().setDistributionString(kUniform)); }},
    {"mean", [](Scene& s) { return told(QorDistribution::getExpectation(kUniform, s.mean)); }},
    {"to long", [](Scene& s) { return told(QorDistribution::getLongDistributionString(kShort, s.text)); }},
    {"to short", [](Scene& s) { return told(QorDistribution::getShortDistributionString(kExponential, s.text)); }},
};
// clang-format on

TEST(NoMemory, AnyAllocationThatFailsIsToldAndChangesNothing) {
    const Language german("de");
    for (const Operation& operation : kOperations) {
        std::optional<Scene> scene;
        std::string before;
        const auto run = [&] {
            const long number = std::exchange(failing_allocations::untilFailure, 0);
            scene.emplace();
            before = scene->picture();
            failing_allocations::untilFailure = number;
            return operation.run(*scene);
        };
        const long failed = failing_allocations::failEach(run, [&](Code code, long number) {
            EXPECT_EQ(code, number == 0 ? Code::Ok : Code::Broken) << operation.name << " at " << number;
            if (number == 0) return;
            EXPECT_EQ(scene->picture(), before) << operation.name << " at " << number;
            EXPECT_EQ(operation.run(*scene), Code::Ok) << operation.name << " after " << number;
        });
        EXPECT_GT(failed, 0) << operation.name << " allocates nothing";
    }
}

// These leave by design what was built for the days before, or have no code to say it with.
TEST(NoMemory, AnIntersectionOrACopyThatBreaksOffClaimsNothing) {
    const Language german("de");
    const Scene scene;
    const auto intersect = [&] {
        QorCalendar shared(kFlag, 0, 1, 7);
        return scene.week->intersection(*scene.late, shared);
    };
    failing_allocations::failEach(
        intersect, [](Code code, long number) { EXPECT_EQ(code, number == 0 ? Code::Ok : Code::Broken) << number; });
    const auto copy = [&] { return QorCalendar(*scene.shop).isInitialized(); };
    failing_allocations::failEach(copy, [](bool whole, long number) { EXPECT_EQ(whole, number == 0) << number; });
}

}  // namespace
