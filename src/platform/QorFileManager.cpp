// SPDX-License-Identifier: Apache-2.0
#include "platform/QorFileManager.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"

using qor::platform::installed;

bool QorFileManager::fileExists(const SV::String& name) noexcept {
    return Qor_Guarded("qorfilemanager", false, [&] { return installed(&QorHost::files).exists(name); });
}

long QorFileManager::fileOpenRead(const SV::String& name, QorFileOpenMode mode) noexcept {
    return Qor_Guarded("qorfilemanager", -1L, [&] { return installed(&QorHost::files).open(name, mode); });
}

long QorFileManager::fileOpenWrite(const SV::String& name, QorFileOpenMode mode) noexcept {
    return Qor_Guarded("qorfilemanager", -1L, [&] { return installed(&QorHost::files).open(name, mode); });
}

long QorFileManager::fileRead(long handle, char* buffer, unsigned long size) noexcept {
    return Qor_Guarded("qorfilemanager", -1L, [&] { return installed(&QorHost::files).read(handle, buffer, size); });
}

long QorFileManager::fileWrite(long handle, const char* bytes, unsigned long size) noexcept {
    return Qor_Guarded("qorfilemanager", -1L, [&] { return installed(&QorHost::files).write(handle, bytes, size); });
}

bool QorFileManager::fileClose(long handle) noexcept {
    return Qor_Guarded("qorfilemanager", false, [&] { return installed(&QorHost::files).close(handle); });
}

bool QorFileManager::isFolder(const SV::String& path) noexcept {
    return Qor_Guarded("qorfilemanager", false, [&] { return installed(&QorHost::files).isFolder(path); });
}
