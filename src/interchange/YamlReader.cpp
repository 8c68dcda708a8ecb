// SPDX-License-Identifier: Apache-2.0
#include "interchange/YamlReader.h"

#include <yaml.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

#include "interchange/SourceText.h"
#include "interchange/Wording.h"

namespace qor::interchange {
namespace {

class Event {
public:
    Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event() { yaml_event_delete(&_event); }
    yaml_event_t* get() { return &_event; }
    const yaml_event_t* operator->() const { return &_event; }

private:
    yaml_event_t _event{};
};

class Parser {
public:
    explicit Parser(std::string_view text) {
        if (yaml_parser_initialize(&_parser) == 0) throw std::bad_alloc();
        yaml_parser_set_encoding(&_parser, YAML_UTF8_ENCODING);
        yaml_parser_set_input_string(&_parser, reinterpret_cast<const unsigned char*>(text.data()), text.size());
    }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;
    ~Parser() { yaml_parser_delete(&_parser); }

    bool next(Event& event) {
        if (yaml_parser_parse(&_parser, event.get()) != 0) return true;
        if (_parser.error == YAML_MEMORY_ERROR) throw std::bad_alloc();
        return false;
    }
    const yaml_parser_t& state() const { return _parser; }

private:
    yaml_parser_t _parser{};
};

struct Explanation {
    std::string_view problem;
    std::string_view text;
};

// The parser's own words speak to those who wrote it.
constexpr Explanation kExplanations[] = {
    {"mapping values are not allowed in this context",
     "a colon cannot stand here: check the indentation, or put the text in quotes"},
    {"did not find expected key", "a key is expected here: check the indentation and the quotes before it"},
    {"did not find expected '-' indicator", "a list item (\"- \") is expected here: check the indentation"},
    {"did not find expected ',' or ']'", "a comma or \"]\" is missing"},
    {"did not find expected ',' or '}'", "a comma or \"}\" is missing"},
    {"could not find expected ':'", "a colon is missing behind a key"},
    {"did not find expected <document start>", "nothing can follow here: check the indentation"},
    {"found unexpected end of stream", "the file ends before the closing quote"},
    {"found unexpected document indicator", "the document ends before the closing quote"},
    {"block sequence entries are not allowed in this context", "a list item (\"- \") cannot stand here"},
    {"did not find expected node content", "a value is missing here"},
    {"found undefined tag handle", "tags are not accepted"},
    {"found unknown escape character", "unknown escape (a backslash in double quotes is written as \"\\\\\")"},
    {"found invalid Unicode character escape code", "the escape stands for no character"},
    {"found character that cannot start any token", "a value cannot begin like this: put it in quotes"},
};

class YamlReader {
public:
    YamlReader(std::string_view text, Tree& tree, Findings& findings)
        : _text(text), _cursor(text), _parser(text), _builder(tree, findings), _findings(findings) {}

    bool read() {
        while (true) {
            Event event;
            if (!_parser.next(event)) {
                reportSyntaxError();
                break;
            }
            if (event->type == YAML_STREAM_END_EVENT) return true;
            if (!take(*event.get())) break;
        }
        _builder.finish();
        return false;
    }

private:
    bool take(const yaml_event_t& event) {
        switch (event.type) {
            case YAML_DOCUMENT_START_EVENT:
                if (!_begun) return _begun = true;
                _findings.error(markOf(event.start_mark), "a second document begins here; a file holds one");
                return false;
            case YAML_ALIAS_EVENT:
                _findings.error(markOf(event.start_mark), "aliases are not accepted: write the value out");
                return _builder.bad(markOf(event.start_mark));
            case YAML_SCALAR_EVENT:
                return takeScalar(event);
            case YAML_SEQUENCE_START_EVENT:
                refuseProperties(event, event.data.sequence_start.anchor, event.data.sequence_start.tag);
                return _builder.open(NodeKind::Sequence, markOf(event.start_mark));
            case YAML_MAPPING_START_EVENT:
                refuseProperties(event, event.data.mapping_start.anchor, event.data.mapping_start.tag);
                return _builder.open(NodeKind::Mapping, markOf(event.start_mark));
            case YAML_SEQUENCE_END_EVENT:
            case YAML_MAPPING_END_EVENT:
                return _builder.close();
            default:
                return true;
        }
    }

