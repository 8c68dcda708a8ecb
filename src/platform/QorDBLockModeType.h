// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// How a library is locked; the system asks for Exclusive only. Several may share a library, and nobody then has it
/// exclusively.
enum class QorDBLockModeType : std::int32_t { Shared = 1, Exclusive = 2 };
