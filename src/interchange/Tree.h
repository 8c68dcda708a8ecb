// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "interchange/TextArena.h"

namespace qor::interchange {

/// A place in a text, both from 1, the column in bytes.
struct Mark {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

enum class NodeKind : std::uint8_t {
    Null,     ///< nothing written, or JSON null
    Plain,    ///< a text that stands in the file as it is
    Quoted,   ///< the same behind a quotation mark
    Escaped,  ///< a text that is written in another way than it reads, as by escapes or by folded lines
    Block,    ///< a literal block, line for line
    Sequence,
    Mapping,  ///< children are keys and values in turn
    Bad,      ///< something that was already complained about
};

using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = 0xFFFFFFFF;

/// A document as a tree of 20 bytes a node, in the order of the file: a node's subtree follows it. Node 0 is the root.
class Tree {
public:
    [[nodiscard]] bool empty() const { return _size == 0; }
    [[nodiscard]] NodeKind kind(NodeId node) const { return static_cast<NodeKind>(at(node).kind); }
    [[nodiscard]] bool isText(NodeId node) const {
        return kind(node) >= NodeKind::Plain && kind(node) <= NodeKind::Block;
    }
    [[nodiscard]] Mark mark(NodeId node) const { return {at(node).line, at(node).column}; }
    /// Empty for what is no text.
    [[nodiscard]] std::string_view text(NodeId node) const {
        return isText(node) ? _texts.view(at(node).text, at(node).count) : std::string_view{};
    }
    /// Children of a sequence, keys and values of a mapping.
    [[nodiscard]] std::uint32_t childCount(NodeId node) const {
        return kind(node) == NodeKind::Sequence || kind(node) == NodeKind::Mapping ? at(node).count : 0;
    }
    /// Children are first(n), next(first(n)) ... up to, and without, next(n).
    [[nodiscard]] NodeId first(NodeId node) const { return node + 1; }
    [[nodiscard]] NodeId next(NodeId node) const { return at(node).end; }
    [[nodiscard]] bool isLast(NodeId node) const { return next(node) == _size; }
    /// The text broke off, so that what is not there may have stood behind.
    [[nodiscard]] bool breaksOff() const { return _breaksOff; }
    /// A list or mapping that the end of such a text may have cut.
    [[nodiscard]] bool isCut(NodeId node) const {
        return _breaksOff && isLast(node) && (kind(node) == NodeKind::Sequence || kind(node) == NodeKind::Mapping);
    }
    /// How far the lines of a literal block are indented in the file.
    [[nodiscard]] std::uint32_t blockIndent(NodeId node) const;

private:
    friend class TreeBuilder;
    struct Node {
        std::uint32_t line;
        std::uint32_t column : 29;
        std::uint32_t kind : 3;
        std::uint32_t text;
        std::uint32_t count;  // bytes of a text, children of anything else
        std::uint32_t end;    // the node behind the subtree
    };
    struct BlockIndent {
        NodeId node;
        std::uint32_t indent;
    };
    static constexpr unsigned kChunkBits = 8;
    static constexpr std::uint32_t kChunkMask = (1U << kChunkBits) - 1;

    [[nodiscard]] const Node& at(NodeId node) const { return _chunks[node >> kChunkBits][node & kChunkMask]; }
    [[nodiscard]] Node& at(NodeId node) { return _chunks[node >> kChunkBits][node & kChunkMask]; }
    NodeId add(NodeKind kind, Mark mark);

    std::vector<std::unique_ptr<Node[]>> _chunks;
    NodeId _size = 0;
    bool _breaksOff = false;
    TextArena _texts;
    std::vector<BlockIndent> _indents;  // ascending
};

}  // namespace qor::interchange
