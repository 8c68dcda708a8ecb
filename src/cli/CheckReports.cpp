// SPDX-License-Identifier: Apache-2.0
#include "cli/CheckReports.h"

#include <limits>

#include "cli/InputFiles.h"

namespace qor::cli {

namespace {

/// Standard output belongs to a report that would otherwise go into a file.
class NoReport final : public CheckReport {
public:
    ~NoReport() override;
    void beginFile(const CheckedFile&, const std::vector<QorDiagnostic>&) override {}
    void beginModel(const CheckedModel&) override {}
    void breach(const ReportedBreach&) override {}
    void endModel() override {}
    void endFile() override {}
    void end(const CheckSummary&) override {}
};
NoReport::~NoReport() = default;

std::unique_ptr<CheckReport> shownReport(const CheckOptions& options, Console& console) {
    if (options.sarif == kStandardOutput || options.junit == kStandardOutput) return std::make_unique<NoReport>();
    if (options.json) return makeJsonReport(console);
    if (options.group == "rule") return makeGroupedReport(console, GroupBy::Rule, options.quiet);
    if (options.group == "class") return makeGroupedReport(console, GroupBy::Class, options.quiet);
    return makeTextReport(console, options.quiet);
}

}  // namespace

CheckReports::CheckReports(const CheckOptions& options, Console& console)
    : _shown(shownReport(options, console)),
      _left(options.maxBreaches.value_or(std::numeric_limits<std::uint64_t>::max())) {
    addFile(options.sarif, makeSarifReport);
    addFile(options.junit, makeJunitReport);
}

CheckReports::~CheckReports() = default;

template <class Make>
void CheckReports::addFile(const std::string& path, const Make& make) {
    if (path.empty()) return;
    _files.push_back(std::make_unique<OutputFile>(path));
    _inFiles.push_back(make(*_files.back()));
}

template <class Tell>
void CheckReports::tellAll(const Tell& tell) {
    tell(*_shown);
    for (const auto& report : _inFiles) tell(*report);
}

void CheckReports::beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) {
    tellAll([&](CheckReport& report) { report.beginFile(file, diagnostics); });
}

void CheckReports::beginModel(const CheckedModel& model) {
    tellAll([&](CheckReport& report) { report.beginModel(model); });
}

void CheckReports::breach(const ReportedBreach& breach) {
    if (_left > 0) {
        --_left;
        _shown->breach(breach);
    } else {
        ++_notShown;
        _shown->leaveOut(breach, LeftOut::NotShown, {});
    }
    for (const auto& report : _inFiles) report->breach(breach);
}

void CheckReports::leaveOut(const ReportedBreach& breach, LeftOut why, std::string_view reason) {
    tellAll([&](CheckReport& report) { report.leaveOut(breach, why, reason); });
}

void CheckReports::endModel() {
    tellAll([](CheckReport& report) { report.endModel(); });
}

void CheckReports::endFile() {
    tellAll([](CheckReport& report) { report.endFile(); });
}

void CheckReports::end(const CheckSummary& summary) {
    tellAll([&](CheckReport& report) { report.end(summary); });
}

std::vector<QorDiagnostic> CheckReports::commit() {
    std::vector<QorDiagnostic> failures;
    for (const auto& file : _files)
        if (auto failure = file->commit(); !failure.empty())
            failures.push_back({QorSeverity::Error, {file->path(), 0, 0}, std::move(failure)});
    return failures;
}

}  // namespace qor::cli
