// SPDX-License-Identifier: Apache-2.0
#include "cli/CommandRunner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace qor::test {

namespace fs = std::filesystem;

namespace {

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

}  // namespace

CommandRunner::CommandRunner() {
    std::string name = (fs::temp_directory_path() / "qor-cli-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) std::abort();
    _folder = name;
    fs::create_directory(_folder / "in");
}

CommandRunner::~CommandRunner() {
    std::error_code ignored;
    fs::remove_all(_folder, ignored);
}

void CommandRunner::write(const std::string& name, std::string_view content) const {
    std::ofstream(_folder / "in" / name, std::ios::binary) << content;
}

Outcome CommandRunner::run(const std::string& arguments, const std::string& before) const {
    const std::string line = "exec >'" + (_folder / "out").string() + "' 2>'" + (_folder / "err").string() +
                             "' && cd '" + (_folder / "in").string() + "' && " + before +
                             " '" QOR_BINARY_DIR "/bin/qor' " + arguments;
    const int status = std::system(line.c_str());
    Outcome outcome;
    outcome.exit = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    outcome.out = contentOf(_folder / "out");
    outcome.err = contentOf(_folder / "err");
    return outcome;
}

}  // namespace qor::test
