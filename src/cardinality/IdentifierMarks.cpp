// SPDX-License-Identifier: Apache-2.0
#include "cardinality/IdentifierMarks.h"

namespace qor::cardinality {

void IdentifierMarks::addPage(std::size_t page) {
    if (page >= _pages.size()) _pages.resize(page + 1);
    _pages[page].resize(kPageWords);
}

}  // namespace qor::cardinality
