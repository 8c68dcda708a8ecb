// SPDX-License-Identifier: Apache-2.0
#include "cardinality/ObjectBlocks.h"

#include <algorithm>

namespace qor::cardinality {

ObjectBlocks::Block ObjectBlocks::next() {
    const auto wanted = _left.first(std::min(_left.size(), kObjects));
    const auto viewed = _bulk == nullptr || wanted.empty() ? 0 : _bulk->viewObjects(wanted, _views);
    // Behind an object without a view, viewing starts again.
    const auto taken = _bulk == nullptr ? wanted : wanted.first(std::min(viewed + 1, wanted.size()));
    _left = _left.subspan(taken.size());
    return {taken, std::span(_views).first(std::min(viewed, taken.size()))};
}

}  // namespace qor::cardinality
