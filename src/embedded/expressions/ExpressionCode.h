// SPDX-License-Identifier: Apache-2.0
// An expression as instructions of a stack machine, so that working it out needs no recursion, however long it is.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qor::embedded {

enum class ExpressionStep : std::uint8_t {
    // Put a value on the stack; the operand says which.
    PushNumber,
    PushText,
    PushAttribute,
    // Take two values and put one.
    Add,
    Subtract,
    Multiply,
    Divide,
    Join,
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Round,
    // Take one value and put one.
    Negate,
    Plus,
    Not,
    Truth,
    ReadNumber,
    ReadSeconds,
    WriteTime,
    // Go on at the operand. The conditional ones take a condition.
    Jump,
    JumpIfFalse,
    PutFalseAndJumpIfFalse,
    PutTrueAndJumpIfTrue,
};

struct ExpressionInstruction {
    ExpressionStep step;
    std::uint32_t operand;
    std::uint32_t offset;  // into the text, for faults
};

struct ExpressionCode {
    std::vector<ExpressionInstruction> instructions;
    std::vector<double> numbers;
    std::vector<std::string> texts;  // and names of attributes
};

// What is wrong with an expression, or with working it out; the offset counts bytes of its text.
struct ExpressionFault {
    std::size_t offset = 0;
    std::string text;
};

}  // namespace qor::embedded
