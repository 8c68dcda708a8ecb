// SPDX-License-Identifier: Apache-2.0
// The arguments of `qor user`, `qor group`, `qor permission` and `qor access`. For the one file that parses arguments.
#pragma once
#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/AdminCommands.h"
#include "cli/CommonArguments.h"
#include "cli/HelpTexts.h"

namespace qor::cli {

/// What a verb is about: its arguments behind FILE, at least so many and at most (0: any number).
struct AdminVerb {
    const char* name;
    const char* purpose;
    const char* argument;
    const char* argumentPurpose;
    int atLeast;
    int atMost;
};

inline constexpr AdminVerb kUserVerbs[] = {
    {"list", "Show users with their groups", "NAME", "Only these", 0, 0},
    {"add", "Add users; the first one is an administrator", "NAME", "Their logon names", 1, 0},
    {"rename", "Give a user another logon name", "NAME", "The old and the new name", 2, 2},
    {"set", "Change a user's display name, library, profile or user managers", "NAME", "The user", 1, 1},
    {"grant", "Make a user an administrator or a sub-administrator", "NAME", "The user, then the right", 2, 2},
    {"revoke", "Take that right away again", "NAME", "The user, then the right", 2, 2},
    {"remove", "Remove users with their memberships", "NAME", "The users", 1, 0},
    {"join", "Put a user into user groups", "NAME", "The user, then the groups", 2, 0},
    {"leave", "Take a user out of user groups", "NAME", "The user, then the groups", 2, 0},
    {"sign-on", "Say which further user manager counts", "MODE", "667, 668 or none", 1, 1},
};

inline constexpr AdminVerb kGroupVerbs[] = {
    {"list", "Show user groups with members and permissions", "NAME", "Only these", 0, 0},
    {"add", "Add user groups", "NAME", "Their names", 1, 0},
    {"rename", "Give a user group another name", "NAME", "The old and the new name", 2, 2},
    {"remove", "Remove user groups with memberships and permissions", "NAME", "The groups", 1, 0},
    {"join", "Put a user group into others", "NAME", "The group, then those it is put into", 2, 0},
    {"leave", "Take a user group out of others", "NAME", "The group, then those it is taken out of", 2, 0},
};

inline constexpr AdminVerb kPermissionVerbs[] = {
    {"list", "Show the permissions of user groups on model groups", "USERGROUP", "Only of these", 0, 0},
    {"grant", "Give a user group a permission on model groups, as they are", "NAME",
     "The user group, then read or write, then the model groups", 3, 0},
    {"revoke", "Take a user group's permission on model groups away", "NAME", "The user group, then the model groups",
     2, 0},
    {"set", "Set permissions on model groups and those below, shown before", "GROUP",
     "The model groups, last of all read, write or none", 1, 0},
};

inline void describeActor(CLI::App& command, AdminOptions& options, const std::string& schema) {
    addActor(command, options.actor);
    command.add_option("--key-file", options.keyFile, "The key that the administrator log is enciphered with")
        ->option_text("PATH")
        ->allow_extra_args(false);
    command.add_flag("--json", options.json, "Write one JSON document, " + schema);
    addLanguage(command, options.language);
}

inline void describeUserDetails(CLI::App& command, AdminOptions& options, bool isNew) {
    const auto one = [&](const char* name, auto& target, const char* purpose, const char* text) {
        command.add_option(name, target, purpose)->option_text(text);
    };
    one("--display", options.display, "The name that is shown", "NAME");
    one("--organisation", options.organisation, "Second part of the name; then it is a two-part name", "NAME");
    one("--remark", options.remark, "The remark in the profile", "TEXT");
    command
        .add_option("--profile", options.profile, "An entry of the profile, as 7=Engineer; may be given several times")
        ->option_text("ENTRY=TEXT")
        ->allow_extra_args(false);
    one("--library", options.library,
        isNew ? "The library that the user may reach; the only one when not given"
              : "The library that the user may reach",
        "NAME");
    command.add_flag("--no-library", options.noLibrary, "Allow no library")->excludes("--library");
    const auto managers = CLI::IsMember(std::vector<long>{1000, 1001, 1002});
    command.add_option("--manager", options.managers, "User manager: 1000, or of single sign-on 1001 or 1002")
        ->check(managers)
        ->option_text("NUMBER")
        ->allow_extra_args(false);
    if (isNew)
        command.add_option("--group", options.groups, "A user group to join; may be given several times")
            ->option_text("NAME")
            ->allow_extra_args(false);
    else
        command.add_option("--no-manager", options.noManagers, "User manager to leave")
            ->check(managers)
            ->option_text("NUMBER")
            ->allow_extra_args(false);
}

inline CLI::App& describeAdminVerb(CLI::App& parent, const AdminVerb& verb, AdminOptions& options) {
    const std::string family = parent.get_name();
    const std::string name = verb.name;
    CLI::App& command = *parent.add_subcommand(name, verb.purpose);
    describeActor(command, options, "qor." + family + "." + name + "/1");
    command.add_option("FILE", options.file, "The repository file")->required()->option_text(" ");
    CLI::Option& names = *command.add_option(verb.argument, options.names, verb.argumentPurpose)
                              ->option_text(verb.atMost == 1 ? " " : "...");
    if (verb.atLeast > 0) names.required();
    names.expected(verb.atLeast == 0 ? 1 : verb.atLeast, verb.atMost == 0 ? 1000000 : verb.atMost);
    command.callback([&options, family, name] {
        options.command = family;
        options.verb = name;
    });
    return command;
}

inline CLI::App& describeUsers(CLI::App& app, AdminOptions& options) {
    CLI::App& user = *app.add_subcommand("user", "Show and change the users of a repository file");
    user.require_subcommand(1);
    user.footer(help::kUserExamples);
    for (const AdminVerb& verb : kUserVerbs) {
        CLI::App& command = describeAdminVerb(user, verb, options);
        const std::string name = verb.name;
        if (name == "add" || name == "set") describeUserDetails(command, options, name == "add");
        if (name == "sign-on")
            command.get_option("MODE")->check(CLI::IsMember(std::vector<std::string>{"667", "668", "none"}));
        if (name == "grant" || name == "revoke")
            command.callback([&options, name] {
                options.command = "user";
                options.verb = name;
                if (options.names.back() != "administrator" && options.names.back() != "sub-administrator")
                    throw CLI::ValidationError("the right is administrator or sub-administrator");
            });
    }
    return user;
}

inline CLI::App& describeUserGroups(CLI::App& app, AdminOptions& options) {
    CLI::App& group = *app.add_subcommand("group", "Show and change the user groups of a repository file");
    group.require_subcommand(1);
    group.footer(help::kUserGroupExamples);
    for (const AdminVerb& verb : kGroupVerbs) {
        CLI::App& command = describeAdminVerb(group, verb, options);
        if (std::string_view(verb.name) == "add")
            command.add_flag("--system", options.system, "System user groups, for users of single sign-on");
    }
    return group;
}

inline CLI::App& describePermissions(CLI::App& app, AdminOptions& options) {
    CLI::App& permission =
        *app.add_subcommand("permission", "Show and change what user groups may do with model groups");
    permission.require_subcommand(1);
    permission.footer(help::kPermissionExamples);
    for (const AdminVerb& verb : kPermissionVerbs) {
        CLI::App& command = describeAdminVerb(permission, verb, options);
        if (std::string_view(verb.name) == "list") continue;
        command.add_option("--library", options.library, "Of the model groups, where several have one of that name")
            ->option_text("NAME");
        if (std::string_view(verb.name) != "set") continue;
        command.add_option("--to", options.groups, "The user groups")->required()->option_text("USERGROUP...");
        command
            .add_option("--sub-groups", options.subGroups, "What groups below get: these permissions, or all of them")
            ->check(CLI::IsMember(std::vector<std::string>{"adapted", "all"}))
            ->option_text("adapted|all");
        command.add_flag("--dry-run", options.dryRun, "Only show what would rise or fall");
        command.add_flag("--yes", options.yes, "Lower higher permissions of groups below without asking");
    }
    return permission;
}

inline CLI::App& describeAccess(CLI::App& app, AdminOptions& options) {
    CLI::App& access = *app.add_subcommand("access", "Show which model groups a user reaches, or who reaches one");
    describeActor(access, options, "qor.access/1");
    access.add_option("FILE", options.file, "The repository file")->required()->option_text(" ");
    CLI::Option& user = *access.add_option("USER", options.names, "The user")->expected(1)->option_text(" ");
    access.add_option("--who", options.who, "Show who reaches this model group")->option_text("GROUP")->excludes(&user);
    access.add_option("--library", options.library, "Of the model group, where several have one of that name")
        ->option_text("NAME");
    access.add_flag("--why", options.why, "Also show through which user groups");
    access.footer(help::kAccessExamples);
    access.callback([&options] {
        options.command = "access";
        if (options.names.empty() == options.who.empty()) throw CLI::RequiredError("USER or --who GROUP");
    });
    return access;
}

}  // namespace qor::cli
