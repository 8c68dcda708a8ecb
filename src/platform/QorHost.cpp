// SPDX-License-Identifier: Apache-2.0
#include "platform/QorHost.h"

namespace {
// Constant-initialised: watchers built before main may ask for the host at any time.
constinit const QorHost* g_installed = nullptr;
}  // namespace

QorHostInstallation::QorHostInstallation(const QorHost& host) noexcept : _host(host), _earlier(g_installed) {
    g_installed = &_host;
}

QorHostInstallation::~QorHostInstallation() { g_installed = _earlier; }

const QorHost* Qor_InstalledHost() noexcept { return g_installed; }
