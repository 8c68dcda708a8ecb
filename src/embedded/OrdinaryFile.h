// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "embedded/FileReplacement.h"
#include "platform/QorFileManager.h"

namespace qor::embedded {

// An open file of the operating system. One that is replaced stays as it was until `close`.
class OrdinaryFile {
public:
    OrdinaryFile() = default;
    OrdinaryFile(OrdinaryFile&& other) noexcept;
    OrdinaryFile& operator=(const OrdinaryFile&) = delete;
    ~OrdinaryFile();

    [[nodiscard]] bool open(const std::string& path, QorFileOpenMode mode);
    [[nodiscard]] long read(char* buffer, unsigned long size);
    [[nodiscard]] long write(const char* bytes, unsigned long size);
    // True when all of it is on the disk.
    [[nodiscard]] bool close();

private:
    [[nodiscard]] bool openToReplace(const std::string& path);

    int _descriptor = -1;
    bool _isWritten = false;
    bool _hasFailed = false;
    std::string _made;  // when there was none
    FileReplacement _replacement;
};

}  // namespace qor::embedded
