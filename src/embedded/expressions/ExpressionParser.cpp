// SPDX-License-Identifier: Apache-2.0
#include "embedded/expressions/ExpressionParser.h"

#include <utility>

#include "embedded/expressions/ExpressionTokens.h"

namespace qor::embedded {

namespace {

using Kind = ExpressionTokenKind;
using Step = ExpressionStep;

struct Operator {
    std::string_view sign;
    Step step;
};
constexpr Operator kComparisons[] = {{"=", Step::Equal},        {"<>", Step::NotEqual}, {"<", Step::Less},
                                     {"<=", Step::LessOrEqual}, {">", Step::Greater},   {">=", Step::GreaterOrEqual}};
constexpr Operator kJoins[] = {{"&", Step::Join}};
constexpr Operator kSums[] = {{"+", Step::Add}, {"-", Step::Subtract}};
constexpr Operator kProducts[] = {{"*", Step::Multiply}, {"/", Step::Divide}};
constexpr Operator kSigns[] = {{"-", Step::Negate}, {"+", Step::Plus}};

struct Function {
    std::string_view name;
    Step step;
    unsigned arguments;
};
constexpr Function kFunctions[] = {{"number", Step::ReadNumber, 1},
                                   {"round", Step::Round, 2},
                                   {"seconds", Step::ReadSeconds, 1},
                                   {"time", Step::WriteTime, 1}};

// Every function is one production of the grammar. The first fault ends the parsing: it is thrown within this file.
class Parser {
public:
    explicit Parser(std::string_view text) : _tokens(text) { advance(); }

    ExpressionCode parse() {
        if (_token.kind == Kind::End) fail("the expression is empty");
        expression();
        if (_token.kind != Kind::End) fail("an operator or the end of the expression is missing before this");
        return std::move(_code);
    }

private:
    // expression = conjunction { "or" conjunction }
    void expression() {
        const Nesting nesting(*this);
        conjunction();
        while (isWord("or")) shortcut(Step::PutTrueAndJumpIfTrue, &Parser::conjunction);
    }

    // conjunction = negation { "and" negation }
    void conjunction() {
        negation();
        while (isWord("and")) shortcut(Step::PutFalseAndJumpIfFalse, &Parser::negation);
    }

    // negation = { "not" } comparison
    void negation() {
        const Nesting nesting(*this);
        if (!isWord("not")) return comparison();
        const std::size_t offset = take();
        negation();
        add(Step::Not, offset);
    }

    // comparison = joined [ ( "=" | "<>" | "<" | "<=" | ">" | ">=" ) joined ]
    void comparison() {
        joined();
        if (const Operator* found = operatorOf(kComparisons)) {
            const std::size_t offset = take();
            joined();
            add(found->step, offset);
            if (operatorOf(kComparisons)) fail("comparisons do not follow one another; put brackets");
        }
    }

    // joined = sum { "&" sum }
    void joined() { chain(kJoins, &Parser::sum); }
    // sum = product { ( "+" | "-" ) product }
    void sum() { chain(kSums, &Parser::product); }
    // product = factor { ( "*" | "/" ) factor }
    void product() { chain(kProducts, &Parser::factor); }

    // factor = { "-" | "+" } operand
    void factor() {
        const Nesting nesting(*this);
        const Operator* const sign = operatorOf(kSigns);
        if (sign == nullptr) return operand();
        const std::size_t offset = take();
        factor();
        add(sign->step, offset);
    }

    // operand = number | text | attribute | "(" expression ")" | condition | function
    void operand() {
        switch (_token.kind) {
            case Kind::Number:
                _code.numbers.push_back(_token.number);
                return push(Step::PushNumber, _code.numbers.size());
            case Kind::Text:
            case Kind::Attribute:
                _code.texts.push_back(std::move(_token.text));
                return push(_token.kind == Kind::Text ? Step::PushText : Step::PushAttribute, _code.texts.size());
            case Kind::Word:
                if (isWord("if")) return condition();
                return function();
            default:
                if (!isSign("(")) fail(_token.kind == Kind::End ? "the expression ends too early" : kNoValue);
                take();
                expression();
                expect(")");
        }
    }

