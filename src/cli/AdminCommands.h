// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class Console;

/// Of `qor user`, `qor group`, `qor permission` and `qor access`; each verb uses what it needs.
struct AdminOptions {
    std::string command;  ///< "user", "group", "permission", "access"
    std::string verb;     ///< of an access: empty
    std::string file;
    std::string actor;    ///< the current user; empty: the operating system's
    std::string keyFile;  ///< of the administrator log; empty: the usual one
    std::string library;  ///< by name
    bool json = false;
    std::string language = "en";

    std::vector<std::string> names;    ///< what the verb is about, in the order of its arguments
    std::vector<std::string> groups;   ///< user groups that are named beside
    std::vector<std::string> profile;  ///< "6=text"
    std::vector<long> managers;
    std::vector<long> noManagers;
    std::optional<std::string> display;
    std::optional<std::string> organisation;
    std::optional<std::string> remark;
    bool noLibrary = false;
    bool system = false;
    std::string who;  ///< a model group: who can reach it
    bool why = false;
    std::string subGroups;  ///< "adapted" or "all"; empty: nothing said
    bool dryRun = false;
    bool yes = false;
};

[[nodiscard]] Exit runUser(const AdminOptions& options, Console& console);
[[nodiscard]] Exit runUserGroup(const AdminOptions& options, Console& console);
[[nodiscard]] Exit runPermission(const AdminOptions& options, Console& console);
[[nodiscard]] Exit runAccess(const AdminOptions& options, Console& console);

}  // namespace qor::cli
