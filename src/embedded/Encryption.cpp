// SPDX-License-Identifier: Apache-2.0
#include "embedded/Encryption.h"

#include <sodium.h>

#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "platform/QorGuard.h"

namespace qor::embedded {

namespace {

constexpr unsigned char kVersion = 1;
constexpr std::size_t kNonceBytes = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t kBegin = 1 + kNonceBytes;
constexpr std::size_t kMore = kBegin + crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr int kForm = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
// So that no size overflows on the way to base 64.
constexpr std::size_t kLongest = std::numeric_limits<std::int32_t>::max() / 2;

using Bytes = std::unique_ptr<unsigned char[]>;

Bytes room(std::size_t size) { return Bytes(new (std::nothrow) unsigned char[size]); }

}  // namespace

Encryption::~Encryption() = default;

QorErrorCode Encryption::Encrypt(long mode, const char* text, char*& enciphered, long length) {
    enciphered = nullptr;
    return Qor_Guarded("encryption", QorErrorCode::Broken, [&] { return encrypt(mode, text, enciphered, length); });
}

QorErrorCode Encryption::Decrypt(long mode, const char* enciphered, char*& text) {
    text = nullptr;
    return Qor_Guarded("encryption", QorErrorCode::Broken, [&] { return decrypt(mode, enciphered, text); });
}

QorErrorCode Encryption::encrypt(long mode, const char* text, char*& enciphered, long length) {
    if (mode != kStandardMode || text == nullptr || length < -1) return QorErrorCode::OutOfRange;
    const std::size_t size = length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
    if (size > kLongest) return QorErrorCode::OutOfRange;
    const Seals* const seals = _vault.seals(true);
    if (seals == nullptr) return QorErrorCode::NotFound;

    const Bytes sealed = room(size + kMore);
    if (sealed == nullptr) return QorErrorCode::Broken;
    sealed[0] = kVersion;
    unsigned char* const nonce = sealed.get() + 1;
    randombytes_buf(nonce, kNonceBytes);
    const RepositoryIdentity& identity = seals->identity();
    (void)crypto_aead_xchacha20poly1305_ietf_encrypt(
        sealed.get() + kBegin, nullptr, reinterpret_cast<const unsigned char*>(text), size, identity.data(),
        identity.size(), nullptr, nonce, seals->cipherKey().bytes.data());

    const std::size_t encoded = sodium_base64_encoded_len(size + kMore, kForm);
    enciphered = new (std::nothrow) char[encoded];
    if (enciphered == nullptr) return QorErrorCode::Broken;
    (void)sodium_bin2base64(enciphered, encoded, sealed.get(), size + kMore, kForm);
    return QorErrorCode::Ok;
}

QorErrorCode Encryption::decrypt(long mode, const char* enciphered, char*& text) {
    if (mode != kStandardMode || enciphered == nullptr) return QorErrorCode::OutOfRange;
    const Seals* const seals = _vault.seals(false);
    if (seals == nullptr) return QorErrorCode::NotFound;

    const std::size_t length = std::strlen(enciphered);
    const std::size_t most = length / 4 * 3 + 3;
    const Bytes sealed = room(most);
    if (sealed == nullptr) return QorErrorCode::Broken;
    std::size_t size = 0;
    const bool isText = sodium_base642bin(sealed.get(), most, enciphered, length, nullptr, &size, nullptr, kForm) == 0;
    if (!isText || size < kMore || sealed[0] != kVersion) return QorErrorCode::ValueRefused;

    const std::size_t plainSize = size - kMore;
    std::unique_ptr<char[]> plain(new (std::nothrow) char[plainSize + 1]);
    if (plain == nullptr) return QorErrorCode::Broken;
    const RepositoryIdentity& identity = seals->identity();
    if (crypto_aead_xchacha20poly1305_ietf_decrypt(
            reinterpret_cast<unsigned char*>(plain.get()), nullptr, nullptr, sealed.get() + kBegin, size - kBegin,
            identity.data(), identity.size(), sealed.get() + 1, seals->cipherKey().bytes.data()) != 0)
        return QorErrorCode::ValueRefused;
    plain[plainSize] = '\0';
    text = plain.release();
    return QorErrorCode::Ok;
}

}  // namespace qor::embedded
