// SPDX-License-Identifier: Apache-2.0
// The tables of a repository file: what they look like now, and how a file of an earlier version becomes one of this.
#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "embedded/store/StoredRow.h"

namespace qor::embedded {

// "Qor1", in the file's header: tells a repository from other SQLite files.
inline constexpr std::int32_t kApplicationId = 0x516f7231;

struct StoredColumn {
    const char* name = nullptr;
    bool optional = false;  // -1 stands as NULL
};

struct StoredTableLayout {
    const char* name;
    std::size_t keys;  // the first columns are the key
    std::array<StoredColumn, StoredRow::kMaxNumbers> numbers;
    std::array<const char*, StoredRow::kMaxTexts> texts;

    [[nodiscard]] constexpr std::size_t numberCount() const {
        std::size_t count = 0;
        while (count < numbers.size() && numbers[count].name != nullptr) ++count;
        return count;
    }
    [[nodiscard]] constexpr std::size_t textCount() const {
        std::size_t count = 0;
        while (count < texts.size() && texts[count] != nullptr) ++count;
        return count;
    }
};

[[nodiscard]] const StoredTableLayout& layoutOf(StoredTable table);

enum class RowStatement { Select, Insert, Replace, Hash, Remove };
// In the order of the layout's columns, then the hash; keys in their order.
[[nodiscard]] std::string sqlFor(const StoredTableLayout& table, RowStatement statement);

// What makes a file of version n one of version n + 1, at n; the first one makes it out of nothing. A step that files
// have been written with is never changed again.
using SqliteMigrations = std::span<const char* const>;
[[nodiscard]] SqliteMigrations repositoryMigrations();

// The tables of the file area, with an identity drawn at random.
[[nodiscard]] const char* fileAreaTables();

}  // namespace qor::embedded
