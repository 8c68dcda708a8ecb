// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/QorRepositoryReader.h"
#include "interchange/bpmn/BpmnElements.h"

namespace qor::interchange::bpmn {

enum class FlowClass : std::uint8_t {
    Contains,
    AttachedTo,
    SequenceFlow,
    MessageFlow,
    Association,
    DataAssociation,
    Count
};

/// Attributes of the method library that the reader fills.
enum class Attribute : std::uint8_t {
    Label,
    BpmnElement,
    Documentation,
    Bounds,
    AssociatedWith,
    Lane,
    Trigger,
    TriggerDetail,
    Interrupting,
    Loop,
    Performers,
    CalledElement,
    CalledProcess,
    Message,
    Script,
    Condition,
    Default,
    Direction,
    State,
    Collection,
    Text,
    Category,
    Further,
    Count
};

[[nodiscard]] std::string_view nameOf(ObjectClass cls);
[[nodiscard]] std::string_view nameOf(FlowClass cls);
[[nodiscard]] std::string_view nameOf(Attribute attribute);

/// The identifiers that the method library has for what files are read into.
class Library {
public:
    /// Empty on success, else what the library lacks. The reader must outlive this object.
    [[nodiscard]] std::string bind(const QorRepositoryReader& reader, QorIdentifier library);

    [[nodiscard]] QorIdentifier modelType() const { return _modelType; }
    [[nodiscard]] QorIdentifier classOf(ObjectClass cls) const { return _classes[index(cls)]; }
    [[nodiscard]] QorIdentifier classOf(FlowClass cls) const { return _flows[index(cls)]; }
    /// None when the class has no such attribute.
    [[nodiscard]] QorIdentifier attributeOf(ObjectClass cls, Attribute attribute) const {
        return attributeOf(classOf(cls), _attributes[index(cls)], attribute);
    }
    [[nodiscard]] QorIdentifier attributeOf(FlowClass cls, Attribute attribute) const {
        return attributeOf(classOf(cls), _flowAttributes[index(cls)], attribute);
    }

private:
    template <class Enum>
    static constexpr std::size_t index(Enum value) {
        return static_cast<std::size_t>(value);
    }
    static constexpr std::size_t kClasses = static_cast<std::size_t>(ObjectClass::None);
    static constexpr std::size_t kFlows = static_cast<std::size_t>(FlowClass::Count);
    static constexpr QorIdentifier kNotAsked = 0;
    using AttributeIds = std::array<QorIdentifier, static_cast<std::size_t>(Attribute::Count)>;

    /// Most files need few of a thousand, so each is asked for when it is first needed.
    QorIdentifier attributeOf(QorIdentifier owner, AttributeIds& known, Attribute attribute) const;

    const QorRepositoryReader* _reader = nullptr;
    QorIdentifier _modelType = QorNoIdentifier;
    std::array<QorIdentifier, kClasses> _classes{};
    std::array<QorIdentifier, kFlows> _flows{};
    mutable std::array<AttributeIds, kClasses> _attributes{};
    mutable std::array<AttributeIds, kFlows> _flowAttributes{};
};

inline constexpr std::string_view kModelTypeName = "BPMN diagram";

}  // namespace qor::interchange::bpmn
