// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <optional>
#include <span>

#include "cardinality/ClassPlans.h"
#include "cardinality/ObjectRelations.h"
#include "cardinality/QorCardinalityCompleteCheck.h"

namespace qor::cardinality {

/// A limit of an object's class that the object breaks, and the relations that were counted.
struct Finding {
    bool isMinimum = false;
    std::optional<Direction> direction;             ///< none: both directions together
    QorIdentifier relationClass = QorNoIdentifier;  ///< none: all relation classes
    QorIdentifier otherClass = QorNoIdentifier;     ///< none: all other classes
    QorCardinalityRule rule;
    std::uint32_t found = 0;
    std::uint32_t firstEnd = 0;  ///< place of the first relation counted, where a maximum of a relation class is broken
};

/// Whoever has objects tested.
class TestObserver {
public:
    virtual ~TestObserver();

    /// False ends the tests.
    virtual bool breached(ObjectRelations& object, const Finding& finding) = 0;

    /// The maxima of all these outgoing relations hold.
    virtual void passed(std::span<const QorRelationEnd> outgoing);
    /// The minima of a relation class come next.
    virtual void turnsTo(QorIdentifier relationClass);
    /// Whether to test the minimum towards a class.
    virtual bool wantsMinimumTowards(QorIdentifier cls);
    /// All minima of an object hold; in place of a turn to each of the plan's relation classes and targets.
    virtual void passedMinima(const ClassPlan& plan);
};

enum class Outcome {
    Completed,
    Stopped,  ///< by the observer
    Failed,   ///< by the repository; an internal error was reported
};

/// The tests of one object in their order. Both the run that ends at the first breach and the run that finds them all
/// go through here, so that they cannot differ in a limit or a count. O(relations of the object + rules of its class).
class ObjectTests {
public:
    explicit ObjectTests(ClassPlans& plans) : _plans(plans) {}

    /// The plan of the object's class when the object keeps all limits; null when `test` has to find out more.
    const ClassPlan* planKept(const QorObjectView& object);

    /// All maxima, then all minima, to the end or until the observer stops them.
    Outcome test(ObjectRelations& object, TestObserver& observer);

    Outcome testMaxima(ObjectRelations& object, TestObserver& observer);
    /// Minima cannot be found by walking relations, since a missing relation has no instance: this walks the rules.
    Outcome testMinima(ObjectRelations& object, TestObserver& observer);

private:
    enum class Screening { Holds, Suspicious, Failed };
    static Screening screen(ObjectRelations& object, const ClassPlan& plan, TestObserver& observer);

    ClassPlans& _plans;
    EndGroups _groups;
};

}  // namespace qor::cardinality
