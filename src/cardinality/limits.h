// SPDX-License-Identifier: Apache-2.0
#pragma once
#include "cardinality/Direction.h"
#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cardinality/QorClassCardinality.h"

/// The limits of a class's rules, as the rules that were written.
///
/// A relation class without a record takes the class's own limits; with a record, whatever the record holds, even if
/// that is nothing but defaults, takes their place.
namespace qor::cardinality {

// Relations of one relation class between an object and the objects of one other class.
[[nodiscard]] QorCardinalityRule mostTowards(const QorClassCardinality& rules, Direction direction,
                                             QorIdentifier relationClass, QorIdentifier otherClass);
[[nodiscard]] QorCardinalityRule leastTowards(const QorClassCardinality& rules, Direction direction,
                                              QorIdentifier relationClass, QorIdentifier otherClass);

// Relations of one relation class.
[[nodiscard]] QorCardinalityRule mostOf(const QorClassCardinality& rules, Direction direction,
                                        QorIdentifier relationClass);
[[nodiscard]] QorCardinalityRule leastOf(const QorClassCardinality& rules, Direction direction,
                                         QorIdentifier relationClass);

// All relations in one direction.
[[nodiscard]] QorCardinalityRule mostInDirection(const QorClassCardinality& rules, Direction direction);
[[nodiscard]] QorCardinalityRule leastInDirection(const QorClassCardinality& rules, Direction direction);

/// A limit that the class itself sets.
[[nodiscard]] QorCardinalityRule ofClass(const QorClassCardinality& rules, const QorCardinalityLimit& limit);

[[nodiscard]] constexpr bool exceeds(std::uint32_t found, std::uint32_t most) noexcept {
    return most < QorNoCardinalityLimit && found > most;
}
[[nodiscard]] constexpr bool fallsShort(std::uint32_t found, std::uint32_t least) noexcept { return found < least; }

}  // namespace qor::cardinality
