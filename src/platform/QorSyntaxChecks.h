// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/SvString.h"

/// Version text of the syntax that method libraries are checked against ("4.00.00" and later: the current one). The
/// installed host's setting; "4.00.00" without one.
QOR_API SV::String Qor_GetSyntaxChecksLevel();
