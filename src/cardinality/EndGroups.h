// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "cardinality/KeyIndex.h"
#include "platform/QorCoreBulkView.h"
#include "platform/QorIdentifier.h"

namespace qor::cardinality {

/// Relation ends of one object in one direction, counted per relation class and other end's class and per relation
/// class, in one pass: O(ends), whatever the mixture.
class EndGroups {
public:
    struct Group {
        QorIdentifier relationClass = QorNoIdentifier;
        QorIdentifier otherClass = QorNoIdentifier;  ///< none: all other classes together
        std::uint32_t count = 0;
        std::uint32_t first = 0;  ///< place of its first end
        std::uint32_t whole = 0;  ///< place of the group of the whole relation class
    };

    /// The spans must live as long as the groups are used.
    void count(std::span<const QorRelationEnd> ends);

    /// In order of their first ends; the group of one other class before the group of the whole relation class.
    [[nodiscard]] std::span<const Group> groups() const noexcept { return _groups; }
    /// Ends of the group; 0 when there is none.
    [[nodiscard]] std::uint32_t countOf(QorIdentifier relationClass, QorIdentifier otherClass) const noexcept;

    /// The group's ends appended to `ends`, ascending by relation. O(result); the first call after a count O(all ends).
    void collect(QorIdentifier relationClass, QorIdentifier otherClass, std::vector<QorRelationEnd>& ends);

private:
    void addGroups(std::uint32_t end);
    void addGroup(QorIdentifier otherClass, std::uint32_t end, std::uint32_t whole);
    void chain();
    void append(std::uint32_t group, std::uint32_t end, std::vector<std::uint32_t>& next);

    std::span<const QorRelationEnd> _ends;
    KeyIndex _index;
    std::vector<Group> _groups;
    // Only an object with a breach has its ends chained.
    bool _chained = false;
    std::vector<std::uint32_t> _last;         ///< by group: its last end so far
    std::vector<std::uint32_t> _nextTowards;  ///< by end: the next end of the same relation class and other class
    std::vector<std::uint32_t> _nextOf;       ///< by end: the next end of the same relation class
};

}  // namespace qor::cardinality
