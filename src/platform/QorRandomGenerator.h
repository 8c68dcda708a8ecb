// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

/// Draws numbers from a distribution; a host makes them for the simulation.
class QOR_API QorRandomGenerator {
public:
    virtual ~QorRandomGenerator();
    virtual double next() = 0;
};
