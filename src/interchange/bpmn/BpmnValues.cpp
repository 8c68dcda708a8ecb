// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnValues.h"

#include "interchange/Wording.h"

namespace qor::interchange::bpmn {

static_assert(static_cast<int>(Attribute::Further) + 1 == static_cast<int>(Attribute::Count),
              "the further details are set last, since the other attributes may add to them");

namespace {

/// The attribute for the texts of a slot; none for slots that are read elsewhere.
Attribute attributeFor(Slot slot) {
    switch (slot) {
        case Slot::Documentation:
            return Attribute::Documentation;
        case Slot::Text:
            return Attribute::Text;
        case Slot::Condition:
            return Attribute::Condition;
        case Slot::State:
            return Attribute::State;
        case Slot::Direction:
            return Attribute::Direction;
        case Slot::Loop:
            return Attribute::Loop;
        case Slot::Script:
            return Attribute::Script;
        default:
            return Attribute::Count;
    }
}

/// Whether the reference of an element is read elsewhere; where BPMN has no such reference it is a detail like others.
bool isReadElsewhere(Slot slot, const ElementRow& row) {
    switch (slot) {
        case Slot::SourceRef:
        case Slot::TargetRef:
            return isRelation(row.role);
        case Slot::AttachedTo:
            return row.family == Family::BoundaryEvent;
        case Slot::ProcessRef:
            return row.role == Role::Participant;
        case Slot::DataRef:
            return row.role == Role::Data;
        case Slot::EventDefinitionRef:
            return isEvent(row.family);
        case Slot::LaneMember:
            return row.role == Role::Lane;
        default:
            return slot == Slot::CalledElement || slot == Slot::DefaultFlow;
    }
}

std::string_view separatorOf(Attribute attribute) {
    switch (attribute) {
        case Attribute::Documentation:
            return "\n\n";
        case Attribute::Performers:
            return ", ";
        default:
            return "\n";
    }
}

}  // namespace

void Values::add(Attribute attribute, std::string_view text) {
    std::string& gathered = _texts[static_cast<std::size_t>(attribute)];
    if (text.empty()) return;
    if (!gathered.empty()) gathered += separatorOf(attribute);
    gathered += text;
}

void Values::addFurther(std::string_view key, std::string_view text) {
    std::string& gathered = _texts[static_cast<std::size_t>(Attribute::Further)];
    if (!gathered.empty()) gathered += '\n';
    gathered.append(key).append(" = ").append(text);
}

void Values::addAllOf(const Document& document, const Links& links, NodeIndex node) {
    document.forEachValue(node, [&](const Value& value) {
        if (isReadElsewhere(value.slot, *document[node].row)) return;
        switch (value.slot) {
            case Slot::MessageRef:
                return add(Attribute::Message, links.nameMeantBy(value.text));
            case Slot::CategoryRef:
                return add(Attribute::Category, links.nameMeantBy(value.text));
            case Slot::ResourceRef:
                return add(Attribute::Performers, links.nameMeantBy(value.text));
            case Slot::Performer:
                return add(Attribute::Performers, value.text);
            case Slot::Collection:
                return add(Attribute::Collection, isTrue(value.text) ? "yes" : "no");
            case Slot::Interrupting:
                return add(Attribute::Interrupting, value.text == "false" || value.text == "0" ? "no" : "yes");
            default:
                break;
        }
        const Attribute attribute = attributeFor(value.slot);
        if (attribute == Attribute::Count)
            addFurther(value.key, value.text);
        else
            add(attribute, value.text);
    });
}

/// A definition's name stands where it is referred to, and is said again only to tell what further details belong to.
void Values::addCarried(const Document& document, const std::vector<NodeIndex>& carried) {
    for (const NodeIndex node : carried) {
        const Node& it = document[node];
        const bool isNamedElsewhere = it.row->role == Role::Definition || it.row->role == Role::Collaboration;
        const std::string_view name = it.name.empty() && it.row->role == Role::ActivityData ? it.id : it.name;
        if (!name.empty() && (it.firstValue >= 0 || !isNamedElsewhere)) addFurther(it.row->element, name);
        document.forEachValue(node, [&](const Value& value) {
            addFurther(concat({it.row->element, ".", value.key}), value.text);
        });
    }
}

void Values::tellLost(Findings& findings, const Node& node, Attribute attribute) {
    findings.warn(FindingKind::LostValue, node.place,
                  concat({wordsFor(node), ": its ", inQuotes(nameOf(attribute)), " could not be kept"}));
}

}  // namespace qor::interchange::bpmn
