// SPDX-License-Identifier: Apache-2.0
#include "cli/RepositoryFiles.h"

#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

#include "cli/Nearest.h"
#include "cli/Text.h"

namespace qor::cli {

bool isRepositoryFile(const std::string& path) {
    constexpr std::string_view kBegin("SQLite format 3\0", 16);
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "rbe"));
    std::array<char, kBegin.size()> begin{};
    return file && std::fread(begin.data(), 1, begin.size(), file.get()) == begin.size() &&
           std::string_view(begin.data(), begin.size()) == kBegin;
}

RepositoryName repositoryNamed(const std::string& given) {
    if (isRepositoryFile(given)) return {given, {}};
    const std::size_t mark = given.rfind('#');
    if (mark == std::string::npos || !isRepositoryFile(given.substr(0, mark))) return {};
    return {given.substr(0, mark), given.substr(mark + 1)};
}

std::string problemText(const QorRepositoryResult& result) {
    const std::string status = Qor_RepositoryStatusText(result.status);
    if (result.text.empty() || result.text == status) return status;
    return result.status == QorRepositoryStatus::Locked ? result.text : status + ": " + result.text;
}

QorRepositoryResult lockProblem(const QorEmbeddedPlatform& platform, QorErrorCode loaded) {
    if (loaded == QorRepositoryCode::NotStored) return platform.lastProblem();
    if (loaded != QorErrorCode::LockedByOther) return {};
    QorRepositoryResult result{QorRepositoryStatus::Locked, "the library is locked by another user", {}};
    for (const QorLibraryLock& lock : platform.libraryLocks())
        if (lock.isAlive)
            result.text =
                fmt::format("the library {} is locked by {}",
                            quoted(platform.reader().nameOf(platform.reader().applicationLibraryOf(lock.library))),
                            printable(Qor_LockHolderText(lock)));
    return result;
}

std::vector<std::string> locksTakenOver(QorEmbeddedPlatform& platform) {
    std::vector<std::string> texts;
    for (const QorLibraryLock& lock : platform.takenOverLocks())
        if (platform.reader().applicationLibraryOf(lock.library) == lock.library)
            texts.push_back(fmt::format("the library {} was left locked by {}, whose process has ended",
                                        quoted(platform.reader().nameOf(lock.library)),
                                        printable(Qor_LockHolderText(lock))));
    return texts;
}

std::vector<QorDiagnostic> diagnosticsOf(const std::string& file, const QorRepositoryResult& result) {
    std::vector<QorDiagnostic> diagnostics;
    if (result.ok()) return diagnostics;
    diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, problemText(result)});
    for (const std::string& finding : result.findings)
        diagnostics.push_back({QorSeverity::Error, {file, 0, 0}, finding});
    return diagnostics;
}

Exit exitOf(QorRepositoryStatus status) {
    switch (status) {
        case QorRepositoryStatus::Ok:
            return Exit::Clean;
        case QorRepositoryStatus::Locked:
        case QorRepositoryStatus::ChangedByOther:
            return Exit::Locked;
        case QorRepositoryStatus::Exists:
        case QorRepositoryStatus::ReadOnly:
        case QorRepositoryStatus::NoRoom:
        case QorRepositoryStatus::WriteFailed:
            return Exit::WriteFailed;
        case QorRepositoryStatus::Missing:
        case QorRepositoryStatus::NotARepository:
        case QorRepositoryStatus::NewerSchema:
        case QorRepositoryStatus::Damaged:
        case QorRepositoryStatus::NoPermission:
        case QorRepositoryStatus::ReadFailed:
        case QorRepositoryStatus::NoKey:
            return Exit::BadInput;
        default:
            return Exit::Internal;
    }
}

QorIdentifier chooseLibrary(const QorRepositoryReader& reader, const std::string& name, std::string& reason) {
    const std::vector<QorIdentifier> libraries = reader.applicationLibraries();
    if (name.empty() && libraries.size() == 1) return libraries.front();
    std::vector<std::string> names;
    for (const QorIdentifier library : libraries) {
        if (!name.empty() && reader.nameOf(library) == name) return library;
        names.emplace_back(reader.nameOf(library));
    }
    if (!name.empty())
        reason = fmt::format("holds no library named {}{}", quoted(name), didYouMean(name, names));
    else if (names.empty())
        reason = "holds no method library";
    else
        reason = fmt::format("holds {}; name one as FILE#LIBRARY", counted(names.size(), "method library"));
    return QorNoIdentifier;
}

std::vector<QorIdentifier> modelsIn(const QorRepositoryReader& reader, QorIdentifier library) {
    std::vector<QorIdentifier> models;
    for (const QorModelInfo& model : reader.modelsOf(library)) models.push_back(model.id);
    return models;
}

}  // namespace qor::cli
