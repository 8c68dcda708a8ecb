// SPDX-License-Identifier: Apache-2.0
#include "interchange/YamlWriter.h"

#include <ostream>

#include "interchange/Wording.h"
#include "interchange/YamlText.h"

namespace qor::interchange {

void YamlWriter::beginItem() {
    beginLine();
    _buffer += "- ";
    _itemBegins = true;
    enter();
}

void YamlWriter::beginLine() {
    if (!_itemBegins) _buffer.append(_indent, ' ');
    _itemBegins = false;
}

void YamlWriter::beginPair(std::string_view key) {
    // YAML looks for the colon behind a key on the same line and within 1024 characters.
    constexpr std::size_t kLongestSimpleKey = 1000;
    beginLine();
    const std::string written = scalar(key);
    if (written.size() > kLongestSimpleKey) {
        _buffer += "? ";
        _buffer += written;
        _buffer += '\n';
        beginLine();
    } else {
        _buffer += written;
    }
    _buffer += ':';
}

void YamlWriter::key(std::string_view key) {
    beginPair(key);
    endLine();
}

void YamlWriter::value(std::string_view text, bool asBlock) {
    _buffer += ' ';
    if (!asBlock || !canBeWritten(text)) {
        _buffer += scalar(text);
        endLine();
        return;
    }
    appendBlock(_buffer, text, _indent + 2);
}

void YamlWriter::pair(std::string_view key, std::string_view text) {
    beginPair(key);
    value(text, isBetterAsBlock(text));
}

void YamlWriter::lines(std::string_view key, std::string_view text) {
    beginPair(key);
    value(text, canBeBlock(text));
}

void YamlWriter::item(std::string_view written) {
    beginLine();
    _buffer += "- ";
    _buffer += written;
    endLine();
}

void YamlWriter::writtenPair(std::string_view key, std::string_view written) {
    beginPair(key);
    _buffer += ' ';
    _buffer += written;
    endLine();
}

std::string YamlWriter::scalar(std::string_view text) {
    if (_problem.empty() && !canBeWritten(text))
        _problem = concat({"a file cannot hold the text ", inQuotes(text),
                           text.size() > 80 ? ": it is too long, or it is not UTF-8" : ": it is not UTF-8"});
    std::string written;
    appendScalar(written, text);
    return written;
}

void YamlWriter::endLine() {
    constexpr std::size_t kBuffer = std::size_t{1} << 16;
    _buffer += '\n';
    if (_buffer.size() >= kBuffer) flush();
}

void YamlWriter::flush() {
    _out.write(_buffer.data(), static_cast<std::streamsize>(_buffer.size()));
    _buffer.clear();
}

FlowMapping& FlowMapping::written(std::string_view key, std::string_view written) {
    if (!_text.empty()) _text += ", ";
    _text += concat({key, ": ", written});
    return *this;
}

}  // namespace qor::interchange
