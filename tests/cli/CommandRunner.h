// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace qor::test {

struct Outcome {
    int exit = -1;  ///< 128 plus its number when a signal ended the command
    std::string out;
    std::string err;
};

/// A folder of its own in which the built command runs on small files.
class CommandRunner {
public:
    CommandRunner();
    CommandRunner(const CommandRunner&) = delete;
    CommandRunner& operator=(const CommandRunner&) = delete;
    ~CommandRunner();

    void write(const std::string& name, std::string_view content) const;
    /// Runs `qor ARGUMENTS` through the shell, so that arguments may redirect; `before` stands ahead of the command
    /// (variables, a pipe).
    [[nodiscard]] Outcome run(const std::string& arguments, const std::string& before = "") const;
    [[nodiscard]] const std::filesystem::path& folder() const { return _folder; }

private:
    std::filesystem::path _folder;
};

}  // namespace qor::test
