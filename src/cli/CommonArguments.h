// SPDX-License-Identifier: Apache-2.0
// Arguments of many commands. For the one file that parses arguments.
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

inline void addActor(CLI::App& command, std::string& user) {
    command.add_option("--user", user, "Act as this user; else as the operating system's")
        ->option_text("NAME")
        ->allow_extra_args(false);
}

}  // namespace qor::cli
