// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstddef>
#include <span>

#include "platform/QorCoreBulkView.h"

namespace qor::cardinality {

/// Goes over objects some at a time, so that viewing them in bulk costs one call for many.
class ObjectBlocks {
public:
    struct Block {
        std::span<const long> objects;
        /// Of the first so many objects; the repository shows the others only by its plain operations.
        std::span<const QorObjectView> views;
    };

    /// The objects and the view (null: none) must live as long as this.
    ObjectBlocks(std::span<const long> objects, QorCoreBulkView* view) : _bulk(view), _left(objects) {}
    ObjectBlocks(const ObjectBlocks&) = delete;
    ObjectBlocks& operator=(const ObjectBlocks&) = delete;

    /// Without objects at the end. Views hold until the next call and the repository's next change.
    Block next();

private:
    /// Few enough for the views and all that they show to stay close by, many enough for the call not to count.
    static constexpr std::size_t kObjects = 64;

    QorCoreBulkView* _bulk;
    std::span<const long> _left;
    std::array<QorObjectView, kObjects> _views;
};

}  // namespace qor::cardinality
