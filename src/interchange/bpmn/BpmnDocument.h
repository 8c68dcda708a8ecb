// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "interchange/TextArena.h"
#include "interchange/bpmn/BpmnElements.h"
#include "interchange/bpmn/BpmnPlace.h"

namespace qor::interchange::bpmn {

/// Keeps texts for as long as it lives.
class Texts {
public:
    std::string_view keep(std::string_view text);
    /// The same, for texts that occur again and again.
    std::string_view keepOnce(std::string_view text);

private:
    TextArena _arena;
    std::unordered_map<std::string_view, std::string_view> _once;
};

using NodeIndex = std::int32_t;
inline constexpr NodeIndex kNoNode = -1;

/// A value of an element, in the order of the file. `key` is what BPMN calls it.
struct Value {
    Slot slot = Slot::None;
    std::int32_t next = -1;
    std::string_view key;
    std::string_view text;
};

/// An element that is more than a value of another one. Parents stand before their contents.
struct Node {
    const ElementRow* row = nullptr;
    NodeIndex parent = kNoNode;
    Place place;
    std::string_view id;
    std::string_view name;
    std::string_view bounds;  ///< where the diagram draws it: left, top, width, height as written
    std::int32_t firstValue = -1;
    std::int32_t lastValue = -1;
    NodeIndex firstDefinition = kNoNode;  ///< of an event: what triggers it, the last one first
    NodeIndex nextDefinition = kNoNode;
    std::uint8_t flags = kNoFlag;
    bool isInside = false;      ///< data of the inside of an activity: its identifier stands for the activity
    bool hasFlowNodes = false;  ///< of what it contains itself
    bool hasStartEvent = false;
    bool hasInstantiator = false;
};

/// The contents of a file, before anything is made of them: references may point forward.
struct Document {
    Texts texts;
    std::vector<Node> nodes;
    std::vector<Value> values;
    std::unordered_map<std::string_view, NodeIndex> byId;

    void addValue(NodeIndex node, Slot slot, std::string_view key, std::string_view text);
    /// The element that a reference means; a prefix of a qualified name is passed over. None when there is none.
    [[nodiscard]] NodeIndex find(std::string_view reference) const;
    /// The first value of a node in a slot; empty when there is none.
    [[nodiscard]] std::string_view valueOf(NodeIndex node, Slot slot) const;

    template <class Visit>
    void forEachValue(NodeIndex node, const Visit& visit) const {
        for (std::int32_t at = nodes[static_cast<std::size_t>(node)].firstValue; at >= 0;) {
            const Value& value = values[static_cast<std::size_t>(at)];
            visit(value);
            at = value.next;
        }
    }

    [[nodiscard]] Node& operator[](NodeIndex node) { return nodes[static_cast<std::size_t>(node)]; }
    [[nodiscard]] const Node& operator[](NodeIndex node) const { return nodes[static_cast<std::size_t>(node)]; }
    [[nodiscard]] NodeIndex size() const { return static_cast<NodeIndex>(nodes.size()); }
};

inline constexpr std::size_t kMaxBorrowedBytes = 200;  ///< of a text that many elements may refer to

/// Line breaks and runs of blanks become one blank; at most `limit` bytes, cut between characters.
[[nodiscard]] std::string folded(std::string_view text, std::size_t limit);

/// `<userTask> "t1"`, for messages.
[[nodiscard]] std::string wordsFor(const Node& node);

}  // namespace qor::interchange::bpmn
