// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "platform/QorExport.h"

/// Identifies a user group of the platform's user management; -1 means none. Ordered by its number.
class QOR_API QorUserGroupID {
public:
    constexpr explicit QorUserGroupID(long value = -1) : _value(value) {}
    [[nodiscard]] constexpr long value() const { return _value; }
    [[nodiscard]] constexpr bool isNone() const { return _value == -1; }

    friend constexpr bool operator==(QorUserGroupID a, QorUserGroupID b) { return a._value == b._value; }
    friend constexpr bool operator<(QorUserGroupID a, QorUserGroupID b) { return a._value < b._value; }

private:
    long _value;
};
