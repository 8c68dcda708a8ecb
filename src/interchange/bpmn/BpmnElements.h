// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>

namespace qor::interchange::bpmn {

inline constexpr std::string_view kBpmnSpace = "http://www.omg.org/spec/BPMN/20100524/MODEL";

/// The classes of the BPMN method library that objects are made of; their names stand in BpmnLibrary.cpp.
enum class ObjectClass : std::uint8_t {
    Process,
    BlackBoxProcess,
    MessageStartedProcess,
    Pool,
    Lane,
    StartEvent,
    EndEvent,
    IntermediateCatchEvent,
    IntermediateThrowEvent,
    LinkCatchEvent,
    LinkThrowEvent,
    AdHocEvent,
    BoundaryEvent,
    CompensationBoundaryEvent,
    AdHocBoundaryEvent,
    Task,
    UserTask,
    ServiceTask,
    SendTask,
    ReceiveTask,
    InstantiatingReceiveTask,
    ManualTask,
    ScriptTask,
    BusinessRuleTask,
    CallActivity,
    CompensationActivity,
    AdHocActivity,
    SubProcess,
    Transaction,
    EventSubProcess,
    AdHocSubProcess,
    CompensationSubProcess,
    SubProcessInAdHoc,
    ExclusiveGateway,
    InclusiveGateway,
    ParallelGateway,
    ComplexGateway,
    EventBasedGateway,
    InstantiatingEventBasedGateway,
    AdHocGateway,
    DataObject,
    DataStore,
    DataInput,
    DataOutput,
    TextAnnotation,
    Group,
    None
};

/// What reading an element comes to.
enum class Role : std::uint8_t {
    Structure,  ///< only its contents count
    Collaboration,
    Process,
    Participant,
    Lane,
    Node,            ///< an object that a process or sub-process contains
    Artifact,        ///< an object that may also stand in a collaboration
    Data,            ///< data object, data store, data input or output
    DataObjectItem,  ///< what references of data objects refer to; an object itself when none does
    ActivityData,    ///< of the inside of a process or activity, which keeps what it says
    SequenceFlow,
    MessageFlow,
    Association,
    DataInputAssociation,
    DataOutputAssociation,
    EventDefinition,
    Definition,    ///< something with a name that others refer to
    Text,          ///< its text is a value of the element around it
    Merge,         ///< its attributes are values of the element around it
    Extension,     ///< holds what other makers add
    Redundant,     ///< says again what is said elsewhere
    LeftOut,       ///< the method library has no place for it: counted
    NotUnderstood  ///< another kind of diagram: told one by one
};

/// Families that the choice of a class depends on.
enum class Family : std::uint8_t {
    None,
    Event,
    CatchEvent,
    ThrowEvent,
    BoundaryEvent,
    Activity,
    SubProcess,
    AdHoc,
    Gateway
};

[[nodiscard]] constexpr bool isEvent(Family family) {
    return family == Family::Event || family == Family::CatchEvent || family == Family::ThrowEvent ||
           family == Family::BoundaryEvent;
}

/// Elements with two ends, which become relations.
[[nodiscard]] constexpr bool isRelation(Role role) {
    return role == Role::SequenceFlow || role == Role::MessageFlow || role == Role::Association ||
           role == Role::DataInputAssociation || role == Role::DataOutputAssociation;
}

/// A truth value as XML writes it.
[[nodiscard]] constexpr bool isTrue(std::string_view value) { return value == "true" || value == "1"; }

/// Where a value belongs: first those that refer to other elements, then those that are kept as attributes.
enum class Slot : std::uint8_t {
    SourceRef,
    TargetRef,
    AttachedTo,
    ProcessRef,
    CalledElement,
    DataRef,
    DefaultFlow,
    MessageRef,
    DefinitionRef,
    CategoryRef,
    ResourceRef,
    Performer,
    EventDefinitionRef,
    LaneMember,
    TriggerText,
    Condition,
    Documentation,
    Text,
    State,
    Collection,
    Interrupting,
    Direction,
    Loop,
    Script,
    Further,  ///< whatever has no attribute of its own
    None
};

/// What attributes say with "true"; several of them choose the class.
enum Flag : std::uint8_t {
    kNoFlag = 0,
    kForCompensation = 1,
    kTriggeredByEvent = 2,
    kInstantiate = 4,
    kParallelMultiple = 8,
};

struct ElementRow {
    std::string_view element;  ///< the name in BPMN
    Role role = Role::LeftOut;
    ObjectClass cls = ObjectClass::None;
    Family family = Family::None;
    Slot slot = Slot::None;  ///< of texts
    std::string_view word =
        {};  ///< of event definitions: the trigger; of some texts and merged elements: what they say
};

/// The row of an element of BPMN's namespace; null for a name that BPMN does not know.
[[nodiscard]] const ElementRow* findElement(std::string_view name);

struct AttributeRow {
    std::string_view attribute;
    Slot slot = Slot::Further;
    Flag flag = kNoFlag;
    std::string_view usual = {};  ///< the value that stands for an absent one; it is not kept
};

/// The row of an attribute that is more than a further detail; null for others.
[[nodiscard]] const AttributeRow* findAttribute(std::string_view name);

}  // namespace qor::interchange::bpmn
