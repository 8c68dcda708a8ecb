// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <string_view>

/// Takes over a text that a contract hands out in a new buffer: `service.getName(id, text.out())`.
class QorOwnedText {
public:
    /// For an output parameter of type `char*&`; frees what was held.
    [[nodiscard]] auto out() {
        _text.reset();
        return Receiver{*this};
    }
    /// Never null.
    [[nodiscard]] const char* c_str() const { return _text ? _text.get() : ""; }
    [[nodiscard]] std::string_view view() const { return c_str(); }
    [[nodiscard]] bool isEmpty() const { return *c_str() == '\0'; }

private:
    class Receiver {
    public:
        explicit Receiver(QorOwnedText& owner) : _owner(owner) {}
        Receiver(const Receiver&) = delete;
        Receiver& operator=(const Receiver&) = delete;
        ~Receiver() { _owner._text.reset(_raw); }
        operator char*&() { return _raw; }

    private:
        QorOwnedText& _owner;
        char* _raw = nullptr;
    };

    std::unique_ptr<char[]> _text;
};
