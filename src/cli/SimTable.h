// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace qor::cli {

class Console;

/// Rows of texts in aligned columns, under a heading.
class SimTable {
public:
    explicit SimTable(std::vector<std::string> heading) : _rows{std::move(heading)} {}

    /// As many texts as the heading has, which may hold anything.
    void add(const std::vector<std::string>& row);
    [[nodiscard]] bool isEmpty() const { return _rows.size() == 1; }
    /// Nothing for an empty table.
    void write(Console& console, std::string_view indent = "") const;

private:
    std::vector<std::vector<std::string>> _rows;
};

}  // namespace qor::cli
