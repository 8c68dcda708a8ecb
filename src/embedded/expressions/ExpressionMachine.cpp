// SPDX-License-Identifier: Apache-2.0
#include "embedded/expressions/ExpressionMachine.h"

#include <cmath>
#include <compare>
#include <utility>
#include <vector>

#include "embedded/ValueCheck.h"

namespace qor::embedded {

ExpressionContext::~ExpressionContext() = default;

namespace {

using Step = ExpressionStep;
using Value = ExpressionValue;

// The first fault ends the run: it is thrown within this file.
class Machine {
public:
    Machine(const ExpressionCode& code, ExpressionContext& context) : _code(code), _context(context) {}

    Value run() {
        for (_next = 0; _next < _code.instructions.size();) {
            const ExpressionInstruction& instruction = _code.instructions[_next++];
            _offset = instruction.offset;
            carryOut(instruction);
        }
        return std::move(_stack.back());
    }

private:
    void carryOut(const ExpressionInstruction& instruction) {
        switch (instruction.step) {
            case Step::PushNumber:
                return push(Value(_code.numbers[instruction.operand]));
            case Step::PushText:
                return push(Value::borrowed(_code.texts[instruction.operand]));
            case Step::PushAttribute:
                return pushAttribute(_code.texts[instruction.operand]);
            case Step::Jump:
                _next = instruction.operand;
                return;
            case Step::JumpIfFalse:
                if (!popTruth()) _next = instruction.operand;
                return;
            case Step::PutFalseAndJumpIfFalse:
                if (!popTruth()) leaveWith(false, instruction.operand);
                return;
            case Step::PutTrueAndJumpIfTrue:
                if (popTruth()) leaveWith(true, instruction.operand);
                return;
            case Step::Negate:
                return push(Value(-popNumber()));
            case Step::Plus:
                return push(Value(popNumber()));
            case Step::Not:
                return pushTruth(!popTruth());
            case Step::Truth:
                return pushTruth(popTruth());
            case Step::ReadNumber:
            case Step::ReadSeconds:
            case Step::WriteTime:
                return convert(instruction.step);
            case Step::Join:
                return join();
            case Step::Equal:
            case Step::NotEqual:
            case Step::Less:
            case Step::LessOrEqual:
            case Step::Greater:
            case Step::GreaterOrEqual:
                return compare(instruction.step);
            default:
                return calculate(instruction.step);
        }
    }

    void pushAttribute(std::string_view name) {
        auto found = _context.attribute(name);
        if (auto* fault = std::get_if<ExpressionFault>(&found)) fail(std::move(fault->text));
        push(std::get<Value>(std::move(found)));
    }

    void leaveWith(bool truth, std::size_t next) {
        pushTruth(truth);
        _next = next;
    }

    void calculate(Step step) {
        const double right = popNumber();
        const double left = popNumber();
        double result = 0;
        if (step == Step::Add) result = left + right;
        if (step == Step::Subtract) result = left - right;
        if (step == Step::Multiply) result = left * right;
        if (step == Step::Divide) {
            if (right == 0) fail("a division by zero");
            result = left / right;
        }
        if (step == Step::Round) result = rounded(left, right);
        if (!std::isfinite(result)) fail("the result is too great");
        push(Value(result));
    }

    double rounded(double number, double digits) {
        constexpr double kMostDigits = 15;
        if (digits != std::trunc(digits) || digits < 0 || digits > kMostDigits)
            fail("numbers are rounded to 0 to 15 decimal places");
        const double scale = std::pow(10.0, digits);
        const double scaled = number * scale;
        // So great a number has no decimal places.
        return std::isfinite(scaled) ? std::round(scaled) / scale : number;
    }

    void join() {
        const std::string right = pop().intoText();
        std::string left = pop().intoText();
        if (left.size() + right.size() > kLongestExpressionResult)
            fail("the text is longer than " + std::to_string(kLongestExpressionResult) + " bytes");
        push(Value(std::move(left += right)));
    }

    // Nothing is equal to 0 and to the empty text, and less than whatever comes behind them.
    void compare(Step step) {
        const Value right = pop();
        const Value left = pop();
        if ((left.isText() && right.isNumber()) || (left.isNumber() && right.isText()))
            fail("a text is compared with a number; number(…) reads the number that a text holds");
        const auto order = left.isText() || right.isText() ? std::partial_ordering(left.text() <=> right.text())
                                                           : left.number() <=> right.number();
        switch (step) {
            case Step::Equal:
                return pushTruth(order == 0);
            case Step::NotEqual:
                return pushTruth(order != 0);
            case Step::Less:
                return pushTruth(order < 0);
            case Step::LessOrEqual:
                return pushTruth(order <= 0);
            case Step::Greater:
                return pushTruth(order > 0);
            default:
                return pushTruth(order >= 0);
        }
    }

    void convert(Step step) {
        if (step == Step::WriteTime) {
            auto duration = durationOfSeconds(popNumber());
            if (!duration) fail("a time holds 0 seconds to less than 100 years");
            return push(Value(std::move(*duration)));
        }
        const Value value = pop();
        if (!value.isText()) return push(Value(value.number()));
        const auto number = step == Step::ReadNumber ? floatingFrom(value.text()) : secondsOfDuration(value.text());
        if (!number)
            fail(step == Step::ReadNumber ? "the text holds no number" : "the text is no time YY:DDD:HH:MM:SS");
        push(Value(*number));
    }

    void push(Value value) { _stack.push_back(std::move(value)); }
    void pushTruth(bool truth) { push(Value(truth ? 1.0 : 0.0)); }
    Value pop() {
        Value value = std::move(_stack.back());
        _stack.pop_back();
        return value;
    }
    double popNumber() {
        const Value value = pop();
        if (value.isText()) fail("a number is needed here, not a text; number(…) reads the number that a text holds");
        return value.number();
    }
    // A condition holds when it is a number other than 0.
    bool popTruth() {
        const Value value = pop();
        if (value.isText()) fail("a condition is needed here, not a text");
        return value.number() != 0;
    }
    [[noreturn]] void fail(std::string text) const { throw ExpressionFault{_offset, std::move(text)}; }

    const ExpressionCode& _code;
    ExpressionContext& _context;
    std::vector<Value> _stack;
    std::size_t _next = 0;
    std::size_t _offset = 0;
};

}  // namespace

std::variant<ExpressionValue, ExpressionFault> runExpression(const ExpressionCode& code, ExpressionContext& context) {
    try {
        return Machine(code, context).run();
    } catch (ExpressionFault& fault) {
        return std::move(fault);
    }
}

}  // namespace qor::embedded
