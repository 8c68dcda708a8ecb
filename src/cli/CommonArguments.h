// SPDX-License-Identifier: Apache-2.0
// Arguments of many commands. For the files that describe arguments.
#pragma once
#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/Arguments.h"

namespace qor::cli {

void addLanguage(CLI::App& command, std::string& language);
void addActor(CLI::App& command, std::string& user);

/// Of an option that takes several names, the last one is FILE when FILE stands nowhere else: behind the names nothing
/// tells them apart.
void takeFileFrom(std::vector<std::string>& names, std::string& file);

template <class Options>
[[nodiscard]] Task taskOf(std::shared_ptr<const Options> options, Exit (*run)(const Options&, Console&)) {
    return [options = std::move(options), run](Console& console) { return run(*options, console); };
}

/// For a command whose arguments need no further look. The command keeps the options that its arguments go into.
template <class Options>
void runs(CLI::App& command, Task& task, const std::shared_ptr<Options>& options,
          Exit (*run)(const Options&, Console&)) {
    command.callback([&task, options, run] { task = taskOf<Options>(options, run); });
}

}  // namespace qor::cli
