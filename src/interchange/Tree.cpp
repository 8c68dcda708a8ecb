// SPDX-License-Identifier: Apache-2.0
#include "interchange/Tree.h"

#include <algorithm>
#include <new>

namespace qor::interchange {

std::uint32_t Tree::blockIndent(NodeId node) const {
    const auto found = std::lower_bound(_indents.begin(), _indents.end(), node,
                                        [](const BlockIndent& entry, NodeId wanted) { return entry.node < wanted; });
    return found != _indents.end() && found->node == node ? found->indent : 0;
}

NodeId Tree::add(NodeKind kind, Mark mark) {
    if (_size == kNoNode) throw std::bad_alloc();
    if ((_size & kChunkMask) == 0) _chunks.emplace_back(new Node[kChunkMask + 1]);
    const NodeId node = _size++;
    at(node) = {mark.line, mark.column & 0x1FFFFFFFU, static_cast<std::uint32_t>(kind) & 7U, 0, 0, node + 1};
    return node;
}

}  // namespace qor::interchange
