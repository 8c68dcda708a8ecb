// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <vector>

#include "platform/QorIdentifier.h"

namespace qor::cardinality {

/// The class of each object, in pages by identifier: 4 bytes for each.
class ObjectClasses {
public:
    /// None for an object that is not known.
    [[nodiscard]] QorIdentifier of(QorIdentifier object) const noexcept {
        const auto page = static_cast<std::size_t>(object) / kPage;
        if (object < 1 || page >= _pages.size() || _pages[page].empty()) return QorNoIdentifier;
        return _pages[page][static_cast<std::size_t>(object) % kPage];
    }
    /// `object` is above 0.
    void set(QorIdentifier object, QorIdentifier cls) {
        const auto page = static_cast<std::size_t>(object) / kPage;
        if (page >= _pages.size()) _pages.resize(page + 1);
        if (_pages[page].empty()) _pages[page].assign(kPage, QorNoIdentifier);
        _pages[page][static_cast<std::size_t>(object) % kPage] = cls;
    }
    void clear() noexcept { _pages.clear(); }

private:
    static constexpr std::size_t kPage = 4096;

    std::vector<std::vector<QorIdentifier>> _pages;  ///< a page without objects is empty
};

}  // namespace qor::cardinality
