// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <vector>

namespace qor::cardinality {

/// A set of identifiers as a bitmap in pages, so that a check can mark a million objects in passing.
class IdentifierMarks {
public:
    /// Identifiers beyond 32 bits stand for nothing and are not marked.
    void add(long identifier);
    [[nodiscard]] bool contains(long identifier) const noexcept;

private:
    std::vector<std::vector<std::uint64_t>> _pages;  ///< a page without marks is empty
};

/// What a run has checked already.
struct CheckedMarks {
    IdentifierMarks objects;
    IdentifierMarks relations;
    IdentifierMarks classes;  ///< classes and relation classes
};

}  // namespace qor::cardinality
