// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorCalendarAlgebra.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QorGuard.h"
#include "platform/QorTimeFunctions.h"
#include "simcal/ProfilePairs.h"
#include "simcal/QorCalendar.h"
#include "simcal/QorDistribution.h"

using Code = QorCalendarErrorCode;
using qor::simcal::ProfilePair;

namespace {

struct Piece {
    SV::Time start;
    SV::Time end;
    std::string property;

    friend bool operator==(const Piece& a, const Piece& b) {
        return a.start == b.start && a.end == b.end && a.property == b.property;
    }
};
using Pieces = std::vector<Piece>;

std::string propertyOf(const QorDayIntervalWithProperty& interval) {
    if (interval.getPropertyType() == QorCalendarPropertyType::Flag) {
        int flag = 0;
        return interval.getFlag(flag) == Code::Ok && flag == 1 ? "T" : "F";
    }
    QorDistribution* distribution = nullptr;
    return interval.getDistribution(distribution) == Code::Ok ? distribution->getText().str() : std::string();
}

Pieces piecesOf(const QorDayProfile& profile) {
    Pieces pieces;
    for (int position = 1; position <= profile.getNumberOfIntervals(); ++position) {
        QorDayIntervalWithProperty* interval = nullptr;
        Piece piece;
        (void)profile.getIntervalAtPosition(position, interval);
        (void)interval->getStartTime(piece.start);
        (void)interval->getEndTime(piece.end);
        piece.property = propertyOf(*interval);
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

void appendMerged(Pieces& merged, const Piece& piece) {
    if (!merged.empty() && piece.start <= merged.back().end && piece.property == merged.back().property)
        merged.back().end = std::max(merged.back().end, piece.end);
    else
        merged.push_back(piece);
}

Pieces merged(const Pieces& pieces) {
    Pieces result;
    for (const Piece& piece : pieces) appendMerged(result, piece);
    return result;
}

Pieces whateverFlag(Pieces pieces) {
    for (Piece& piece : pieces) piece.property.clear();
    return pieces;
}

Pieces unionOf(const Pieces& first, const Pieces& second) {
    Pieces all(first.size() + second.size());
    std::merge(first.begin(), first.end(), second.begin(), second.end(), all.begin(),
               [](const Piece& a, const Piece& b) { return a.start < b.start; });
    return merged(all);
}

Pieces differenceOf(const Pieces& first, const Pieces& second) {
    Pieces result;
    auto hole = second.begin();
    for (Piece piece : first) {
        while (hole != second.end() && hole->end <= piece.start) ++hole;
        for (auto next = hole; next != second.end() && next->start < piece.end; ++next) {
            if (piece.start < next->start) result.push_back({piece.start, next->start, {}});
            piece.start = next->end;
        }
        if (piece.start < piece.end) result.push_back(piece);
    }
    return result;
}

Code freeIdentifier(const QorCalendar& calendar, char& identifier) {
    if (calendar.getUniqueId(identifier) == Code::Ok) return Code::Ok;
    for (int candidate = 128; candidate <= 255; ++candidate) {
        QorDayProfile* profile = nullptr;
        identifier = static_cast<char>(candidate);
        if (calendar.getProfileFromId(identifier, profile) != Code::Ok) return Code::Ok;
    }
    return Code::NoFreeIdentifier;
}

struct Operation {
    std::string_view sign;
    Pieces (*combine)(const Pieces&, const Pieces&);
};

Code fill(QorDayProfile& profile, const ProfilePair& pair, Pieces (*combine)(const Pieces&, const Pieces&)) {
    for (const auto* operand : {pair.first, pair.second}) {
        if (operand->getPropertyType() != QorCalendarPropertyType::Flag) return Code::WrongPropertyType;
    }
    const Pieces pieces = combine(whateverFlag(piecesOf(*pair.first)), whateverFlag(piecesOf(*pair.second)));
    for (const Piece& piece : pieces) {
        const Code code = profile.insertDayIntervalWithProperty({piece.start, piece.end, 1});
        if (code != Code::Ok) return code;
    }
    return Code::Ok;
}

bool agree(const QorCalendar& a, const QorCalendar& b) {
    return a.isCyclic() == b.isCyclic() && a.getOffsetInSeconds() == b.getOffsetInSeconds() &&
           a.getPeriodLengthInDays() == b.getPeriodLengthInDays();
}

bool isComplete(const QorCalendar& calendar) {
    return calendar.getPeriodLengthInDays() == 0 || calendar.getProfileOfDay(1) != nullptr;
}

Code check(const QorCalendar& first, const QorCalendar& second, const QorCalendar& result) {
    for (const auto* calendar : {&first, &second, &result}) {
        if (calendar->getPropertyType() != QorCalendarPropertyType::Flag) return Code::WrongPropertyType;
    }
    if (!agree(first, second) || !agree(first, result)) return Code::CalendarsDiffer;
    if (!isComplete(first) || !isComplete(second)) return Code::CalendarInconsistent;
    return result.isInitialized() ? Code::AlreadyInitialized : Code::Ok;
}

}  // namespace

// The result is built aside and taken over at the end, so that a failure leaves it new.
template <class Operation>
Code QorCalendarAlgebra::combine(const QorCalendar& first, const QorCalendar& second, const Operation& operation,
                                 QorCalendar& result) noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] {
        if (const Code code = check(first, second, result); code != Code::Ok) return code;
        QorCalendar built(result.getPropertyType(), result.getOffsetInSeconds(), result.isCyclic(),
                          result.getPeriodLengthInDays());
        for (const ProfilePair& pair : qor::simcal::pairsByDay(first, second)) {
            char identifier = 0;
            if (const Code code = freeIdentifier(built, identifier); code != Code::Ok) return code;
            const SV::String name = pair.first->getName() + operation.sign + pair.second->getName();
            QorDayProfile profile(QorCalendarPropertyType::Flag, identifier, name);
            if (const Code code = fill(profile, pair, operation.combine); code != Code::Ok) return code;
            const bool isFirst = built.getProfiles().isEmpty();
            const Code added = isFirst ? built.initializeCalendarWithProfile(profile) : built.addProfile(profile);
            if (added != Code::Ok) return added;
            if (const Code code = built.assignProfileToDays(name, pair.days); code != Code::Ok) return code;
        }
        result.takeContents(built);
        return Code::Ok;
    });
}

Code QorCalendarAlgebra::unite(const QorCalendar& first, const QorCalendar& second, QorCalendar& result) noexcept {
    return combine(first, second, Operation{" + ", unionOf}, result);
}

Code QorCalendarAlgebra::subtract(const QorCalendar& first, const QorCalendar& second, QorCalendar& result) noexcept {
    return combine(first, second, Operation{" - ", differenceOf}, result);
}

Code QorCalendarAlgebra::areEqual(const QorCalendar& first, const QorCalendar& second, int& equal) noexcept {
    if (!isComplete(first) || !isComplete(second)) return Code::CalendarInconsistent;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        const auto same = [](const ProfilePair& pair) {
            return merged(piecesOf(*pair.first)) == merged(piecesOf(*pair.second));
        };
        bool allSame = first.getPropertyType() == second.getPropertyType() && agree(first, second);
        if (allSame) {
            const auto pairs = qor::simcal::pairsByDay(first, second);
            allSame = std::all_of(pairs.begin(), pairs.end(), same);
        }
        equal = allSame ? 1 : 0;
        return Code::Ok;
    });
}
