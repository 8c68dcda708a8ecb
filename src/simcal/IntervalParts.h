// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>

#include "platform/SvTime.h"

namespace qor::simcal {

// An interval as a text tells it, checked and not yet at its place in a profile.
struct IntervalParts {
    SV::Time start;
    SV::Time end;
    std::string distribution;  // its long form; empty for flags
};

}  // namespace qor::simcal
