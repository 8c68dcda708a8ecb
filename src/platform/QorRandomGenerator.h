// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

/// Draws numbers from a distribution; a host makes them for the simulation. The system stores generators and hands them
/// out, and draws nothing itself.
class QOR_API QorRandomGenerator {
public:
    virtual ~QorRandomGenerator();
    /// The next number: finite, of the unit and range of the distribution that the generator was made for (seconds and
    /// not below 0 for a length of time). Independent of the numbers before.
    virtual double next() = 0;
};
