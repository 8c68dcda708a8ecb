// SPDX-License-Identifier: Apache-2.0
#include <string_view>

#include "cli/AdminCommands.h"
#include "cli/CommonArguments.h"
#include "cli/HelpTexts.h"

namespace qor::cli {

namespace {

void describeActor(CLI::App& command, AdminOptions& options) {
    addActor(command, options.actor);
    command.add_option("--key-file", options.keyFile, "The key that the administrator log is enciphered with")
        ->option_text("PATH")
        ->allow_extra_args(false);
    command.add_flag("--json", options.json, "Write one JSON document, " + options.schema);
    addLanguage(command, options.language);
    command.add_option("FILE", options.file, "The repository file")->required()->option_text(" ");
}

void describeUserDetails(CLI::App& command, AdminOptions& options, bool isNew) {
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
    command.add_flag("--no-library", options.noLibrary, "Allow no library")->excludes("--library")->option_text(" ");
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

void describeOne(CLI::App& command, const AdminArgument& argument, std::string& target) {
    if (argument.name == nullptr) return;
    CLI::Option& option = *command.add_option(argument.name, target, argument.purpose)->required()->option_text(" ");
    std::vector<std::string> words;
    for (const char* word : argument.words)
        if (word != nullptr) words.emplace_back(word);
    if (!words.empty()) option.check(CLI::IsMember(words));
}

CLI::App& describeVerb(CLI::App& family, const AdminVerb& verb, Task& task,
                       const std::shared_ptr<AdminOptions>& options) {
    CLI::App& command = *family.add_subcommand(verb.name, verb.purpose);
    options->verb = &verb;
    options->schema = "qor." + family.get_name() + "." + verb.name + "/1";
    describeActor(command, *options);
    describeOne(command, verb.subject, options->subject);
    describeOne(command, verb.word, options->word);
    if (verb.names.name != nullptr)
        command.add_option(verb.names.name, options->names, verb.names.purpose)
            ->required(!verb.mayNameNone)
            ->option_text("...");
    runs(command, task, options, runAdmin);
    return command;
}

void describePermissionSet(CLI::App& command, AdminOptions& options) {
    command.add_option("--to", options.groups, "The user groups")->required()->option_text("USERGROUP...");
    command.add_option("--sub-groups", options.subGroups, "What groups below get: these permissions, or all of them")
        ->check(CLI::IsMember(std::vector<std::string>{"adapted", "all"}))
        ->option_text("adapted|all");
    command.add_flag("--dry-run", options.dryRun, "Only show what would rise or fall");
    command.add_flag("--yes", options.yes, "Lower higher permissions of groups below without asking");
}

}  // namespace

void describeUsers(CLI::App& app, Task& task) {
    CLI::App& user = *app.add_subcommand("user", "Show and change the users of a repository file");
    user.require_subcommand(1);
    user.footer(help::kUserExamples);
    for (const AdminVerb& verb : userVerbs()) {
        const auto options = std::make_shared<AdminOptions>();
        CLI::App& command = describeVerb(user, verb, task, options);
        const std::string_view name = verb.name;
        if (name == "add" || name == "set") describeUserDetails(command, *options, name == "add");
    }
}

void describeUserGroups(CLI::App& app, Task& task) {
    CLI::App& group = *app.add_subcommand("group", "Show and change the user groups of a repository file");
    group.require_subcommand(1);
    group.footer(help::kUserGroupExamples);
    for (const AdminVerb& verb : userGroupVerbs()) {
        const auto options = std::make_shared<AdminOptions>();
        CLI::App& command = describeVerb(group, verb, task, options);
        if (std::string_view(verb.name) == "add")
            command.add_flag("--system", options->system, "System user groups, for users of single sign-on");
    }
}

void describePermissions(CLI::App& app, Task& task) {
    CLI::App& permission =
        *app.add_subcommand("permission", "Show and change what user groups may do with model groups");
    permission.require_subcommand(1);
    permission.footer(help::kPermissionExamples);
    for (const AdminVerb& verb : permissionVerbs()) {
        const auto options = std::make_shared<AdminOptions>();
        CLI::App& command = describeVerb(permission, verb, task, options);
        if (!verb.writes) continue;
        command.add_option("--library", options->library, "Of the model groups, where several have one of that name")
            ->option_text("NAME");
        if (std::string_view(verb.name) == "set") describePermissionSet(command, *options);
    }
}

void describeAccess(CLI::App& app, Task& task) {
    const AdminVerb& verb = accessVerb();
    CLI::App& access = *app.add_subcommand(verb.name, verb.purpose);
    const auto options = std::make_shared<AdminOptions>();
    options->verb = &verb;
    options->schema = "qor.access/1";
    describeActor(access, *options);
    CLI::Option& user = *access.add_option("USER", options->subject, "The user")->option_text(" ");
    access.add_option("--who", options->who, "Show who reaches this model group")
        ->option_text("GROUP")
        ->excludes(&user);
    access.add_option("--library", options->library, "Of the model group, where several have one of that name")
        ->option_text("NAME");
    access.add_flag("--why", options->why, "Also show through which user groups");
    access.footer(help::kAccessExamples);
    access.callback([&task, options] {
        if (options->subject.empty() == options->who.empty()) throw CLI::RequiredError("USER or --who GROUP");
        task = taskOf<AdminOptions>(options, runAdmin);
    });
}

}  // namespace qor::cli
