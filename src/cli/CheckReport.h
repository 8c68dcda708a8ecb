// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cli/RulePlaces.h"
#include "embedded/QorRepositoryReader.h"
#include "interchange/QorImport.h"

namespace qor::cli {

class Console;
struct BreachName;
enum class Severity : std::uint8_t;

/// A file as it goes into a report.
struct CheckedFile {
    std::string name;  ///< as it was given
    std::string path;  ///< by which it can be opened; empty when it cannot
};

/// A model as it goes into a report, with those who know names and places.
struct CheckedModel {
    QorModelInfo info;
    std::uint64_t objects = 0;
    std::uint64_t relations = 0;
    const QorRepositoryReader& reader;
    const QorImporter& importer;  ///< of the model's file
    RulePlaces& rulePlaces;
};

struct CheckSummary {
    std::uint64_t files = 0;
    std::uint64_t models = 0;
    std::uint64_t objects = 0;
    std::uint64_t relations = 0;
    std::uint64_t breaches = 0;        ///< that are reported
    std::uint64_t breachWarnings = 0;  ///< of them, those that are warnings
    std::uint64_t known = 0;           ///< left out because the baseline holds them
    std::uint64_t accepted = 0;        ///< left out because the settings say so
    std::uint64_t notShown = 0;        ///< reported, but beyond the wanted number
    std::vector<std::string> stale;    ///< what the baseline holds and was not found
    std::uint64_t errors = 0;
    std::uint64_t warnings = 0;
    std::uint64_t internalErrors = 0;
    double seconds = 0;
};

/// A breach with what people have decided about its rule.
struct ReportedBreach {
    const QorCardinalityBreach& record;
    const BreachName& name;
    Severity severity;
};

/// Why a breach is not reported.
enum class LeftOut : std::uint8_t { Known, Accepted, NotShown };

/// Takes what a check finds, in order, and tells it.
class CheckReport {
public:
    CheckReport() = default;
    CheckReport(const CheckReport&) = delete;
    CheckReport& operator=(const CheckReport&) = delete;
    virtual ~CheckReport();

    virtual void beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) = 0;
    virtual void beginModel(const CheckedModel& model) = 0;
    /// The breaches of one subject come one after the other.
    virtual void breach(const ReportedBreach& breach) = 0;
    /// In place of `breach`. The reason is mostly empty.
    virtual void leaveOut(const ReportedBreach& breach, LeftOut why, std::string_view reason);
    virtual void endModel() = 0;
    virtual void endFile() = 0;
    virtual void end(const CheckSummary& summary) = 0;
};

class OutputFile;

[[nodiscard]] std::unique_ptr<CheckReport> makeTextReport(Console& console, bool quiet);
[[nodiscard]] std::unique_ptr<CheckReport> makeJsonReport(Console& console);
/// By rule, or by class of the objects, each with its number of breaches.
enum class GroupBy : std::uint8_t { Rule, Class };
[[nodiscard]] std::unique_ptr<CheckReport> makeGroupedReport(Console& console, GroupBy by, bool quiet);
// Reports that go into files of their own.
[[nodiscard]] std::unique_ptr<CheckReport> makeSarifReport(OutputFile& file);
[[nodiscard]] std::unique_ptr<CheckReport> makeJunitReport(OutputFile& file);

}  // namespace qor::cli
