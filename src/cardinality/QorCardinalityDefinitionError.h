// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorKexParser.h"
#include "platform/SvString.h"

/// An error of a class's rule text, with its place.
struct QorCardinalityDefinitionError {
    long library = -1;  ///< as handed to the reading operation
    long cls = -1;
    long attribute = -1;  ///< of the class, holding the text
    QorKexPosition position;
    SV::String text;  ///< what is wrong, without the place; ends in a line feed
};
