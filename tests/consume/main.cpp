// SPDX-License-Identifier: Apache-2.0
// A host outside the project: it sees the installed headers and nothing else.
#include "all_headers.h"

int main() {
    const QorHost refusing;
    const QorHostInstallation installed(refusing);
    return Qor_InstalledHost() != nullptr ? 0 : 1;
}
