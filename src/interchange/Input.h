// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "interchange/FileInput.h"

namespace qor::interchange {

/// A file that is being read: its beginning, by which it is judged, and on demand the rest.
struct Input {
    std::unique_ptr<FileSource> file;  ///< where the rest comes from; none when `text` is everything
    std::string text;
    std::string problem;  ///< why it cannot be read

    /// Takes the rest of the file in; false, with the problem, when it cannot be had or is too much for a document.
    /// Ends early in the midst of what no document can hold, so that it costs little to refuse.
    bool readAll();
};

/// Opens files. What can be read only once, as a pipe, can be looked at before it is read.
class Inputs {
public:
    /// For reading.
    [[nodiscard]] Input open(const std::string& path);
    /// For a question about the file; it can still be opened afterwards.
    [[nodiscard]] Input look(const std::string& path);

private:
    std::map<std::string, std::string> _taken;  // by path: what was looked at and cannot be read again
};

}  // namespace qor::interchange
