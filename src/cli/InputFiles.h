// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdio>
#include <map>
#include <memory>
#include <string>

namespace qor::cli {

/// The name of standard input among files.
inline constexpr const char* kStandardInput = "-";
/// The name of standard output among files to be written.
inline constexpr const char* kStandardOutput = "-";

/// Files that can be looked at before they are read. What can be read only once (standard input, a pipe) is kept in an
/// unnamed file.
class InputFiles {
public:
    /// A path that opens the file any number of times; mostly its own. Empty, with the reason in `error`, after a
    /// failure.
    std::string path(const std::string& file, std::string& error);

    /// A file that is named in another one is found from the other's folder. What is kept has none, so that it is found
    /// from the current one.
    [[nodiscard]] static std::string resolved(const std::string& named);

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::map<std::string, std::unique_ptr<std::FILE, Close>> _kept;
};

}  // namespace qor::cli