    bool takeScalar(const yaml_event_t& event) {
        const auto& scalar = event.data.scalar;
        refuseProperties(event, scalar.anchor, scalar.tag);
        const std::string_view text(reinterpret_cast<const char*>(scalar.value), scalar.length);
        const Mark mark = markOf(event.start_mark);
        switch (scalar.style) {
            case YAML_LITERAL_SCALAR_STYLE:
                return _builder.text(NodeKind::Block, text, mark, blockIndent(event.start_mark, text));
            case YAML_FOLDED_SCALAR_STYLE:
                return _builder.text(NodeKind::Escaped, text, mark);
            case YAML_PLAIN_SCALAR_STYLE:
                if (text.empty()) return _builder.text(NodeKind::Null, text, mark);
                return _builder.text(standsAsItIs(event, text, 0) ? NodeKind::Plain : NodeKind::Escaped, text, mark);
            default:
                return _builder.text(standsAsItIs(event, text, 2) ? NodeKind::Quoted : NodeKind::Escaped, text, mark);
        }
    }

    static bool standsAsItIs(const yaml_event_t& event, std::string_view text, std::size_t quotes) {
        const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
        const auto characters = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isFirstByte));
        return event.start_mark.line == event.end_mark.line &&
               event.end_mark.index - event.start_mark.index == characters + quotes;
    }

    // Measured at the first line that is not blank: what the file has there before the text's own spaces.
    std::uint32_t blockIndent(const yaml_mark_t& start, std::string_view text) {
        std::size_t blankLines = 0;
        std::size_t spaces = text.find_first_not_of(' ');
        while (spaces != std::string_view::npos && text[spaces] == '\n') {
            ++blankLines;
            text.remove_prefix(spaces + 1);
            spaces = text.find_first_not_of(' ');
        }
        if (spaces == std::string_view::npos) return 0;
        CharacterCursor ahead = _cursor;
        const std::size_t line = ahead.offsetOf(start.line + 1 + blankLines, 0);
        const std::size_t content = _text.find_first_not_of(' ', line);
        return content == std::string_view::npos ? 0 : static_cast<std::uint32_t>(content - line - spaces);
    }

    void refuseProperties(const yaml_event_t& event, const yaml_char_t* anchor, const yaml_char_t* tag) {
        if (anchor != nullptr)
            _findings.error(markOf(event.start_mark), "anchors are not accepted: write the value out");
        if (tag != nullptr) _findings.error(markOf(event.start_mark), "tags are not accepted: every value is a text");
    }

    Mark markOf(const yaml_mark_t& mark) {
        (void)_cursor.offsetOf(mark.line, mark.column);  // only the mark is wanted
        return _cursor.mark();
    }

    void reportSyntaxError() {
        const yaml_parser_t& state = _parser.state();
        const std::string_view problem = state.problem == nullptr ? "this is no YAML" : state.problem;
        const std::size_t offset = _cursor.offsetOf(state.problem_mark.line, state.problem_mark.column);
        Mark mark = _cursor.mark();
        if (offset < _text.size() && _text[offset] == '\t') {
            _findings.error(mark, "a tab cannot indent: use spaces");
            return;
        }
        const auto* known = std::find_if(std::begin(kExplanations), std::end(kExplanations),
                                         [problem](const Explanation& e) { return e.problem == problem; });
        std::string text(known == std::end(kExplanations) ? problem : known->text);
        if (state.context != nullptr && state.context_mark.line < state.problem_mark.line)
            text += concat({" (", state.context, " begun at line ", std::to_string(state.context_mark.line + 1), ")"});
        _findings.error(mark, std::move(text));
    }

    std::string_view _text;
    CharacterCursor _cursor;
    Parser _parser;
    TreeBuilder _builder;
    Findings& _findings;
    bool _begun = false;
};

}  // namespace

bool readYaml(std::string_view text, Tree& tree, Findings& findings) { return YamlReader(text, tree, findings).read(); }

}  // namespace qor::interchange
