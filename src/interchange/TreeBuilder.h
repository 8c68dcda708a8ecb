// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "interchange/Findings.h"
#include "interchange/Tree.h"

namespace qor::interchange {

/// Takes the events of a YAML or JSON parser and makes the tree of them; the rules that hold for both stand here:
/// nesting, keys, zero bytes. Operations answer false when reading should stop.
class TreeBuilder {
public:
    TreeBuilder(Tree& tree, Findings& findings) : _tree(tree), _findings(findings) {}

    bool open(NodeKind kind, Mark mark);
    bool close();
    /// `indent` is that of a literal block.
    bool text(NodeKind kind, std::string_view text, Mark mark, std::uint32_t indent = 0);
    /// In place of something that was complained about.
    bool bad(Mark mark);
    /// Closes what is open, for a text that breaks off.
    void finish();

private:
    struct Level {
        NodeId node;
        std::uint32_t children;
        bool withinKey;  // already complained about
    };
    static constexpr std::size_t kMaxDepth = 64;

    NodeId add(NodeKind kind, Mark mark);
    [[nodiscard]] bool atKey() const;
    void seal(const Level& level);
    void refuseEqualKeys(NodeId mapping);
    void refuseKey(NodeId first, NodeId again);

    Tree& _tree;
    Findings& _findings;
    std::vector<Level> _levels;
    std::vector<NodeId> _keys;  // scratch
};

}  // namespace qor::interchange
