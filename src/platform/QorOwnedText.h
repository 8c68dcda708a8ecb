// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>
#include <utility>

/// Takes over a text that a contract hands out in a new buffer: `service.getName(id, text.out())`.
class QorOwnedText {
public:
    QorOwnedText() = default;
    QorOwnedText(QorOwnedText&& other) noexcept : _text(std::exchange(other._text, nullptr)) {}
    QorOwnedText& operator=(QorOwnedText&& other) noexcept {
        std::swap(_text, other._text);
        return *this;
    }
    ~QorOwnedText() { delete[] _text; }

    /// For an output parameter of type `char*&`; frees what was held.
    [[nodiscard]] char*& out() noexcept {
        delete[] std::exchange(_text, nullptr);
        return _text;
    }
    /// Never null.
    [[nodiscard]] const char* c_str() const noexcept { return _text != nullptr ? _text : ""; }
    [[nodiscard]] std::string_view view() const noexcept { return c_str(); }
    [[nodiscard]] bool isEmpty() const noexcept { return *c_str() == '\0'; }

private:
    char* _text = nullptr;
};
