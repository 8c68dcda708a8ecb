// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <sodium.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

// Bytes as text that stands in one line.
namespace qor::embedded {

// False unless the text stands for exactly so many bytes: letters, digits, "-" and "_", without padding.
template <std::size_t Size>
[[nodiscard]] bool fromBase64(std::string_view text, std::array<unsigned char, Size>& bytes) {
    std::size_t size = 0;
    return sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &size, nullptr,
                             sodium_base64_VARIANT_URLSAFE_NO_PADDING) == 0 &&
           size == Size;
}

// Digits, for what people hand to commands: no text begins with "-".
[[nodiscard]] inline std::string toDigits(const unsigned char* bytes, std::size_t size) {
    std::string text(2 * size + 1, '\0');
    (void)sodium_bin2hex(text.data(), text.size(), bytes, size);
    text.pop_back();
    return text;
}

template <std::size_t Size>
[[nodiscard]] bool fromDigits(std::string_view text, std::array<unsigned char, Size>& bytes) {
    std::size_t size = 0;
    return text.size() == 2 * Size &&
           sodium_hex2bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &size, nullptr) == 0 &&
           size == Size;
}

}  // namespace qor::embedded
