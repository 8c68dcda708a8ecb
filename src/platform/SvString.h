// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "platform/QorExport.h"

/// A text's resource identifier carries its 16-bit number in the lower half and the resource type 512 in the upper.
inline constexpr unsigned long QorTextResourceType = 33554432;

namespace SV {

/// The toolkit's 8-bit string: bytes, by convention UTF-8. A zero byte is a byte like any other.
class QOR_API String {
public:
    String() = default;
    String(const char* text);  ///< null counts as the empty text
    String(std::string_view text) : _text(text) {}
    String(std::string text) noexcept : _text(std::move(text)) {}

    /// The text of a message resource, identified by QorTextResourceType plus its number. A number without a text reads
    /// "#n"; so does an identifier of another type.
    explicit String(unsigned long resource);

    // A number, a letter or a truth value handed in by mistake must not become a text silently.
    String(std::nullptr_t) = delete;
    String(bool) = delete;
    String(char) = delete;

    [[nodiscard]] const char* c_str() const noexcept { return _text.c_str(); }
    [[nodiscard]] const std::string& str() const noexcept { return _text; }
    [[nodiscard]] std::string_view view() const noexcept { return _text; }
    operator std::string_view() const noexcept { return _text; }

    [[nodiscard]] unsigned long Len() const noexcept { return _text.size(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return _text.empty(); }
    void Clear() noexcept { _text.clear(); }

    String& operator+=(std::string_view text) {
        _text += text;
        return *this;
    }
    friend String operator+(String left, std::string_view right) {
        left += right;
        return left;
    }
    friend bool operator==(const String& left, const String& right) noexcept { return left._text == right._text; }
    friend bool operator<(const String& left, const String& right) noexcept { return left._text < right._text; }

private:
    std::string _text;
};

inline bool operator==(const String& left, std::string_view right) noexcept { return left.view() == right; }
inline bool operator==(const String& left, const char* right) noexcept {
    return left.view() == std::string_view(right);
}

}  // namespace SV
