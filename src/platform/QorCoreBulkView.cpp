// SPDX-License-Identifier: Apache-2.0
#include "platform/QorCoreBulkView.h"

#include <algorithm>

QorCoreBulkView::~QorCoreBulkView() = default;

std::size_t QorCoreBulkView::viewObjects(std::span<const long> objects, std::span<QorObjectView> views) {
    const auto most = std::min(objects.size(), views.size());
    for (std::size_t at = 0; at < most; ++at)
        if (viewObject(objects[at], views[at].cls, views[at].outgoing, views[at].incoming) != QorErrorCode::Ok)
            return at;
    return most;
}
