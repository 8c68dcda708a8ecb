// SPDX-License-Identifier: Apache-2.0
// For the one file that parses arguments.
#pragma once
#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace qor::cli {

inline void addLanguage(CLI::App& command, std::string& language) {
    command.add_option("--language", language, "Language of the messages: en or de")
        ->check(CLI::IsMember(std::vector<std::string>{"en", "de"}))
        ->option_text("LANGUAGE");
}

}  // namespace qor::cli
