// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorHost.h"

namespace qor::platform {

/// A service of which no operation was overridden, one of each kind. It is never destroyed, so that it answers also
/// while the process ends. Defined for the services that QorHost names.
template <class Service>
Service& refusing();

/// The installed host's service behind a member of QorHost, else the refusing one.
template <class Service>
Service& installed(Service* QorHost::*member) {
    const QorHost* host = Qor_InstalledHost();
    return host != nullptr && host->*member != nullptr ? *(host->*member) : refusing<Service>();
}

}  // namespace qor::platform
