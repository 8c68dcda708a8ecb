// SPDX-License-Identifier: Apache-2.0
// A platform with its file area and cipher, in memory or on a repository file with a key file of its own.
#pragma once
#include <gtest/gtest.h>

#include <string>

#include "embedded/QorEmbeddedPlatform.h"
#include "platform/QorEncryption.h"
#include "platform/QorFileManager.h"
#include "platform/QorOwnedText.h"
#include "support/OnStores.h"

struct VaultDesk {
    static constexpr const char* kLog = "db:\\log";

    explicit VaultDesk(const std::string& keyFile)
        : platform({.language = "en", .console = false, .user = "ada", .keyFile = keyFile}) {}

    QorEmbeddedPlatform platform;
    QorHostInstallation installation{platform.host()};
    QorFileArea& area = platform.fileArea();

    static bool write(QorFileOpenMode mode, const std::string& name, std::string_view text) {
        const long handle = QorFileManager::fileOpenWrite(name, mode);
        if (handle < 0) return false;
        const auto size = static_cast<long>(text.size());
        const bool isTaken = QorFileManager::fileWrite(handle, text.data(), text.size()) == size;
        return QorFileManager::fileClose(handle) && isTaken;
    }
    static bool append(std::string_view text, const std::string& name = kLog) {
        return write(QorFileOpenMode::Append, name, text);
    }
    /// In pieces; "?" when it cannot be opened or read.
    static std::string read(const std::string& name = kLog, std::size_t piece = 7) {
        const long handle = QorFileManager::fileOpenRead(name, QorFileOpenMode::Read);
        if (handle < 0) return "?";
        std::string found;
        std::string buffer(piece, '\0');
        long size = 0;
        while ((size = QorFileManager::fileRead(handle, buffer.data(), piece)) > 0)
            found.append(buffer, 0, static_cast<std::size_t>(size));
        EXPECT_TRUE(QorFileManager::fileClose(handle));
        return size < 0 ? "?" : found;
    }
    /// "?" after a failure.
    static std::string enciphered(const std::string& text) {
        QorOwnedText result;
        const auto code =
            QorEncryption::Instance().Encrypt(QorEncryption::kStandardMode, text.c_str(), result.out(), -1);
        return code == QorErrorCode::Ok ? std::string(result.view()) : "?";
    }
    static std::string deciphered(const std::string& text) {
        QorOwnedText result;
        const auto code = QorEncryption::Instance().Decrypt(QorEncryption::kStandardMode, text.c_str(), result.out());
        return code == QorErrorCode::Ok ? std::string(result.view()) : "?";
    }
};
