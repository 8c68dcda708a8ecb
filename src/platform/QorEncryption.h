// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// The platform's cipher service: texts in, printable one-line texts out, each by itself.
class QOR_API QorEncryption {
public:
    static constexpr long kStandardMode = 2;

    virtual ~QorEncryption();
    /// The installed host's service; without one an object that refuses.
    static QorEncryption& Instance() noexcept;

    /// `length` -1: `text` ends at its zero byte. The result comes in a new buffer (`new[]`) that the caller deletes;
    /// null after a failure.
    virtual QorErrorCode Encrypt(long mode, const char* text, char*& enciphered, long length);
    /// Fails when the text was not enciphered with this service's key, or was changed.
    virtual QorErrorCode Decrypt(long mode, const char* enciphered, char*& text);
};
