// SPDX-License-Identifier: Apache-2.0
#include <optional>

#include "cardinality/QorCardinalityHandler.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"
#include "cli/DoctorReport.h"
#include "cli/InternalErrors.h"
#include "cli/ModelFiles.h"
#include "cli/RuleImpact.h"
#include "cli/RuleOversights.h"
#include "cli/ShippedLibraries.h"
#include "cli/Workspace.h"

namespace qor::cli {

namespace {

/// Reads the models with the workspace's library and takes down what breaks its rules.
RuleBreakers checkedWith(Workspace& workspace, const std::vector<std::string>& files,
                         std::vector<QorDiagnostic>& diagnostics, InternalErrors& internalErrors,
                         QorCardinalityUsage* usage) {
    ModelFiles models(workspace);
    RuleBreakers breakers(workspace.reader());
    for (const std::string& file : models.find(files)) {
        for (const QorIdentifier model : models.read(file)) {
            const bool isComplete = breakers.addModel(file, model) && (usage == nullptr || usage->addModel(model));
            if (!isComplete) internalErrors.add("the check of a model in " + file + " broke off");
        }
        models.giveUp();
    }
    // With another library the same warnings come again.
    for (const QorDiagnostic& diagnostic : models.diagnostics())
        if (usage != nullptr || diagnostic.severity == QorSeverity::Error) diagnostics.push_back(diagnostic);
    return breakers;
}

void diagnose(Workspace& workspace, DoctorFindings& findings, InternalErrors& internalErrors) {
    for (const RuleOversight& oversight : ruleOversights(workspace)) findings.oversights.push_back(oversight.warning);
    const QorCardinalityDoctor doctor(QorCardinalityHandler::Instance());
    const bool isComplete =
        doctor.diagnose([&](const QorCardinalityDiagnosis& diagnosis) { findings.diagnoses.push_back(diagnosis); });
    if (!isComplete) internalErrors.add("the examination of the rules broke off");
}

}  // namespace

Exit runDoctor(const RulesOptions& options, Console& console) {
    InternalErrors internalErrors(console);
    console.progress().start();
    console.progress().say("reading " + options.file);
    Workspaces workspaces(options.language, internalErrors.windows());
    DoctorFindings findings;
    std::optional<RuleBreakers> before;
    if (!options.against.empty()) {
        Workspace& other = workspaces.open(resolveLibrary(options.against));
        findings.otherDiagnostics = other.fileDiagnostics();
        if (other.hasLibrary())
            before.emplace(checkedWith(other, options.models, findings.otherDiagnostics, internalErrors, nullptr));
    }
    Workspace& workspace = workspaces.open(resolveLibrary(options.file));
    if (workspace.hasLibrary()) {
        diagnose(workspace, findings, internalErrors);
        if (!options.models.empty()) {
            QorCardinalityUsage usage(QorCardinalityHandler::Instance());
            const auto after =
                checkedWith(workspace, options.models, findings.modelDiagnostics, internalErrors, &usage);
            findings.unapplied = usage.unapplied();
            findings.untouched = usage.untouched();
            if (before) findings.impacts = impactsOf(*before, after);
        }
    }
    reportDoctor(console, workspace, findings, options);

    if (internalErrors.count() != 0) return Exit::Internal;
    const bool isRead =
        workspace.hasLibrary() && !hasErrors(findings.otherDiagnostics) && !hasErrors(findings.modelDiagnostics);
    if (!isRead) return Exit::BadInput;
    return findings.hasContradiction() || !workspace.ruleErrors().empty() ? Exit::Findings : Exit::Clean;
}

}  // namespace qor::cli
