// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <vector>

#include "cardinality/QorCardinalityDoctor.h"
#include "cardinality/QorCardinalityUsage.h"
#include "cli/Commands.h"
#include "cli/RuleImpact.h"
#include "interchange/QorImport.h"

namespace qor::cli {

class Console;
class Workspace;

/// What an examination of a library's rules brought forth.
struct DoctorFindings {
    std::vector<QorDiagnostic> oversights;  ///< what is written in rule texts and not read
    std::vector<QorCardinalityDiagnosis> diagnoses;
    // With models:
    std::vector<QorDiagnostic> modelDiagnostics;
    std::vector<QorCardinalityRule> unapplied;
    std::vector<QorCardinalityUsage::Untouched> untouched;
    // Against another library:
    std::vector<QorDiagnostic> otherDiagnostics;
    std::vector<RuleImpact> impacts;

    [[nodiscard]] bool hasContradiction() const;
};

/// As text or JSON, as the options want it.
void reportDoctor(Console& console, Workspace& workspace, const DoctorFindings& findings, const RulesOptions& options);

}  // namespace qor::cli
