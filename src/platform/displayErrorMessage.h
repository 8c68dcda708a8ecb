// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

/// Reports an internal error through the installed host's error display, or in one line on standard error. `source` is
/// the short name of the reporting source ("acard"). Null `text` counts as none.
QOR_API void displayErrorMessage(const char* source, long line, const char* text = nullptr) noexcept;
