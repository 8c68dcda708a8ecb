// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace qor::cli {

/// A text from a file as it may appear on a terminal: control characters, marks that turn the reading direction, and
/// bytes that are no UTF-8 written as "\x1B" or "\u202E".
[[nodiscard]] std::string printable(std::string_view text);
/// As `printable`, with line feeds kept.
[[nodiscard]] std::string printableLines(std::string_view text);
/// The printable text in quotation marks.
[[nodiscard]] std::string quoted(std::string_view text);

/// "1 model", "2 models", "2 breaches".
[[nodiscard]] std::string counted(std::uint64_t count, std::string_view noun);

/// Whether text that goes to this file descriptor is coloured: on a terminal that can, unless NO_COLOR is set, and
/// always with CLICOLOR_FORCE.
[[nodiscard]] bool wantsColour(int descriptor);

/// Marks up text for the eye, or leaves it as it is.
class Colours {
public:
    explicit Colours(bool on) : _on(on) {}
    [[nodiscard]] std::string bold(std::string_view text) const { return wrap("1", text); }
    [[nodiscard]] std::string dim(std::string_view text) const { return wrap("2", text); }
    [[nodiscard]] std::string error(std::string_view text) const { return wrap("1;31", text); }
    [[nodiscard]] std::string warning(std::string_view text) const { return wrap("1;33", text); }

private:
    [[nodiscard]] std::string wrap(std::string_view code, std::string_view text) const;
    bool _on;
};

}  // namespace qor::cli
