// SPDX-License-Identifier: Apache-2.0
#include "admin/logFiles.h"

#include <utility>

#include "platform/QorEncryption.h"

namespace qor::admin {

namespace {
constexpr long kUpToTheZeroByte = -1;
}

OpenFile::OpenFile(const SV::String& name, QorFileOpenMode mode)
    : _handle(mode == QorFileOpenMode::Read ? QorFileManager::fileOpenRead(name, mode)
                                            : QorFileManager::fileOpenWrite(name, mode)) {}

long OpenFile::read(char* buffer, unsigned long size) const { return QorFileManager::fileRead(_handle, buffer, size); }

bool OpenFile::write(std::string_view text) const {
    return QorFileManager::fileWrite(_handle, text.data(), text.size()) == static_cast<long>(text.size());
}

bool OpenFile::close() { return isOpen() && QorFileManager::fileClose(std::exchange(_handle, -1)); }

bool encipher(const SV::String& plain, QorOwnedText& enciphered) {
    auto& cipher = QorEncryption::Instance();
    return cipher.Encrypt(QorEncryption::kStandardMode, plain.c_str(), enciphered.out(), kUpToTheZeroByte) ==
           QorErrorCode::Ok;
}

bool decipher(const SV::String& enciphered, QorOwnedText& plain) {
    // Behind a zero byte the cipher would not look: such a text was not written by it.
    if (enciphered.view().find('\0') != std::string_view::npos) return false;
    auto& cipher = QorEncryption::Instance();
    return cipher.Decrypt(QorEncryption::kStandardMode, enciphered.c_str(), plain.out()) == QorErrorCode::Ok;
}

}  // namespace qor::admin
