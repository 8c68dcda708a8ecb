// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorErrorCode.h"
#include "platform/QorExport.h"

/// Asserts that a result code is 0. When it is not, an internal error tells the source file and line; the operation
/// goes on. The value is whether the assertion held.
#define QOR_VALID_ECODE(eCode) Qor_AssertValidECode((eCode), __FILE__, __LINE__)

/// What QOR_VALID_ECODE calls; `file` is a path with extension, of which the bare name is reported.
QOR_API bool Qor_AssertValidECode(QorErrorCode code, const char* file, long line) noexcept;
