// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"

/// How a file is opened.
enum class QorFileOpenMode : std::int32_t { Replace = 2, Append = 10, Read = 33 };

/// What a host offers behind QorFileManager. The defaults refuse: false, -1.
class QOR_API QorFileService {
public:
    virtual ~QorFileService();
    virtual bool exists(const SV::String& name);
    /// A handle from 0, or -1.
    virtual long open(const SV::String& name, QorFileOpenMode mode);
    /// Bytes read (fewer than `size` only at the file's end), or -1.
    virtual long read(long handle, char* buffer, unsigned long size);
    /// Bytes written, or -1.
    virtual long write(long handle, const char* bytes, unsigned long size);
    /// What was written is durable when this gives true.
    virtual bool close(long handle);
    /// True when the path names an existing folder.
    virtual bool isFolder(const SV::String& path);
};

/// Files by name; names that begin with "db:\\" lie in the repository's own file area.
class QOR_API QorFileManager {
public:
    [[nodiscard]] static bool fileExists(const SV::String& name) noexcept;
    /// A handle from 0 to be closed by `fileClose`, or -1.
    [[nodiscard]] static long fileOpenRead(const SV::String& name, QorFileOpenMode mode) noexcept;
    [[nodiscard]] static long fileOpenWrite(const SV::String& name, QorFileOpenMode mode) noexcept;
    [[nodiscard]] static long fileRead(long handle, char* buffer, unsigned long size) noexcept;
    [[nodiscard]] static long fileWrite(long handle, const char* bytes, unsigned long size) noexcept;
    static bool fileClose(long handle) noexcept;
    [[nodiscard]] static bool isFolder(const SV::String& path) noexcept;
};
