// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

/// Root of the polymorphic objects that the platform and the system hand to each other.
class QOR_API QorObject {
public:
    QorObject() = default;
    QorObject(const QorObject&) = default;
    QorObject& operator=(const QorObject&) = default;
    virtual ~QorObject();
};
