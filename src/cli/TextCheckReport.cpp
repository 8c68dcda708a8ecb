// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <map>
#include <optional>

#include "cli/BreachText.h"
#include "cli/CheckReport.h"
#include "cli/CheckSettings.h"
#include "cli/Console.h"
#include "cli/Diagnostics.h"

namespace qor::cli {

namespace {

/// Breaches of one subject that come from one written rule: a limit of a class that stands in for those of its
/// relations is broken in several counts at once.
struct Fold {
    QorCardinalityRule rule;
    std::string text;         ///< of the count that found most, which is the widest; of equal ones the last
    std::uint32_t found = 0;  ///< by that count
    std::size_t counts = 0;
    Severity severity = Severity::Error;
};

class TextReport final : public CheckReport {
public:
    TextReport(Console& console, bool quiet) : _console(console), _colours(console.outColours()), _quiet(quiet) {}
    ~TextReport() override;

    void beginFile(const CheckedFile& file, const std::vector<QorDiagnostic>& diagnostics) override {
        _file = file.name;
        showDiagnostics(_console, diagnostics, _quiet);
    }

    void beginModel(const CheckedModel& model) override {
        _model.emplace(model);
        _hasBreaches = false;
        _leftOut = 0;
    }

    void breach(const ReportedBreach& reported) override {
        const QorCardinalityBreach& breach = reported.record;
        if (!_hasBreaches) writeModelLine("");
        _hasBreaches = true;
        if (breach.subject != _subject) writeSubject();
        _subject = breach.subject;
        _subjectIsClass = breach.subjectIsClass;
        fold(breach, reported.severity);
    }

    void leaveOut(const ReportedBreach&, LeftOut why, std::string_view) override {
        ++_leftOut;
        if (why == LeftOut::NotShown) ++_notShown;
    }

    void endModel() override {
        writeSubject();
        if (!_hasBreaches && !_quiet) writeModelLine(_leftOut == 0 ? ", no breaches" : leftOutText());
        _model.reset();
    }

    void endFile() override { _console.flush(); }

    void end(const CheckSummary& summary) override {
        showStale(_console, summary);
        const auto reported = summary.breaches - _notShown;
        if (!_quiet)
            _console.out(summaryLine(summary, reported == _shown ? std::nullopt : std::optional(_shown), _colours));
    }

private:
    void writeModelLine(std::string_view end) {
        const QorModelInfo& info = _model->info;
        const std::string version = info.version.empty() ? "" : " version " + quoted(info.version);
        _console.out(fmt::format("{}: model {}{} ({}): {}, {}{}\n", _colours.bold(printable(_file)),
                                 _colours.bold(quoted(info.name)), version,
                                 printable(_model->reader.nameOf(info.modelType)), counted(_model->objects, "object"),
                                 counted(_model->relations, "relation"), end));
    }

    [[nodiscard]] std::string leftOutText() const { return fmt::format(", {} not shown", counted(_leftOut, "breach")); }

    void fold(const QorCardinalityBreach& breach, Severity severity) {
        const auto [entry, isNew] = _foldOf.try_emplace(WrittenRule(breach.rule), _folds.size());
        if (isNew) _folds.push_back({breach.rule, breach.text.str(), breach.found, 0, severity});
        Fold& fold = _folds[entry->second];
        ++fold.counts;
        if (breach.found < fold.found) return;
        fold.text = breach.text.str();
        fold.found = breach.found;
    }

    void writeSubject() {
        if (_folds.empty()) return;
        writeSubjectLine();
        for (const Fold& fold : _folds) writeFold(fold);
        _shown += _folds.size();
        _folds.clear();
        _foldOf.clear();
        _subject = -1;
    }

    void writeSubjectLine() {
        const auto subject = static_cast<QorIdentifier>(_subject);
        _console.out(fmt::format("{}: {}\n", placeText(placeOf(*_model, _file, subject)),
                                 subjectText(*_model, subject, _subjectIsClass, _colours)));
    }

    void writeFold(const Fold& fold) {
        std::string line = fmt::format("{}; found {}", ruleText(*_model, fold.rule), fold.found);
        if (fold.counts > 1) line += fmt::format(", in {} counts", fold.counts);
        const bool isWarning = fold.severity == Severity::Warning;
        const auto text = printable(fold.text);
        _console.out(fmt::format("    {}\n    {}\n",
                                 isWarning ? _colours.warning("warning: ") + text : _colours.error(text),
                                 _colours.dim("rule " + line)));
    }

    Console& _console;
    Colours _colours;
    bool _quiet;
    std::string _file;
    std::optional<CheckedModel> _model;
    bool _hasBreaches = false;
    long _subject = -1;
    bool _subjectIsClass = false;
    std::vector<Fold> _folds;  ///< of the current subject
    std::map<WrittenRule, std::size_t> _foldOf;
    std::uint64_t _shown = 0;
    std::uint64_t _leftOut = 0;   ///< of the current model
    std::uint64_t _notShown = 0;  ///< because there are too many
};

TextReport::~TextReport() = default;

}  // namespace

std::unique_ptr<CheckReport> makeTextReport(Console& console, bool quiet) {
    return std::make_unique<TextReport>(console, quiet);
}

}  // namespace qor::cli
