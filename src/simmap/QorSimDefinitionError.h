// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

/// An error of a simulation text, with its place in the text.
struct QorSimDefinitionError {
    int code = 0;  ///< QorSimCode
    QorKexPosition position;
    SV::String text;
};
