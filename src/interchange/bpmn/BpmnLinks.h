// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "interchange/bpmn/BpmnDocument.h"
#include "interchange/bpmn/BpmnFindings.h"

namespace qor::interchange::bpmn {

using Pair = std::pair<NodeIndex, NodeIndex>;

/// Who belongs to whom across the file. Indexed by node where nothing else is said.
class Links {
public:
    /// Follows every reference except the ends of relations; tells those that lead to nothing.
    Links(Document& document, Findings& findings);

    /// The collaboration or process at the top, the one that a model is made of; none for what stands beside them.
    [[nodiscard]] NodeIndex scopeOf(NodeIndex node) const { return _scopes[static_cast<std::size_t>(node)]; }
    /// The collaboration that a process takes part in, or the process itself when it takes part in none.
    [[nodiscard]] NodeIndex collaborationOf(NodeIndex process) const;
    /// Whose object is meant by a reference to the node: that of an activity for its inner data, that of a reference
    /// for a data object.
    [[nodiscard]] NodeIndex meantBy(NodeIndex node) const;
    /// Whether a data object is drawn by references and so is no object itself.
    [[nodiscard]] bool isDrawnByReference(NodeIndex node) const {
        return _standIns[static_cast<std::size_t>(node)] != kNoNode;
    }
    /// What triggers an event, in the order of the file.
    [[nodiscard]] std::vector<NodeIndex> triggersOf(NodeIndex event) const;
    /// The paths of the innermost lanes that an element lies in, outer lanes first ("Sales / Desk").
    [[nodiscard]] std::string lanesOf(NodeIndex node) const;
    /// Whether a sequence flow is the default one of the element that it leaves.
    [[nodiscard]] bool isDefault(NodeIndex flow) const { return _defaults[static_cast<std::size_t>(flow)]; }
    /// The name of what a reference means, or the reference itself when it has none.
    [[nodiscard]] std::string nameMeantBy(std::string_view reference) const;
    /// The element whose object or relation keeps what an element says of itself, which is often the element itself;
    /// none when there is nothing to keep it.
    [[nodiscard]] NodeIndex carrierOf(NodeIndex node) const { return _carriers[static_cast<std::size_t>(node)]; }
    /// Elements without an object, whose details this element's object or relation keeps as further ones, in the file's
    /// order.
    [[nodiscard]] std::vector<NodeIndex> carriedBy(NodeIndex node) const;
    /// The process that each pool with one holds: participant and process.
    [[nodiscard]] const std::vector<Pair>& pools() const { return _pools; }

private:
    using Pairs = std::vector<Pair>;  // looked up by the first

    void findScopes();
    void follow(NodeIndex node, const Value& value);
    void tellDangling(NodeIndex node, const Value& value);
    void joinPool(NodeIndex participant, NodeIndex process);
    void joinByMessages(NodeIndex flow);
    [[nodiscard]] bool standsIn(NodeIndex reference) const;
    [[nodiscard]] bool isKept(NodeIndex node) const;
    void findCarriers();
    void addWaysWithin(NodeIndex node);
    void carryAlong(const Pair& first);
    void tellUncarried();
    [[nodiscard]] std::string pathOf(NodeIndex lane) const;

    Document& _document;
    Findings& _findings;
    std::vector<NodeIndex> _scopes;
    std::vector<NodeIndex> _standIns;
    std::vector<NodeIndex> _carriers;
    std::vector<bool> _defaults;
    Pairs _ways;     // from an element to another whose details may go where its own go
    Pairs _carried;  // carrier and element
    Pairs _lanes;    // element and lane
    std::vector<Pair> _pools;
    std::unordered_map<NodeIndex, NodeIndex> _collaborations;  // by process
};

}  // namespace qor::interchange::bpmn
