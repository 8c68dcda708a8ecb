// SPDX-License-Identifier: Apache-2.0
// One index over all names of a repository.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/QorIdentifier.h"

namespace qor::embedded {

// Where a name must be unique: two numbers, of which the first is an identifier (a model, a part, a class ...) and the
// second an identifier or one of the tags below.
struct NameScope {
    QorIdentifier owner;
    QorIdentifier within;
};

namespace nameTag {
inline constexpr QorIdentifier kLibrary = -1;
inline constexpr QorIdentifier kClass = -2;
inline constexpr QorIdentifier kRelationClass = -3;
inline constexpr QorIdentifier kModelType = -4;
inline constexpr QorIdentifier kAttribute = -5;
inline constexpr QorIdentifier kThread = -6;
inline constexpr QorIdentifier kVersion = -7;
inline constexpr QorIdentifier kGroup = -8;
inline constexpr QorIdentifier kUser = -9;
inline constexpr QorIdentifier kUserGroup = -10;
}  // namespace nameTag

// Hash to identifiers, 8 bytes a slot, at most three quarters full. Who asks compares the names themselves.
class NameIndex {
public:
    [[nodiscard]] static std::uint32_t hashOf(NameScope scope, std::string_view name) noexcept;

    // Makes `add` free of failure for that many names.
    void makeRoom(std::size_t names);
    void add(std::uint32_t hash, QorIdentifier id) noexcept;
    void remove(std::uint32_t hash, QorIdentifier id) noexcept;

    // The first identifier under the hash for which `matches(id)` holds, or QorNoIdentifier.
    template <class Matches>
    [[nodiscard]] QorIdentifier find(std::uint32_t hash, Matches matches) const {
        if (_slots.empty()) return QorNoIdentifier;
        for (std::size_t at = hash & _mask; _slots[at].id != kFree; at = (at + 1) & _mask)
            if (_slots[at].hash == hash && matches(_slots[at].id)) return _slots[at].id;
        return QorNoIdentifier;
    }

    [[nodiscard]] std::size_t bytes() const { return _slots.capacity() * sizeof(Slot); }

private:
    static constexpr QorIdentifier kFree = 0;
    struct Slot {
        std::uint32_t hash = 0;
        QorIdentifier id = kFree;
    };

    std::vector<Slot> _slots;
    std::size_t _mask = 0;
    std::size_t _used = 0;
};

}  // namespace qor::embedded
