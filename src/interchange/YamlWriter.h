// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>

#include "interchange/Wording.h"

namespace qor::interchange {

/// Writes nested mappings and lists in block form, with short ones on one line.
class YamlWriter {
public:
    explicit YamlWriter(std::ostream& out) : _out(out) {}
    YamlWriter(const YamlWriter&) = delete;
    YamlWriter& operator=(const YamlWriter&) = delete;

    /// Lines stand two spaces further in until the matching leave().
    void enter() { _indent += 2; }
    void leave() { _indent -= 2; }
    /// The next line begins an item of a list; what belongs to it stands further in until the matching endItem().
    void beginItem();
    void endItem() { leave(); }

    /// "key:", for what is entered next.
    void key(std::string_view key);
    void pair(std::string_view key, std::string_view text);
    /// The same for a text that is meant to be read as lines.
    void lines(std::string_view key, std::string_view text);
    /// An item, or a value behind a key, that is written already.
    void item(std::string_view written);
    void writtenPair(std::string_view key, std::string_view written);

    /// The text as a scalar, for values that are put together by hand.
    [[nodiscard]] std::string scalar(std::string_view text);

    /// Gives everything on to the stream.
    void flush();
    /// A text that a file cannot hold; empty when there was none.
    [[nodiscard]] const std::string& problem() const { return _problem; }

private:
    void beginLine();
    void beginPair(std::string_view key);
    void value(std::string_view text, bool asBlock);
    void endLine();

    std::ostream& _out;
    std::string _buffer;
    std::size_t _indent = 0;
    bool _itemBegins = false;
    std::string _problem;
};

/// "{a: b, c: d}" from pairs that are added one by one.
class FlowMapping {
public:
    explicit FlowMapping(YamlWriter& writer) : _writer(writer) {}
    FlowMapping& pair(std::string_view key, std::string_view text) { return written(key, _writer.scalar(text)); }
    FlowMapping& written(std::string_view key, std::string_view written);
    [[nodiscard]] std::string text() const { return concat({"{", _text, "}"}); }

private:
    YamlWriter& _writer;
    std::string _text;
};

}  // namespace qor::interchange
