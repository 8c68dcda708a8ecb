// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <span>
#include <string_view>

#include "platform/QorCoreAttributeType.h"
#include "platform/QorCoreVar.h"
#include "simmap/QorSimResultAttributeType.h"

namespace qor::simmap {

/// A kind of result holder: its record, and which lines its internal errors carry.
struct ResultHolder {
    QorSimResultAttributeType kind;
    QorCoreVarType part;
    std::string_view element;
    std::span<const std::string_view> fixedKeys;  ///< in the order of the attribute list
    long typeLine;
    long integerLine;
    long floatingLine;
    long timeLine;
    long otherLine;

    [[nodiscard]] long writeLine(QorCoreAttributeType type) const;
};

inline constexpr std::string_view kSourceElement = "FROMCLASS";
inline constexpr std::string_view kFromAttributeKey = "fromattribute";
inline constexpr std::string_view kResultAttributeKey = "resultattribute";

/// In the order of QorSimResultAttributeType.
[[nodiscard]] std::span<const ResultHolder> resultHolders();
/// Null for a kind that does not exist.
[[nodiscard]] const ResultHolder* resultHolder(QorSimResultAttributeType kind);
/// The holder that an element of the part's text declares; null for any other element.
[[nodiscard]] const ResultHolder* resultHolder(QorCoreVarType part, std::string_view element);

}  // namespace qor::simmap
