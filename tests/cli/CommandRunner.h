// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace qor::test {

struct Outcome {
    int exit = -1;  ///< 128 plus its number when a signal ended the command
    std::string out;
    std::string err;
};

/// How a command is called, and what must come of it.
struct Call {
    std::string arguments;
    int exit;
    // Parts that stand there, separated by " ... "; empty: there is nothing, in the output unless the command fails.
    std::string out = {}, err = {};
    std::string before = {};  ///< as for `run`
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
    /// While another process is writing to that repository file.
    [[nodiscard]] Outcome runWhileHeld(const std::string& arguments, const std::string& repository) const;
    /// Runs `qor COMMAND ARGUMENTS` for each of them.
    void expect(const std::string& command, const std::vector<Call>& calls) const;
    /// What a file in the folder holds.
    [[nodiscard]] std::string content(const std::string& name) const;
    [[nodiscard]] const std::filesystem::path& folder() const { return _folder; }

private:
    std::filesystem::path _folder;
};

}  // namespace qor::test
