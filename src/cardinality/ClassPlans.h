// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <array>
#include <cstdint>
#include <deque>
#include <vector>

#include "cardinality/ClassScreen.h"
#include "cardinality/Direction.h"
#include "cardinality/KeyIndex.h"
#include "cardinality/RuleReader.h"

namespace qor::cardinality {

/// What the tests of a class's objects look at, laid out for reading in order.
struct ClassPlan {
    struct Target {
        QorIdentifier cls = QorNoIdentifier;
        std::uint32_t least = 0;
    };
    struct Relation {
        QorIdentifier relationClass = QorNoIdentifier;
        PerDirection<std::uint32_t> least;
        PerDirection<std::vector<Target>> targets;  ///< classes with a bound of their own, ascending
    };

    const QorClassCardinality* rules = nullptr;  ///< null: the class has none
    std::uint32_t number = 0;                    ///< from 0, in the order in which runs have met the classes
    ClassScreen screen;
    /// Up to so many relations in a direction break no maximum of a relation class, however they are mixed.
    PerDirection<std::uint32_t> safe;
    std::vector<Relation> relations;  ///< ascending by relation class
};

/// Plans of the classes that runs have met. Of no use once the rules have changed.
class ClassPlans {
public:
    explicit ClassPlans(const ClassRules& rules) : _rules(rules) {}
    [[nodiscard]] const ClassRules& rules() const noexcept { return _rules; }
    /// O(1); O(the class's rules) on the first call for a class.
    const ClassPlan& of(QorIdentifier cls) {
        auto& recent = _recent[static_cast<std::uint32_t>(cls) % kRecent];
        if (recent.plan == nullptr || recent.cls != cls) recent = {cls, &lookUp(cls)};
        return *recent.plan;
    }

private:
    /// Few classes make up a model: most look-ups find theirs here.
    struct Recent {
        QorIdentifier cls = QorNoIdentifier;
        const ClassPlan* plan = nullptr;
    };
    static constexpr std::size_t kRecent = 64;

    const ClassPlan& lookUp(QorIdentifier cls);

    std::array<Recent, kRecent> _recent{};
    const ClassRules& _rules;
    KeyIndex _index;
    std::deque<ClassPlan> _plans;
};

}  // namespace qor::cardinality
