// SPDX-License-Identifier: Apache-2.0
#include <string>

#include "platform/QorGuard.h"
#include "simcal/ProfilePairs.h"
#include "simcal/QorCalendar.h"

using Code = QorCalendarErrorCode;

namespace {

// Stands on every day until its profile is built. Its identifier takes one of the 94 that there are.
constexpr const char* kDummyName = "Dummy Day Profile";
constexpr char kDummyIdentifier = 'a';

Code deleteDummy(QorCalendar& result) {
    QorDayProfile* dummy = nullptr;
    if (const Code code = result.getProfileFromName(SV::String(kDummyName), dummy); code != Code::Ok) return code;
    return result.deleteProfile(dummy);
}

// One profile of the result: what the two profiles share, on all the days on which they meet.
Code addSharedProfile(const qor::simcal::ProfilePair& pair, QorCalendar& result) {
    char identifier = 0;
    if (const Code code = result.getUniqueId(identifier); code != Code::Ok) return code;
    const SV::String name = pair.first->getName() + " & " + pair.second->getName();
    QorDayProfile shared(QorCalendarPropertyType::Flag, identifier, name);
    if (const Code code = pair.first->intersection(*pair.second, shared); code != Code::Ok) return code;
    if (const Code code = result.addProfile(shared); code != Code::Ok) return code;
    return result.assignProfileToDays(name, pair.days);
}

}  // namespace

Code QorCalendar::intersection(const QorCalendar& other, QorCalendar& result) const noexcept {
    for (const auto* calendar : {this, &other, static_cast<const QorCalendar*>(&result)}) {
        if (calendar->_type != QorCalendarPropertyType::Flag) return Code::WrongPropertyType;
    }
    for (const auto* calendar : {&other, static_cast<const QorCalendar*>(&result)}) {
        if (calendar->_cyclic != _cyclic || calendar->_offset != _offset || calendar->_periodLength != _periodLength)
            return Code::CalendarsDiffer;
    }
    if (!isInitialized() || !other.isInitialized()) return Code::NotInitialized;
    if (result.isInitialized()) return Code::AlreadyInitialized;

    return Qor_Guarded("calendar", Code::Broken, [&] {
        const QorDayProfile dummy(QorCalendarPropertyType::Flag, kDummyIdentifier, SV::String(kDummyName));
        if (const Code code = result.initializeCalendarWithProfile(dummy); code != Code::Ok) return code;
        if (_periodLength > 0 && (!daysAreComplete() || !other.daysAreComplete())) return Code::CalendarInconsistent;
        // The pairs come in the order of their first days, so a failing one leaves those of earlier days in place.
        for (const auto& pair : qor::simcal::pairsByDay(*this, other)) {
            if (const Code code = addSharedProfile(pair, result); code != Code::Ok) return code;
        }
        return deleteDummy(result);
    });
}
