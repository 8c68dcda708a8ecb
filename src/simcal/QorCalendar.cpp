// SPDX-License-Identifier: Apache-2.0
#include "simcal/QorCalendar.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/QorGuard.h"
#include "simcal/CalendarPlan.h"

using Code = QorCalendarErrorCode;

namespace {

constexpr char kSeparator = '@';
constexpr std::size_t kIdentifiers = 256;

constexpr std::size_t indexOf(char identifier) { return static_cast<unsigned char>(identifier); }

}  // namespace

QorCalendar::QorCalendar(QorCalendarPropertyType type, const std::int64_t& offsetInSeconds, int cyclic,
                         int periodLengthInDays) noexcept
    : _offset(offsetInSeconds), _cyclic(cyclic != 0 ? 1 : 0), _periodLength(periodLengthInDays), _type(type) {}

QorCalendar::QorCalendar(const QorCalendar& other) noexcept
    : QorCalendar(other._type, other._offset, other._cyclic, other._periodLength) {
    const Code code = Qor_Guarded("calendar", Code::Broken, [&] {
        // Not through adopt: identifiers that were changed later need not be unique.
        for (const QorDayProfile* profile : other._profiles) {
            auto copy = QorDayProfile::exactCopy(*profile);
            copy->_ownerRevision = &_revision;
            _profiles.addAsLast(copy.get());
            (void)copy.release();
        }
        const auto byIdentifier = profilesByIdentifier();
        _days.reserve(other._days.size());
        for (const QorDayProfile* day : other._days) _days.push_back(byIdentifier[indexOf(day->_identifier)]);
        return Code::Ok;
    });
    if (code != Code::Ok) cleanUp();
}

QorCalendar::~QorCalendar() { cleanUp(); }

void QorCalendar::cleanUp() noexcept {
    _days.clear();
    for (const QorDayProfile* profile : _profiles) delete profile;
    _profiles.removeAll();
    ++_revision;
}

void QorCalendar::takeContents(QorCalendar& other) noexcept {
    std::swap(_days, other._days);
    std::swap(_profiles, other._profiles);
    for (QorCalendar* calendar : {this, &other}) {
        for (QorDayProfile* profile : calendar->_profiles) profile->_ownerRevision = &calendar->_revision;
        ++calendar->_revision;
    }
}

bool QorCalendar::daysAreComplete() const noexcept {
    return static_cast<std::int64_t>(_days.size()) == std::int64_t{_periodLength};
}

bool QorCalendar::isInitialized() const noexcept { return daysAreComplete() || !_profiles.isEmpty(); }

const QorDayProfile* QorCalendar::getProfileOfDay(int day) const noexcept {
    if (day < 1 || static_cast<std::size_t>(day) > _days.size()) return nullptr;
    return _days[static_cast<std::size_t>(day) - 1];
}

std::vector<QorDayProfile*> QorCalendar::profilesByIdentifier() const {
    std::vector<QorDayProfile*> table(kIdentifiers, nullptr);
    for (QorDayProfile* profile : _profiles) {
        auto& entry = table[indexOf(profile->_identifier)];
        if (entry == nullptr) entry = profile;
    }
    return table;
}

Code QorCalendar::isUniqueProfileId(char identifier) const noexcept {
    const bool used = std::any_of(_profiles.begin(), _profiles.end(), [identifier](const QorDayProfile* profile) {
        return profile->_identifier == identifier;
    });
    return used || identifier == kSeparator ? Code::IdentifierRefused : Code::Ok;
}

Code QorCalendar::isUniqueProfileName(const SV::String& name) const noexcept {
    QorDayProfile* profile = nullptr;
    return getProfileFromName(name, profile) == Code::Ok ? Code::NameNotUnique : Code::Ok;
}

Code QorCalendar::getUniqueId(char& identifier) const noexcept {
    std::array<bool, kIdentifiers> used{};
    for (const QorDayProfile* profile : _profiles) used[indexOf(profile->_identifier)] = true;
    for (int candidate = '!'; candidate <= 127; ++candidate) {
        if (candidate == kSeparator || used[static_cast<std::size_t>(candidate)]) continue;
        identifier = static_cast<char>(candidate);
        return Code::Ok;
    }
    return Code::NoFreeIdentifier;
}

Code QorCalendar::checkNewProfile(const QorDayProfile& profile) const noexcept {
    if (const Code code = isUniqueProfileId(profile._identifier); code != Code::Ok) return code;
    if (profile._name.view().find(kSeparator) != std::string_view::npos) return Code::NameHoldsSeparator;
    return isUniqueProfileName(profile._name);
}

