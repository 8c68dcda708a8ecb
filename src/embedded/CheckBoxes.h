// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstddef>
#include <span>

#include "platform/QorWindows.h"

namespace qor::embedded {

// As the boxes stand now; a later box may enable an earlier one.
[[nodiscard]] inline bool isEnabled(std::span<const QorCheckBox> boxes, std::size_t at) {
    const int by = boxes[at].enabledBy;
    return by < 0 || (static_cast<std::size_t>(by) < boxes.size() && boxes[static_cast<std::size_t>(by)].checked);
}

}  // namespace qor::embedded
