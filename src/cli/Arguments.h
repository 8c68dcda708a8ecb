// SPDX-License-Identifier: Apache-2.0
// The arguments of all commands.
#pragma once
#include <functional>

#include "cli/Exit.h"

namespace CLI {
class App;
}

namespace qor::cli {

class Console;

/// What the arguments ask for.
using Task = std::function<Exit(Console&)>;

// Each of these adds a command, which sets the task when it is given with the right arguments.

void describeCheck(CLI::App& app, Task& task);
void describeHierarchy(CLI::App& app, Task& task);
void describeRename(CLI::App& app, Task& task);
void describeConvert(CLI::App& app, Task& task);
void describeTransfer(CLI::App& app, Task& task);

void describeLibrary(CLI::App& app, Task& task);
void describeRules(CLI::App& app, Task& task);
void describeConnect(CLI::App& app, Task& task);
void describeSim(CLI::App& app, Task& task);

void describeCalendar(CLI::App& app, Task& task);
void describeDistribution(CLI::App& app, Task& task);

void describeRepo(CLI::App& app, Task& task);
void describeLog(CLI::App& app, Task& task);

void describeUsers(CLI::App& app, Task& task);
void describeUserGroups(CLI::App& app, Task& task);
void describePermissions(CLI::App& app, Task& task);
void describeAccess(CLI::App& app, Task& task);

}  // namespace qor::cli
