// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <optional>
#include <string>

#include "platform/QorErrorCode.h"

namespace qor::modeltools {

/// Copies single attributes of one object onto others.
class AttributeTransfer {
public:
    AttributeTransfer(long source, bool refuseReferences) : _source(source), _refuseReferences(refuseReferences) {}

    enum class Result { Written, WrittenQuietly, Failed };

    /// References are written quietly: nobody is told that the object changed.
    [[nodiscard]] Result copy(long model, long target, long attribute) const;
    [[nodiscard]] bool copyRows(long model, long target, long attribute) const;
    [[nodiscard]] bool copySize(long model, long target) const;

    enum class Comparison { Same, Different, Absent, Failed };

    /// Whether the target has the source's value already; Absent when either has no such attribute.
    [[nodiscard]] Comparison compare(long target, long attribute) const;

    /// The target's position text with the source's size in it, and the attribute that holds it.
    struct NewPosition {
        long attribute = -1;
        std::string before;
        std::string after;
    };
    /// Nothing when the size cannot be copied.
    [[nodiscard]] std::optional<NewPosition> positionFor(long target) const;

private:
    [[nodiscard]] bool copyTable(long model, long from, long to, long attribute) const;
    [[nodiscard]] bool copyCell(long model, long from, long to, long column) const;

    long _source;
    bool _refuseReferences;
};

}  // namespace qor::modeltools
