// SPDX-License-Identifier: Apache-2.0
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/CommandRunner.h"
#include "cli/samples.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

/// What `qor ARGUMENTS` writes to a terminal as its standard error; `before` stands ahead of the command.
std::string onTerminal(const qor::test::CommandRunner& qor, const std::string& arguments, const std::string& before) {
    int terminal = -1;
    const pid_t child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        const std::string line = "cd '" + (qor.folder() / "in").string() + "' && " + before +
                                 " '" QOR_BINARY_DIR "/bin/qor' " + arguments + " >/dev/null";
        ::execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
        ::_exit(127);
    }
    std::string shown;
    char bytes[4096];
    for (ssize_t size = 0; (size = ::read(terminal, bytes, sizeof bytes)) > 0;)
        shown.append(bytes, static_cast<std::size_t>(size));
    ::close(terminal);
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << shown;
    return shown;
}

TEST(CliProgress, AppearsAfterASecondOnATerminalAndGoesAway) {
    qor::test::CommandRunner qor;
    qor.write("workshop.yaml", qor::test::kWorkshop);
    qor.write("clean.yaml", qor::test::kClean);
    const std::string slowly = "(sleep 1.5; cat clean.yaml) | ";
    EXPECT_THAT(onTerminal(qor, "check clean.yaml", "TERM=xterm"), IsEmpty());
    EXPECT_THAT(onTerminal(qor, "check -", slowly + "TERM=dumb"), IsEmpty());

    const std::string shown = onTerminal(qor, "check -", slowly + "TERM=xterm");
    EXPECT_THAT(shown, HasSubstr("\r\x1B[Kreading - (1 of 1)  1 s"));
    EXPECT_THAT(shown, EndsWith(" s\r\x1B[K"));
}

}  // namespace
