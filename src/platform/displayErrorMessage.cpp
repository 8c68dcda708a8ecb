// SPDX-License-Identifier: Apache-2.0
#include "platform/displayErrorMessage.h"

#include <cstdio>
#include <string>

#include "platform/QorErrorCode.h"
#include "platform/QorHost.h"
#include "platform/QorWindows.h"

void displayErrorMessage(const char* source, long line, const char* text) noexcept {
    const QorHost* host = Qor_InstalledHost();
    try {
        if (host != nullptr && host->windows != nullptr)
            host->windows->internalError(source, line, text == nullptr ? "" : text);
        else
            QorWindows().internalError(source, line, text == nullptr ? "" : text);
    } catch (...) {
        std::fputs("qor: an internal error could not be shown\n", stderr);
    }
}

QorErrorCode Qor_NotInstalled(const char* operation) noexcept {
    try {
        displayErrorMessage("platform", 0, (std::string(operation) + " is not offered by the host").c_str());
    } catch (...) {
        displayErrorMessage("platform", 0, operation);
    }
    return QorErrorCode::NotInstalled;
}
