// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/QorRepositoryFile.h"

namespace qor::embedded {

// Tells one repository from all others; copies of it share it.
using RepositoryIdentity = std::array<unsigned char, 16>;
using SealDigest = std::array<unsigned char, 32>;

// Where the chain of the file area ends.
struct SealHead {
    bool isLaid = false;          // before the first use there is no chain
    std::int64_t sequence = 0;    // of the last entry
    SealDigest chain{};           // its value, or the chain's beginning
    SealDigest sealKey{};         // of the next entry
    std::int64_t lostWrites = 0;  // that were told of at the last entry
    SealDigest keyCheck{};        // tells the key that all of it was made with
    SealDigest mac{};             // over all of this
};

// What an entry of the chain does to a file.
enum class FileEntryKind : std::int32_t { Made = 1, Appended = 2, Replaced = 3, Renamed = 4 };

// One change of the file area. A file goes by the sequence of the entry that made it.
struct FileEntry {
    std::int64_t sequence = 0;
    std::int64_t file = 0;
    FileEntryKind kind = FileEntryKind::Made;
    std::optional<std::string_view> content;  // a name, when it made or renamed; none when it was replaced since
    SealDigest contentHash{};
    SealDigest chain{};
    SealDigest seal{};  // all zero: not sealed
};

// A file as it stood when it was opened.
struct StoredFile {
    std::int64_t id = 0;
    std::int64_t begins = 0;  // the entry that replaced its content last, or made it
};

// The file area of a repository. It is read and written directly: a change is none of the content that processes keep
// in memory. After a failed write the other writing calls do nothing, and `commit` gives the failure; nothing is then
// kept. Views hold until the call that gives them returns.
class FileStore {
public:
    virtual ~FileStore();

    [[nodiscard]] virtual bool isReadOnly() const = 0;
    [[nodiscard]] virtual QorRepositoryStatus readIdentity(RepositoryIdentity& identity) = 0;
    [[nodiscard]] virtual QorRepositoryStatus readHead(SealHead& head) = 0;
    // Missing when there is none of that name.
    [[nodiscard]] virtual QorRepositoryStatus find(std::string_view name, StoredFile& file) = 0;
    // More of the content, from the entry behind `after`, which moves on; empty at the end. ReadFailed when the file
    // was replaced since it was found.
    [[nodiscard]] virtual QorRepositoryStatus readMore(const StoredFile& file, std::int64_t& after,
                                                       std::string& content) = 0;
    // All that is read in between is as of the same commit.
    [[nodiscard]] virtual QorRepositoryStatus beginReading() = 0;
    virtual void endReading() noexcept = 0;
    // In the order of their sequence, until `take` gives false.
    [[nodiscard]] virtual QorRepositoryStatus visitEntries(const std::function<bool(const FileEntry&)>& take) = 0;
    [[nodiscard]] virtual QorRepositoryStatus visitFiles(
        const std::function<void(const StoredFile&, std::string_view name)>& take) = 0;

    virtual void begin() = 0;
    virtual void writeHead(const SealHead& head) = 0;
    virtual void add(const FileEntry& entry) = 0;
    virtual void putFile(const StoredFile& file, std::string_view name) = 0;
    virtual void dropContent(const StoredFile& file) = 0;
    // Durable when it gives Ok. Of what stood there before, nothing then stays behind outside the file itself; where
    // somebody is reading, or the disk refuses, that comes with a later commit.
    [[nodiscard]] virtual QorRepositoryStatus commit() = 0;
    virtual void rollBack() noexcept = 0;
};

}  // namespace qor::embedded
