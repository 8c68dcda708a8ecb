// SPDX-License-Identifier: Apache-2.0
// The rows that stand for a repository outside memory.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string_view>

#include "platform/QorIdentifier.h"

namespace qor::embedded {

// In the order in which they are read: what a row refers to stands in its own table before it, or in an earlier one;
// only a model group may come before the group that it lies in.
enum class StoredTable : std::uint8_t {
    Libraries,
    Parts,
    Classes,
    RelationClasses,
    Attributes,
    EnumerationValues,
    ModelTypes,
    VisibleClasses,
    ModelGroups,
    Threads,
    Models,
    Objects,
    Relations,
    RecordRows,
    Values,
    UserGroups,
    Users,
    Memberships,
    Permissions,
    ProfileEntries,
    UserSettings,
};
inline constexpr std::size_t kStoredTables = static_cast<std::size_t>(StoredTable::UserSettings) + 1;

// First the numbers, then the texts, in the order of the table's columns; the key comes first. An identifier that is
// none is -1. The texts are views.
struct StoredRow {
    static constexpr std::size_t kMaxNumbers = 7;
    static constexpr std::size_t kMaxTexts = 3;

    StoredRow() = default;
    StoredRow(StoredTable of, std::initializer_list<QorIdentifier> itsNumbers,
              std::initializer_list<std::string_view> itsTexts = {})
        : table(of) {
        std::size_t at = 0;
        for (const QorIdentifier number : itsNumbers) numbers[at++] = number;
        at = 0;
        for (const std::string_view text : itsTexts) texts[at++] = text;
    }

    StoredTable table = StoredTable::Libraries;
    std::array<QorIdentifier, kMaxNumbers> numbers{};
    std::array<std::string_view, kMaxTexts> texts{};
};

using TakeStored = std::function<void(const StoredRow& row)>;

}  // namespace qor::embedded
