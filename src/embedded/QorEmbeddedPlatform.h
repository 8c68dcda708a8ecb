// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/QorFileArea.h"
#include "embedded/QorLibraryLock.h"
#include "embedded/QorRepositoryBuilder.h"
#include "embedded/QorRepositoryFile.h"
#include "embedded/QorRepositoryReader.h"
#include "embedded/QorShownWindows.h"
#include "embedded/QorUserAdministration.h"
#include "platform/QorExport.h"
#include "platform/QorHost.h"

struct QorEmbeddedOptions {
    std::string language = "en";  ///< ISO 639; a language without texts falls back to English
    bool console = false;         ///< boxes and progress appear on standard error; without it they are only recorded
    std::string user;             ///< logon name of the current user; empty: the operating system's user
    std::string keyFile{};        ///< of repository files; empty: QOR_KEY_FILE, else one in the user's settings
};

/// A complete platform in one process. Not installed by itself: hand `host()` to a QorHostInstallation.
class QOR_API QorEmbeddedPlatform {
public:
    explicit QorEmbeddedPlatform(const QorEmbeddedOptions& options = {});
    QorEmbeddedPlatform(const QorEmbeddedPlatform&) = delete;
    QorEmbeddedPlatform& operator=(const QorEmbeddedPlatform&) = delete;
    ~QorEmbeddedPlatform();

    /// The services, living as long as this object.
    [[nodiscard]] const QorHost& host() const;
    [[nodiscard]] QorRepositoryBuilder& builder();
    [[nodiscard]] const QorRepositoryReader& reader() const;

    /// What seals the files named "db:\...".
    [[nodiscard]] QorFileArea& fileArea();

    /// Users, user groups and permissions.
    [[nodiscard]] QorUserAdministration& userAdministration();
    /// Goes on as another user. A name that the repository does not have stands for somebody who belongs to nothing,
    /// and is an administrator only while the repository has no users at all. Locks stay with those who took them.
    void setCurrentUser(std::string_view logonName);

    /// The last things that were shown, at least 10,000 of them; stays empty with a console.
    [[nodiscard]] const QorShownWindows& shown() const;
    void forgetShown();
    /// What is answered without a console.
    [[nodiscard]] QorScriptedAnswers& answers();

    /// Bytes that the repository holds in memory, without small change. For measuring.
    [[nodiscard]] std::size_t repositoryBytes() const;

    // ---- Repository files ----

    /// Opens a repository file; everything in it is then answered from memory, and every change is in the file before
    /// the operation that makes it returns. The platform must be empty (AlreadyOpen). A file that must not be written
    /// is opened for reading. Damaged: what is sound has been opened, for reading only, and `findings` names the rest.
    /// After any other failure the platform is as it was. O(content).
    QorRepositoryResult openRepository(const std::string& path,
                                       QorRepositoryAccess access = QorRepositoryAccess::ReadWrite);
    /// Makes a repository file, which must not exist, and opens it.
    QorRepositoryResult createRepository(const std::string& path);
    /// Takes back the unit of work that is open, closes the file and empties the platform. The library that is loaded
    /// must have been discarded before (AlreadyOpen). Done anyway, but quietly, when the platform ends.
    QorRepositoryResult closeRepository();

    [[nodiscard]] bool hasRepository() const;
    [[nodiscard]] bool isRepositoryReadOnly() const;
    /// How often something was written to the file since it was made; 0 without a file.
    [[nodiscard]] std::int64_t repositoryGeneration() const;
    /// Compares everything in the file with its hashes, and checks the file's pages. O(content).
    QorRepositoryResult verifyRepository();
    /// Copies the file as of the last commit, also while it is in use. `target` is replaced when the copy is complete.
    QorRepositoryResult backUpRepository(const std::string& target);
    /// Why an operation last gave QorRepositoryCode::NotStored or QorBuildError::NotStored.
    [[nodiscard]] const QorRepositoryResult& lastProblem() const;

    // ---- Locks in a repository file ----

    /// Who has which library locked, or a part of one, in all processes; void locks of processes that ended among them.
    [[nodiscard]] std::vector<QorLibraryLock> libraryLocks() const;
    /// The void locks that taking others has put aside, since this was last asked.
    [[nodiscard]] std::vector<QorLibraryLock> takenOverLocks();
    /// Frees a library with its parts, whoever holds it. A process that does is refused when it next writes.
    /// NoPermission unless the current user is an administrator.
    QorRepositoryResult breakLibraryLocks(QorIdentifier library);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
