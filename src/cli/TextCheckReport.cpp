// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <map>
#include <optional>

#include "cli/CheckReport.h"
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
};

class TextReport final : public CheckReport {
public:
    TextReport(Console& console, bool quiet) : _console(console), _colours(console.outColours()), _quiet(quiet) {}
    ~TextReport() override;

    void beginFile(const std::string& file, const std::vector<QorDiagnostic>& diagnostics) override {
        _file = file;
        for (const QorDiagnostic& diagnostic : diagnostics) {
            const bool isShown = !_quiet || diagnostic.severity == QorSeverity::Error;
            if (isShown) _console.err(diagnosticLine(diagnostic, _console.errColours()));
        }
    }

    void beginModel(const CheckedModel& model) override {
        _model.emplace(model);
        _hasBreaches = false;
    }

    void breach(const QorCardinalityBreach& breach) override {
        if (!_hasBreaches) writeModelLine("");
        _hasBreaches = true;
        if (breach.subject != _subject) writeSubject();
        _subject = breach.subject;
        _subjectIsClass = breach.subjectIsClass;
        fold(breach);
    }

    void endModel() override {
        writeSubject();
        if (!_hasBreaches && !_quiet) writeModelLine(", no breaches");
        _model.reset();
    }

    void endFile() override { _console.flush(); }

    void end(const CheckSummary& summary) override {
        if (_quiet) return;
        std::string line = fmt::format("{}, {}, {}, {}: {}", counted(summary.files, "file"),
                                       counted(summary.models, "model"), counted(summary.objects, "object"),
                                       counted(summary.relations, "relation"), counted(summary.breaches, "breach"));
        if (_shown != summary.breaches) line += fmt::format(" (shown as {})", _shown);
        if (summary.errors != 0) line += ", " + counted(summary.errors, "error");
        if (summary.warnings != 0) line += ", " + counted(summary.warnings, "warning");
        _console.out(_colours.bold(line) + fmt::format(" in {:.2f} s\n", summary.seconds));
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

    void fold(const QorCardinalityBreach& breach) {
        const auto [entry, isNew] = _foldOf.try_emplace(WrittenRule(breach.rule), _folds.size());
        if (isNew) _folds.push_back({breach.rule, breach.text.str(), breach.found, 0});
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
        const QorRepositoryReader& reader = _model->reader;
        QorFilePlace place = _model->importer.placeOf(subject);
        place.file = _file;
        if (_subjectIsClass) {
            _console.out(fmt::format("{}: class {}\n", placeText(place), quoted(reader.nameOf(subject))));
            return;
        }
        const std::string_view id = _model->importer.sourceIdOf(subject);
        _console.out(fmt::format(
            "{}: {} {}{}\n", placeText(place), printable(reader.nameOf(reader.classOfObject(subject))),
            _colours.bold(quoted(reader.nameOf(subject))), id.empty() ? "" : " (id " + printable(id) + ")"));
    }

    void writeFold(const Fold& fold) {
        const QorCardinalityRule& rule = fold.rule;
        const auto name = [&](long id) { return quoted(_model->reader.nameOf(static_cast<QorIdentifier>(id))); };
        std::string line = fmt::format("{}: {}", rule.key, rule.limit);
        if (rule.relationClass > 0) line += " for relation " + name(rule.relationClass);
        const bool isIncoming = rule.key.find("incoming") != std::string_view::npos;
        if (rule.otherClass > 0) line += (isIncoming ? " from class " : " to class ") + name(rule.otherClass);
        line += ", in the text of class " + name(rule.cls);
        const QorFilePlace& place = _model->rulePlaces.placeOf(WrittenRule(rule));
        if (!place.file.empty()) line += fmt::format(" ({})", placeText(place));
        line += fmt::format("; found {}", fold.found);
        if (fold.counts > 1) line += fmt::format(", in {} counts", fold.counts);
        _console.out(
            fmt::format("    {}\n    {}\n", _colours.error(printable(fold.text)), _colours.dim("rule " + line)));
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
};

TextReport::~TextReport() = default;

}  // namespace

CheckReport::~CheckReport() = default;

std::unique_ptr<CheckReport> makeTextReport(Console& console, bool quiet) {
    return std::make_unique<TextReport>(console, quiet);
}

}  // namespace qor::cli
