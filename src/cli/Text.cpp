// SPDX-License-Identifier: Apache-2.0
#include "cli/Text.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <iterator>

#include "cli/Utf8.h"

namespace qor::cli {

namespace {

std::string escaped(std::string_view text, bool keepLineFeeds) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Utf8Char c = firstChar(text);
        const bool isKept = keepLineFeeds && c.valid && c.code == U'\n';
        if (!c.valid || (c.code < 0x80 && isHostile(c.code) && !isKept))
            fmt::format_to(std::back_inserter(result), "\\x{:02X}", static_cast<unsigned char>(text.front()));
        else if (isHostile(c.code) && !isKept)
            fmt::format_to(std::back_inserter(result), "\\u{:04X}", static_cast<std::uint32_t>(c.code));
        else
            result += text.substr(0, c.size);
        text.remove_prefix(c.size);
    }
    return result;
}

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

std::string printable(std::string_view text) { return escaped(text, false); }

std::string printableLines(std::string_view text) { return escaped(text, true); }

std::string quoted(std::string_view text) { return '"' + printable(text) + '"'; }

std::string counted(std::uint64_t count, std::string_view noun) {
    const bool hissing = noun.ends_with("ch") || noun.ends_with('s');
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : hissing ? "es" : "s");
}

bool wantsColour(int descriptor) {
    if (isSet("NO_COLOR")) return false;
    if (isSet("CLICOLOR_FORCE") && std::string_view(std::getenv("CLICOLOR_FORCE")) != "0") return true;
    return isSet("TERM") && std::string_view(std::getenv("TERM")) != "dumb" && ::isatty(descriptor) == 1;
}

std::string Colours::wrap(std::string_view code, std::string_view text) const {
    return _on ? fmt::format("\x1B[{}m{}\x1B[0m", code, text) : std::string(text);
}

}  // namespace qor::cli
