// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnDocument.h"

#include "interchange/Wording.h"

namespace qor::interchange::bpmn {

std::string_view Texts::keep(std::string_view text) {
    return text.empty() ? text : _arena.view(_arena.add(text), text.size());
}

std::string_view Texts::keepOnce(std::string_view text) {
    if (const auto at = _once.find(text); at != _once.end()) return at->second;
    const std::string_view kept = keep(text);
    _once.emplace(kept, kept);
    return kept;
}

void Document::addValue(NodeIndex node, Slot slot, std::string_view key, std::string_view text) {
    const auto index = static_cast<std::int32_t>(values.size());
    values.push_back({slot, -1, key, text});
    Node& owner = (*this)[node];
    (owner.lastValue < 0 ? owner.firstValue : values[static_cast<std::size_t>(owner.lastValue)].next) = index;
    owner.lastValue = index;
}

NodeIndex Document::find(std::string_view reference) const {
    if (const auto at = byId.find(reference); at != byId.end()) return at->second;
    const std::size_t colon = reference.find(':');
    if (colon == std::string_view::npos) return kNoNode;
    const auto at = byId.find(reference.substr(colon + 1));
    return at == byId.end() ? kNoNode : at->second;
}

std::string_view Document::valueOf(NodeIndex node, Slot slot) const {
    for (std::int32_t at = (*this)[node].firstValue; at >= 0; at = values[static_cast<std::size_t>(at)].next)
        if (values[static_cast<std::size_t>(at)].slot == slot) return values[static_cast<std::size_t>(at)].text;
    return {};
}

std::string folded(std::string_view text, std::size_t limit) {
    std::string result;
    bool isGap = false;
    for (const char c : text) {
        if (c == ' ' || c == '\n' || c == '\r' || c == '\t') {
            isGap = !result.empty();
            continue;
        }
        const bool startsCharacter = (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        if (startsCharacter && result.size() + 4 + (isGap ? 1 : 0) > limit) return result + "…";
        if (isGap) result += ' ';
        isGap = false;
        result += c;
    }
    return result;
}

std::string wordsFor(const Node& node) {
    if (!node.id.empty()) return concat({"<", node.row->element, "> ", inQuotes(node.id)});
    if (!node.name.empty())
        return concat({"<", node.row->element, "> named ", inQuotes(folded(node.name, kMaxBorrowedBytes))});
    return concat({"<", node.row->element, "> without an id"});
}

}  // namespace qor::interchange::bpmn
