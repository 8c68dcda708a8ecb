// SPDX-License-Identifier: Apache-2.0
// What the entries of the file area's chain are sealed with.
#pragma once
#include <string_view>

#include "embedded/store/FileStore.h"

namespace qor::embedded {

// 32 bytes that are wiped out at their end.
struct SecretKey {
    SecretKey() = default;
    SecretKey(const SecretKey&) = delete;
    SecretKey& operator=(const SecretKey&) = delete;
    ~SecretKey();
    SealDigest bytes{};
};

[[nodiscard]] bool isEqual(const SealDigest& a, const SealDigest& b) noexcept;

// What the key of a repository is used for, each with a key of its own.
class Seals {
public:
    Seals(const SecretKey& key, const RepositoryIdentity& identity);

    [[nodiscard]] const RepositoryIdentity& identity() const { return _identity; }
    [[nodiscard]] const SecretKey& cipherKey() const { return _cipherKey; }

    [[nodiscard]] static SealDigest hashOf(std::string_view content) noexcept;
    // Of what the entry says, its seal, and the value of the entry before it; of `entry.chain` nothing.
    [[nodiscard]] SealDigest chain(const FileEntry& entry, const SealDigest& before) const noexcept;
    // The value before the first entry's.
    [[nodiscard]] SealDigest beginning() const noexcept;
    [[nodiscard]] SealDigest keyCheck() const noexcept;
    [[nodiscard]] SealDigest macOf(const SealHead& head) const noexcept;

    // Seals need no key but the one of the entry, which gives way to the next one: who has the repository's key and
    // sees the seal key of now can seal what comes, and nothing that went before.
    [[nodiscard]] static SealDigest seal(const SealDigest& sealKey, const FileEntry& entry,
                                         const SealDigest& before) noexcept;
    [[nodiscard]] static SealDigest nextKey(const SealDigest& sealKey) noexcept;

private:
    RepositoryIdentity _identity;
    SecretKey _cipherKey;
    SecretKey _chainKey;
    SecretKey _headKey;
};

}  // namespace qor::embedded
