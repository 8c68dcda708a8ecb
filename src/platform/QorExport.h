// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Marks what the shared libraries export. The attribute form (not __attribute__) mixes with [[nodiscard]] in GCC 12.
#define QOR_API [[gnu::visibility("default")]]
