// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "simmap/CalledModels.h"
#include "simmap/QorSimReadiness.h"

namespace qor::simmap {

/// Puts findings into words and collects them.
class ReadinessReport {
public:
    explicit ReadinessReport(std::vector<QorSimReadinessFinding>& findings) : _findings(findings) {}

    void noExecutionTimeNamed(const QorSimulationOption& option, int index);
    void typeDoesNotFit(const QorSimUse& use);
    /// About a class: CannotCallModel, CannotHaveCalendar.
    void aboutClass(QorSimReadinessIssue issue, int option, long cls);
    /// About an object: NoExecutionTime (with its attribute), CallsNoModel, HasNoCalendar, IsNotAssigned.
    void aboutObject(QorSimReadinessIssue issue, int option, long model, long object, long attribute = 0);
    void calledModelIsMissing(int option, long model, long object, const CalledModels& called);
    void performersAreUnknown();
    void classTakesNoPart(long cls, long model, unsigned long count);

private:
    std::vector<QorSimReadinessFinding>& _findings;
};

}  // namespace qor::simmap
