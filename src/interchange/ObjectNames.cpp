// SPDX-License-Identifier: Apache-2.0
#include "interchange/ObjectNames.h"

#include <functional>

namespace qor::interchange {
namespace {

std::size_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

std::size_t hashOf(QorIdentifier cls, std::string_view name) {
    return hashOf(name) + static_cast<std::size_t>(static_cast<std::uint32_t>(cls)) * 0x9E3779B97F4A7C15U;
}

}  // namespace

void NumberIndex::clear() {
    _slots.clear();
    _mask = 0;
    _used = 0;
}

void NumberIndex::add(std::size_t hash, std::uint32_t number) {
    constexpr std::size_t kFirstSize = 64;
    if (_used + 1 > _slots.size() / 4 * 3) {
        std::vector<Slot> old(_slots.empty() ? kFirstSize : _slots.size() * 2);
        old.swap(_slots);
        _mask = _slots.size() - 1;
        for (const Slot& slot : old)
            if (slot.number != kNoObject) put(slot);
    }
    put({static_cast<std::uint32_t>(hash), number});
    ++_used;
}

void NumberIndex::put(Slot slot) {
    std::size_t at = slot.hash & _mask;
    while (_slots[at].number != kNoObject) at = (at + 1) & _mask;
    _slots[at] = slot;
}

void ObjectNames::clear() {
    _objects.clear();
    _byName.clear();
    _byIdentifier.clear();
    _byClassAndName.clear();
    _indexedByClass = 0;
}

std::uint32_t ObjectNames::add(const Object& object) {
    const auto number = static_cast<std::uint32_t>(_objects.size());
    const std::string_view name = object.name == kNoNode ? std::string_view{} : _tree.text(object.name);
    const std::string_view identifier =
        object.identifier == kNoNode ? std::string_view{} : _tree.text(object.identifier);
    _objects.push_back(object);

    if (!name.empty()) {
        std::uint32_t* const last =
            _byName.find(hashOf(name), [&](std::uint32_t other) { return _tree.text(_objects[other].name) == name; });
        if (last == nullptr) {
            _byName.add(hashOf(name), number);
        } else {
            _objects.back().nextOfName = *last;
            *last = number;
        }
    }
    if (identifier.empty()) return kNoObject;
    const std::uint32_t holder = findIdentifier(identifier);
    if (holder == kNoObject) _byIdentifier.add(hashOf(identifier), number);
    return holder;
}

std::uint32_t ObjectNames::findIdentifier(std::string_view identifier) {
    const std::uint32_t* const found = _byIdentifier.find(hashOf(identifier), [&](std::uint32_t object) {
        return _tree.text(_objects[object].identifier) == identifier;
    });
    return found == nullptr ? kNoObject : *found;
}

std::uint32_t ObjectNames::findName(std::string_view name) {
    const std::uint32_t* const found =
        _byName.find(hashOf(name), [&](std::uint32_t object) { return _tree.text(_objects[object].name) == name; });
    return found == nullptr ? kNoObject : *found;
}

void ObjectNames::indexByClass() {
    for (; _indexedByClass < _objects.size(); ++_indexedByClass) {
        const Object& object = _objects[_indexedByClass];
        if (object.name != kNoNode) _byClassAndName.add(hashOf(object.cls, _tree.text(object.name)), _indexedByClass);
    }
}

std::uint32_t ObjectNames::find(QorIdentifier cls, std::string_view name) {
    indexByClass();
    const std::uint32_t* const found = _byClassAndName.find(hashOf(cls, name), [&](std::uint32_t object) {
        return _objects[object].cls == cls && _tree.text(_objects[object].name) == name;
    });
    return found == nullptr ? kNoObject : *found;
}

std::vector<std::string_view> ObjectNames::words() const {
    std::vector<std::string_view> words;
    for (const Object& object : _objects)
        for (const NodeId node : {object.name, object.identifier})
            if (node != kNoNode) words.push_back(_tree.text(node));
    return words;
}

}  // namespace qor::interchange
