// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "admin/logFiles.h"

namespace qor::admin {

/// Puts the lines of the log together from pieces and hands on each that is not empty: its number from 1, and its
/// deciphered text, or nothing when it cannot be deciphered. Ends when `take` gives false.
template <class Take>
class LogLines {
public:
    explicit LogLines(Take& take) : _take(take) {}

    /// False when no more is wanted.
    bool add(std::string_view piece) {
        for (auto end = piece.find('\n'); end != std::string_view::npos; end = piece.find('\n')) {
            _line += piece.substr(0, end);
            if (!endLine()) return false;
            piece.remove_prefix(end + 1);
        }
        _line += piece;
        return true;
    }
    /// Also what stands behind the last line feed is a line.
    bool endLine() {
        ++_number;
        if (_line.empty()) return true;
        QorOwnedText plain;
        const bool isDeciphered = decipher(SV::String(std::exchange(_line, {})), plain);
        return _take(_number, isDeciphered ? std::optional(plain.view()) : std::nullopt);
    }

private:
    Take& _take;
    std::string _line;
    unsigned long _number = 0;
};

/// False when the file cannot be opened or read.
template <class Take>
[[nodiscard]] bool readLogLines(const SV::String& file, Take take) {
    LogLines<Take> lines(take);
    if (!readChunks(file, [&](std::string_view chunk) { return lines.add(chunk); })) return false;
    (void)lines.endLine();
    return true;
}

}  // namespace qor::admin
