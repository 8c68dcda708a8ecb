// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorExport.h"
#include "platform/SvString.h"

/// How a file is opened. Replace and Append make the file when there is none; Read does not. What replaces a file is as
/// readable to others as the file was.
enum class QorFileOpenMode : std::int32_t { Replace = 2, Append = 10, Read = 33 };

/// What a host offers behind QorFileManager. A handle belongs to who opened it, until `close`, which ends it also when
/// it gives false; after that, and for a number that is no handle, every operation fails. The defaults refuse: false,
/// -1.
class QOR_API QorFileService {
public:
    virtual ~QorFileService();
    virtual bool exists(const SV::String& name);
    /// A handle from 0; -1, and no handle to close, when the file cannot be opened in that mode.
    virtual long open(const SV::String& name, QorFileOpenMode mode);
    /// Bytes read from where the last read ended (fewer than `size` only at the file's end), or -1.
    virtual long read(long handle, char* buffer, unsigned long size);
    /// Bytes written (fewer than `size` when room ran out), or -1.
    virtual long write(long handle, const char* bytes, unsigned long size);
    /// What was written is durable when this gives true.
    virtual bool close(long handle);
    /// True when the path names an existing folder.
    virtual bool isFolder(const SV::String& path);
};

/// Files by name; names that begin with "db:\\" lie in the repository's own file area. Each operation hands on to the
/// service's operation of that meaning, with its results.
class QOR_API QorFileManager {
public:
    [[nodiscard]] static bool fileExists(const SV::String& name) noexcept;
    /// A handle from 0, which the caller closes with `fileClose`, or -1.
    [[nodiscard]] static long fileOpenRead(const SV::String& name, QorFileOpenMode mode) noexcept;
    [[nodiscard]] static long fileOpenWrite(const SV::String& name, QorFileOpenMode mode) noexcept;
    [[nodiscard]] static long fileRead(long handle, char* buffer, unsigned long size) noexcept;
    [[nodiscard]] static long fileWrite(long handle, const char* bytes, unsigned long size) noexcept;
    static bool fileClose(long handle) noexcept;
    [[nodiscard]] static bool isFolder(const SV::String& path) noexcept;
};
