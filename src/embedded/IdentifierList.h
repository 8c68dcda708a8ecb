// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <vector>

#include "embedded/ThingTable.h"

namespace qor::embedded {

// Identifiers in order of adding, which is ascending. Deleted ones are passed over and swept once they are half of the
// list, so that deleting is amortised O(1) and reading O(result).
class IdentifierList {
public:
    void makeRoom() { makeRoomForOne(_ids); }
    void add(QorIdentifier id) noexcept { _ids.push_back(id); }
    // `things` forgets one of the identifiers, or knows it again.
    void noteRemoval() noexcept { ++_gone; }
    void noteReturn() noexcept { --_gone; }
    // The last one was never added.
    void takeBackLast() noexcept { _ids.pop_back(); }
    // To be called some time after removals.
    void tidy(const ThingTable& things) noexcept {
        if (_gone * 2 <= _ids.size()) return;
        std::erase_if(_ids, [&](QorIdentifier id) { return !things.exists(id); });
        _gone = 0;
    }

    [[nodiscard]] std::size_t size() const { return _ids.size() - _gone; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] std::size_t bytes() const { return _ids.capacity() * sizeof(QorIdentifier); }

    template <class Take>
    void forEach(const ThingTable& things, Take take) const {
        for (const QorIdentifier id : _ids)
            if (_gone == 0 || things.exists(id)) take(id);
    }
    // Until `take` gives true.
    template <class Take>
    void forEachUntil(const ThingTable& things, Take take) const {
        for (const QorIdentifier id : _ids)
            if ((_gone == 0 || things.exists(id)) && take(id)) return;
    }
    [[nodiscard]] QorIdentifier last(const ThingTable& things) const {
        for (std::size_t at = _ids.size(); at > 0; --at)
            if (things.exists(_ids[at - 1])) return _ids[at - 1];
        return QorNoIdentifier;
    }
    template <class Number>
    [[nodiscard]] std::vector<Number> copy(const ThingTable& things) const {
        std::vector<Number> ids;
        ids.reserve(size());
        forEach(things, [&](QorIdentifier id) { ids.push_back(id); });
        return ids;
    }

private:
    std::vector<QorIdentifier> _ids;
    std::size_t _gone = 0;
};

}  // namespace qor::embedded
