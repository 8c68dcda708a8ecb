// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <vector>

#include "platform/ISortedSet.h"
#include "platform/QorExport.h"
#include "platform/SvString.h"
#include "simmap/QorSimMappingHandler.h"
#include "simmap/QorSimResultDefinitions.h"

/// What a class or attribute is for in a simulation.
enum class QorSimUseKind : std::int32_t {
    Activity,
    ExecutionTime,
    WaitingTime,
    RestingTime,
    TransportTime,
    UserAttribute,
    ProcessCall,
    SubPerformer,
    Action,
    ResultHolder,
    FixedResult,   ///< takes a result of its own
    ResultSource,  ///< its values are carried over
    CarriedResult  ///< takes values of a result source
};

struct QorSimUse {
    QorSimUseKind kind = QorSimUseKind::Activity;
    int option = -1;  ///< index of the option; -1 for results, which belong to all
    long cls = 0;
    long attribute = 0;  ///< 0 when the class itself is meant
    SV::String key;      ///< the word that says so in the text ("executiontime"); for an action its event
};

enum class QorSimReadinessIssue : std::int32_t {
    NoExecutionTimeNamed,  ///< the option names no attribute for it
    NoExecutionTime,       ///< an activity whose attribute is empty or zero
    CannotCallModel,       ///< a class of process calls has no attribute with references
    CallsNoModel,
    CalledModelMissing,  ///< none of the models that a process call refers to is there
    CannotHaveCalendar,  ///< a class of performers has no attribute of that type
    HasNoCalendar,
    IsNotAssigned,         ///< a performer without relations that nothing refers to
    TypeDoesNotFit,        ///< an attribute whose type cannot hold what it is used for
    ClassTakesNoPart,      ///< a class with objects in a model that no option knows
    PerformersNotLookedAt  ///< a remark: no result text says whose objects the performers are
};

/// What is missing before a simulation can run.
struct QorSimReadinessFinding {
    QorSimReadinessIssue issue = QorSimReadinessIssue::NoExecutionTimeNamed;
    int option = -1;  ///< -1 when it concerns all options
    long cls = 0;     ///< 0 where nothing of that kind is concerned, as for the following
    long attribute = 0;
    long model = 0;
    long object = 0;
    unsigned long count = 0;  ///< objects concerned
    SV::String text;          ///< in the host's language

    /// It tells what could not be looked at; nothing has to be mended for a run.
    [[nodiscard]] bool isRemark() const { return issue == QorSimReadinessIssue::PerformersNotLookedAt; }
};

/// Says before a simulation is run what the definitions use classes and attributes for, and what is missing for it in
/// given models. Each cost is that of looking at every object of the models once for each option.
class QOR_API QorSimReadiness {
public:
    static constexpr int kAllOptions = -1;

    QorSimReadiness() noexcept;
    QorSimReadiness(const QorSimReadiness&) = delete;
    QorSimReadiness& operator=(const QorSimReadiness&) = delete;
    ~QorSimReadiness();

    /// Checks one option, or all of them, over the models. False when there is no such option or the repository fails;
    /// what was found until then stays. The definitions are those of the loaded library `library`.
    bool check(long library, QorSimMappingHandler& mapping, const QorSimResultDefinitions& results, int option,
               const ISortedSet<long>& models) noexcept;

    [[nodiscard]] const std::vector<QorSimUse>& uses() const { return _uses; }
    [[nodiscard]] const std::vector<QorSimReadinessFinding>& findings() const { return _findings; }

private:
    std::vector<QorSimUse> _uses;
    std::vector<QorSimReadinessFinding> _findings;
};
