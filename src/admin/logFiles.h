// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <string_view>

#include "platform/QorFileManager.h"
#include "platform/QorOwnedText.h"
#include "platform/SvString.h"

/// Files and ciphering as the administrator log uses them.
namespace qor::admin {

/// An open file, closed at the latest at its end.
class OpenFile {
public:
    OpenFile(const SV::String& name, QorFileOpenMode mode);
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { (void)close(); }

    [[nodiscard]] bool isOpen() const { return _handle >= 0; }
    /// Bytes read, or -1.
    [[nodiscard]] long read(char* buffer, unsigned long size) const;
    /// False unless the whole text was written.
    [[nodiscard]] bool write(std::string_view text) const;
    /// What was written is durable when this gives true.
    bool close();

private:
    long _handle;
};

/// Hands a file on chunk by chunk, as long as `take` gives true; false when it cannot be opened or read.
template <class Take>
[[nodiscard]] bool readChunks(const SV::String& name, Take take) {
    const OpenFile file(name, QorFileOpenMode::Read);
    if (!file.isOpen()) return false;
    std::array<char, 2048> chunk;
    for (;;) {
        const long size = file.read(chunk.data(), chunk.size());
        if (size < 0) return false;
        const bool isMoreWanted = take(std::string_view(chunk.data(), static_cast<std::size_t>(size)));
        if (!isMoreWanted || static_cast<std::size_t>(size) < chunk.size()) return true;
    }
}

[[nodiscard]] bool encipher(const SV::String& plain, QorOwnedText& enciphered);
[[nodiscard]] bool decipher(const SV::String& enciphered, QorOwnedText& plain);

}  // namespace qor::admin
