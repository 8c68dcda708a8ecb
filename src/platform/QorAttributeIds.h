// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>

/// Attributes that every repository has under fixed identifiers.
namespace QorAttributeId {
inline constexpr std::int32_t ClassName = 4;
inline constexpr std::int32_t Name = 9;  ///< of an instance or of a library
inline constexpr std::int32_t RelationClassName = 10;
inline constexpr std::int32_t HierarchyAttribute = 47;  ///< of a business-process class
inline constexpr std::int32_t Cardinality = 48;         ///< of a business-process class
inline constexpr std::int32_t Graphic = 49;             ///< of a business-process object
inline constexpr std::int32_t SimulationMapping = 109;  ///< of a library
inline constexpr std::int32_t SimulationText = 110;     ///< of a library
inline constexpr std::int32_t SimulationResult = 125;   ///< of a library
inline constexpr std::int32_t AutomaticChecks = 138;    ///< of a library
inline constexpr std::int32_t WorkingEnvironmentHierarchyAttribute = 194;
inline constexpr std::int32_t WorkingEnvironmentCardinality = 195;
inline constexpr std::int32_t WorkingEnvironmentGraphic = 196;
}  // namespace QorAttributeId

/// What `classOf` answers for the two parts of an application library.
namespace QorLibraryKind {
inline constexpr std::int32_t BusinessProcess = 42;
inline constexpr std::int32_t WorkingEnvironment = 39;
}  // namespace QorLibraryKind
