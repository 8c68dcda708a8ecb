// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

/// An error of a simulation text, with its place.
struct QorSimDefinitionError {
    long library = -1;    ///< the application library or library part that has the text
    long attribute = -1;  ///< its attribute with the text
    int code = 0;         ///< QorSimCode; Ok for a remark on something that is left out without harm
    QorKexPosition position;
    SV::String text;
};
