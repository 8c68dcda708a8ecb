// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interchange/bpmn/BpmnPlace.h"

namespace qor::interchange::bpmn {

/// Turns byte offsets into lines and columns while the bytes stream by. Only the line ends between the last place asked
/// for and the end of what was fed are kept, which the bound on a tag's length bounds.
class XmlLines {
public:
    /// The next bytes of the file.
    void add(std::string_view bytes);
    /// The place of a byte; offsets are asked for in ascending order.
    [[nodiscard]] Place placeOf(std::size_t offset);
    /// How many bytes were added.
    [[nodiscard]] std::size_t bytes() const { return _bytes; }
    /// The file is UTF-16, where a byte with a line feed's value ends no line.
    [[nodiscard]] bool wide() const { return _wide; }

private:
    void forgetPassedLines();

    std::vector<std::uint32_t> _starts;  // of lines that the last place asked for has not reached, counted from _base
    std::size_t _base = 0;
    std::size_t _reached = 0;  // the last place asked for
    std::size_t _next = 0;     // in _starts
    std::size_t _lineStart = 0;
    std::uint32_t _line = 1;
    std::size_t _bytes = 0;
    bool _wide = false;
};

}  // namespace qor::interchange::bpmn
