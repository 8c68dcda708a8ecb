// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/QorKexParser.h"

namespace qor::platform::kex {

/// The position of an offset into a text. A line ends with a line feed, a carriage return, or both in this order.
[[nodiscard]] QorKexPosition positionOf(std::string_view text, std::size_t offset);

/// The same for many offsets of one text: it is gone through once, then every position costs a few kilobytes.
class Positions {
public:
    void clear() { _marks.clear(); }
    [[nodiscard]] QorKexPosition of(std::string_view text, std::size_t offset);

private:
    struct Mark {
        std::size_t line = 1;
        std::size_t lineStart = 0;
    };
    friend QorKexPosition positionOf(std::string_view text, std::size_t offset);
    static void advance(std::string_view text, std::size_t from, std::size_t to, Mark& mark);
    static QorKexPosition at(const Mark& mark, std::size_t offset);

    std::vector<Mark> _marks;  // one for the start of each block of the text
};

}  // namespace qor::platform::kex
