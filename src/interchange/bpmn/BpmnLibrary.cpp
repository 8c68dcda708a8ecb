// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnLibrary.h"

#include "interchange/Wording.h"

namespace qor::interchange::bpmn {

namespace {

// In the order of their enumerations.
constexpr std::array<std::string_view, static_cast<std::size_t>(ObjectClass::None)> kClassNames = {
    "Process",
    "Black-box process",
    "Message-started process",
    "Pool",
    "Lane",
    "Start event",
    "End event",
    "Intermediate catch event",
    "Intermediate throw event",
    "Link catch event",
    "Link throw event",
    "Ad-hoc event",
    "Boundary event",
    "Compensation boundary event",
    "Ad-hoc boundary event",
    "Task",
    "User task",
    "Service task",
    "Send task",
    "Receive task",
    "Instantiating receive task",
    "Manual task",
    "Script task",
    "Business rule task",
    "Call activity",
    "Compensation activity",
    "Ad-hoc activity",
    "Sub-process",
    "Transaction",
    "Event sub-process",
    "Ad-hoc sub-process",
    "Compensation sub-process",
    "Sub-process in ad-hoc",
    "Exclusive gateway",
    "Inclusive gateway",
    "Parallel gateway",
    "Complex gateway",
    "Event-based gateway",
    "Instantiating event-based gateway",
    "Ad-hoc gateway",
    "Data object",
    "Data store",
    "Data input",
    "Data output",
    "Text annotation",
    "Group",
};

constexpr std::array<std::string_view, static_cast<std::size_t>(FlowClass::Count)> kFlowNames = {
    "Contains", "Attached to", "Sequence flow", "Message flow", "Association", "Data association",
};

constexpr std::array<std::string_view, static_cast<std::size_t>(Attribute::Count)> kAttributeNames = {
    "Label",          "BPMN element",   "Documentation", "Bounds",    "Associated with", "Lane",
    "Trigger",        "Trigger detail", "Interrupting",  "Loop",      "Performers",      "Called element",
    "Called process", "Message",        "Script",        "Condition", "Default",         "Direction",
    "State",          "Collection",     "Text",          "Category",  "Further details",
};

static_assert(!kClassNames.back().empty() && !kFlowNames.back().empty() && !kAttributeNames.back().empty(),
              "every row of the enumerations has a name");

}  // namespace

std::string_view nameOf(ObjectClass cls) { return kClassNames[static_cast<std::size_t>(cls)]; }
std::string_view nameOf(FlowClass cls) { return kFlowNames[static_cast<std::size_t>(cls)]; }
std::string_view nameOf(Attribute attribute) { return kAttributeNames[static_cast<std::size_t>(attribute)]; }

std::string Library::bind(const QorRepositoryReader& reader, QorIdentifier library) {
    const auto missing = [](std::string_view kind, std::string_view name) {
        return concat(
            {"the method library has no ", kind, " ", inQuotes(name), "; BPMN files are read with the BPMN library"});
    };
    _reader = &reader;
    for (std::size_t i = 0; i < kClasses; ++i) {
        _classes[i] = reader.findClass(library, kClassNames[i]);
        if (_classes[i] < 1) return missing("class", kClassNames[i]);
    }
    for (std::size_t i = 0; i < kFlows; ++i) {
        _flows[i] = reader.findRelationClass(library, kFlowNames[i]);
        if (_flows[i] < 1) return missing("relation class", kFlowNames[i]);
    }
    _modelType = reader.findModelType(library, kModelTypeName);
    if (_modelType < 1) return missing("model type", kModelTypeName);
    return {};
}

QorIdentifier Library::attributeOf(QorIdentifier owner, AttributeIds& known, Attribute attribute) const {
    QorIdentifier& id = known[index(attribute)];
    if (id == kNotAsked) id = _reader->findAttribute(owner, nameOf(attribute));
    return id;
}

}  // namespace qor::interchange::bpmn
