// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "interchange/Findings.h"
#include "interchange/Tree.h"
#include "interchange/Wording.h"

namespace qor::interchange {

/// What a value of a document may be.
enum class Shape : std::uint8_t {
    Text,
    Flag,       ///< true or false
    List,       ///< of anything
    Texts,      ///< a list of texts
    Values,     ///< a mapping whose keys are not fixed
    Mapping,    ///< to be read with a table of its own
    Reference,  ///< a name, or a mapping that tells more
    Way,        ///< a name, or a list of names
};

/// One key of a mapping.
struct Key {
    std::string_view name;
    Shape shape = Shape::Text;
    bool required = false;
};

/// What reading a document by tables of keys needs at every step.
struct Reading {
    const Tree& tree;
    Findings& findings;
    Guesser guesser;

    /// Says nothing about a list or mapping that the text breaks off in: it is not all there.
    void error(NodeId node, std::string text) {
        if (!tree.isCut(node)) findings.error(tree.mark(node), std::move(text));
    }
    /// An error about something that is not in the document; none when it may have stood behind the text's end.
    void missing(NodeId node, std::string text) {
        if (!tree.breaksOff()) error(node, std::move(text));
    }
};

/// Checks a mapping against a table of keys and finds the values, kNoNode for what is absent or empty. `what` names the
/// thing in messages ("a class"). False, after every fault was reported, when a key is missing or a value is of the
/// wrong kind; what is right is found all the same.
bool readKeys(Reading& reading, NodeId mapping, std::string_view what, std::span<const Key> keys,
              std::span<NodeId> values);

/// The values of a mapping's keys, told by their position in the table.
template <std::size_t N>
class Fields {
public:
    Fields(Reading& reading, NodeId mapping, std::string_view what, const std::array<Key, N>& keys)
        : _tree(reading.tree), _complete(readKeys(reading, mapping, what, keys, _values)) {}

    /// No fault was found in the mapping.
    [[nodiscard]] bool complete() const { return _complete; }
    [[nodiscard]] NodeId operator[](std::size_t key) const { return _values[key]; }
    [[nodiscard]] bool has(std::size_t key) const { return _values[key] != kNoNode; }
    [[nodiscard]] std::string_view text(std::size_t key) const {
        return has(key) ? _tree.text(_values[key]) : std::string_view{};
    }
    [[nodiscard]] bool flag(std::size_t key) const { return text(key) == "true"; }

private:
    const Tree& _tree;
    std::array<NodeId, N> _values{};
    bool _complete;
};

/// Runs over the children of a list; nothing happens without one.
template <class Visit>
void forEachItem(const Tree& tree, NodeId list, Visit visit) {
    if (list == kNoNode || tree.childCount(list) == 0) return;
    for (NodeId item = tree.first(list); item != tree.next(list); item = tree.next(item)) visit(item);
}

/// Runs over the pairs of a mapping whose keys are texts.
template <class Visit>
void forEachPair(const Tree& tree, NodeId mapping, Visit visit) {
    if (mapping == kNoNode || tree.childCount(mapping) == 0) return;
    for (NodeId key = tree.first(mapping); key != tree.next(mapping); key = tree.next(tree.next(key)))
        if (tree.isText(key)) visit(key, tree.next(key));
}

}  // namespace qor::interchange
