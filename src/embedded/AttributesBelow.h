// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/QorIdentifier.h"

namespace qor::embedded {

// How many attributes of a name the classes below a class have, so that a new attribute need not ask all of them.
class AttributesBelow {
public:
    // Makes `add` for that class and name free of failure.
    void makeRoom(QorIdentifier cls, std::string_view name);
    // There must be room, or have been one of that name before.
    void add(QorIdentifier cls, std::string_view name, QorIdentifier attribute) noexcept;
    void remove(QorIdentifier cls, std::string_view name) noexcept;
    // Forgets the classes that have none.
    void sweep() noexcept;

    struct Entry {
        std::uint32_t count = 0;
        QorIdentifier latest = QorNoIdentifier;  // was added last, and may have gone
    };
    [[nodiscard]] Entry find(QorIdentifier cls, std::string_view name) const noexcept;

private:
    std::map<std::string, std::unordered_map<QorIdentifier, Entry>, std::less<>> _byName;
};

}  // namespace qor::embedded
