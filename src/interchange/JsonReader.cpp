// SPDX-License-Identifier: Apache-2.0
#include "interchange/JsonReader.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "interchange/SourceText.h"

namespace qor::interchange {
namespace {

/// Takes the parser's events. These come without places, so the reader walks over the tokens of the text beside it.
class JsonReader {
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    JsonReader(std::string_view text, Tree& tree, Findings& findings)
        : _text(text), _lines(text), _builder(tree, findings), _findings(findings) {}

    bool read() {
        const bool complete = nlohmann::json::sax_parse(_text.begin(), _text.end(), this);
        if (!complete) _builder.finish();
        return complete;
    }

    bool null() {
        const Token token = word();
        return _builder.text(NodeKind::Null, {}, token.mark);
    }
    bool boolean(bool) { return bareWord(); }
    bool number_integer(number_integer_t) { return bareWord(); }
    bool number_unsigned(number_unsigned_t) { return bareWord(); }
    bool number_float(number_float_t, const string_t&) { return bareWord(); }
    bool string(string_t& value) {
        const Token token = quotedText();
        const bool asItIs = token.text.size() == value.size() + 2;
        return _builder.text(asItIs ? NodeKind::Quoted : NodeKind::Escaped, value, token.mark);
    }
    bool key(string_t& value) { return string(value); }
    bool binary(binary_t&) { return false; }
    bool start_object(std::size_t) { return _builder.open(NodeKind::Mapping, bracket()); }
    bool start_array(std::size_t) { return _builder.open(NodeKind::Sequence, bracket()); }
    bool end_object() { return end(); }
    bool end_array() { return end(); }

    bool parse_error(std::size_t position, const std::string&, const nlohmann::json::exception& error) {
        const std::string text = explain(error.what());
        std::size_t offset = std::min(position == 0 ? 0 : position - 1, _text.size());
        // The parser stands behind a token that cannot stand here; the token's beginning is what the eye looks for.
        if (text.starts_with("unexpected ") && !text.starts_with("unexpected ','") &&
            !text.starts_with("unexpected ':'"))
            offset = begin();
        _findings.error(_lines.at(std::max(offset, _offset)), text);
        return false;
    }

private:
    struct Token {
        std::string_view text;
        Mark mark;
    };

    // "[json.exception.parse_error.101] parse error at line 3, column 7: syntax error while parsing value - invalid
    // literal; last read: ...", where what was last read may be the whole text.
    static std::string explain(std::string_view what) {
        constexpr std::size_t kLongest = 160;
        for (const std::string_view before : {"] ", ": ", " - "})
            if (const auto found = what.find(before); found < what.find("; "))
                what.remove_prefix(found + before.size());
        what = what.substr(0, std::min(what.find("; last read"), kLongest));
        return std::string(what);
    }

    Token token(std::size_t begin, std::size_t end) {
        _offset = end;
        return {_text.substr(begin, end - begin), _lines.at(begin)};
    }
    std::size_t begin() const { return std::min(_text.find_first_not_of(" \t\r\n,:", _offset), _text.size()); }

    Mark bracket() {
        const std::size_t from = begin();
        return token(from, from + 1).mark;
    }
    Token word() {
        const std::size_t from = begin();
        return token(from, std::min(_text.find_first_of(" \t\r\n,]}", from), _text.size()));
    }
    Token quotedText() {
        const std::size_t from = begin();
        std::size_t end = from + 1;
        while (end < _text.size() && _text[end] != '"') end += _text[end] == '\\' ? 2U : 1U;
        return token(from, end + 1);
    }
    bool bareWord() {
        const Token token = word();
        return _builder.text(NodeKind::Plain, token.text, token.mark);
    }
    bool end() {
        (void)bracket();  // to step over it
        return _builder.close();
    }

    std::string_view _text;
    LineCursor _lines;
    TreeBuilder _builder;
    Findings& _findings;
    std::size_t _offset = 0;
};

}  // namespace

bool readJson(std::string_view text, Tree& tree, Findings& findings) { return JsonReader(text, tree, findings).read(); }

}  // namespace qor::interchange
