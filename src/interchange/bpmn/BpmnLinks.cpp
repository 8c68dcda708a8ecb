// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnLinks.h"

#include <algorithm>

#include "interchange/Wording.h"

namespace qor::interchange::bpmn {

namespace {

/// What may be meant by a reference of that slot.
bool fits(Slot slot, const ElementRow& row) {
    switch (slot) {
        case Slot::DefaultFlow:
            return row.role == Role::SequenceFlow;
        case Slot::ProcessRef:
            return row.role == Role::Process;
        case Slot::EventDefinitionRef:
            return row.role == Role::EventDefinition;
        case Slot::DataRef:
            return row.role == Role::DataObjectItem || row.role == Role::Definition;
        case Slot::CalledElement:
            return row.role == Role::Definition || row.role == Role::Process;
        case Slot::LaneMember:
            return true;
        default:
            return row.role == Role::Definition;
    }
}

bool isFollowed(Slot slot) {
    switch (slot) {
        case Slot::DefaultFlow:
        case Slot::ProcessRef:
        case Slot::EventDefinitionRef:
        case Slot::DataRef:
        case Slot::LaneMember:
        case Slot::MessageRef:
        case Slot::DefinitionRef:
        case Slot::CategoryRef:
        case Slot::ResourceRef:
        case Slot::CalledElement:
            return true;
        default:
            return false;
    }
}

struct ByFirst {
    bool operator()(const Pair& one, const Pair& other) const { return one.first < other.first; }
};

auto startingWith(const std::vector<Pair>& pairs, NodeIndex first) {
    return std::equal_range(pairs.begin(), pairs.end(), Pair(first, kNoNode), ByFirst());
}

/// An event says itself what its triggers say.
bool isTrigger(const Node& event, const Node& it) {
    return isEvent(event.row->family) && it.row->role == Role::EventDefinition;
}

}  // namespace

Links::Links(Document& document, Findings& findings)
    : _document(document),
      _findings(findings),
      _scopes(document.nodes.size(), kNoNode),
      _standIns(document.nodes.size(), kNoNode),
      _carriers(document.nodes.size(), kNoNode),
      _defaults(document.nodes.size(), false) {
    findScopes();
    for (NodeIndex node = 0; node < _document.size(); ++node)
        _document.forEachValue(node, [&](const Value& value) {
            if (isFollowed(value.slot)) follow(node, value);
        });
    for (NodeIndex node = 0; node < _document.size(); ++node)
        if (_document[node].row->role == Role::MessageFlow) joinByMessages(node);
    std::stable_sort(_lanes.begin(), _lanes.end(), ByFirst());
    findCarriers();
    tellUncarried();
}

void Links::findScopes() {
    for (NodeIndex node = 0; node < _document.size(); ++node) {
        const Node& it = _document[node];
        if (it.parent != kNoNode)
            _scopes[static_cast<std::size_t>(node)] = scopeOf(it.parent);
        else if (it.row->role == Role::Process || it.row->role == Role::Collaboration)
            _scopes[static_cast<std::size_t>(node)] = node;
    }
}

void Links::follow(NodeIndex node, const Value& value) {
    const NodeIndex meant = _document.find(value.text);
    if (meant == kNoNode || !fits(value.slot, *_document[meant].row)) {
        // What is called may well stand in another file.
        if (value.slot != Slot::CalledElement) tellDangling(node, value);
        return;
    }
    const Role role = _document[meant].row->role;
    switch (value.slot) {
        case Slot::DefaultFlow:
            _defaults[static_cast<std::size_t>(meant)] = true;
            break;
        case Slot::ProcessRef:
            if (_document[node].row->role == Role::Participant) joinPool(node, meant);
            break;
        case Slot::LaneMember:
            _lanes.emplace_back(meant, node);
            break;
        case Slot::DataRef:
            if (!isDrawnByReference(meant) && standsIn(node)) _standIns[static_cast<std::size_t>(meant)] = node;
            [[fallthrough]];
        default:
            if (role == Role::Definition || role == Role::EventDefinition) _ways.emplace_back(node, meant);
    }
}

/// Whether the object of such a reference is that of the data it refers to.
bool Links::standsIn(NodeIndex reference) const {
    return _document[reference].row->role == Role::Data && !_document[reference].isInside;
}

/// Whether an object or relation of its own keeps what the element says.
bool Links::isKept(NodeIndex node) const {
    const Node& it = _document[node];
    if (isRelation(it.row->role)) return true;
    return it.row->cls != ObjectClass::None && !it.isInside && !isDrawnByReference(node);
}

/// What has no object goes with the first element in the file from which a way leads to it.
void Links::findCarriers() {
    for (NodeIndex node = 0; node < _document.size(); ++node) {
        addWaysWithin(node);
        if (isDrawnByReference(node) || isKept(node)) _carriers[static_cast<std::size_t>(node)] = meantBy(node);
    }
    std::stable_sort(_ways.begin(), _ways.end(), ByFirst());
    for (const Pair& way : _ways)
        if (carrierOf(way.first) != kNoNode) carryAlong(way);
    std::sort(_carried.begin(), _carried.end());
    _ways = {};
}

void Links::carryAlong(const Pair& first) {
    const NodeIndex carrier = carrierOf(first.first);
    for (Pairs open{first}; !open.empty();) {
        const Pair way = open.back();
        open.pop_back();
        if (carrierOf(way.second) != kNoNode) continue;
        _carriers[static_cast<std::size_t>(way.second)] = carrier;
        if (!isTrigger(_document[way.first], _document[way.second])) _carried.emplace_back(carrier, way.second);
        const auto further = startingWith(_ways, way.second);
        open.insert(open.end(), further.first, further.second);
    }
}

/// What stands inside goes with what is around it; a collaboration with a pool of it, a category with one of its
/// values.
void Links::addWaysWithin(NodeIndex node) {
    const Node& it = _document[node];
    if (it.parent == kNoNode) return;
    const Role role = it.row->role;
    const bool isValue = role == Role::Definition && _document[it.parent].row->role == Role::Definition;
    if (it.isInside || role == Role::EventDefinition) _ways.emplace_back(it.parent, node);
    if (isValue || role == Role::Participant) _ways.emplace_back(node, it.parent);
}

void Links::tellUncarried() {
    for (NodeIndex node = 0; node < _document.size(); ++node) {
        const Node& it = _document[node];
        if (carrierOf(node) != kNoNode) continue;
        if (it.row->role != Role::Collaboration)
            _findings.leftOut(it.row->element, it.id.empty() ? it.name : it.id, it.place);
        else if (it.firstValue >= 0)
            _findings.warn(
                FindingKind::LostValue, it.place,
                concat({wordsFor(it), ": its ", _document.values[static_cast<std::size_t>(it.firstValue)].key,
                        " could not be kept, since it holds no pool"}));
    }
}

std::vector<NodeIndex> Links::carriedBy(NodeIndex node) const {
    const auto range = startingWith(_carried, node);
    std::vector<NodeIndex> carried;
    for (auto at = range.first; at != range.second; ++at) carried.push_back(at->second);
    return carried;
}

void Links::tellDangling(NodeIndex node, const Value& value) {
    _findings.warn(
        FindingKind::Dangling, _document[node].place,
        concat({wordsFor(_document[node]), ": nothing in this file is its ", value.key, " ", inQuotes(value.text)}));
}

/// A process belongs to the first pool that names it; its model is that of the pool.
void Links::joinPool(NodeIndex participant, NodeIndex process) {
    _pools.emplace_back(participant, process);
    _collaborations.emplace(process, scopeOf(participant));
}

/// A process may take part in a collaboration without a pool around it.
void Links::joinByMessages(NodeIndex flow) {
    const NodeIndex collaboration = scopeOf(flow);
    if (collaboration == kNoNode || _document[collaboration].row->role != Role::Collaboration) return;
    for (const Slot slot : {Slot::SourceRef, Slot::TargetRef}) {
        const NodeIndex end = _document.find(_document.valueOf(flow, slot));
        const NodeIndex scope = end == kNoNode ? kNoNode : scopeOf(end);
        if (scope != kNoNode && _document[scope].row->role == Role::Process)
            _collaborations.emplace(scope, collaboration);  // unless it has one already
    }
}

NodeIndex Links::collaborationOf(NodeIndex process) const {
    const auto at = _collaborations.find(process);
    return at == _collaborations.end() ? process : at->second;
}

NodeIndex Links::meantBy(NodeIndex node) const {
    while (_document[node].isInside) node = _document[node].parent;
    const NodeIndex standIn = _standIns[static_cast<std::size_t>(node)];
    return standIn == kNoNode ? node : standIn;
}

std::vector<NodeIndex> Links::triggersOf(NodeIndex event) const {
    std::vector<NodeIndex> triggers;
    for (NodeIndex at = _document[event].firstDefinition; at != kNoNode; at = _document[at].nextDefinition)
        triggers.push_back(at);
    std::reverse(triggers.begin(), triggers.end());
    _document.forEachValue(event, [&](const Value& value) {
        if (value.slot != Slot::EventDefinitionRef) return;
        const NodeIndex meant = _document.find(value.text);
        if (meant != kNoNode && fits(value.slot, *_document[meant].row)) triggers.push_back(meant);
    });
    return triggers;
}

std::string Links::pathOf(NodeIndex lane) const {
    std::string path;
    for (NodeIndex at = lane; at != kNoNode && _document[at].row->role == Role::Lane; at = _document[at].parent) {
        const Node& it = _document[at];
        const std::string name = folded(it.name.empty() ? it.id : it.name, kMaxBorrowedBytes);
        path = path.empty() ? name : name + " / " + path;
        if (path.size() > kMaxBorrowedBytes) break;
    }
    return path;
}

std::string Links::lanesOf(NodeIndex node) const {
    const auto range = startingWith(_lanes, node);
    if (range.first == range.second) return {};
    if (range.first + 1 == range.second) return pathOf(range.first->second);

    std::vector<NodeIndex> outer;  // outer lanes often list what their inner lanes list as well
    for (auto at = range.first; at != range.second; ++at)
        for (NodeIndex lane = _document[at->second].parent; lane != kNoNode; lane = _document[lane].parent)
            outer.push_back(lane);
    std::sort(outer.begin(), outer.end());
    std::string paths;
    for (auto at = range.first; at != range.second; ++at) {
        if (std::binary_search(outer.begin(), outer.end(), at->second)) continue;
        paths += (paths.empty() ? "" : ", ") + pathOf(at->second);
    }
    return paths;
}

std::string Links::nameMeantBy(std::string_view reference) const {
    const NodeIndex meant = _document.find(reference);
    const bool hasName = meant != kNoNode && !_document[meant].name.empty();
    return folded(hasName ? _document[meant].name : reference, kMaxBorrowedBytes);
}

}  // namespace qor::interchange::bpmn
