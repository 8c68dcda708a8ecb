// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "cardinality/Direction.h"
#include "cardinality/EndGroups.h"
#include "cardinality/QorClassCardinality.h"
#include "platform/QorCoreBulkView.h"

namespace qor::cardinality {

/// All limits that a class sets on one object's relations, laid out for one question: does an object keep them all?
/// Most objects of a model do. They are done with this answer, which only counts what a limit makes it count; the tests
/// that name the broken rule are left for the others.
class ClassScreen {
public:
    /// Nothing is limited.
    ClassScreen() = default;
    explicit ClassScreen(const QorClassCardinality& rules);

    /// Whether all limits on relations in one direction are kept. Only with more than kFewEnds of them are `groups`
    /// asked, and have to be theirs.
    template <class Groups>
    [[nodiscard]] bool holds(Direction direction, std::span<const QorRelationEnd> ends, const Groups& groups) const {
        const Side& side = _sides[direction];
        const auto count = static_cast<std::uint32_t>(ends.size());
        if (count < side.least || count > side.most) return false;
        if (count <= side.quiet && !side.hasLeast) return true;
        return count > kFewEnds ? holdsGrouped(side, groups()) : holdsScanned(side, ends);
    }
    /// Whether the limits on the relations in both directions together are kept.
    [[nodiscard]] bool totalHolds(std::uint32_t count) const noexcept {
        return count >= _leastTotal && count <= _mostTotal;
    }

    /// So many are looked through faster than grouped.
    static constexpr std::uint32_t kFewEnds = 16;

private:
    /// Greater than any count.
    static constexpr std::uint32_t kUnlimited = ~std::uint32_t{0};

    struct Towards {
        QorIdentifier cls = QorNoIdentifier;
        std::uint32_t least = 0;
        std::uint32_t most = kUnlimited;
    };
    struct Relation {
        QorIdentifier relationClass = QorNoIdentifier;
        std::uint32_t least = 0;
        std::uint32_t most = kUnlimited;
        std::uint32_t mostTowardsOthers = kUnlimited;  ///< towards each class that is not among the targets
        std::uint32_t quietTowards = kUnlimited;       ///< up to so many break no maximum towards any class
        bool hasLeastTowards = false;
        std::vector<Towards> targets;  ///< with a record, ascending by class

        [[nodiscard]] std::uint32_t quiet() const noexcept { return most < quietTowards ? most : quietTowards; }
        [[nodiscard]] bool hasLeast() const noexcept { return least > 0 || hasLeastTowards; }
        [[nodiscard]] std::uint32_t mostTowards(QorIdentifier cls) const noexcept;
    };
    struct Side {
        std::uint32_t least = 0;
        std::uint32_t most = kUnlimited;
        std::uint32_t quiet = kUnlimited;  ///< up to so many relations break no maximum, however they are mixed
        bool hasLeast = false;             ///< a minimum of a relation class or towards a class
        std::vector<Relation> relations;   ///< those that limit anything, ascending
    };

    static Side sideOf(const QorClassCardinality& rules, Direction direction);
    static Relation relationOf(const QorClassCardinality& rules, Direction direction,
                               const QorRelationCardinality& relation);
    static bool holdsScanned(const Side& side, std::span<const QorRelationEnd> ends);
    static bool relationHolds(const Relation& relation, std::span<const QorRelationEnd> ends);
    static bool towardsHolds(const Relation& relation, std::span<const QorRelationEnd> ends);
    static bool holdsGrouped(const Side& side, const EndGroups& groups);
    static const Relation* find(const Side& side, QorIdentifier relationClass);

    PerDirection<Side> _sides;
    std::uint32_t _leastTotal = 0;
    std::uint32_t _mostTotal = kUnlimited;
};

}  // namespace qor::cardinality
