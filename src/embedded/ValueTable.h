// SPDX-License-Identifier: Apache-2.0
// Attribute values by (thing, attribute), 12 bytes a slot.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "embedded/TextArena.h"
#include "platform/QorIdentifier.h"

namespace qor::embedded {

class ValueTable {
public:
    // The value's text, or null when there is none. Holds until the next change.
    [[nodiscard]] TextRef* find(QorIdentifier thing, QorIdentifier attribute) noexcept;
    [[nodiscard]] const TextRef* find(QorIdentifier thing, QorIdentifier attribute) const noexcept;

    // Makes `add` free of failure for that many values.
    void makeRoom(std::size_t values);
    // There must be no value yet.
    void add(QorIdentifier thing, QorIdentifier attribute, TextRef text) noexcept;
    void remove(QorIdentifier thing, QorIdentifier attribute) noexcept;

    [[nodiscard]] std::size_t bytes() const { return _slots.capacity() * sizeof(Slot); }

private:
    static constexpr QorIdentifier kFree = 0;
    struct Slot {
        QorIdentifier thing = kFree;
        QorIdentifier attribute = 0;
        TextRef text = 0;
    };

    [[nodiscard]] std::size_t homeOf(QorIdentifier thing, QorIdentifier attribute) const noexcept;
    [[nodiscard]] std::size_t slotOf(QorIdentifier thing, QorIdentifier attribute) const noexcept;

    std::vector<Slot> _slots;
    std::size_t _mask = 0;
    std::size_t _used = 0;
};

}  // namespace qor::embedded
