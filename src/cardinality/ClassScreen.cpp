// SPDX-License-Identifier: Apache-2.0
#include "cardinality/ClassScreen.h"

#include <algorithm>
#include <array>

#include "cardinality/limits.h"

namespace qor::cardinality {

namespace {

/// The other classes of one object's few relations of one relation class.
class OtherClasses {
public:
    OtherClasses(std::span<const QorRelationEnd> ends, QorIdentifier relationClass) noexcept {
        for (const auto& end : ends) {
            _classes[_count] = end.otherClass;
            _count += end.relationClass == relationClass ? 1u : 0u;
        }
    }
    [[nodiscard]] std::uint32_t count() const noexcept { return _count; }
    [[nodiscard]] QorIdentifier at(std::uint32_t place) const noexcept { return _classes[place]; }
    /// So many are of the class, from the place on.
    [[nodiscard]] std::uint32_t countOf(QorIdentifier cls, std::uint32_t place = 0) const noexcept {
        std::uint32_t count = 0;
        for (; place < _count; ++place) count += _classes[place] == cls ? 1u : 0u;
        return count;
    }

private:
    std::uint32_t _count = 0;
    std::array<QorIdentifier, ClassScreen::kFewEnds> _classes;
};

/// A maximum as a number that counts can be compared with.
std::uint32_t bound(const QorCardinalityRule& most) {
    return most.limit < QorNoCardinalityLimit ? most.limit : ~std::uint32_t{0};
}

}  // namespace

ClassScreen::ClassScreen(const QorClassCardinality& rules)
    : _leastTotal(rules.minTotal.count), _mostTotal(bound(ofClass(rules, rules.maxTotal))) {
    for (const auto direction : {Direction::Outgoing, Direction::Incoming})
        _sides[direction] = sideOf(rules, direction);
}

ClassScreen::Side ClassScreen::sideOf(const QorClassCardinality& rules, Direction direction) {
    Side side;
    side.least = leastInDirection(rules, direction).limit;
    side.most = bound(mostInDirection(rules, direction));
    for (const auto& record : rules.relations) {
        auto relation = relationOf(rules, direction, record);
        if (!relation.hasLeast() && relation.quiet() >= side.most) continue;
        side.hasLeast = side.hasLeast || relation.hasLeast();
        side.quiet = std::min(side.quiet, relation.quiet());
        side.relations.push_back(std::move(relation));
    }
    return side;
}

ClassScreen::Relation ClassScreen::relationOf(const QorClassCardinality& rules, Direction direction,
                                              const QorRelationCardinality& record) {
    Relation relation;
    relation.relationClass = record.key();
    relation.least = leastOf(rules, direction, record.key()).limit;
    relation.most = bound(mostOf(rules, direction, record.key()));
    relation.mostTowardsOthers = bound(mostTowards(rules, direction, record.key(), QorNoIdentifier));
    relation.quietTowards = relation.mostTowardsOthers;
    for (const auto& target : record.targets) {
        const auto least = leastTowards(rules, direction, record.key(), target.key()).limit;
        const auto most = bound(mostTowards(rules, direction, record.key(), target.key()));
        relation.targets.push_back({target.key(), least, most});
        relation.quietTowards = std::min(relation.quietTowards, most);
        relation.hasLeastTowards = relation.hasLeastTowards || least > 0;
    }
    return relation;
}

std::uint32_t ClassScreen::Relation::mostTowards(QorIdentifier cls) const noexcept {
    const auto place = std::lower_bound(targets.begin(), targets.end(), cls,
                                        [](const Towards& target, QorIdentifier key) { return target.cls < key; });
    return place == targets.end() || place->cls != cls ? mostTowardsOthers : place->most;
}

// ---- Few relations ----

bool ClassScreen::holdsScanned(const Side& side, std::span<const QorRelationEnd> ends) {
    return std::all_of(side.relations.begin(), side.relations.end(),
                       [ends](const Relation& relation) { return relationHolds(relation, ends); });
}

bool ClassScreen::relationHolds(const Relation& relation, std::span<const QorRelationEnd> ends) {
    if (ends.size() <= relation.quiet() && !relation.hasLeast()) return true;
    std::uint32_t count = 0;
    for (const auto& end : ends) count += end.relationClass == relation.relationClass ? 1u : 0u;
    if (count < relation.least || count > relation.most) return false;
    return (count <= relation.quietTowards && !relation.hasLeastTowards) || towardsHolds(relation, ends);
}

bool ClassScreen::towardsHolds(const Relation& relation, std::span<const QorRelationEnd> ends) {
    const OtherClasses others(ends, relation.relationClass);
    if (relation.hasLeastTowards)
        for (const auto& target : relation.targets)
            if (target.least > 0 && others.countOf(target.cls) < target.least) return false;
    // More than are left from a place on cannot be of one class that was not met before.
    for (std::uint32_t place = 0; place + relation.quietTowards < others.count(); ++place) {
        const auto count = others.countOf(others.at(place), place);
        if (count > relation.quietTowards && count > relation.mostTowards(others.at(place))) return false;
    }
    return true;
}

// ---- Many relations ----

bool ClassScreen::holdsGrouped(const Side& side, const EndGroups& groups) {
    for (const auto& group : groups.groups()) {
        const auto* relation = find(side, group.relationClass);
        if (relation == nullptr) continue;
        const auto most =
            group.otherClass == QorNoIdentifier ? relation->most : relation->mostTowards(group.otherClass);
        if (group.count > most) return false;
    }
    if (!side.hasLeast) return true;
    return std::all_of(side.relations.begin(), side.relations.end(), [&groups](const Relation& relation) {
        const auto fallsShortOf = [&](const Towards& target) {
            return target.least > 0 && groups.countOf(relation.relationClass, target.cls) < target.least;
        };
        return groups.countOf(relation.relationClass, QorNoIdentifier) >= relation.least &&
               (!relation.hasLeastTowards ||
                std::none_of(relation.targets.begin(), relation.targets.end(), fallsShortOf));
    });
}

const ClassScreen::Relation* ClassScreen::find(const Side& side, QorIdentifier relationClass) {
    const auto place =
        std::lower_bound(side.relations.begin(), side.relations.end(), relationClass,
                         [](const Relation& relation, QorIdentifier key) { return relation.relationClass < key; });
    return place == side.relations.end() || place->relationClass != relationClass ? nullptr : &*place;
}

}  // namespace qor::cardinality
