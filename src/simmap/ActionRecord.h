// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorKexParser.h"
#include "simmap/MappingErrors.h"
#include "simmap/QorSimulationOption.h"

namespace qor::simmap {

/// Adds the action in the parser's current element to the option. Returns QorSimCode.
int readAction(const QorKexParser& parser, long library, MappingErrors errors, bool continueOnError,
               QorSimulationOption& option);

}  // namespace qor::simmap
