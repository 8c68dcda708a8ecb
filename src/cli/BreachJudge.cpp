// SPDX-License-Identifier: Apache-2.0
#include "cli/BreachJudge.h"

#include "cli/BreachName.h"

namespace qor::cli {

BreachJudge::BreachJudge(const CheckOptions& options, CheckReport& report, CheckSummary& summary)
    : _options(options), _report(report), _summary(summary), _settingsFiles(options.settings) {
    if (!options.baseline.empty()) _known.emplace(options.baseline, _faults);
    if (!options.writeBaseline.empty()) _written.emplace(options.writeBaseline);
}

void BreachJudge::beginFile(const std::string& file, std::vector<QorDiagnostic>& diagnostics) {
    _settings = &_settingsFiles.forFile(file, diagnostics);
}

void BreachJudge::beginModels(const std::string& file) {
    if (_known) _known->beginFile(file);
    if (_written) _written->beginFile(file);
}

void BreachJudge::beginModel(const CheckedModel& model) {
    if (_known) _known->beginModel(model.info.name, model.info.version);
}

void BreachJudge::take(const CheckedModel& model, const QorCardinalityBreach& breach) {
    const BreachName name = nameOf(model, breach);
    const auto decision = _settings->decide(name);
    const ReportedBreach reported{breach, name, decision.severity};
    if (decision.severity == Severity::Off) {
        ++_summary.accepted;
        _report.leaveOut(reported, LeftOut::Accepted, decision.reason);
        return;
    }
    if (_written) _written->add(name, breach.found);
    if (_known && _known->knows(name, breach.found)) {
        ++_summary.known;
        _report.leaveOut(reported, LeftOut::Known, {});
        return;
    }
    ++_summary.breaches;
    if (decision.severity == Severity::Warning) ++_summary.breachWarnings;
    if (isFinding(decision.severity)) ++_findings;
    _report.breach(reported);
}

/// What goes into a new baseline is known from now on.
bool BreachJudge::isFinding(Severity severity) const {
    if (_written) return false;
    const auto* wanted = failOnOf(_options.failOn);
    switch (wanted == nullptr ? _settings->failOn() : *wanted) {
        case FailOn::Error:
            return severity == Severity::Error;
        case FailOn::Warning:
            return true;
        case FailOn::Never:
            break;
    }
    return false;
}

std::string BreachJudge::end() {
    if (_known) _summary.stale = _known->stale(_options.models.empty());
    return _written ? _written->write() : std::string();
}

}  // namespace qor::cli
