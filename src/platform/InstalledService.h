// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorHost.h"

namespace qor::platform {

/// The installed host's service behind a member of QorHost, else a refusing one that is never destroyed, so that it
/// answers also while the process ends.
template <class Service>
Service& installed(Service* QorHost::*member) {
    static Service* const refusing = new Service;
    const QorHost* host = Qor_InstalledHost();
    return host != nullptr && host->*member != nullptr ? *(host->*member) : *refusing;
}

}  // namespace qor::platform
