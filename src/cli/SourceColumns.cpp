// SPDX-License-Identifier: Apache-2.0
#include "cli/SourceColumns.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace qor::cli {

void SourceColumns::read() {
    _isRead = true;
    if (_path.empty()) return;
    std::ifstream file(_path, std::ios::binary);
    _text.assign(std::istreambuf_iterator<char>(file), {});
    for (std::size_t at = 0; at != std::string::npos && at < _text.size();) {
        _lines.push_back(at);
        at = _text.find('\n', at);
        if (at != std::string::npos) ++at;
    }
}

std::uint32_t SourceColumns::characters(std::uint32_t line, std::uint32_t byteColumn) {
    if (!_isRead) read();
    if (line == 0 || line > _lines.size() || byteColumn == 0) return byteColumn;
    const auto begin = _lines[line - 1];
    const auto before = std::size_t{byteColumn} - 1;
    if (begin + before > _text.size()) return byteColumn;
    const auto start = _text.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto further = std::count_if(start, start + static_cast<std::ptrdiff_t>(before), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0u) == 0x80u;  // not the first byte of a character
    });
    return byteColumn - static_cast<std::uint32_t>(further);
}

}  // namespace qor::cli
