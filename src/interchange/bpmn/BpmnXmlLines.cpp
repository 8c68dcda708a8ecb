// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnXmlLines.h"

#include <algorithm>
#include <cstring>

namespace qor::interchange::bpmn {

namespace {

bool startsWide(std::string_view bytes) {
    if (bytes.size() < 2) return false;
    const std::string_view first = bytes.substr(0, 2);
    using namespace std::string_view_literals;
    return first == "\xFE\xFF"sv || first == "\xFF\xFE"sv || first == "<\0"sv || first == "\0<"sv;
}

}  // namespace

void XmlLines::add(std::string_view bytes) {
    if (_bytes == 0) _wide = startsWide(bytes);
    if (!_wide) {
        forgetPassedLines();
        const char* const begin = bytes.data();
        const char* const end = begin + bytes.size();
        for (const char* at = begin; at != end;) {
            const void* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
            if (found == nullptr) break;
            at = static_cast<const char*>(found) + 1;
            _starts.push_back(static_cast<std::uint32_t>(_bytes - _base + static_cast<std::size_t>(at - begin)));
        }
    }
    _bytes += bytes.size();
}

Place XmlLines::placeOf(std::size_t offset) {
    while (_next < _starts.size() && _base + _starts[_next] <= offset) {
        _lineStart = _base + _starts[_next++];
        ++_line;
    }
    _reached = std::max(_reached, offset);
    return {_line, static_cast<std::uint32_t>(offset - _lineStart + 1)};
}

void XmlLines::forgetPassedLines() {
    _starts.erase(_starts.begin(), _starts.begin() + static_cast<std::ptrdiff_t>(_next));
    const auto passed = static_cast<std::uint32_t>(_reached - _base);
    for (std::uint32_t& start : _starts) start -= passed;
    _base = _reached;
    _next = 0;
}

}  // namespace qor::interchange::bpmn
