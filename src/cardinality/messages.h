// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

namespace qor::cardinality::message {

// Breaches. The second of each pair is the wording for a limit of 1. %source who, %direction, %type the relation
// class, %number the limit; for numbers of objects %c the class, %n1 found, %n2 the limit.
inline constexpr std::uint16_t tooManyRelations = 1962;
inline constexpr std::uint16_t tooManyRelationsOne = 1963;
inline constexpr std::uint16_t tooManyOfRelationClass = 1964;
inline constexpr std::uint16_t tooManyOfRelationClassOne = 1965;
inline constexpr std::uint16_t tooManyObjects = 1967;
inline constexpr std::uint16_t tooManyObjectsOne = 1968;
inline constexpr std::uint16_t tooFewObjects = 1969;
inline constexpr std::uint16_t tooFewObjectsOne = 1970;
inline constexpr std::uint16_t tooFewRelations = 1971;
inline constexpr std::uint16_t tooFewRelationsOne = 1972;
inline constexpr std::uint16_t tooFewOfRelationClass = 1973;
inline constexpr std::uint16_t tooFewOfRelationClassOne = 1974;

// Put in for %direction.
inline constexpr std::uint16_t allRelations = 1980;
inline constexpr std::uint16_t outgoingRelations = 1981;
inline constexpr std::uint16_t incomingRelations = 1982;

// Put in for %source.
inline constexpr std::uint16_t betweenObjects = 1983;     ///< %instance1, %instance2
inline constexpr std::uint16_t fromObjectToClass = 1984;  ///< %instance, %class
inline constexpr std::uint16_t fromClassToObject = 1985;  ///< %class, %instance
inline constexpr std::uint16_t subjectIsClass = 1988;     ///< %c

// Errors of a rule text. %a its attribute, %k its class.
inline constexpr std::uint16_t unexpectedText = 1966;         ///< %s found, %e expected
inline constexpr std::uint16_t directionDoesNotFit = 1975;    ///< %s the key, %r the relation class
inline constexpr std::uint16_t relationClassExpected = 1986;  ///< put in for %e
inline constexpr std::uint16_t classExpected = 1987;          ///< put in for %e

}  // namespace qor::cardinality::message
