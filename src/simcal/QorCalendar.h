// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/ISequence.h"
#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "platform/SvTime.h"
#include "simcal/QorCalendarErrorCode.h"
#include "simcal/QorCalendarPropertyType.h"
#include "simcal/QorDayProfile.h"

class QorDistribution;
class QorRandomGenerator;

namespace qor::simcal {
class CalendarPlan;
class CalendarReader;
class IntervalCollector;
}  // namespace qor::simcal

/// A period of days, each pointing at one day profile: when somebody works (type Flag) or at which rate something
/// arrives (type Distribution). Days and positions count from 1.
///
/// An instant is a number of seconds on the simulation clock; the offset is added to it to get the seconds since the
/// period's start. Every day has 86400 seconds. A period that is cyclic repeats; one that is not ends with its last
/// day, and an instant exactly at its end still counts: as 00:00:00 of day 1 of cycle 1.
///
/// The day list is empty at first and complete (one profile per day) from reading or initializeCalendarWithProfile on.
/// A profile is shared by all days that point at it, and owned by the calendar; it keeps its address until it is
/// deleted or the calendar is emptied. Pointers handed out may be used to change profiles.
///
/// Arithmetic takes the same time for a period of a week and of a century and for any distance of instants: sums are
/// prepared when first asked for, in time and memory proportional to days and intervals, and prepared anew after a
/// change. Several threads must not use one calendar at once, not even for queries.
class QOR_API QorCalendar {
public:
    static constexpr std::int32_t kSecondsPerDay = 86400;

    /// A calendar without profiles and days. Any value of `cyclic` but 0 counts as 1.
    QorCalendar(QorCalendarPropertyType type, const std::int64_t& offsetInSeconds, int cyclic,
                int periodLengthInDays) noexcept;
    /// Copies every profile; each day points at the first copy with the identifier of its profile.
    QorCalendar(const QorCalendar& other) noexcept;
    QorCalendar& operator=(const QorCalendar&) = delete;
    ~QorCalendar();

    [[nodiscard]] std::int64_t getOffsetInSeconds() const noexcept { return _offset; }
    [[nodiscard]] int isCyclic() const noexcept { return _cyclic; }
    [[nodiscard]] int getPeriodLengthInDays() const noexcept { return _periodLength; }
    [[nodiscard]] QorCalendarPropertyType getPropertyType() const noexcept { return _type; }
    /// In the order in which they were added; owned by the calendar.
    [[nodiscard]] const ISequence<QorDayProfile*>& getProfiles() const noexcept { return _profiles; }
    /// The day list is complete, or there is a profile. Hence a period of 0 days is initialised from the start.
    [[nodiscard]] bool isInitialized() const noexcept;

    // Text form: "B@Workday@A@28800-43200@T@46800-61200@T@Weekend@B@@@$AAAAABB"

    /// Reads the text form. On a failure the calendar is emptied, except for AlreadyInitialized. A text without a day
    /// list is a success and leaves the day list empty. Reading is one pass over the text.
    QorCalendarErrorCode initializeCalendar(const SV::String& text) noexcept;
    /// Adds a copy of the profile and lets every day point at it. AlreadyInitialized, or as addProfile.
    QorCalendarErrorCode initializeCalendarWithProfile(const QorDayProfile& profile) noexcept;
    /// Writes the text form. A flag that is not 1 is written as "F", which reading refuses. The text says neither
    /// offset, nor cyclic flag, nor period length. CalendarInconsistent, IntervalInconsistent, NoDistributionText,
    /// NoShortDistribution.
    QorCalendarErrorCode getCalendarAsString(SV::String& text) const noexcept;

    // Profiles and days

