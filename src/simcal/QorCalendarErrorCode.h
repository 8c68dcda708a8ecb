// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// Result of a calendar operation: 0 is success, every other value a failure. On a failure out parameters that are
/// pointers become null, and values, texts and collections stay as they were, unless the operation says otherwise.
enum class [[nodiscard]] QorCalendarErrorCode : std::int32_t{
    Ok = 0,
    IntervalInconsistent = 2,      ///< an interval does not start before it ends
    IntervalOverlaps = 3,          ///< a new interval overlaps the interval before it
    WrongPropertyType = 4,         ///< interval, profile or calendar has another type than the operation needs
    BeyondPeriod = 5,              ///< the instant lies beyond the end of a period that does not repeat
    NoInterval = 6,                ///< no interval at that time of day, in that range or in that profile
    NoNextInterval = 9,            ///< the period ends, or no day of a whole period has an interval
    NoDistributionText = 10,       ///< the distribution of an interval has no text
    NoRandomGenerator = 11,        ///< the distribution of the current interval has no random generator
    CalendarInconsistent = 12,     ///< the day list is not complete, or a profile or interval has another type
    WrongTypeLetter = 13,          ///< text: it does not begin with the letter of the calendar's type
    IdentifierRefused = 14,        ///< a profile identifier is missing, in use already, or "@"
    AlreadyInitialized = 15,       ///< the calendar has profiles or days already
    WrongNumberOfDays = 16,        ///< text: the day list does not hold one identifier per day of the period
    DaysAlreadySet = 17,           ///< text: the calendar has a day list already
    NoProfileWithIdentifier = 18,  ///< no profile has that identifier
    FlagNotSet = 19,               ///< text: the property of a flag interval is not "T"
    NoShortDistribution = 21,      ///< a distribution has no short text, or a property is no short text
    NameHoldsSeparator = 22,       ///< a profile name holds "@"
    NoProfileWithName = 23,        ///< no profile has that name; the profile is not one of this calendar
    NameNotUnique = 24,            ///< another profile has that name
    ProfileInUse = 25,             ///< a day still points at the profile
    NoFreeIdentifier = 26,         ///< every profile identifier is in use
    PositionOutOfRange = 27,       ///< no interval at that position; they count from 1
    DayOutOfRange = 28,            ///< days count from 1 to the period length
    FirstAfterSecond = 29,         ///< the first instant or time lies after the second
    DoesNotFit = 30,               ///< the result does not fit its number
    NoIntersection = 31,           ///< two intervals share no time; touching is not sharing
    CalendarsDiffer = 32,          ///< calendars differ in offset, cyclic flag or period length
    NotInitialized = 33,           ///< a calendar to be combined has neither profiles nor a complete day list
    Broken = -2,                   ///< the operation broke off for lack of memory
};
