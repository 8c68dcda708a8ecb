// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "cardinality/IdentifierMarks.h"
#include "cardinality/ObjectTests.h"
#include "cardinality/RuleReader.h"
#include "cardinality/breaches.h"
#include "platform/ISortedSet.h"
#include "platform/SvString.h"

namespace qor::cardinality {

/// What a run leaves behind, and what it has checked.
struct RunResults {
    SV::String& errorText;
    CheckedMarks& checked;
    ISortedSet<long>& badObjects;
    ISortedSet<long>& badRelations;
};

/// The run of the editor: an object's first breach ends its tests, and a model's first breach ends the model's. All
/// checks answer whether everything holds; a failing repository, reported as internal error, counts as a breach.
///
/// What has been checked is shared by everything that the run tests, on purpose: a class that one object's minima have
/// met is not met by the minima of later objects, nor is the number of its objects tested.
class FirstBreachRun final : private TestObserver {
public:
    FirstBreachRun(ClassPlans& plans, RunResults results);
    FirstBreachRun(const FirstBreachRun&) = delete;
    FirstBreachRun& operator=(const FirstBreachRun&) = delete;
    ~FirstBreachRun() override;

    bool checkModel(long model);
    /// Maxima before minima; an object that breaks a maximum is not tested against its minima.
    bool checkObject(long object, bool minima, bool maxima);
    /// The same for an object that may have been checked before, without marking it.
    bool testObject(long object, bool minima, bool maxima);
    /// Both ends. Fails only when a failing end put this relation among the bad ones.
    bool checkRelation(long relation, bool minima, bool maxima);
    bool checkClass(long model, long cls, bool minima, bool maxima);

private:
    bool checkInBlock(long object, const QorObjectView* view);
    void record(const QorCardinalityBreach& breach);

    bool breached(ObjectRelations& object, const Finding& finding) override;
    void passed(std::span<const QorRelationEnd> outgoing) override;
    void turnsTo(QorIdentifier relationClass) override;
    bool wantsMinimumTowards(QorIdentifier cls) override;
    void passedMinima(const ClassPlan& plan) override;

    ClassPlans& _plans;
    RunResults _results;
    ObjectTests _tests;
    ObjectRelations _object;
    std::vector<bool> _met;  ///< by number of the plan: all that its minima meet is marked
};

}  // namespace qor::cardinality
