// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/QorUserGroupID.h"

namespace qor::admin {

/// Numbers user groups from 0 in the order in which they first appear. A table of open places, since every membership
/// of every user passes through here.
class GroupNumbers {
public:
    GroupNumbers() : _slots(kFirstSlots) {}

    /// The group's number; a new group gets the next one. Amortised O(1).
    std::size_t of(const QorUserGroupID& group) {
        Slot& slot = _slots[placeOf(group.value())];
        return slot.isUsed ? slot.number : add(group.value());
    }

private:
    static constexpr std::size_t kFirstSlots = 64;  // always a power of two

    struct Slot {
        long group = 0;
        std::uint32_t number = 0;
        bool isUsed = false;
    };

    /// The group's slot, or the free one where it belongs.
    [[nodiscard]] std::size_t placeOf(long group) const {
        // Identifiers that differ in a few bits only are spread over the whole table.
        const std::uint64_t mixed = static_cast<std::uint64_t>(group) * 0x9E3779B97F4A7C15U;
        std::size_t at = static_cast<std::size_t>(mixed >> 32) & (_slots.size() - 1);
        while (_slots[at].isUsed && _slots[at].group != group) at = (at + 1) & (_slots.size() - 1);
        return at;
    }
    std::size_t add(long group) {
        if (2 * (_count + 1) > _slots.size()) grow();
        _slots[placeOf(group)] = {group, static_cast<std::uint32_t>(_count), true};
        return _count++;
    }
    void grow() {
        const std::vector<Slot> before = std::exchange(_slots, std::vector<Slot>(2 * _slots.size()));
        for (const Slot& slot : before)
            if (slot.isUsed) _slots[placeOf(slot.group)] = slot;
    }

    std::vector<Slot> _slots;
    std::size_t _count = 0;
};

}  // namespace qor::admin
