// SPDX-License-Identifier: Apache-2.0
#include "cli/CommandRunner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace qor::test {

namespace fs = std::filesystem;

namespace {

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

bool holds(std::string_view text, std::string_view parts, bool nothingIsAnything) {
    constexpr std::string_view kBetween = " ... ";
    if (parts.empty()) return nothingIsAnything || text.empty();
    for (;;) {
        const std::size_t size = parts.find(kBetween);
        if (text.find(parts.substr(0, size)) == std::string_view::npos) return false;
        if (size == std::string_view::npos) return true;
        parts.remove_prefix(size + kBetween.size());
    }
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

Outcome CommandRunner::runWhileHeld(const std::string& arguments, const std::string& repository) const {
    write("hold.py",
          "import sqlite3, subprocess, sys\n"
          "repository = sqlite3.connect(sys.argv[1], isolation_level=None)\n"
          "repository.execute('BEGIN IMMEDIATE')\n"
          "sys.exit(subprocess.call(sys.argv[2:]))\n");
    return run(arguments, "python3 hold.py " + repository);
}

void CommandRunner::expect(const std::string& command, const std::vector<Call>& calls) const {
    for (const Call& call : calls) {
        SCOPED_TRACE(call.before + " qor " + command + call.arguments);
        const Outcome outcome = run(command + call.arguments, call.before);
        EXPECT_EQ(outcome.exit, call.exit) << outcome.err;
        EXPECT_TRUE(holds(outcome.out, call.out, outcome.exit != 0)) << outcome.out << "\nholds no\n" << call.out;
        EXPECT_TRUE(holds(outcome.err, call.err, false)) << outcome.err << "\nholds no\n" << call.err;
    }
}

std::string CommandRunner::content(const std::string& name) const { return contentOf(_folder / "in" / name); }

}  // namespace qor::test
