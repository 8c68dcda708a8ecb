// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"
#include "platform/QorIdentifier.h"

/// Base of the rule records.
class QOR_API QorCardinalityStorageElement {
public:
    virtual ~QorCardinalityStorageElement();
    /// The identifier under which the record is filed.
    [[nodiscard]] virtual const QorIdentifier& key() const = 0;

protected:
    QorCardinalityStorageElement() = default;
    QorCardinalityStorageElement(const QorCardinalityStorageElement&) = default;
    QorCardinalityStorageElement& operator=(const QorCardinalityStorageElement&) = default;
};
