// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/Exit.h"

namespace qor::cli {

class AdminSession;
class Console;

/// An argument behind FILE.
struct AdminArgument {
    const char* name = nullptr;  ///< null: there is none
    const char* purpose = nullptr;
    std::array<const char*, 3> words{};  ///< that it may be; null ones are none, and all: any text
};

/// A command about users, groups or permissions; its arguments stand in the order of the members.
struct AdminVerb {
    const char* name;
    const char* purpose;
    bool writes;
    void (*run)(AdminSession& session);
    AdminArgument subject{};  ///< who or what the command is about
    AdminArgument word{};     ///< what the subject gets
    AdminArgument names{};    ///< one or more
    bool mayNameNone = false;
};
[[nodiscard]] std::span<const AdminVerb> userVerbs();
[[nodiscard]] std::span<const AdminVerb> userGroupVerbs();
[[nodiscard]] std::span<const AdminVerb> permissionVerbs();
[[nodiscard]] const AdminVerb& accessVerb();

/// Of `qor user`, `qor group`, `qor permission` and `qor access`; each verb uses what it needs.
struct AdminOptions {
    const AdminVerb* verb = nullptr;
    std::string schema;  ///< of the document, "qor.user.add/1"
    std::string file;
    std::string actor;    ///< the current user; empty: the operating system's
    std::string keyFile;  ///< of the administrator log; empty: the usual one
    std::string library;  ///< by name
    bool json = false;
    std::string language = "en";

    std::string subject;
    std::string word;
    std::vector<std::string> names;
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

[[nodiscard]] Exit runAdmin(const AdminOptions& options, Console& console);

}  // namespace qor::cli
