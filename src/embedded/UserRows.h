// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/QorIdentifier.h"
#include "platform/QorUserManager.h"

namespace qor::embedded {

// The user managers, in the order of the bits that stand for them.
inline constexpr std::array<long, 3> kUserManagers{
    QorUserManagerNumber::Ordinary, QorUserManagerNumber::FirstSingleSignOn, QorUserManagerNumber::SecondSingleSignOn};

// The bit of a user manager; 0 for a number that is none.
[[nodiscard]] constexpr std::uint8_t managerBit(long number) {
    for (std::size_t at = 0; at < kUserManagers.size(); ++at)
        if (kUserManagers[at] == number) return static_cast<std::uint8_t>(1U << at);
    return 0;
}
inline constexpr std::uint8_t kOrdinaryBit = managerBit(QorUserManagerNumber::Ordinary);
inline constexpr std::uint8_t kAllManagerBits = (1U << kUserManagers.size()) - 1;

// What is known of a user beside groups and profile.
struct UserFields {
    std::string logonName;
    std::string displayName;  // empty: as the logon name
    std::string secondName;   // only of a two-part name
    QorUserLogonNameType kind = QorUserLogonNameType::Plain;
    std::uint8_t managers = 0;  // bits
    bool isAdministrator = false;
    bool isSubAdministrator = false;
    QorIdentifier library = QorNoIdentifier;  // the one that is allowed

    [[nodiscard]] const std::string& shownName() const { return displayName.empty() ? logonName : displayName; }
};

struct ProfileEntry {
    QorIdentifier number = 0;
    std::string text;
};

struct PermissionEntry {
    QorIdentifier modelGroup = QorNoIdentifier;
    std::int32_t permission = 0;
};

// A removed row has no identifier any more, and is swept. Lists are in ascending order.
struct UserRow {
    QorIdentifier id = QorNoIdentifier;
    UserFields fields;
    std::vector<QorIdentifier> groups;
    std::vector<ProfileEntry> profile;
};

struct UserGroupRow {
    QorIdentifier id = QorNoIdentifier;
    std::string name;
    bool isSystem = false;
    std::vector<QorIdentifier> groups;  // that the group itself is a member of
    std::vector<PermissionEntry> permissions;
};

inline void insertSorted(std::vector<QorIdentifier>& sorted, QorIdentifier id) {
    sorted.insert(std::lower_bound(sorted.begin(), sorted.end(), id), id);
}

// What is there.
inline void eraseSorted(std::vector<QorIdentifier>& sorted, QorIdentifier id) {
    sorted.erase(std::lower_bound(sorted.begin(), sorted.end(), id));
}

}  // namespace qor::embedded
