// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "embedded/Vault.h"
#include "platform/QorEncryption.h"

namespace qor::embedded {

// Ciphers with the key of the repository that is open. A text becomes a version byte, 24 random bytes, the text under
// XChaCha20-Poly1305, all in base 64: one line, whatever is in it, that tells every change to it and that another
// repository does not take.
class Encryption final : public QorEncryption {
public:
    explicit Encryption(Vault& vault) : _vault(vault) {}
    ~Encryption() override;

    // OutOfRange: another mode, or no text of that length. NotFound: the key cannot be had.
    QorErrorCode Encrypt(long mode, const char* text, char*& enciphered, long length) override;
    // ValueRefused: not enciphered with this key in this repository, or changed since.
    QorErrorCode Decrypt(long mode, const char* enciphered, char*& text) override;

private:
    QorErrorCode encrypt(long mode, const char* text, char*& enciphered, long length);
    QorErrorCode decrypt(long mode, const char* enciphered, char*& text);

    Vault& _vault;
};

}  // namespace qor::embedded
