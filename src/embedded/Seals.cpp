// SPDX-License-Identifier: Apache-2.0
#include "embedded/Seals.h"

#include <sodium.h>

#include <array>

namespace qor::embedded {

static_assert(sizeof(SealDigest) == crypto_generichash_BYTES && sizeof(SealDigest) == crypto_generichash_KEYBYTES);
static_assert(sizeof(SealDigest) == crypto_kdf_KEYBYTES);

namespace {

// A keyed hash over parts of fixed size.
class Hash {
public:
    Hash() noexcept { (void)crypto_generichash_init(&_state, nullptr, 0, sizeof(SealDigest)); }
    explicit Hash(const SealDigest& key) noexcept {
        (void)crypto_generichash_init(&_state, key.data(), key.size(), sizeof(SealDigest));
    }
    Hash(const Hash&) = delete;
    Hash& operator=(const Hash&) = delete;
    ~Hash() { sodium_memzero(&_state, sizeof _state); }

    Hash& add(std::string_view bytes) noexcept {
        (void)crypto_generichash_update(&_state, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
        return *this;
    }
    template <std::size_t Size>
    Hash& add(const std::array<unsigned char, Size>& bytes) noexcept {
        (void)crypto_generichash_update(&_state, bytes.data(), bytes.size());
        return *this;
    }
    // The lowest byte first, on every machine.
    Hash& add(std::int64_t number) noexcept {
        std::array<unsigned char, sizeof number> bytes;
        auto rest = static_cast<std::uint64_t>(number);
        for (unsigned char& byte : bytes) {
            byte = static_cast<unsigned char>(rest & 0xff);
            rest >>= 8;
        }
        return add(bytes);
    }
    SealDigest end() noexcept {
        SealDigest digest;
        (void)crypto_generichash_final(&_state, digest.data(), digest.size());
        return digest;
    }

private:
    crypto_generichash_state _state;
};

void derive(SecretKey& derived, const SecretKey& key, std::uint64_t number) noexcept {
    (void)crypto_kdf_derive_from_key(derived.bytes.data(), derived.bytes.size(), number, "qorseals", key.bytes.data());
}

}  // namespace

SecretKey::~SecretKey() { sodium_memzero(bytes.data(), bytes.size()); }

bool isEqual(const SealDigest& a, const SealDigest& b) noexcept {
    return sodium_memcmp(a.data(), b.data(), a.size()) == 0;
}

Seals::Seals(const SecretKey& key, const RepositoryIdentity& identity) : _identity(identity) {
    derive(_cipherKey, key, 1);
    derive(_chainKey, key, 2);
    derive(_headKey, key, 3);
}

SealDigest Seals::hashOf(std::string_view content) noexcept { return Hash().add(content).end(); }

SealDigest Seals::chain(const FileEntry& entry, const SealDigest& before) const noexcept {
    return Hash(_chainKey.bytes)
        .add(_identity)
        .add(entry.sequence)
        .add(entry.file)
        .add(static_cast<std::int64_t>(entry.kind))
        .add(before)
        .add(entry.contentHash)
        .add(entry.seal)
        .end();
}

SealDigest Seals::beginning() const noexcept { return Hash(_chainKey.bytes).add(_identity).add("beginning").end(); }

SealDigest Seals::keyCheck() const noexcept { return Hash(_headKey.bytes).add(_identity).add("key").end(); }

SealDigest Seals::macOf(const SealHead& head) const noexcept {
    return Hash(_headKey.bytes)
        .add(_identity)
        .add(head.sequence)
        .add(head.chain)
        .add(head.sealKey)
        .add(head.lostWrites)
        .end();
}

SealDigest Seals::seal(const SealDigest& sealKey, const FileEntry& entry, const SealDigest& before) noexcept {
    return Hash(sealKey)
        .add(entry.sequence)
        .add(entry.file)
        .add(static_cast<std::int64_t>(entry.kind))
        .add(before)
        .add(entry.contentHash)
        .end();
}

SealDigest Seals::nextKey(const SealDigest& sealKey) noexcept { return Hash(sealKey).add("next").end(); }

}  // namespace qor::embedded
