// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstddef>

namespace qor::cardinality {

/// How relations run at an object.
enum class Direction { Outgoing, Incoming };

template <class Value>
struct PerDirection {
    std::array<Value, 2> values{};

    [[nodiscard]] Value& operator[](Direction direction) noexcept {
        return values[static_cast<std::size_t>(direction)];
    }
    [[nodiscard]] const Value& operator[](Direction direction) const noexcept {
        return values[static_cast<std::size_t>(direction)];
    }
};

}  // namespace qor::cardinality
