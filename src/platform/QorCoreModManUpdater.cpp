// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreModManUpdater.h"

#include "platform/InstalledService.h"
#include "platform/QorGuard.h"
#include "platform/QorWindows.h"

QorErrorCode QorCoreModManUpdater::UpdateAppLibList() noexcept {
    return Qor_Guarded("updater", QorErrorCode::Broken,
                       [] { return qor::platform::installed(&QorHost::windows).refreshLibraryList(); });
}
