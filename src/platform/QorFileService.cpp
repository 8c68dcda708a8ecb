// SPDX-License-Identifier: Apache-2.0
#include "platform/QorFileManager.h"

#include "platform/QorErrorCode.h"

QorFileService::~QorFileService() = default;

bool QorFileService::exists(const SV::String&) {
    (void)Qor_NotInstalled("QorFileService::exists");
    return false;
}

long QorFileService::open(const SV::String&, QorFileOpenMode) {
    (void)Qor_NotInstalled("QorFileService::open");
    return -1;
}

long QorFileService::read(long, char*, unsigned long) {
    (void)Qor_NotInstalled("QorFileService::read");
    return -1;
}

long QorFileService::write(long, const char*, unsigned long) {
    (void)Qor_NotInstalled("QorFileService::write");
    return -1;
}

bool QorFileService::close(long) {
    (void)Qor_NotInstalled("QorFileService::close");
    return false;
}

bool QorFileService::isFolder(const SV::String&) {
    (void)Qor_NotInstalled("QorFileService::isFolder");
    return false;
}
