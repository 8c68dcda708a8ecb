// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <vector>

#include "cli/Exit.h"
#include "embedded/QorEmbeddedPlatform.h"
#include "interchange/QorImport.h"

namespace qor::cli {

/// Whether the file begins as a repository does.
[[nodiscard]] bool isRepositoryFile(const std::string& path);

/// A repository file, and which of its libraries is meant: "shop.qor", or "shop.qor#Works".
struct RepositoryName {
    std::string file;     ///< empty when no repository file is named
    std::string library;  ///< empty: the only one
};
[[nodiscard]] RepositoryName repositoryNamed(const std::string& given);

/// What is wrong with the file, one finding each.
[[nodiscard]] std::vector<QorDiagnostic> diagnosticsOf(const std::string& file, const QorRepositoryResult& result);
[[nodiscard]] Exit exitOf(QorRepositoryStatus status);
/// What is wrong, in one line.
[[nodiscard]] std::string problemText(const QorRepositoryResult& result);
/// What hinders the load of a library that ended with the code from being written: a lock, or that it could not be
/// locked. Ok when nothing does.
[[nodiscard]] QorRepositoryResult lockProblem(const QorEmbeddedPlatform& platform, QorErrorCode loaded);
/// A warning for each lock that was left by a process that has ended.
[[nodiscard]] std::vector<std::string> locksTakenOver(QorEmbeddedPlatform& platform);

/// The library of that name, or the only one; none, with the reason, when there is none.
[[nodiscard]] QorIdentifier chooseLibrary(const QorRepositoryReader& reader, const std::string& name,
                                          std::string& reason);
/// The models of a library in the order of their making.
[[nodiscard]] std::vector<QorIdentifier> modelsIn(const QorRepositoryReader& reader, QorIdentifier library);

}  // namespace qor::cli
