// SPDX-License-Identifier: Apache-2.0
#include "platform/QorObject.h"

#include "platform/QorRandomGenerator.h"

QorObject::~QorObject() = default;
QorRandomGenerator::~QorRandomGenerator() = default;
