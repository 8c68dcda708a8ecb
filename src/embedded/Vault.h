// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/Seals.h"

namespace qor::embedded {

class Repository;

// What happens to a file of the file area.
struct FileChange {
    FileEntryKind kind = FileEntryKind::Appended;  // not Made: what does not exist is made
    std::string_view name;
    std::string_view content;  // the new name, when it renames
};

// The key of the repository that is open, and the file area that is sealed with it. Without a repository file both
// live in memory, as long as this object.
class Vault {
public:
    // `keyFile`: empty for the usual place.
    Vault(Repository& repository, std::string keyFile);
    Vault(const Vault&) = delete;
    Vault& operator=(const Vault&) = delete;
    ~Vault();

    // Null without memory for one.
    [[nodiscard]] FileStore* files();
    // What the key is used for. When nothing was enciphered or sealed yet it is made, if that is wanted. Null, with the
    // reason in `problem`, when it cannot be had.
    [[nodiscard]] const Seals* seals(bool make);
    // Where the key is looked for; empty for one in memory.
    [[nodiscard]] std::string keyPlace();

    // One transaction with its seal: it is kept as a whole or not at all.
    QorRepositoryResult write(const FileChange& change);
    // A closing that could not be written: the next entry tells how many there were.
    void countLostWrite() noexcept { ++_lostWrites; }

    // To be called when another repository is opened, or the one that was open is closed: key, counts and problem were
    // those of the other one.
    void forget() noexcept;

    [[nodiscard]] const QorRepositoryResult& problem() const { return _problem; }
    QorRepositoryResult fail(QorRepositoryResult result);
    // How many closings since the repository was opened could not be written.
    [[nodiscard]] std::int64_t lostWrites() const { return _lostWrites; }
    // The first seal key, if it was made since the last call.
    [[nodiscard]] std::optional<SealDigest> takeFirstSealKey();

private:
    [[nodiscard]] bool noteStore();
    void wipeFirstSealKey() noexcept;
    [[nodiscard]] QorRepositoryResult readKey(SecretKey& key, bool isLaid);
    [[nodiscard]] QorRepositoryResult layChain(const Seals& seals);
    [[nodiscard]] QorRepositoryResult writeOnce(const Seals& seals, const FileChange& change);
    // Missing when the store has no such file to rename; Exists when it has one of the new name.
    [[nodiscard]] QorRepositoryStatus addEntries(const Seals& seals, SealHead& head, const FileChange& change);
    void addEntry(const Seals& seals, SealHead& head, std::int64_t file, FileEntryKind kind, std::string_view content);

    Repository& _repository;
    std::string _keyFile;
    std::unique_ptr<FileStore> _inMemory;
    FileStore* _store = nullptr;  // whose identity was read
    RepositoryIdentity _identity{};
    SecretKey _memoryKey;
    bool _hasMemoryKey = false;
    std::optional<Seals> _seals;
    std::optional<SealDigest> _firstSealKey;
    std::int64_t _lostWrites = 0;
    std::int64_t _toldLosses = 0;  // of them, in the head
    QorRepositoryResult _problem;
};

}  // namespace qor::embedded
