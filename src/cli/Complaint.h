// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cli/Exit.h"

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace qor::cli {

class Console;

/// Says what is wrong with the arguments, in words that help; or shows the help where nothing more was given than a
/// command that stands for nothing by itself.
[[nodiscard]] Exit refuse(const CLI::App& app, const CLI::ParseError& error, Console& console);

}  // namespace qor::cli
