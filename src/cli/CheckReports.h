// SPDX-License-Identifier: Apache-2.0
#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/CheckReport.h"
#include "cli/Commands.h"
#include "cli/OutputFile.h"

namespace qor::cli {

/// All reports that are wanted of one check: one on standard output, of so many breaches as are to be shown, and those
/// in files, of all.
class CheckReports final : public CheckReport {
public:
    CheckReports(const CheckOptions& options, Console& console);
    ~CheckReports() override;

    void beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) override;
    void beginModel(const CheckedModel& model) override;
    void breach(const ReportedBreach& breach) override;
    void leaveOut(const ReportedBreach& breach, LeftOut why, std::string_view reason) override;
    void endModel() override;
    void endFile() override;
    void end(const CheckSummary& summary) override;

    [[nodiscard]] std::uint64_t notShown() const { return _notShown; }
    /// Puts the files in their places; what could not be written.
    [[nodiscard]] std::vector<QorDiagnostic> commit();

private:
    template <class Tell>
    void tellAll(const Tell& tell);
    template <class Make>
    void addFile(const std::string& path, const Make& make);

    std::unique_ptr<CheckReport> _shown;
    std::vector<std::unique_ptr<OutputFile>> _files;
    std::vector<std::unique_ptr<CheckReport>> _inFiles;
    std::uint64_t _left;  ///< to be shown
    std::uint64_t _notShown = 0;
};

}  // namespace qor::cli
