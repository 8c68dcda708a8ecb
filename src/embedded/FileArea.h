// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <variant>

#include "embedded/OrdinaryFile.h"
#include "embedded/Vault.h"
#include "platform/QorFileManager.h"

namespace qor::embedded {

// Whether the name is meant for the file area, in whatever spelling.
[[nodiscard]] bool isMeantForFileArea(std::string_view name);
// What a file of the area goes by: 1 to 255 bytes of UTF-8 behind "db:\", without control characters, and without "."
// or ".." between separators. Such a name is a key and no path; what could be taken for one elsewhere is refused.
[[nodiscard]] bool isFileAreaName(std::string_view name);

// The files that a name can stand for: those of the area, which are rows of the repository and sealed there, and those
// of the operating system. What is written into a file of the area is collected and kept at `close` in one transaction.
class FileArea final : public QorFileService {
public:
    explicit FileArea(Vault& vault) : _vault(vault) {}
    ~FileArea() override;

    bool exists(const SV::String& name) override;
    long open(const SV::String& name, QorFileOpenMode mode) override;
    long read(long handle, char* buffer, unsigned long size) override;
    long write(long handle, const char* bytes, unsigned long size) override;
    bool close(long handle) override;
    bool isFolder(const SV::String& path) override;

private:
    struct Reading {
        RepositoryIdentity repository;
        StoredFile file;
        std::int64_t after = 0;
        std::string content;  // that was read from the store
        std::size_t at = 0;   // of it, was handed on
    };
    struct Writing {
        RepositoryIdentity repository;
        std::string name;
        FileEntryKind kind;
        std::string content;
        bool isWhole = true;  // nothing that was written was refused
    };
    using Handle = std::variant<Reading, Writing, OrdinaryFile>;

    [[nodiscard]] FileStore* storeOf(const RepositoryIdentity& repository);
    [[nodiscard]] long openInArea(const std::string& name, QorFileOpenMode mode);
    [[nodiscard]] long keep(Handle handle);
    QorRepositoryResult writeWhole(const Writing& writing);
    [[nodiscard]] long readFrom(Reading& reading, char* buffer, unsigned long size);

    Vault& _vault;
    std::map<long, Handle> _open;
    long _next = 0;
};

}  // namespace qor::embedded
