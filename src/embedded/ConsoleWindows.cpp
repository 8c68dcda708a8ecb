// SPDX-License-Identifier: Apache-2.0
#include "embedded/ConsoleWindows.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/CheckBoxes.h"

namespace qor::embedded {

namespace {

constexpr const char* kRed = "\x1b[31m";
constexpr const char* kYellow = "\x1b[33m";
constexpr const char* kPlain = "\x1b[0m";
constexpr const char* kClearLine = "\r\x1b[K";

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool isForced() { return isSet("CLICOLOR_FORCE") && std::string_view(std::getenv("CLICOLOR_FORCE")) != "0"; }

bool isDumb() {
    const char* const kind = std::getenv("TERM");
    return kind == nullptr || std::string_view(kind) == "dumb";
}

// Line feeds stay when lines may follow each other; every other control character becomes "\xNN".
std::string printable(std::string_view text, bool manyLines) {
    std::string shown;
    shown.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7f) {
            shown += c;
        } else if (c == '\n' && manyLines) {
            shown += "\n    ";
        } else if (c == '\n' || c == '\t') {
            shown += ' ';
        } else {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02x", byte);
            shown += escaped;
        }
    }
    return shown;
}

}  // namespace

ConsoleWindows::ConsoleWindows()
    : _terminal(::isatty(STDERR_FILENO) == 1 && !isDumb()), _colour(!isSet("NO_COLOR") && (_terminal || isForced())) {}

ConsoleWindows::~ConsoleWindows() { clearProgressLine(); }

void ConsoleWindows::writeLine(const char* colour, const char* label, const std::string& text) {
    clearProgressLine();
    std::fprintf(stderr, "%s%s%s%s\n", _colour ? colour : "", label, _colour ? kPlain : "", text.c_str());
    showProgressLine();
}

int ConsoleWindows::box(SV::Window*, unsigned long style, const SV::String& text) {
    std::string_view shown = text.view();
    while (!shown.empty() && shown.back() == '\n') shown.remove_suffix(1);
    if (style == QorBoxStyle::Error)
        writeLine(kRed, "error: ", printable(shown, true));
    else
        writeLine("", "", printable(shown, true));
    return 0;
}

std::optional<std::string> ConsoleWindows::ask(const std::string& prompt) {
    if (!_terminal || ::isatty(STDIN_FILENO) != 1) return std::nullopt;
    clearProgressLine();
    std::fputs(prompt.c_str(), stderr);
    std::fflush(stderr);
    std::string line;
    int c = 0;
    while ((c = std::fgetc(stdin)) != EOF && c != '\n') line += static_cast<char>(c);
    const bool hasEnded = c == EOF && line.empty();
    if (hasEnded) std::fputc('\n', stderr);
    showProgressLine();
    return hasEnded ? std::nullopt : std::optional(std::move(line));
}

std::optional<bool> ConsoleWindows::askWhether(const std::string& question, bool usual) {
    const auto answer = ask(question + (usual ? " [Y/n] " : " [y/N] "));
    if (!answer) return std::nullopt;
    // "ja" is a yes as well.
    const char first = answer->empty() ? '\0' : answer->front();
    if (first == 'y' || first == 'Y' || first == 'j' || first == 'J') return true;
    return first == 'n' || first == 'N' ? false : usual;
}

bool ConsoleWindows::query(SV::Window*, const SV::String& text) {
    if (const auto answer = askWhether(printable(text.view(), true), false)) return *answer;
    writeLine(kYellow, "", printable(text.view(), true) + " no");
    return false;
}

void ConsoleWindows::clearProgressLine() {
    if (_terminal && !_open.empty()) std::fputs(kClearLine, stderr);
}

void ConsoleWindows::showProgressLine() {
    if (!_terminal || _open.empty()) return;
    std::fputs(_open.back().text.c_str(), stderr);
    std::fflush(stderr);
}

long ConsoleWindows::openProgress(SV::Window*, const SV::String& text) {
    clearProgressLine();
    _open.push_back({++_lastWindow, printable(text.view(), false)});
    showProgressLine();
    return _lastWindow;
}

void ConsoleWindows::closeProgress(long window) {
    clearProgressLine();
    std::erase_if(_open, [&](const Progress& progress) { return progress.window == window; });
    showProgressLine();
}

// Cancelled by ending the input.
bool ConsoleWindows::checkBoxDialog(SV::Window*, const SV::String& title, std::span<QorCheckBox> boxes) {
    std::vector<QorCheckBox> asked(boxes.begin(), boxes.end());
    for (std::size_t at = 0; at < asked.size(); ++at) {
        if (!isEnabled(asked, at)) continue;
        const auto answer = askWhether(
            printable(title.view(), false) + ": " + printable(asked[at].label.view(), false) + "?", asked[at].checked);
        if (!answer) return false;
        asked[at].checked = *answer;
    }
    std::move(asked.begin(), asked.end(), boxes.begin());
    return true;
}

bool ConsoleWindows::saveFileDialog(SV::Window*, const QorFileFilter& filter, SV::String& path) {
    const auto answer =
        ask(printable(filter.displayName.view(), false) + " (" + printable(filter.pattern.view(), false) + "): ");
    path = SV::String(answer.value_or(std::string()));
    return answer && !answer->empty();
}

void ConsoleWindows::internalError(const char* source, long line, const char* text) {
    std::string what = std::string(source) + ", line " + std::to_string(line);
    if (*text != '\0') what += std::string(": ") + text;
    writeLine(kRed, "internal error: ", printable(what, false));
}

}  // namespace qor::embedded
