// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "cli/Exit.h"
#include "cli/RepositoryOptions.h"

namespace qor::cli {

class Console;
class RepoSession;
struct RepoOptions;

enum class RepoOpening : std::uint8_t { Make, Read, Write };

/// A command on a repository file.
struct RepoVerb {
    const char* name;
    const char* purpose;
    RepoOpening opening;
    void (*run)(RepoSession& session, const RepoOptions& options);
};
[[nodiscard]] std::span<const RepoVerb> repoVerbs();

struct RepoOptions {
    RepositoryOptions repository;
    const RepoVerb* verb = nullptr;
    std::vector<std::string> inputs;  ///< of an import
    std::string target;               ///< folder of an export, file of a backup
    std::string library;              ///< by its name in the repository
    bool keep = false;                ///< models that break rules are imported all the same
};

[[nodiscard]] Exit runRepo(const RepoOptions& options, Console& console);

}  // namespace qor::cli
