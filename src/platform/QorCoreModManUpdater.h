// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// Keeps the application's lists of repository things current.
class QOR_API QorCoreModManUpdater {
public:
    /// NotInstalled without a host that shows windows.
    static QorErrorCode UpdateAppLibList() noexcept;
};
