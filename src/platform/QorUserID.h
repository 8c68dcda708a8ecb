// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

/// Identifies a user of the platform's user management; -1 means none. Ordered by its number.
class QOR_API QorUserID {
public:
    constexpr explicit QorUserID(long value = -1) : _value(value) {}
    [[nodiscard]] constexpr long value() const { return _value; }
    [[nodiscard]] constexpr bool isNone() const { return _value == -1; }

    friend constexpr bool operator==(QorUserID a, QorUserID b) { return a._value == b._value; }
    friend constexpr bool operator<(QorUserID a, QorUserID b) { return a._value < b._value; }

private:
    long _value;
};
