// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cardinality/QorCardinalityCompleteCheck.h"
#include "cli/RulePlaces.h"
#include "embedded/QorRepositoryReader.h"
#include "interchange/QorImport.h"

namespace qor::cli {

class Console;

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
    std::uint64_t breaches = 0;
    std::uint64_t errors = 0;
    std::uint64_t warnings = 0;
    std::uint64_t internalErrors = 0;
    double seconds = 0;
};

/// Takes what a check finds, in order, and tells it.
class CheckReport {
public:
    CheckReport() = default;
    CheckReport(const CheckReport&) = delete;
    CheckReport& operator=(const CheckReport&) = delete;
    virtual ~CheckReport();

    virtual void beginFile(const std::string& file, const std::vector<QorDiagnostic>& diagnostics) = 0;
    virtual void beginModel(const CheckedModel& model) = 0;
    /// The breaches of one subject come one after the other.
    virtual void breach(const QorCardinalityBreach& breach) = 0;
    virtual void endModel() = 0;
    virtual void endFile() = 0;
    virtual void end(const CheckSummary& summary) = 0;
};

[[nodiscard]] std::unique_ptr<CheckReport> makeTextReport(Console& console, bool quiet);
[[nodiscard]] std::unique_ptr<CheckReport> makeJsonReport(Console& console);

}  // namespace qor::cli
