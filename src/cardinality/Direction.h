// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstddef>

namespace qor::cardinality {

/// How relations run at an object.
enum class Direction { Outgoing, Incoming };

template <class Value>
struct PerDirection {
    /// Written out: compilers take `{}` for free of exceptions even where making a Value throws.
    std::array<Value, 2> values{Value(), Value()};

    [[nodiscard]] Value& operator[](Direction direction) noexcept {
        return values[static_cast<std::size_t>(direction)];
    }
    [[nodiscard]] const Value& operator[](Direction direction) const noexcept {
        return values[static_cast<std::size_t>(direction)];
    }
};

}  // namespace qor::cardinality
