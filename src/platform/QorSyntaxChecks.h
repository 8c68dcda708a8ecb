// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/SvString.h"

/// The level without a setting of the host's: the current syntax.
inline constexpr const char* QorDefaultSyntaxChecksLevel = "4.00.00";

/// Version text of the syntax that method libraries are checked against ("4.00.00" and later: the current one). The
/// installed host's setting; the default without one.
QOR_API SV::String Qor_GetSyntaxChecksLevel();