Code QorCalendar::adopt(std::unique_ptr<QorDayProfile> profile) {
    if (const Code code = checkNewProfile(*profile); code != Code::Ok) return code;
    _profiles.addAsLast(profile.get());
    profile.release()->_ownerRevision = &_revision;
    ++_revision;
    return Code::Ok;
}

Code QorCalendar::addProfile(const QorDayProfile& profile) noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] { return adopt(QorDayProfile::exactCopy(profile)); });
}

Code QorCalendar::fillWithProfile(const QorDayProfile& profile) {
    if (isInitialized()) return Code::AlreadyInitialized;
    std::vector<QorDayProfile*> days(static_cast<std::size_t>(std::max(_periodLength, 0)), nullptr);
    if (const Code code = adopt(QorDayProfile::exactCopy(profile)); code != Code::Ok) return code;
    std::fill(days.begin(), days.end(), _profiles.elementAtIndex(0));
    _days = std::move(days);
    return Code::Ok;
}

Code QorCalendar::initializeCalendarWithProfile(const QorDayProfile& profile) noexcept {
    return Qor_Guarded("calendar", Code::Broken, [&] { return fillWithProfile(profile); });
}

Code QorCalendar::profileIsUsedInCalendar(const QorDayProfile* profile, int& used) const noexcept {
    used = std::find(_days.begin(), _days.end(), profile) != _days.end() ? 1 : 0;
    return Code::Ok;
}

Code QorCalendar::deleteProfile(QorDayProfile* profile) noexcept {
    const auto found = std::find(_profiles.begin(), _profiles.end(), profile);
    if (found == _profiles.end()) return Code::NoProfileWithName;
    int used = 0;
    if (const Code code = profileIsUsedInCalendar(profile, used); code != Code::Ok) return code;
    if (used != 0) return Code::ProfileInUse;
    _profiles.removeAtIndex(static_cast<unsigned long>(found - _profiles.begin()));
    delete profile;
    ++_revision;
    return Code::Ok;
}

Code QorCalendar::getProfileFromName(const SV::String& name, QorDayProfile*& profile) const noexcept {
    const auto found = std::find_if(_profiles.begin(), _profiles.end(),
                                    [&name](const QorDayProfile* other) { return other->_name == name; });
    profile = found != _profiles.end() ? *found : nullptr;
    return profile != nullptr ? Code::Ok : Code::NoProfileWithName;
}

Code QorCalendar::getProfileFromId(char identifier, QorDayProfile*& profile) const noexcept {
    const auto found = std::find_if(_profiles.begin(), _profiles.end(), [identifier](const QorDayProfile* other) {
        return other->_identifier == identifier;
    });
    profile = found != _profiles.end() ? *found : nullptr;
    return profile != nullptr ? Code::Ok : Code::NoProfileWithIdentifier;
}

Code QorCalendar::getProfileNameForDay(int day, SV::String& name) const noexcept {
    if (day < 1 || day > _periodLength) return Code::DayOutOfRange;
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        name = getProfileOfDay(day)->_name;
        return Code::Ok;
    });
}

Code QorCalendar::getDaysWhereProfileIsAssigned(const SV::String& name, ISortedSet<int>& days) const noexcept {
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    QorDayProfile* profile = nullptr;
    if (const Code code = getProfileFromName(name, profile); code != Code::Ok) return code;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        ISortedSet<int> found;
        for (std::size_t i = 0; i < _days.size(); ++i) {
            if (_days[i] == profile) found.add(static_cast<int>(i) + 1);
        }
        days.addAllFrom(found);
        return Code::Ok;
    });
}

Code QorCalendar::assignProfileToDays(const SV::String& name, const ISortedSet<int>& days) noexcept {
    QorDayProfile* profile = nullptr;
    if (const Code code = getProfileFromName(name, profile); code != Code::Ok) return code;
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    return Qor_Guarded("calendar", Code::Broken, [&] {
        for (const int day : days) {
            if (day < 1 || day > _periodLength) return Code::DayOutOfRange;
            _days[static_cast<std::size_t>(day) - 1] = profile;
            ++_revision;
        }
        return Code::Ok;
    });
}

Code QorCalendar::assignNewProfileToDay(int day, const SV::String& name) noexcept {
    QorDayProfile* profile = nullptr;
    if (const Code code = getProfileFromName(name, profile); code != Code::Ok) return code;
    if (day < 1 || day > _periodLength) return Code::DayOutOfRange;
    if (!daysAreComplete()) return Code::CalendarInconsistent;
    _days[static_cast<std::size_t>(day) - 1] = profile;
    ++_revision;
    return Code::Ok;
}
