// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// The simulation event on which an action's attribute is evaluated.
enum class QorSimOptionActionEvent : std::int32_t { Start = 0, Interrupt = 1, Continue = 2, Finish = 3, Any = 4 };
