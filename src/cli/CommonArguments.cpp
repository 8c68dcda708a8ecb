// SPDX-License-Identifier: Apache-2.0
#include "cli/CommonArguments.h"

namespace qor::cli {

void addLanguage(CLI::App& command, std::string& language) {
    command.add_option("--language", language, "Language of the messages: en or de")
        ->check(CLI::IsMember(std::vector<std::string>{"en", "de"}))
        ->option_text("LANGUAGE");
}

void addActor(CLI::App& command, std::string& user) {
    command.add_option("--user", user, "Act as this user; else as the operating system's")
        ->option_text("NAME")
        ->allow_extra_args(false);
}

void takeFileFrom(std::vector<std::string>& names, std::string& file) {
    if (!file.empty()) return;
    if (names.size() < 2) throw CLI::RequiredError("FILE");
    file = std::move(names.back());
    names.pop_back();
}

}  // namespace qor::cli
