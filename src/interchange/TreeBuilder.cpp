// SPDX-License-Identifier: Apache-2.0
#include "interchange/TreeBuilder.h"

#include <algorithm>

#include "interchange/Format.h"
#include "interchange/Wording.h"

namespace qor::interchange {

bool TreeBuilder::atKey() const {
    return !_levels.empty() && _tree.kind(_levels.back().node) == NodeKind::Mapping && _levels.back().children % 2 == 0;
}

NodeId TreeBuilder::add(NodeKind kind, Mark mark) {
    if (!_levels.empty()) ++_levels.back().children;
    return _tree.add(kind, mark);
}

bool TreeBuilder::open(NodeKind kind, Mark mark) {
    if (_levels.size() == kMaxDepth) {
        _findings.error(mark, concat({"nested deeper than ", std::to_string(kMaxDepth), " levels"}));
        return false;
    }
    const bool isKey = atKey();
    const bool withinKey = !_levels.empty() && _levels.back().withinKey;
    if (isKey && !withinKey) _findings.error(mark, "a key must be a text");
    const NodeId node = add(kind, mark);
    _levels.push_back({node, 0, withinKey || isKey});
    return !_findings.tooMany(mark);
}

bool TreeBuilder::close() {
    const Level level = _levels.back();
    _levels.pop_back();
    seal(level);
    if (_tree.kind(level.node) == NodeKind::Mapping) refuseEqualKeys(level.node);
    return !_findings.tooMany(_tree.mark(level.node));
}

void TreeBuilder::seal(const Level& level) {
    _tree.at(level.node).count = level.children;
    _tree.at(level.node).end = _tree._size;
}

bool TreeBuilder::text(NodeKind kind, std::string_view text, Mark mark, std::uint32_t indent) {
    if (text.size() > kMaxStretch) {
        _findings.error(mark, "a text of more than 16 MiB");
        return false;
    }
    if (text.find('\0') != std::string_view::npos) {
        _findings.error(mark, "the text holds a zero byte, which cannot be kept");
        return bad(mark);
    }
    if (text.empty() && atKey()) {
        _findings.error(mark, "a key is missing");
        return bad(mark);
    }
    const NodeId node = add(kind, mark);
    if (kind == NodeKind::Null) return !_findings.tooMany(mark);
    _tree.at(node).text = _tree._texts.add(text);
    _tree.at(node).count = static_cast<std::uint32_t>(text.size());
    if (kind == NodeKind::Block) _tree._indents.push_back({node, indent});
    return !_findings.tooMany(mark);
}

bool TreeBuilder::bad(Mark mark) {
    add(NodeKind::Bad, mark);
    return !_findings.tooMany(mark);
}

void TreeBuilder::finish() {
    _tree._breaksOff = true;
    while (!_levels.empty()) {
        if (_tree.kind(_levels.back().node) == NodeKind::Mapping && !atKey()) add(NodeKind::Bad, {});
        seal(_levels.back());
        _levels.pop_back();
    }
}

void TreeBuilder::refuseKey(NodeId first, NodeId again) {
    _findings.error(_tree.mark(again),
                    concat({"the key ", inQuotes(_tree.text(again)), " stands here twice, first at line ",
                            std::to_string(_tree.mark(first).line)}));
}

void TreeBuilder::refuseEqualKeys(NodeId mapping) {
    constexpr std::size_t kFewKeys = 8;
    _keys.clear();
    for (NodeId key = _tree.first(mapping); key != _tree.next(mapping); key = _tree.next(_tree.next(key)))
        if (_tree.isText(key)) _keys.push_back(key);

    if (_keys.size() <= kFewKeys) {
        for (std::size_t i = 1; i < _keys.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                if (_tree.text(_keys[i]) == _tree.text(_keys[j])) {
                    refuseKey(_keys[j], _keys[i]);
                    break;
                }
        return;
    }
    std::stable_sort(_keys.begin(), _keys.end(),
                     [this](NodeId one, NodeId other) { return _tree.text(one) < _tree.text(other); });
    for (std::size_t i = 1, first = 0; i < _keys.size(); ++i) {
        if (_tree.text(_keys[i]) == _tree.text(_keys[first]))
            refuseKey(_keys[first], _keys[i]);
        else
            first = i;
    }
}

}  // namespace qor::interchange
