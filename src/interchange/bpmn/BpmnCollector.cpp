// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnCollector.h"

#include <optional>

#include "interchange/Wording.h"

namespace qor::interchange::bpmn {

namespace {

constexpr std::string_view kDiagramSpace = "http://www.omg.org/spec/BPMN/20100524/DI";
constexpr std::string_view kSchemaInstanceSpace = "http://www.w3.org/2001/XMLSchema-instance";
constexpr std::string_view kXmlSpace = "http://www.w3.org/XML/1998/namespace";

bool isOwn(std::string_view space) { return space.empty() || space == kBpmnSpace; }

bool isExtension(std::string_view space) {
    return !isOwn(space) && space != kSchemaInstanceSpace && space != kXmlSpace;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t from = text.find_first_not_of(kBlanks);
    if (from == std::string_view::npos) return {};
    return text.substr(from, text.find_last_not_of(kBlanks) - from + 1);
}

std::optional<std::string_view> attributeOf(const XmlElement& element, std::string_view name) {
    for (const XmlAttribute& attribute : element.attributes)
        if (attribute.name.local == name && isOwn(attribute.name.space)) return attribute.value;
    return std::nullopt;
}

bool holdsFlowElements(const ElementRow& row) {
    return row.role == Role::Process || row.family == Family::SubProcess || row.family == Family::AdHoc;
}

}  // namespace

void Collector::open(const XmlElement& element) {
    tellStrayText();
    openAny(element);
    _open.back().place = element.place;
}

void Collector::openAny(const XmlElement& element) {
    if (_open.empty()) return openRoot(element);
    const Reading reading = _open.back().reading;
    if (reading == Reading::Refused) return push(nullptr, kNoNode, Reading::Refused);
    if (reading == Reading::Diagram) return openDiagram(element);
    if (element.name.space != kBpmnSpace) return openForeign(element);
    if (reading == Reading::Extension) return openForeign(element);
    countForeignAttributes(element);
    if (reading == Reading::Normal) return openBpmn(element);
    push(nullptr, owner(), reading);
}

void Collector::close() {
    tellStrayText();
    if (_open.back().reading == Reading::Text && _open.back().row != nullptr) closeText(_open.back());
    if (_open.size() == _shapeDepth) _shapeDepth = 0;
    _open.pop_back();
}

void Collector::text(std::string_view text) {
    if (_open.empty()) return;
    if (_open.back().reading == Reading::Text) _text += text;
    if (_open.back().reading == Reading::Normal) _strayText += text;
}

void Collector::failed(Place place, std::string text) { _findings.error(place, std::move(text)); }

void Collector::finish() {
    for (const auto& [element, bounds] : _bounds)
        if (const NodeIndex node = _document.find(element); node != kNoNode) _document[node].bounds = bounds;
}

void Collector::openRoot(const XmlElement& element) {
    if (element.name.space == kBpmnSpace && element.name.local == "definitions") {
        countForeignAttributes(element);
        return push(findElement(element.name.local), kNoNode, Reading::Normal);
    }
    _findings.error(element.place,
                    concat({"this is no BPMN 2.0 file: it begins with <", folded(element.name.local, kMaxBorrowedBytes),
                            "> of ", element.name.space.empty() ? "no namespace" : "the namespace ",
                            element.name.space.empty() ? "" : inQuotes(element.name.space),
                            ", not with <definitions> of the namespace ", inQuotes(kBpmnSpace)}));
    push(nullptr, kNoNode, Reading::Refused);
}

void Collector::openForeign(const XmlElement& element) {
    if (element.name.space == kDiagramSpace && _open.back().reading == Reading::Normal)
        return push(nullptr, kNoNode, Reading::Diagram);
    countForeign(element);
    push(nullptr, owner(), _open.back().reading == Reading::Text ? Reading::Text : Reading::Extension);
    _open.back().isForeign = true;
}

/// Only the outermost one is named; what stands inside it goes with it.
void Collector::countForeign(const XmlElement& element) {
    const bool isNamed = !_open.back().isForeign;
    if (isNamed)
        _findings.foreign(element.name.space, true, element.place, [&] {
            return concat({"<", folded(element.name.local, kMaxBorrowedBytes), "> in ", ownerWords()});
        });
    else if (element.name.space != kBpmnSpace)
        _findings.foreignInside(element.name.space, true, element.place);
    for (const XmlAttribute& attribute : element.attributes)
        if (isExtension(attribute.name.space)) _findings.foreignInside(attribute.name.space, false, element.place);
}

std::string Collector::ownerWords() const {
    return owner() == kNoNode ? std::string("<definitions>") : wordsFor(_document[owner()]);
}

/// Everything since the last tag, since text comes in pieces.
void Collector::tellStrayText() {
    if (const std::string_view text = trimmed(_strayText); !text.empty())
        _findings.warn(
            FindingKind::LostValue, _open.back().place,
            concat({"<", _open.back().row->element, ">: the text ", inQuotes(folded(text, kMaxBorrowedBytes)),
                    " stands where BPMN has none; it is left out"}));
    _strayText.clear();
}

void Collector::openDiagram(const XmlElement& element) {
    push(nullptr, kNoNode, Reading::Diagram);
    if (element.name.local == "BPMNShape") {
        _shapeOf = attributeOf(element, "bpmnElement").value_or("");
        _shapeDepth = _open.size();
    } else if (element.name.local == "Bounds" && _shapeDepth != 0 && _open.size() == _shapeDepth + 1) {
        std::string bounds;
        for (const char* const part : {"x", "y", "width", "height"}) {
            if (!bounds.empty()) bounds += ' ';
            bounds += attributeOf(element, part).value_or("0");
        }
        _bounds.emplace_back(_document.texts.keep(_shapeOf), _document.texts.keep(bounds));
    }
}

void Collector::openBpmn(const XmlElement& element) {
    const ElementRow* const row = findElement(element.name.local);
    if (row == nullptr) return skip(element, FindingKind::NotUnderstood, "is no element that BPMN knows");
    switch (row->role) {
        case Role::Structure:
            if (owner() != kNoNode) takeInnerAttributes(*row, element);
            return push(row, owner(), Reading::Normal);
        case Role::Text:
            return openText(*row, element);
        case Role::Merge:
            return merge(*row, element);
        case Role::Extension:
            return push(row, owner(), Reading::Extension);
        case Role::Redundant:
            return push(row, owner(), Reading::Nothing);
        case Role::LeftOut:
            _findings.leftOut(row->element, attributeOf(element, "id").value_or(""), element.place);
            return push(row, owner(), Reading::Nothing);
        case Role::NotUnderstood:
            return skip(element, FindingKind::NotUnderstood, "belongs to a kind of diagram that is not read");
        default:
            return openNode(*row, element);
    }
}

void Collector::skip(const XmlElement& element, FindingKind kind, std::string_view why) {
    const std::string_view id = attributeOf(element, "id").value_or("");
    _findings.warn(
        kind, element.place,
        concat({"<", folded(element.name.local, kMaxBorrowedBytes), "> ", id.empty() ? "without an id" : inQuotes(id),
                " ", why, "; it is left out with everything inside it"}));
    push(nullptr, owner(), Reading::Nothing);
}

/// Whether the element around is of the kind that holds such elements.
bool Collector::hasPlaceFor(const ElementRow& row) const {
    const ElementRow* const around = owner() == kNoNode ? nullptr : _document[owner()].row;
    switch (row.role) {
        case Role::Process:
        case Role::Collaboration:
            return around == nullptr;
        case Role::Participant:
            return around != nullptr && around->role == Role::Collaboration;
        case Role::Lane:
            return around != nullptr && (holdsFlowElements(*around) || around->role == Role::Lane);
        case Role::Node:
        case Role::DataObjectItem:
            return around != nullptr && holdsFlowElements(*around);
        case Role::Data:
            return around != nullptr && (around->role == Role::Process || around->role == Role::Node);
        case Role::Artifact:
            return around != nullptr && (holdsFlowElements(*around) || around->role == Role::Collaboration);
        case Role::DataInputAssociation:
        case Role::DataOutputAssociation:
            return around != nullptr && around->role == Role::Node;
        case Role::ActivityData:
            return around != nullptr;
        case Role::EventDefinition:
            return around == nullptr || isEvent(around->family);
        default:
            return true;
    }
}

void Collector::openNode(const ElementRow& row, const XmlElement& element) {
    if (!hasPlaceFor(row)) return skip(element, FindingKind::OutsideProcess, "stands where BPMN has no such element");
    push(&row, addNode(row, element), Reading::Normal);
}

NodeIndex Collector::addNode(const ElementRow& row, const XmlElement& element) {
    const NodeIndex node = _document.size();
    const NodeIndex parent = owner();
    Node& made = _document.nodes.emplace_back();
    made.row = &row;
    made.parent = parent;
    made.place = element.place;
    const bool isParameter = row.cls == ObjectClass::DataInput || row.cls == ObjectClass::DataOutput;
    made.isInside = row.role == Role::ActivityData || (isParameter && _document[parent].row->role != Role::Process);
    takeAttributes(node, element);
    noteContents(node);

    const std::string_view id = _document[node].id;
    if (id.empty()) return node;
    const auto [at, isNew] = _document.byId.emplace(id, node);
    if (!isNew)
        _findings.warn(
            FindingKind::DuplicateId, element.place,
            concat({wordsFor(_document[node]), ": this id is already that of <", _document[at->second].row->element,
                    "> in line ", std::to_string(_document[at->second].place.line), "; references mean that one"}));
    return node;
}

void Collector::noteContents(NodeIndex node) {
    const Node& made = _document[node];
    if (made.parent == kNoNode) return;
    Node& around = _document[made.parent];
    if (made.row->role == Role::Node) {
        around.hasFlowNodes = true;
        around.hasStartEvent |= made.row->cls == ObjectClass::StartEvent;
        around.hasInstantiator |= (made.flags & kInstantiate) != 0;
    } else if (made.row->role == Role::EventDefinition) {
        _document[node].nextDefinition = around.firstDefinition;
        around.firstDefinition = node;
    }
}

void Collector::takeAttributes(NodeIndex node, const XmlElement& element) {
    for (const XmlAttribute& attribute : element.attributes)
        if (isOwn(attribute.name.space)) takeAttribute(node, attribute);
}

void Collector::takeAttribute(NodeIndex node, const XmlAttribute& attribute) {
    const std::string_view name = attribute.name.local;
    const std::string_view value = attribute.value;
    if (name == "id") {
        _document[node].id = _document.texts.keep(value);
        return;
    }
    if (name == "name" || (name == "value" && _document[node].row->role == Role::Definition)) {
        _document[node].name = _document.texts.keep(value);
        return;
    }
    const AttributeRow* const row = findAttribute(name);
    if (row != nullptr && row->flag != kNoFlag && isTrue(value)) _document[node].flags |= row->flag;
    const bool isFlagOnly = row != nullptr && row->slot == Slot::None;
    if (row != nullptr && (value == row->usual || (isFlagOnly && (isTrue(value) || value == "0")))) return;
    _document.addValue(node, row == nullptr || isFlagOnly ? Slot::Further : row->slot,
                       row == nullptr ? _document.texts.keepOnce(name) : row->attribute, _document.texts.keep(value));
}

void Collector::countForeignAttributes(const XmlElement& element) {
    for (const XmlAttribute& attribute : element.attributes) {
        if (!isExtension(attribute.name.space)) continue;
        _findings.foreign(attribute.name.space, false, element.place, [&] {
            const std::string_view id = attributeOf(element, "id").value_or("");
            return concat({folded(attribute.name.local, kMaxBorrowedBytes), " of <",
                           folded(element.name.local, kMaxBorrowedBytes), id.empty() ? ">" : "> ",
                           id.empty() ? std::string() : inQuotes(id)});
        });
    }
}

void Collector::openText(const ElementRow& row, const XmlElement& element) {
    if (owner() == kNoNode) {
        _findings.leftOut(row.element, {}, element.place);
        return push(&row, kNoNode, Reading::Nothing);
    }
    _text.clear();
    takeInnerAttributes(row, element);
    push(&row, owner(), Reading::Text);
}

void Collector::closeText(const Open& open) {
    const std::string_view text = trimmed(_text);
    if (text.empty()) return;
    _document.addValue(open.owner, open.row->slot, open.row->word.empty() ? open.row->element : open.row->word,
                       _document.texts.keep(text));
}

void Collector::merge(const ElementRow& row, const XmlElement& element) {
    const NodeIndex node = owner();
    push(&row, node, Reading::Normal);
    if (node == kNoNode) return _findings.leftOut(row.element, {}, element.place);
    if (row.slot == Slot::Loop) {
        const bool isSequential = isTrue(attributeOf(element, "isSequential").value_or("false"));
        _document.addValue(node, Slot::Loop, row.element,
                           row.word == "standard" ? "standard"
                           : isSequential         ? "sequential multi-instance"
                                                  : "parallel multi-instance");
    }
    takeInnerAttributes(row, element);
}

/// Attributes of an element that is itself a value of the element around it.
void Collector::takeInnerAttributes(const ElementRow& row, const XmlElement& element) {
    for (const XmlAttribute& attribute : element.attributes) {
        const std::string_view name = attribute.name.local;
        const bool saysNothing = name == "id" || (row.slot == Slot::Loop && name == "isSequential") ||
                                 (name == "textFormat" && attribute.value == "text/plain");
        if (!isOwn(attribute.name.space) || saysNothing) continue;
        const bool isState = row.slot == Slot::State && name == "name";
        _document.addValue(owner(), isState ? Slot::State : Slot::Further,
                           _document.texts.keepOnce(concat({row.element, ".", name})),
                           _document.texts.keep(attribute.value));
    }
}

}  // namespace qor::interchange::bpmn
