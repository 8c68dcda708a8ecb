// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qor::simmap {

/// The keys of a list, a prefix with the numbers 1, 2, ... behind it. Allocates nothing.
class NumberedKey {
public:
    /// The prefix has at most 20 characters.
    explicit NumberedKey(std::string_view prefix) : _prefixLength(prefix.copy(_text.data(), kMaxPrefix)) { next(); }

    [[nodiscard]] std::string_view view() const { return {_text.data(), _length}; }
    [[nodiscard]] std::uint32_t number() const { return _number; }
    void next() {
        const auto end = std::to_chars(_text.data() + _prefixLength, _text.data() + _text.size(), ++_number).ptr;
        _length = static_cast<std::size_t>(end - _text.data());
    }

private:
    static constexpr std::size_t kMaxPrefix = 20;
    static constexpr std::size_t kMaxDigits = 10;
    std::array<char, kMaxPrefix + kMaxDigits> _text{};
    std::size_t _prefixLength;
    std::size_t _length = 0;
    std::uint32_t _number = 0;
};

}  // namespace qor::simmap
