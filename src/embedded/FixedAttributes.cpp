// SPDX-License-Identifier: Apache-2.0
#include "embedded/FixedAttributes.h"

#include "platform/QorAttributeIds.h"

namespace qor::embedded {

namespace {

using enum QorCoreAttributeType;

constexpr FixedAttribute kFixed[] = {
    {QorAttributeId::ClassName, FixedOwner::AnyClass, Text, "Class name"},
    {QorAttributeId::Name, FixedOwner::AnyInstance, Text, "Name"},
    {QorAttributeId::RelationClassName, FixedOwner::AnyRelationClass, Text, "Relation class name"},
    {QorAttributeId::HierarchyAttribute, FixedOwner::BusinessClass, Text, "Hierarchy attribute"},
    {QorAttributeId::Cardinality, FixedOwner::BusinessClass, LongText, "Cardinalities"},
    {QorAttributeId::Graphic, FixedOwner::BusinessInstance, LongText, "Position"},
    {QorAttributeId::SimulationMapping, FixedOwner::AnyLibrary, LongText, "Simulation mapping"},
    {QorAttributeId::SimulationText, FixedOwner::AnyLibrary, LongText, "Simulation texts"},
    {QorAttributeId::SimulationResult, FixedOwner::AnyLibrary, LongText, "Simulation results"},
    {QorAttributeId::AutomaticChecks, FixedOwner::AnyLibrary, LongText, "Automatic checks"},
    {QorAttributeId::WorkingEnvironmentHierarchyAttribute, FixedOwner::WorkingClass, Text, "Hierarchy attribute"},
    {QorAttributeId::WorkingEnvironmentCardinality, FixedOwner::WorkingClass, LongText, "Cardinalities"},
    {QorAttributeId::WorkingEnvironmentGraphic, FixedOwner::WorkingInstance, LongText, "Position"},
    {kUnmovedRelationClass, FixedOwner::AnyLibrary, Text, "__UnmovedRelationClass__"},
    {kPastedFrom, FixedOwner::AnyInstance, Text, "__PastedFrom__"},
};

}  // namespace

std::span<const FixedAttribute> fixedAttributes() { return kFixed; }

}  // namespace qor::embedded