    /// Appends a copy. IdentifierRefused, NameHoldsSeparator, NameNotUnique. The type is not looked at.
    QorCalendarErrorCode addProfile(const QorDayProfile& profile) noexcept;
    /// Destroys the profile. ProfileInUse while a day points at it; NoProfileWithName when it is not of this calendar.
    QorCalendarErrorCode deleteProfile(QorDayProfile* profile) noexcept;
    /// `used` becomes 1 when a day points at the profile, else 0 (also for a profile of another calendar).
    QorCalendarErrorCode profileIsUsedInCalendar(const QorDayProfile* profile, int& used) const noexcept;
    /// NameNotUnique when a profile has exactly this name.
    QorCalendarErrorCode isUniqueProfileName(const SV::String& name) const noexcept;
    /// The first of the characters "!" to 127 that no profile uses, never "@"; NoFreeIdentifier.
    QorCalendarErrorCode getUniqueId(char& identifier) const noexcept;
    /// NoProfileWithName.
    QorCalendarErrorCode getProfileFromName(const SV::String& name, QorDayProfile*& profile) const noexcept;
    /// NoProfileWithIdentifier.
    QorCalendarErrorCode getProfileFromId(char identifier, QorDayProfile*& profile) const noexcept;
    /// DayOutOfRange, CalendarInconsistent.
    QorCalendarErrorCode getProfileNameForDay(int day, SV::String& name) const noexcept;
    /// Adds the days to the set. CalendarInconsistent, NoProfileWithName.
    QorCalendarErrorCode getDaysWhereProfileIsAssigned(const SV::String& name, ISortedSet<int>& days) const noexcept;
    /// NoProfileWithName, CalendarInconsistent; DayOutOfRange at the first number outside the period, when the days
    /// before it are assigned already.
    QorCalendarErrorCode assignProfileToDays(const SV::String& name, const ISortedSet<int>& days) noexcept;
    /// NoProfileWithName, DayOutOfRange, CalendarInconsistent.
    QorCalendarErrorCode assignNewProfileToDay(int day, const SV::String& name) noexcept;
    /// Adds the distributions of all intervals of all profiles, owned by the intervals. WrongPropertyType.
    QorCalendarErrorCode getDistributions(ISequence<QorDistribution*>& distributions) const noexcept;

    /// Builds in `result`, which must be new and agree in cyclic flag, offset and period length, the time that both
    /// flag calendars share: for each pair of profiles that meet on a day, in the order of days, a profile named after
    /// both. At most 93 different pairs have identifiers. WrongPropertyType, CalendarsDiffer, NotInitialized,
    /// AlreadyInitialized; a failure on a day leaves in the result what was built for the days before.
    QorCalendarErrorCode intersection(const QorCalendar& other, QorCalendar& result) const noexcept;

    // Arithmetic. In the order of checks: WrongPropertyType where it applies, FirstAfterSecond, BeyondPeriod,
    // CalendarInconsistent (no complete day list, a period of no days, or an instant a day or more before its start).

    /// Seconds until the next interval starts, 0 when one starts just then; NoNextInterval. The number is computed in
    /// 32 bits and wraps.
    QorCalendarErrorCode howLongUntilStartOfNextInterval(const std::int64_t& instant,
                                                         std::int64_t& seconds) const noexcept;
    /// Seconds until the interval that holds the instant ends; NoInterval.
    QorCalendarErrorCode howLongUntilEndOfInterval(const std::int64_t& instant, std::int64_t& seconds) const noexcept;
    /// `result` becomes 1 when both ends of the span lie in the same interval of the same day number; in which cycles
    /// does not matter, and a span that ends just when the interval ends is not in it. A duration above 86400 seconds
    /// gives 0, and so does a day without a profile.
    QorCalendarErrorCode isInCurrentInterval(const std::int64_t& instant, const std::int64_t& duration,
                                             int& result) const noexcept;
    /// Interval time between two instants. DoesNotFit when it exceeds 32 bits; `seconds` is then -2147483648.
    QorCalendarErrorCode getTimeIntervalsSumInBetween(const std::int64_t& from, const std::int64_t& to,
                                                      std::int64_t& seconds) const noexcept;
    /// Interval time of all days of the period.
    QorCalendarErrorCode getTimeIntervalsSumOfPeriod(std::int64_t& seconds) const noexcept;
    /// `result` becomes 1 when intervals cover the whole span, else 0, also on failures. When the instants lie more
    /// than one cycle apart, every profile must cover a whole day, even one that no day points at.
    QorCalendarErrorCode isCoveredWholly(const std::int64_t& from, const std::int64_t& to, int& result) const noexcept;

