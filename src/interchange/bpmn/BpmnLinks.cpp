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

}  // namespace

Links::Links(Document& document, Findings& findings)
    : _document(document),
      _findings(findings),
      _scopes(document.nodes.size(), kNoNode),
      _standIns(document.nodes.size(), kNoNode),
      _referrers(document.nodes.size(), kNoNode),
      _defaults(document.nodes.size(), false) {
    findScopes();
    for (NodeIndex node = 0; node < _document.size(); ++node)
        _document.forEachValue(node, [&](const Value& value) {
            if (isFollowed(value.slot)) follow(node, value);
        });
    for (NodeIndex node = 0; node < _document.size(); ++node)
        if (_document[node].row->role == Role::MessageFlow) joinByMessages(node);
    std::stable_sort(_lanes.begin(), _lanes.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
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
    Node& it = _document[meant];
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
            if (!isDrawnByReference(meant)) _standIns[static_cast<std::size_t>(meant)] = node;
            [[fallthrough]];
        default:
            if (it.row->role == Role::Process) break;
            it.used = true;
            if (_referrers[static_cast<std::size_t>(meant)] == kNoNode && value.slot != Slot::DataRef)
                _referrers[static_cast<std::size_t>(meant)] = node;
    }
}

/// The element whose object or relation keeps what this one says of itself; none when it has one of its own, or when
/// nothing is there to keep it.
NodeIndex Links::carrierOf(NodeIndex node) const {
    const Node& it = _document[node];
    if (it.isInside) return meantBy(node);
    if (it.row->role != Role::Definition) return kNoNode;
    constexpr int kMostSteps = 8;  // definitions may refer to each other in a circle
    NodeIndex at = node;
    for (int step = 0; at != kNoNode && step < kMostSteps; ++step) {
        const Role role = _document[at].row->role;
        const bool isInEvent = role == Role::EventDefinition && _document[at].parent != kNoNode;
        if (role != Role::Definition && role != Role::EventDefinition) return at;
        at = isInEvent ? _document[at].parent : _referrers[static_cast<std::size_t>(at)];
    }
    return kNoNode;
}

void Links::findCarriers() {
    for (NodeIndex node = 0; node < _document.size(); ++node) {
        const Node& it = _document[node];
        // A category is used where one of its values is.
        const bool isValueOfCategory = it.used && it.row->role == Role::Definition && it.parent != kNoNode;
        if (!isValueOfCategory || _document[it.parent].used) continue;
        _document[it.parent].used = true;
        _referrers[static_cast<std::size_t>(it.parent)] = node;
    }
    std::vector<NodeIndex> ofCollaborations(_document.nodes.size(), kNoNode);
    for (NodeIndex node = _document.size(); node-- > 0;)
        if (const Node& it = _document[node]; it.row->role == Role::Participant)
            ofCollaborations[static_cast<std::size_t>(it.parent)] = node;
    for (NodeIndex node = 0; node < _document.size(); ++node) {
        const bool isCollaboration = _document[node].row->role == Role::Collaboration;
        const NodeIndex carrier = isCollaboration ? ofCollaborations[static_cast<std::size_t>(node)] : carrierOf(node);
        if (carrier != kNoNode) _carried.emplace_back(carrier, node);
    }
    std::sort(_carried.begin(), _carried.end());
}

void Links::tellUncarried() {
    std::vector<bool> isCarried(_document.nodes.size(), false);
    for (const auto& [carrier, node] : _carried) isCarried[static_cast<std::size_t>(node)] = true;
    for (NodeIndex node = 0; node < _document.size(); ++node) {
        const Node& it = _document[node];
        const bool isBeside =
            it.row->role == Role::Definition || (it.row->role == Role::EventDefinition && it.parent == kNoNode);
        if (isBeside && !it.used) _findings.leftOut(it.row->element, it.id.empty() ? it.name : it.id, it.place);
        if (it.row->role == Role::Collaboration && it.firstValue >= 0 && !isCarried[static_cast<std::size_t>(node)])
            _findings.warn(
                FindingKind::LostValue, it.place,
                concat({wordsFor(it), ": its ", _document.values[static_cast<std::size_t>(it.firstValue)].key,
                        " could not be kept, since it holds no pool"}));
    }
}

std::vector<NodeIndex> Links::carriedBy(NodeIndex node) const {
    std::vector<NodeIndex> carried;
    for (auto at = std::lower_bound(_carried.begin(), _carried.end(), std::pair(node, NodeIndex{0}));
         at != _carried.end() && at->first == node; ++at)
        carried.push_back(at->second);
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
    if (_document[process].used) return;
    _document[process].used = true;
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
    const auto range = std::equal_range(_lanes.begin(), _lanes.end(), std::pair(node, kNoNode),
                                        [](const auto& a, const auto& b) { return a.first < b.first; });
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
