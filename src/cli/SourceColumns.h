// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qor::cli {

/// Turns places in a file, whose columns count bytes, into columns that count characters. The file is read when the
/// first place is asked for.
class SourceColumns {
public:
    explicit SourceColumns(std::string path = {}) : _path(std::move(path)) {}

    /// The byte column itself where the file cannot be read or has no such place.
    [[nodiscard]] std::uint32_t characters(std::uint32_t line, std::uint32_t byteColumn);

private:
    void read();

    std::string _path;
    bool _isRead = false;
    std::string _text;
    std::vector<std::size_t> _lines;  ///< where they begin
};

}  // namespace qor::cli
