// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "cli/Progress.h"
#include "cli/Spool.h"
#include "cli/Text.h"

namespace qor::cli {

/// Standard output as results go to it.
enum class OutputMode : std::uint8_t {
    Lines,     ///< as they come, always up to the end of a line
    Document,  ///< all at once at the end: what breaks off on the way leaves nothing half-written
};

/// Standard output and standard error of the command. Remembers whether writing failed.
class Console {
public:
    Console();
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console();

    void setMode(OutputMode mode) { _mode = mode; }

    /// Results. Given line by line or in pieces of a document.
    void out(std::string_view text);
    /// Lets what is complete be seen; does nothing to a document.
    void flush();
    /// Everything else, one or more whole lines.
    void err(std::string_view text);
    /// Writes what is still to be written. False, after telling why, when any result could not be written.
    [[nodiscard]] bool finish();

    [[nodiscard]] Colours outColours() const { return _outColours; }
    [[nodiscard]] Colours errColours() const { return _errColours; }
    [[nodiscard]] Progress& progress() { return _progress; }

private:
    void writeOut(std::string_view text);
    void fail(int error);

    OutputMode _mode = OutputMode::Lines;
    std::string _pending;  ///< lines
    Spool _document;
    int _error = 0;  ///< errno of the first write that failed
    Colours _outColours;
    Colours _errColours;
    Progress _progress;
};

}  // namespace qor::cli
