// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>

#include "cli/BreachName.h"
#include "cli/BreachText.h"
#include "cli/CheckReport.h"
#include "cli/CheckSettings.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"

namespace qor::cli {

namespace {

/// Tells breaches rule by rule or class by class, the most frequent first: a table of numbers, then the objects of each
/// group. Everything is kept up to the end, as lines.
class GroupedReport final : public CheckReport {
public:
    GroupedReport(Console& console, GroupBy by, bool quiet) : _console(console), _by(by), _quiet(quiet) {}
    ~GroupedReport() override;

    void beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) override {
        _file = file.name;
        showDiagnostics(_console, diagnostics, _quiet);
    }
    void beginModel(const CheckedModel& model) override { _model.emplace(model); }
    void endModel() override { _model.reset(); }
    void endFile() override {}

    void breach(const ReportedBreach& breach) override {
        auto& group = groupOf(breach);
        ++group.count;
        const auto subject = static_cast<QorIdentifier>(breach.record.subject);
        const Colours& colours = _console.outColours();
        auto line = fmt::format(
            "    {}: {} in model {}: {}\n", placeText(placeOf(*_model, _file, subject)),
            subjectText(*_model, subject, breach.record.subjectIsClass, colours), quoted(_model->info.name),
            _by == GroupBy::Rule ? fmt::format("found {}", breach.record.found) : printable(breach.record.text.view()));
        // A limit of a class that stands in for its relations' is broken in several counts that all read alike.
        if (group.lines.empty() || group.lines.back() != line) group.lines.push_back(std::move(line));
    }
    void leaveOut(const ReportedBreach& breach, LeftOut why, std::string_view) override {
        if (why == LeftOut::NotShown) ++groupOf(breach).count;
    }

    void end(const CheckSummary& summary) override {
        std::stable_sort(_groups.begin(), _groups.end(),
                         [](const Group& a, const Group& b) { return a.count > b.count; });
        const Colours colours = _console.outColours();
        for (const auto& group : _groups) _console.out(fmt::format("{:>8}  {}\n", group.count, group.title));
        for (const auto& group : _groups) {
            if (group.lines.empty()) continue;
            _console.out("\n" + colours.bold(group.title) + "\n");
            for (const auto& line : group.lines) _console.out(line);
        }
        if (!_groups.empty() && !_quiet) _console.out("\n");
        showStale(_console, summary);
        if (!_quiet) _console.out(summaryLine(summary, std::nullopt, colours));
    }

private:
    struct Group {
        std::string title;
        std::uint64_t count = 0;
        std::vector<std::string> lines;
    };

    Group& groupOf(const ReportedBreach& breach) {
        auto title =
            _by == GroupBy::Rule ? "rule " + ruleText(*_model, breach.record.rule) : "class " + quoted(breach.name.cls);
        if (_by == GroupBy::Rule && breach.severity == Severity::Warning) title = "warning: " + title;
        const auto [place, isNew] = _places.try_emplace(std::move(title), _groups.size());
        if (isNew) _groups.push_back({place->first, 0, {}});
        return _groups[place->second];
    }

    Console& _console;
    GroupBy _by;
    bool _quiet;
    std::string _file;
    std::optional<CheckedModel> _model;
    std::map<std::string, std::size_t> _places;
    std::vector<Group> _groups;
};

GroupedReport::~GroupedReport() = default;

}  // namespace

std::unique_ptr<CheckReport> makeGroupedReport(Console& console, GroupBy by, bool quiet) {
    return std::make_unique<GroupedReport>(console, by, quiet);
}

}  // namespace qor::cli
