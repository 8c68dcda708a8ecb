// SPDX-License-Identifier: Apache-2.0
#include "platform/QorEncryption.h"

#include "platform/InstalledService.h"

QorEncryption::~QorEncryption() = default;

QorErrorCode QorEncryption::Encrypt(long, const char*, char*& enciphered, long) {
    enciphered = nullptr;
    return Qor_NotInstalled("QorEncryption::Encrypt");
}

QorErrorCode QorEncryption::Decrypt(long, const char*, char*& text) {
    text = nullptr;
    return Qor_NotInstalled("QorEncryption::Decrypt");
}

QorEncryption& QorEncryption::Instance() noexcept { return qor::platform::installed(&QorHost::encryption); }
