// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdio>
#include <memory>
#include <string>

#include "interchange/QorImport.h"

namespace qor::cli {

/// The name of standard input among files.
inline constexpr const char* kStandardInput = "-";

/// Keeps what comes in on standard input in an unnamed file, so that it can be looked at before it is read.
class StandardInput {
public:
    /// A path that opens the file, of which all was taken in. Empty, with the reason in `error`, after a failure.
    const std::string& path(std::string& error);

    /// What is named in a file is found from the file's folder; for `path` that must be the current one.
    [[nodiscard]] static std::string resolved(const std::string& named);
    /// Puts the name of standard input in the place of `path`.
    void rename(QorImportResult& result) const;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> _file;
    std::string _path;
};

}  // namespace qor::cli
