// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

#include "platform/QorCoreAttributeType.h"
#include "platform/QorErrorCode.h"

namespace qor::modeltools {

/// One end of a value's way from the old object to the new one, or from row to row.
struct ConversionEnd {
    long owner = -1;
    long attribute = -1;
    QorCoreAttributeType type = QorCoreAttributeType::None;
};

/// How a value came over.
struct ConversionOutcome {
    QorErrorCode code = QorErrorCode::Ok;
    std::uint16_t message = 0;  ///< why it did not; 0 when it did
};

/// Whether values of the one type can go to the other: an expression's result may suit any type.
[[nodiscard]] constexpr bool isConvertible(QorCoreAttributeType source, QorCoreAttributeType target) {
    return source == target || source == QorCoreAttributeType::Expression;
}

/// Carries the value over. An expression goes to an expression as the formula, to anything else as its result. Where
/// the source has no value the target keeps what it has.
[[nodiscard]] ConversionOutcome convertAttribute(long model, const ConversionEnd& from, const ConversionEnd& to);

}  // namespace qor::modeltools
