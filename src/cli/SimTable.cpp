// SPDX-License-Identifier: Apache-2.0
#include "cli/SimTable.h"

#include <algorithm>

#include "cli/Console.h"
#include "cli/Text.h"
#include "cli/Utf8.h"

namespace qor::cli {

namespace {

constexpr std::size_t kGap = 2;

std::size_t charactersIn(std::string_view text) {
    std::size_t count = 0;
    for (auto next = firstChar(text); next.size != 0; next = firstChar(text)) {
        text.remove_prefix(next.size);
        ++count;
    }
    return count;
}

}  // namespace

void SimTable::add(const std::vector<std::string>& row) {
    std::vector<std::string> shown;
    for (const std::string& text : row) shown.push_back(printable(text));
    _rows.push_back(std::move(shown));
}

void SimTable::write(Console& console, std::string_view indent) const {
    if (isEmpty()) return;
    std::vector<std::size_t> widths(_rows.front().size());
    for (const auto& row : _rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], charactersIn(row[column]));
    for (const auto& row : _rows) {
        std::string line(indent);
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column];
            line.append(widths[column] - charactersIn(row[column]) + kGap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        console.out((&row == &_rows.front() ? console.outColours().bold(line) : line) + "\n");
    }
}

}  // namespace qor::cli
