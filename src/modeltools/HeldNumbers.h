// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/QorIdentifier.h"

namespace qor::modeltools {

/// Which number of which base each object holds. One table without a block for each entry: objects are visited in
/// ascending order, so their slots lie side by side.
template <class Base>
class HeldNumbers {
public:
    struct Held {
        Base* base = nullptr;  ///< null: the object holds none
        std::int32_t number = 0;
    };

    /// Makes room for about so many objects.
    void expect(std::size_t objects) { grow(objects); }

    [[nodiscard]] Held of(QorIdentifier object) const { return _slots.empty() ? Held{} : _slots[slotOf(object)].held; }

    void set(QorIdentifier object, Held held) {
        if (2 * (_used + 1) > _slots.size()) grow(2 * (_used + 1));
        Slot& slot = _slots[slotOf(object)];
        if (slot.object == QorNoIdentifier) ++_used;
        slot = {object, held};
    }

    void clear() {
        _slots.clear();
        _used = 0;
    }

private:
    struct Slot {
        QorIdentifier object = QorNoIdentifier;
        Held held;
    };

    [[nodiscard]] std::size_t slotOf(QorIdentifier object) const {
        const std::size_t mask = _slots.size() - 1;
        const auto bits = static_cast<std::uint32_t>(object);
        std::size_t at = (bits ^ bits >> 16) & mask;
        while (_slots[at].object != QorNoIdentifier && _slots[at].object != object) at = (at + 1) & mask;
        return at;
    }

    void grow(std::size_t objects) {
        std::size_t size = 64;
        while (size < 2 * objects) size *= 2;
        if (size <= _slots.size()) return;
        HeldNumbers larger;
        larger._slots.resize(size);
        for (const Slot& slot : _slots)
            if (slot.object != QorNoIdentifier) larger.set(slot.object, slot.held);
        *this = std::move(larger);
    }

    std::vector<Slot> _slots;
    std::size_t _used = 0;
};

}  // namespace qor::modeltools
