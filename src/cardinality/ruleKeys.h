// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <span>

#include "cardinality/Direction.h"
#include "cardinality/QorClassCardinality.h"

/// The keys of a rule text, as rows in the order in which they are read. The order of the text plays no part: a limit
/// is clamped by what the rows above have stored, never by those below.
namespace qor::cardinality {

inline constexpr std::string_view kClassElement = "CARDINALITIES";
inline constexpr std::string_view kRelationElement = "RELATION";

// The library's text about when checks run by themselves.
inline constexpr std::string_view kAutomaticChecksElement = "CHECK_CARDINALITIES";
inline constexpr std::string_view kBeforeSaveKey = "before-save";
inline constexpr std::string_view kAfterModelingActionKey = "after-modeling-action";

/// Key of the CARDINALITIES element.
struct ClassKey {
    std::string_view key;
    void (*store)(QorClassCardinality& rules, const QorCardinalityLimit& written);
};
[[nodiscard]] std::span<const ClassKey> classKeys();

/// Key of a RELATION element.
struct RelationKey {
    std::string_view key;
    Direction direction;  ///< in which relations must run at the class for the key to make sense
    void (*store)(QorRelationCardinality& rules, const QorCardinalityLimit& written);
};
[[nodiscard]] std::span<const RelationKey> relationKeys();

/// Element below a RELATION element, with its two keys.
struct TargetElement {
    std::string_view element;
    std::string_view maxKey;
    std::string_view minKey;
    QorCardinalityLimit QorRelationTargetCardinality::*max;
    QorCardinalityLimit QorRelationTargetCardinality::*min;
};
[[nodiscard]] std::span<const TargetElement> targetElements();

/// Keep the tighter of two bounds, with the key that it came from.
void lower(QorCardinalityLimit& limit, const QorCardinalityLimit& to);
void raise(QorCardinalityLimit& limit, const QorCardinalityLimit& to);

}  // namespace qor::cardinality