    /// The mean of the expectations of the intervals in a range of days, each from and to a second of its day, weighted
    /// by their seconds inside. WrongPropertyType, FirstAfterSecond, DayOutOfRange, CalendarInconsistent, NoInterval
    /// when none lies inside, NoDistributionText. Takes time in proportion to the days.
    QorCalendarErrorCode getExpectationForInterval(int firstDay, int firstSecond, int lastDay, int lastSecond,
                                                   double& expectation) const noexcept;
    /// The same for the whole period.
    QorCalendarErrorCode getExpectationForPeriod(double& expectation) const noexcept;
    /// The long text of the distribution that holds at the instant. WrongPropertyType, NoInterval, NoDistributionText.
    QorCalendarErrorCode getDistributionString(const std::int64_t& instant, SV::String& text) const noexcept;
    /// The generator of that distribution, owned by whoever it was set by. WrongPropertyType, NoInterval,
    /// NoRandomGenerator.
    QorCalendarErrorCode getRandomGenerator(const std::int64_t& instant, QorRandomGenerator*& generator) const noexcept;

    /// Changes with every change of profiles, intervals or days: what was computed from the calendar holds while this
    /// number stays.
    [[nodiscard]] std::uint64_t getRevision() const noexcept { return _revision; }
    /// The profile of a day; null outside the day list.
    [[nodiscard]] const QorDayProfile* getProfileOfDay(int day) const noexcept;

private:
    friend class qor::simcal::CalendarReader;
    friend class QorCalendarAlgebra;
    friend class QorCalendarText;

    void cleanUp() noexcept;
    QorCalendarErrorCode readText(const SV::String& text, std::size_t& failedAt) noexcept;
    /// Takes profiles and days over from a calendar of the same kind, which gets those held here.
    void takeContents(QorCalendar& other) noexcept;
    [[nodiscard]] bool daysAreComplete() const noexcept;
    QorCalendarErrorCode isUniqueProfileId(char identifier) const noexcept;
    QorCalendarErrorCode addNewboolInterval(qor::simcal::IntervalCollector& intervals, SV::Time start, SV::Time end,
                                            std::string_view property);
    QorCalendarErrorCode addNewDistributionInterval(qor::simcal::IntervalCollector& intervals, SV::Time start,
                                                    SV::Time end, std::string_view property,
                                                    const qor::simcal::DistributionKeywords& keywords);
    QorCalendarErrorCode setDays(std::string_view identifiers);
    QorCalendarErrorCode checkNewProfile(const QorDayProfile& profile) const noexcept;
    QorCalendarErrorCode adopt(std::unique_ptr<QorDayProfile> profile);
    QorCalendarErrorCode fillWithProfile(const QorDayProfile& profile);
    [[nodiscard]] std::vector<QorDayProfile*> profilesByIdentifier() const;

    QorCalendarErrorCode currentTimeAsDayAndTime(const std::int64_t& instant, int& cycle, int& day,
                                                 SV::Time& timeOfDay) const noexcept;
    QorCalendarErrorCode getCurrentInterval(const std::int64_t& instant,
                                            QorDayIntervalWithProperty*& interval) const noexcept;
    /// Hidden, so that calls within the library can be inlined.
    [[nodiscard, gnu::visibility("hidden")]] const qor::simcal::CalendarPlan& plan() const;

    std::int64_t _offset;
    int _cyclic;
    std::int32_t _periodLength;
    QorCalendarPropertyType _type;
    std::vector<QorDayProfile*> _days;    // entry i is day i + 1
    ISequence<QorDayProfile*> _profiles;  // owned
    std::uint64_t _revision = 0;
    mutable std::unique_ptr<qor::simcal::CalendarPlan> _plan;
};
