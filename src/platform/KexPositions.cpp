// SPDX-License-Identifier: Apache-2.0
#include "platform/KexPositions.h"

#include <utility>

namespace qor::platform::kex {

namespace {

constexpr std::size_t kBlock = 4096;

bool endsLine(std::string_view text, std::size_t at) {
    if (text[at] == '\r') return at + 1 == text.size() || text[at + 1] != '\n';
    return text[at] == '\n';
}

}  // namespace

QorKexPosition positionOf(std::string_view text, std::size_t offset) {
    Positions::Mark mark;
    Positions::advance(text, 0, offset, mark);
    return Positions::at(mark, offset);
}

QorKexPosition Positions::of(std::string_view text, std::size_t offset) {
    if (_marks.empty()) {
        std::vector<Mark> marks(text.size() / kBlock + 1);
        for (std::size_t block = 1; block < marks.size(); ++block) {
            marks[block] = marks[block - 1];
            advance(text, (block - 1) * kBlock, block * kBlock, marks[block]);
        }
        _marks = std::move(marks);
    }
    Mark mark = _marks[offset / kBlock];
    advance(text, offset / kBlock * kBlock, offset, mark);
    return at(mark, offset);
}

void Positions::advance(std::string_view text, std::size_t from, std::size_t to, Mark& mark) {
    for (; from < to; ++from) {
        if (!endsLine(text, from)) continue;
        ++mark.line;
        mark.lineStart = from + 1;
    }
}

QorKexPosition Positions::at(const Mark& mark, std::size_t offset) {
    return {static_cast<std::uint32_t>(mark.line), static_cast<std::uint32_t>(offset - mark.lineStart + 1)};
}

}  // namespace qor::platform::kex
