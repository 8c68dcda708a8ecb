// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/Baseline.h"
#include "cli/CheckReport.h"
#include "cli/CheckSettings.h"
#include "cli/Commands.h"

namespace qor::cli {

/// Decides of each breach, by the settings and the baseline, whether and as what it is reported, and counts.
class BreachJudge {
public:
    BreachJudge(const CheckOptions& options, CheckReport& report, CheckSummary& summary);

    /// What is wrong with the baseline file.
    [[nodiscard]] const std::vector<QorDiagnostic>& faults() const { return _faults; }

    /// Adds what is wrong with the settings that hold for the file.
    void beginFile(const std::string& file, std::vector<QorDiagnostic>& diagnostics);
    /// The file could be read.
    void beginModels(const std::string& file);
    void beginModel(const CheckedModel& model);
    void take(const CheckedModel& model, const QorCardinalityBreach& breach);
    /// Fills in what the baseline holds and was not found; writes a new one. Empty, or why that failed.
    [[nodiscard]] std::string end();

    /// Breaches that the exit code tells of.
    [[nodiscard]] std::uint64_t findings() const { return _findings; }

private:
    [[nodiscard]] bool isFinding(Severity severity) const;

    const CheckOptions& _options;
    CheckReport& _report;
    CheckSummary& _summary;
    SettingsFiles _settingsFiles;
    const CheckSettings* _settings = nullptr;  ///< of the current file
    std::vector<QorDiagnostic> _faults;
    std::optional<Baseline> _known;
    std::optional<Baseline> _written;
    std::uint64_t _findings = 0;
};

}  // namespace qor::cli
