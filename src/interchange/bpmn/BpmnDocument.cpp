// SPDX-License-Identifier: Apache-2.0
#include "interchange/bpmn/BpmnDocument.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "interchange/bpmn/BpmnFindings.h"

namespace qor::interchange::bpmn {

namespace {

constexpr std::size_t kBlockBytes = std::size_t{256} << 10;

}  // namespace

std::string_view Texts::keep(std::string_view text) {
    if (text.empty()) return {};
    if (text.size() > _left) {
        _left = std::max(kBlockBytes, text.size());
        _blocks.push_back(std::make_unique<char[]>(_left));
        _at = _blocks.back().get();
    }
    std::memcpy(_at, text.data(), text.size());
    const std::string_view kept(_at, text.size());
    _at += text.size();
    _left -= text.size();
    return kept;
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

std::string wordsFor(const Node& node) {
    if (!node.id.empty()) return fmt::format("<{}> \"{}\"", node.row->element, shortened(node.id));
    if (!node.name.empty()) return fmt::format("<{}> named \"{}\"", node.row->element, shortened(node.name));
    return fmt::format("<{}> without an id", node.row->element);
}

}  // namespace qor::interchange::bpmn
