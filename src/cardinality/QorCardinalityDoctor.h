// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <functional>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "platform/QorExport.h"

class QorCardinalityHandler;

/// What can be wrong with rules that are free of errors as texts. The first ones are contradictions: no object, or no
/// model, can ever keep both rules. The others are rules without effect.
enum class QorCardinalityFault : std::int32_t {
    MinimumAboveMaximum,     ///< the rule is a minimum, `against` a maximum below it
    MinimaAboveMaximum,      ///< minima, of which the rule is the last, add up to `count`; `against` is a maximum below
    RequiredClassHasNoRoom,  ///< the rule demands relations with a class of which `against` allows no objects
    RequiredClassRefuses,    ///< the rule demands relations that `against`, at the other end, forbids
    RelationCannotTouch,     ///< the relation class cannot run in the rule's direction at objects of its class
    ClassInNoModel,          ///< no model type shows the rule's class
    OtherClassIsNoEnd,       ///< the relation class cannot have an object of the other class at its other end
    OtherClassInNoModel,     ///< no model type shows both classes
    LimitsNothing,           ///< a maximum so large that it is none
    MadeVoid,                ///< whatever keeps `against` keeps the rule, too
};

struct QorCardinalityDiagnosis {
    QorCardinalityFault fault = QorCardinalityFault::MinimumAboveMaximum;
    QorCardinalityRule rule;
    QorCardinalityRule against;  ///< class -1 where the fault has no second rule
    std::uint32_t count = 0;     ///< the sum of minima; else 0

    [[nodiscard]] bool isContradiction() const noexcept { return fault <= QorCardinalityFault::RequiredClassRefuses; }
};

/// Looks for contradictions among the rules that a handler has read, and for rules without effect. Reading keeps a text
/// that contradicts itself as it is written; this tells before models are checked.
class QOR_API QorCardinalityDoctor {
public:
    using Sink = std::function<void(const QorCardinalityDiagnosis&)>;

    /// The handler must outlive this object; the library that its rules come from must be loaded.
    explicit QorCardinalityDoctor(const QorCardinalityHandler& handler);
    ~QorCardinalityDoctor();

    /// Ascending by class, within a class in a fixed order. False, after an internal error was shown, when the
    /// repository failed. O(rules + classes of the model types).
    bool diagnose(const Sink& sink) const;

private:
    const QorCardinalityHandler& _handler;
};
