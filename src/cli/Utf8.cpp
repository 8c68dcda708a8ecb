// SPDX-License-Identifier: Apache-2.0
#include "cli/Utf8.h"

namespace qor::cli {

namespace {

constexpr Utf8Char kInvalid{0, 1, false};

}  // namespace

Utf8Char firstChar(std::string_view text) {
    if (text.empty()) return {};
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {lead, 1, true};

    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < size) return kInvalid;
    char32_t code = lead & (0x7Fu >> size);
    for (std::size_t at = 1; at < size; ++at) {
        if ((byte(at) & 0xC0u) != 0x80u) return kInvalid;
        code = (code << 6u) | (byte(at) & 0x3Fu);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < smallest[size] || code > 0x10FFFF || isSurrogate) return kInvalid;
    return {code, size, true};
}

bool isHostile(char32_t code) {
    struct Range {
        char32_t first, last;
    };
    constexpr Range ranges[] = {{0, 0x1F},        {0x7F, 0x9F},     {0x61C, 0x61C},   {0x200E, 0x200F},
                                {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};
    for (const Range& range : ranges)
        if (code >= range.first && code <= range.last) return true;
    return false;
}

}  // namespace qor::cli
