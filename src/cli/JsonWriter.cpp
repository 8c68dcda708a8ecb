// SPDX-License-Identifier: Apache-2.0
#include "cli/JsonWriter.h"

#include <fmt/format.h>

#include <iterator>

#include "cli/Utf8.h"

namespace qor::cli {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

void appendEscape(std::string& text, char32_t code) {
    const auto unit = static_cast<std::uint32_t>(code);
    if (unit < 0x10000) {
        fmt::format_to(std::back_inserter(text), "\\u{:04x}", unit);
    } else {
        const std::uint32_t beyond = unit - 0x10000;
        fmt::format_to(std::back_inserter(text), "\\u{:04x}\\u{:04x}", 0xD800 + (beyond >> 10u),
                       0xDC00 + (beyond & 0x3FFu));
    }
}

}  // namespace

JsonWriter& JsonWriter::beginObject(Layout layout) {
    begin('{', layout);
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    end('}');
    return *this;
}

JsonWriter& JsonWriter::beginList(Layout layout) {
    begin('[', layout);
    return *this;
}

JsonWriter& JsonWriter::endList() {
    end(']');
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    writeString(name);
    write(": ");
    _afterKey = true;
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
    separate();
    writeString(text);
    return *this;
}

JsonWriter& JsonWriter::value(std::int64_t number) {
    separate();
    write(fmt::format_int(number).c_str());
    return *this;
}

JsonWriter& JsonWriter::value(bool truth) {
    separate();
    write(truth ? "true" : "false");
    return *this;
}

JsonWriter& JsonWriter::seconds(double number) {
    separate();
    write(fmt::format("{:.3f}", number));
    return *this;
}

JsonWriter& JsonWriter::null() {
    separate();
    write("null");
    return *this;
}

JsonWriter& JsonWriter::field(std::string_view name, const std::optional<std::string>& text) {
    key(name);
    return text ? value(std::string_view(*text)) : null();
}

void JsonWriter::begin(char bracket, Layout layout) {
    separate();
    write({&bracket, 1});
    const bool inLine = !_levels.empty() && _levels.back().layout == Layout::Line;
    _levels.push_back({inLine ? Layout::Line : layout});
}

void JsonWriter::end(char bracket) {
    const Level level = _levels.back();
    _levels.pop_back();
    if (!level.empty && level.layout == Layout::Lines) breakLine();
    write({&bracket, 1});
    if (_levels.empty()) write("\n");
}

void JsonWriter::separate() {
    if (_afterKey || _levels.empty()) {
        _afterKey = false;
        return;
    }
    Level& level = _levels.back();
    const bool inLine = level.layout == Layout::Line;
    if (!level.empty) write(inLine ? ", " : ",");
    if (!inLine) breakLine();
    level.empty = false;
}

void JsonWriter::breakLine() { write('\n' + std::string(2 * _levels.size(), ' ')); }

void JsonWriter::writeString(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const Utf8Char c = firstChar(text);
        if (!c.valid)
            result += kReplacement;
        else if (c.code == U'"' || c.code == U'\\')
            (result += '\\') += text.front();
        else if (c.code == U'\n')
            result += "\\n";
        else if (c.code == U'\t')
            result += "\\t";
        else if (isHostile(c.code))
            appendEscape(result, c.code);
        else
            result += text.substr(0, c.size);
        text.remove_prefix(c.size);
    }
    result += '"';
    write(result);
}

}  // namespace qor::cli
