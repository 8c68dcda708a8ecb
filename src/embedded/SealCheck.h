// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "embedded/QorFileArea.h"
#include "embedded/Seals.h"

namespace qor::embedded {

// A head as it was noted: "1042-" and the digits of the chain's value.
struct NotedHead {
    std::int64_t sequence = 0;
    SealDigest chain{};
};
[[nodiscard]] std::string headText(const NotedHead& head);
[[nodiscard]] std::optional<NotedHead> readHeadText(std::string_view text);

// Reads a chain from its beginning and finds the first thing that is wrong with it.
class SealCheck {
public:
    SealCheck(FileStore& store, const Seals& seals, std::optional<SealDigest> firstSealKey,
              std::optional<NotedHead> noted);
    [[nodiscard]] QorSealReport run();

private:
    // What classifying needs of an entry.
    struct Link {
        FileEntry entry;        // without its content, and with the hash of it as it is
        SealDigest storedHash;  // as it was
    };
    // What the chain says of a file.
    struct File {
        std::string name;
        std::int64_t begins = 0;
        std::int64_t lines = 0;
        std::int64_t dropped = 0;  // the first entry since then whose content is gone
    };

    // All of it as of one commit.
    [[nodiscard]] QorRepositoryStatus readAtOnce();
    [[nodiscard]] QorRepositoryStatus readAll();
    // False when nothing further is wanted.
    [[nodiscard]] bool take(const FileEntry& entry);
    // Whether the entry, at that place behind that value, makes this value.
    [[nodiscard]] bool makes(const SealDigest& chain, Link link, std::int64_t sequence, const SealDigest& before) const;
    [[nodiscard]] bool follows(const Link& link) const;
    void accept(const FileEntry& entry);
    void applyToFile(const FileEntry& entry);
    void classify();
    [[nodiscard]] bool classifyMoved();
    [[nodiscard]] QorRepositoryStatus findCopied();
    void checkEnd();
    [[nodiscard]] QorRepositoryStatus checkFiles();
    void find(QorTampering tampering, std::int64_t sequence, std::int64_t other = 0, std::int64_t count = 0);
    void nameFile(std::int64_t file);
    [[nodiscard]] bool isFound() const { return _report.tampering != QorTampering::None; }

    FileStore& _store;
    const Seals& _seals;
    std::optional<SealDigest> _sealKey;  // of the next entry
    std::optional<NotedHead> _noted;
    SealHead _head;
    bool _isHeadSound = false;
    std::int64_t _last = 0;  // good one
    SealDigest _chain;
    std::map<std::int64_t, File> _files;
    std::vector<Link> _rest;  // from the first bad one on
    QorSealReport _report;
};

}  // namespace qor::embedded