    // condition = "if" "(" expression "," expression "," expression ")"
    void condition() {
        const std::size_t offset = take();
        expect("(");
        expression();
        const std::size_t toElse = add(Step::JumpIfFalse, offset);
        expect(",");
        expression();
        const std::size_t toEnd = add(Step::Jump, offset);
        landHere(toElse);
        expect(",");
        expression();
        landHere(toEnd);
        expect(")");
    }

    // function = name "(" expression { "," expression } ")"
    void function() {
        for (const Function& known : kFunctions) {
            if (!isWord(known.name)) continue;
            const std::size_t offset = take();
            expect("(");
            for (unsigned argument = 0; argument < known.arguments; ++argument) {
                if (argument > 0) expect(",");
                expression();
            }
            expect(")");
            add(known.step, offset);
            return;
        }
        fail("there is no function \"" + std::string(_token.written) +
             "\"; names of attributes stand in square brackets, texts in double quotes");
    }

    template <std::size_t N>
    void chain(const Operator (&operators)[N], void (Parser::*part)()) {
        (this->*part)();
        while (const Operator* found = operatorOf(operators)) {
            const std::size_t offset = take();
            (this->*part)();
            add(found->step, offset);
        }
    }

    // The right side is worked out only when the left one leaves the result open.
    void shortcut(Step jump, void (Parser::*part)()) {
        const std::size_t offset = take();
        const std::size_t toEnd = add(jump, offset);
        (this->*part)();
        add(Step::Truth, offset);
        landHere(toEnd);
    }

    [[nodiscard]] bool isWord(std::string_view word) const {
        return _token.kind == Kind::Word && _token.written == word;
    }
    [[nodiscard]] bool isSign(std::string_view sign) const {
        return _token.kind == Kind::Sign && _token.written == sign;
    }
    template <std::size_t N>
    [[nodiscard]] const Operator* operatorOf(const Operator (&operators)[N]) const {
        for (const Operator& known : operators)
            if (isSign(known.sign)) return &known;
        return nullptr;
    }

    void advance() {
        _token = _tokens.next();
        if (_token.kind == Kind::Bad) fail(_token.text);
    }
    std::size_t take() {
        const std::size_t offset = _token.offset;
        advance();
        return offset;
    }
    void expect(std::string_view sign) {
        if (!isSign(sign)) fail("\"" + std::string(sign) + "\" is missing");
        take();
    }
    std::size_t add(Step step, std::size_t offset, std::size_t operand = 0) {
        _code.instructions.push_back({step, static_cast<std::uint32_t>(operand), static_cast<std::uint32_t>(offset)});
        return _code.instructions.size() - 1;
    }
    void push(Step step, std::size_t countOfConstants) {
        add(step, _token.offset, countOfConstants - 1);
        advance();
    }
    void landHere(std::size_t jump) {
        _code.instructions[jump].operand = static_cast<std::uint32_t>(_code.instructions.size());
    }
    [[noreturn]] void fail(std::string text) const { throw ExpressionFault{_token.offset, std::move(text)}; }

    struct Nesting {
        explicit Nesting(Parser& itsParser) : parser(itsParser) {
            // Three productions count for each level of brackets.
            if (++parser._depth > 3 * kDeepestExpression) parser.fail("the expression is nested too deeply");
        }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;
        ~Nesting() { --parser._depth; }
        Parser& parser;
    };

    static constexpr const char* kNoValue = "a number, a text, an attribute or a bracket is missing before this";

    ExpressionTokens _tokens;
    ExpressionToken _token;
    ExpressionCode _code;
    unsigned _depth = 0;
};

}  // namespace

std::variant<ExpressionCode, ExpressionFault> parseExpression(std::string_view text) {
    if (text.size() > kLongestExpression)
        return ExpressionFault{kLongestExpression,
                               "the expression is longer than " + std::to_string(kLongestExpression) + " bytes"};
    try {
        return Parser(text).parse();
    } catch (ExpressionFault& fault) {
        return std::move(fault);
    }
}

}  // namespace qor::embedded
