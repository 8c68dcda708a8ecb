// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "interchange/Tree.h"
#include "platform/QorIdentifier.h"

namespace qor::interchange {

inline constexpr std::uint32_t kNoObject = 0xFFFFFFFF;

/// Numbers under hash values, 8 bytes a slot, at most three quarters full. Who asks compares what the numbers stand
/// for.
class NumberIndex {
public:
    void clear();
    void add(std::size_t hash, std::uint32_t number);
    template <class Matches>
    [[nodiscard]] std::uint32_t* find(std::size_t hash, Matches matches) {
        if (_slots.empty()) return nullptr;
        const auto shortHash = static_cast<std::uint32_t>(hash);
        for (std::size_t at = shortHash & _mask; _slots[at].number != kNoObject; at = (at + 1) & _mask)
            if (_slots[at].hash == shortHash && matches(_slots[at].number)) return &_slots[at].number;
        return nullptr;
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = kNoObject;
    };
    void put(Slot slot);

    std::vector<Slot> _slots;
    std::size_t _mask = 0;
    std::size_t _used = 0;
};

/// The objects of one model of a file, found by the identifiers and names that relations use.
class ObjectNames {
public:
    struct Object {
        QorIdentifier id = QorNoIdentifier;  ///< none when it could not be made
        QorIdentifier cls = QorNoIdentifier;
        NodeId node = kNoNode;
        NodeId name = kNoNode;
        NodeId identifier = kNoNode;
        std::uint32_t nextOfName = kNoObject;  ///< another object of the same name, further up in the file
    };

    explicit ObjectNames(const Tree& tree) : _tree(tree) {}

    void clear();
    /// Answers the object that has the same identifier and keeps it, or kNoObject.
    std::uint32_t add(const Object& object);

    [[nodiscard]] const Object& operator[](std::uint32_t object) const { return _objects[object]; }
    [[nodiscard]] std::uint32_t findIdentifier(std::string_view identifier);
    /// The last object of the name; nextOfName leads on.
    [[nodiscard]] std::uint32_t findName(std::string_view name);
    [[nodiscard]] std::uint32_t find(QorIdentifier cls, std::string_view name);
    /// Names and identifiers, for guesses.
    [[nodiscard]] std::vector<std::string_view> words() const;

private:
    void indexByClass();

    const Tree& _tree;
    std::vector<Object> _objects;
    NumberIndex _byName;
    NumberIndex _byIdentifier;
    NumberIndex _byClassAndName;  // made when first needed
    std::uint32_t _indexedByClass = 0;
};

}  // namespace qor::interchange
