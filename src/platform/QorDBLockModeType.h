// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// How a library is locked; the system asks for Exclusive only.
enum class QorDBLockModeType : std::int32_t { Exclusive = 2 };
