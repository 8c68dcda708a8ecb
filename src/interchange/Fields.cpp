// SPDX-License-Identifier: Apache-2.0
#include "interchange/Fields.h"

#include <algorithm>
#include <vector>

namespace qor::interchange {
namespace {

std::string_view described(NodeKind kind) {
    switch (kind) {
        case NodeKind::Sequence:
            return "a list";
        case NodeKind::Mapping:
            return "a mapping";
        case NodeKind::Null:
            return "nothing";
        default:
            return "a text";
    }
}

std::string_view described(Shape shape) {
    switch (shape) {
        case Shape::Text:
            return "a text";
        case Shape::Flag:
            return "true or false";
        case Shape::List:
            return "a list";
        case Shape::Texts:
            return "a list of texts";
        case Shape::Values:
            return "a mapping of names to values";
        case Shape::Mapping:
            return "a mapping";
        case Shape::Reference:
            return "a name";
        case Shape::Way:
            return "a name or a list of names";
    }
    return {};
}

bool hasShape(const Tree& tree, NodeId node, Shape shape) {
    const NodeKind kind = tree.kind(node);
    switch (shape) {
        case Shape::Text:
            return tree.isText(node);
        case Shape::Flag:
            return tree.isText(node) && (tree.text(node) == "true" || tree.text(node) == "false");
        case Shape::List:
        case Shape::Texts:
            return kind == NodeKind::Sequence;
        case Shape::Values:
        case Shape::Mapping:
            return kind == NodeKind::Mapping;
        case Shape::Reference:
            return tree.isText(node) || kind == NodeKind::Mapping;
        case Shape::Way:
            return tree.isText(node) || kind == NodeKind::Sequence;
    }
    return false;
}

class KeyReader {
public:
    KeyReader(Reading& reading, NodeId mapping, std::string_view what, std::span<const Key> keys,
              std::span<NodeId> values)
        : _reading(reading), _tree(reading.tree), _mapping(mapping), _what(what), _keys(keys), _values(values) {
        std::fill(_values.begin(), _values.end(), kNoNode);
    }

    bool read() {
        if (_tree.kind(_mapping) == NodeKind::Bad) return false;
        if (_tree.kind(_mapping) != NodeKind::Mapping) {
            _reading.error(_mapping, concat({_what, " must be a mapping, not ", described(_tree.kind(_mapping))}));
            return false;
        }
        forEachPair(_tree, _mapping, [this](NodeId key, NodeId value) { take(key, value); });
        for (std::size_t i = 0; i < _keys.size(); ++i)
            if (_keys[i].required && _values[i] == kNoNode && !_refused[i])
                fault(_mapping, concat({_what, " needs the key ", inQuotes(_keys[i].name)}));
        return _complete;
    }

private:
    void fault(NodeId node, std::string text) {
        _reading.error(node, std::move(text));
        _complete = false;
    }

    void take(NodeId key, NodeId value) {
        const std::string_view name = _tree.text(key);
        const auto found = std::find_if(_keys.begin(), _keys.end(), [name](const Key& k) { return k.name == name; });
        if (found == _keys.end()) {
            std::vector<std::string_view> names;
            for (const Key& known : _keys) names.push_back(known.name);
            fault(key, concat({_what, " has no key ", inQuotes(name), _reading.guesser.hint(name, names)}));
            return;
        }
        const auto index = static_cast<std::size_t>(found - _keys.begin());
        if (_values[index] != kNoNode || _refused[index]) return;  // a key that stands twice is already reported
        if (_tree.kind(value) == NodeKind::Null) {
            if (found->required) refuse(index, value, concat({"the key ", inQuotes(name), " has no value"}));
        } else if (fits(index, value)) {
            _values[index] = value;
        }
    }

    void refuse(std::size_t index, NodeId node, std::string text) {
        _refused[index] = true;
        fault(node, std::move(text));
    }

    bool fits(std::size_t index, NodeId value) {
        const Key& key = _keys[index];
        if (_tree.kind(value) == NodeKind::Bad) {
            _refused[index] = true;
            _complete = false;
            return false;
        }
        if (!hasShape(_tree, value, key.shape)) {
            refuse(index, value,
                   concat({inQuotes(key.name), " must be ", described(key.shape), ", not ",
                           key.shape == Shape::Flag && _tree.isText(value) ? inQuotes(_tree.text(value))
                                                                           : described(_tree.kind(value))}));
            return false;
        }
        if (key.shape == Shape::Texts)
            forEachItem(_tree, value, [&](NodeId item) {
                if (!_tree.isText(item)) refuseInside(item, concat({"an item of ", inQuotes(key.name)}));
            });
        return true;
    }

    void refuseInside(NodeId node, const std::string& what) {
        _complete = false;
        if (_tree.kind(node) != NodeKind::Bad)
            _reading.error(node, concat({what, " must be a text, not ", described(_tree.kind(node))}));
    }

    static constexpr std::size_t kMostKeys = 16;

    Reading& _reading;
    const Tree& _tree;
    NodeId _mapping;
    std::string_view _what;
    std::span<const Key> _keys;
    std::span<NodeId> _values;
    std::array<bool, kMostKeys> _refused{};
    bool _complete = true;
};

}  // namespace

bool readKeys(Reading& reading, NodeId mapping, std::string_view what, std::span<const Key> keys,
              std::span<NodeId> values) {
    return KeyReader(reading, mapping, what, keys, values).read();
}

}  // namespace qor::interchange
