// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// The kinds of classes whose objects hold simulation results.
enum class QorSimResultAttributeType : std::int32_t { ProcessStart = 0, Activity = 1, Person = 2 };
