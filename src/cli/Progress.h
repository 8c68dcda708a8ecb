// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string_view>

namespace qor::cli {

/// One line on standard error that says what is being done, shown when the command has run for a second, and only on a
/// terminal. A timer signal redraws it, so that it lives through a single long step. At most one object at a time.
class Progress {
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    /// Does nothing where there is no terminal to show it.
    void start();
    /// What is being done now.
    void say(std::string_view text);
    /// Takes the line away; it comes back when the timer next runs. To be called before anything else is written.
    void hide();

private:
    bool _started = false;
};

}  // namespace qor::cli
